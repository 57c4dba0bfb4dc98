"""Prints what a screen reader gets to know of a program's windows: one JSON object a line, for each object
its role, its name and its text. Takes the program's name on the accessibility bus."""

import json
import sys

import pyatspi


def text_of(accessible):
    try:
        return accessible.queryText().getText(0, -1)
    except NotImplementedError:
        return ""


def print_tree(accessible):
    if accessible is None:
        return
    print(json.dumps({
        "role": accessible.getRoleName(),
        "name": accessible.name,
        "text": text_of(accessible),
    }))
    for index in range(accessible.childCount):
        print_tree(accessible.getChildAtIndex(index))


for application in pyatspi.Registry.getDesktop(0):
    if application is not None and application.name.lower() == sys.argv[1]:
        print_tree(application)
