"""What a screen reader is told of dinmala-window, a line of JSON each: first its table, asked for when a line comes on
standard input, and every move of the keyboard."""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def tell(**facts):
    print(json.dumps(facts), flush=True)


def below(parent):
    return [parent.get_child_at_index(place) for place in range(parent.get_child_count())]


def find(parent, role):
    for child in below(parent):
        if child.get_role() == role:
            return child
        if found := find(child, role):
            return found
    return None


def table():
    for application in below(Atspi.get_desktop(0)):
        if application.get_name() == "dinmala-window" and (found := find(application, Atspi.Role.TABLE)):
            rows = [[(one.get_role_name(), one.get_name()) for one in below(row)] for row in below(found)]
            return tell(table=rows)
    return tell(table=None)


def focused(event):
    if event.detail1 and event.source.get_application().get_name() == "dinmala-window":
        tell(focus=event.source.get_name(), role=event.source.get_role_name())


def asked(*_):
    if not sys.stdin.readline():
        Atspi.event_quit()  # the trial has gone
        return False
    table()
    return True


Atspi.init()
listener = Atspi.EventListener.new(focused)
listener.register("object:state-changed:focused")
tell(ready=True)
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, asked)
Atspi.event_main()
