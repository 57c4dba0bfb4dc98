#!/usr/bin/python3
"""Uses every entry that is installed below a folder for the menus of file managers, for the files named, as their file
managers do. Prints for each its file, a NUL, its label, a NUL, and what the program at $RECORD recorded of
its arguments, each with a NUL, and another NUL."""

import glob
import importlib.util
import os
import subprocess
import sys
import time
import types

import gi.repository
from gi.repository import Gio, GLib, GObject

share = sys.argv[1]
files = sys.argv[2:]
record = os.environ["RECORD"]


def found(pattern):
    return sorted(glob.glob(os.path.join(share, pattern)))


def report(path, label, use):
    """Uses an entry and waits until the program has started and recorded its arguments."""
    use()
    while not os.path.exists(record):
        time.sleep(0.01)
    with open(record, "rb") as arguments:
        sys.stdout.buffer.write(b"\0".join([os.fsencode(os.path.relpath(path, share)), label.encode(), arguments.read(), b""]))
    os.unlink(record)


def key_files(pattern):
    for path in found(pattern):
        keys = GLib.KeyFile()
        keys.load_from_file(path, GLib.KeyFileFlags.NONE)
        yield path, keys


def expanded(command):
    """A command with the files in place of %F, and nothing else in need of expansion."""
    words = command.split(" ")
    assert words.count("%F") == 1 and not any("%" in word for word in words if word != "%F"), command
    at = words.index("%F")
    return words[:at] + files + words[at + 1 :]


def report_command(path, label, command):
    report(path, label, lambda: subprocess.run(expanded(command), check=True))


def thunar():
    for path in found("Thunar/sendto/*.desktop"):
        entry = Gio.DesktopAppInfo.new_from_filename(path)
        chosen = [Gio.File.new_for_path(file) for file in files]
        report(path, entry.get_name(), lambda: entry.launch(chosen, None))


def nemo():
    for path, keys in key_files("nemo/actions/*.nemo_action"):
        group = "Nemo Action"
        report_command(path, keys.get_string(group, "Name"), keys.get_string(group, "Exec"))


def kde():
    for path, keys in key_files("kio/servicemenus/*.desktop"):
        for action in keys.get_string_list("Desktop Entry", "Actions"):
            group = "Desktop Action " + action
            report_command(path, keys.get_string(group, "Name"), keys.get_string(group, "Exec"))


def pcmanfm():
    for path, keys in key_files("file-manager/actions/*.desktop"):
        for profile in keys.get_string_list("Desktop Entry", "Profiles"):
            command = keys.get_string("X-Action-Profile " + profile, "Exec")
            report_command(path, keys.get_string("Desktop Entry", "Name"), command)


class MenuItem(GObject.GObject):
    """An item of a menu, as the file managers have it."""

    name = GObject.Property(type=str)
    label = GObject.Property(type=str)
    icon = GObject.Property(type=str)

    @GObject.Signal
    def activate(self):
        pass


class Selected:
    """A selected file, as the file managers tell of it."""

    def __init__(self, file):
        self.file = file

    def get_location(self):
        return self.file


def extension(manager, before):
    """Loads a file manager's extension with stand-ins for what the file manager offers it; the method for menus gets
    some more arguments before the files."""
    offered = types.SimpleNamespace(MenuItem=MenuItem, MenuProvider=type("MenuProvider", (), {}))
    setattr(gi.repository, manager, offered)
    for path in found(manager.lower() + "-python/extensions/*.py"):
        description = importlib.util.spec_from_file_location(manager, path)
        module = importlib.util.module_from_spec(description)
        description.loader.exec_module(module)
        menu = module.TolvaneMenu()
        elsewhere = Selected(Gio.File.new_for_uri("trash:///a"))
        assert menu.get_file_items(*before, []) == []
        chosen = [Selected(Gio.File.new_for_path(file)) for file in files]
        assert menu.get_file_items(*before, [*chosen, elsewhere]) == []
        for item in menu.get_file_items(*before, chosen):
            report(path, item.label, lambda item=item: item.emit("activate"))


kde()
nemo()
thunar()
pcmanfm()
extension("Nautilus", [])
extension("Caja", [None])
