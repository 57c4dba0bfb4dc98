#!/usr/bin/python3
"""Prints what GIO knows of programs: for each MIME type a line with its default and every program that is offered for
it, then the programs of the list of all applications. The columns are separated by tabs."""

import sys

from gi.repository import Gio


def names(programs):
    return ";".join(program.get_id() for program in programs)


for kind in sys.argv[1:]:
    default = Gio.AppInfo.get_default_for_type(kind, False)
    print(kind, default.get_id() if default else "", names(Gio.AppInfo.get_all_for_type(kind)), sep="\t")
everything = [program for program in Gio.AppInfo.get_all() if program.should_show() and program.supports_files()]
print("everything", "", names(everything), sep="\t")
