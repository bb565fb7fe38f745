"""A session bus, what is asked of the program on it, and what is played to the program."""

import os
import signal
import subprocess
import time

from gi.repository import Gio, GLib

from trials.trial import acting_as, until

NAME = "org.dinmala.Dinmala"
WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_XML = f"""<node><interface name='{WATCHER}'>
<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>
<method name='RegisterStatusNotifierHost'><arg type='s' direction='in'/></method>
<property name='RegisteredStatusNotifierItems' type='as' access='read'/>
<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>
<property name='ProtocolVersion' type='i' access='read'/>
</interface></node>"""


# A session bus that starts no service, whatever is installed.
BARE = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy></busconfig>"""


class Bus:
    """A bus of its own, of `user` where one is told; a bare one, or one with rules of its own, starts no service."""

    def __init__(self, trial, environment=None, user=None, address=(), bare=False, rules=""):
        self.user = user
        kind = "--session"
        if bare or rules:
            kind = f"--config-file={trial.write('bare-bus.conf', BARE.replace('</policy>', rules + '</policy>'))}"
        self.daemon = trial.start(["dbus-daemon", kind, "--nofork", "--nopidfile", "--print-address", *address],
                                  environment, user, stdout=subprocess.PIPE, text=True)
        self.address = self.daemon.stdout.readline().strip()
        self.connection = self.connect()

    def connect(self):
        kind = Gio.DBusConnectionFlags
        with acting_as(self.user):
            return Gio.DBusConnection.new_for_address_sync(
                self.address, kind.AUTHENTICATION_CLIENT | kind.MESSAGE_BUS_CONNECTION, None, None)

    def call(self, name, path, interface, method, types="()", *values, timeout=10):
        """The answer, as a tuple, awaited while whatever is played here goes on."""
        done = []
        self.connection.call(name, path, interface, method, GLib.Variant(types, values), None,
                             Gio.DBusCallFlags.NO_AUTO_START, timeout * 1000, None, lambda _, result: done.append(result))
        while not done:
            GLib.MainContext.default().iteration(True)
        return self.connection.call_finish(done[0]).unpack()

    def ask(self, method, *names):
        try:
            return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                             f"({'s' * len(names)})", *names)[0]
        except GLib.Error:
            return None

    def owner(self, name=NAME):
        """The number of the process that has a name, or None."""
        return self.ask("GetConnectionUnixProcessID", name)

    def property(self, name, path, interface, key):
        return self.call(name, path, "org.freedesktop.DBus.Properties", "Get", "(ss)", interface, key)[0]

    def registered(self):
        """The items that the panel's watcher lists."""
        try:
            return self.property(WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems")
        except GLib.Error:
            return []


class PlayedPanel:
    """A panel that takes status items, on a connection of its own."""

    def __init__(self, bus, shows_texts=False):
        self.items, self.registered_at = [], None
        self.connection = bus.connect()
        self.connection.register_object("/StatusNotifierWatcher", Gio.DBusNodeInfo.new_for_xml(WATCHER_XML).interfaces[0],
                                        self.called, self.property, None)
        for name in [WATCHER] + ["org.gnome.Shell"] * shows_texts:
            own(self.connection, name)

    def called(self, _, sender, path, interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            self.registered_at = time.monotonic()
            self.items.append(sender)
        invocation.return_value(None)

    def property(self, _, sender, path, interface, key):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", self.items),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True), "ProtocolVersion": GLib.Variant("i", 0)}[key]

    def close(self):
        self.connection.close_sync(None)


class PlayedLogind:
    """Tells the program on this bus that the machine goes to sleep (True) or wakes."""

    def __init__(self, bus):
        self.connection = bus.connect()
        own(self.connection, "org.freedesktop.login1")

    def sleeping(self, whether):
        self.connection.emit_signal(None, "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep",
                                    GLib.Variant("(b)", (whether,)))
        self.connection.flush_sync(None)


def own(connection, name):
    connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                         GLib.Variant("(su)", (name, 0)), None, 0, -1, None)


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


class Item:
    """The program's item, as panels read it."""

    def __init__(self, bus):
        self.bus = bus

    def properties(self):
        return self.bus.call(NAME, "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll", "(s)",
                             "org.kde.StatusNotifierItem")[0]


class Menu:
    """The menu of the program on a bus, as a panel uses it."""

    def __init__(self, bus):
        self.bus = bus

    def call(self, method, types, *values):
        return self.bus.call(NAME, "/MenuBar", "com.canonical.dbusmenu", method, types, *values)

    def rows(self):
        """Each row's number and properties, submenus included; none while there is no menu."""
        try:
            waiting = [self.call("GetLayout", "(iias)", 0, -1, [])[1]]
        except GLib.Error:
            return []
        found = []
        while waiting:
            number, properties, below = waiting.pop(0)
            found.append((number, properties))
            waiting[:0] = below
        return found[1:]

    def place(self, title):
        """Of a row of the menu itself among those that can be chosen, from 1."""
        shown = [one.get("label") for _, one, _ in self.call("GetLayout", "(iias)", 0, 1, [])[1][2]
                 if one.get("visible", True) and one.get("enabled", True) and one.get("type") != "separator"]
        return shown.index(title) + 1

    def number(self, title):
        """Of the last such row: the pieces of the day, in a submenu, have the titles of the marked rows below."""
        return next(number for number, properties in reversed(self.rows()) if properties.get("label") == title)

    def choose(self, row):
        """A row by its title or its number. Its action has run when this returns."""
        self.call("Event", *self.click(row))
        self.rows()

    def click(self, row):
        return "(isvu)", row if isinstance(row, int) else self.number(row), "clicked", GLib.Variant("i", 0), 0

    def choose_unawaited(self, row):
        types, *values = self.click(row)
        self.bus.connection.call(NAME, "/MenuBar", "com.canonical.dbusmenu", "Event", GLib.Variant(types, values), None,
                                 Gio.DBusCallFlags.NO_AUTO_START, -1, None, None)

    EDITIONS = "As Nepal publishes it today", "As first made in 2015"

    def marked(self):
        """The titles of the marked rows, or None while there is no menu."""
        rows = self.rows()
        return [one["label"] for _, one in rows if one.get("toggle-state") == 1] if rows else None

    def edition(self):
        """The title of the marked edition."""
        return next((title for title in self.marked() or [] if title in self.EDITIONS), None)


class Program:
    """The program on a bus, in the panel or the face that `more` tells; by its path, or by a command that starts it."""

    def __init__(self, trial, executable, bus, user=None, **more):
        self.trial = trial
        self.files = [trial.path(f"program-{time.monotonic_ns()}-{stream}") for stream in ("out", "said")]
        environment = {"DINMALA_FACE": "panel", "DBUS_SESSION_BUS_ADDRESS": bus.address, **trial.environment(), **more}
        with open(self.files[0], "wb") as out, open(self.files[1], "wb") as said:
            self.process = trial.start([executable] if isinstance(executable, str) else executable, environment, user, stdout=out, stderr=said)
        self.id, self.menu, self.item = self.process.pid, Menu(bus), Item(bus)
        until(lambda: bus.owner() or not self.alive() or environment["DINMALA_FACE"] != "panel", 5)

    def alive(self):
        return self.process.poll() is None

    def out(self):
        return read(self.files[0])

    def said(self):
        return read(self.files[1])

    def end(self):
        """Checks that it ends as it should: asked to, at once, by itself."""
        status = self.trial.end(self.process)
        self.trial.check(f"the program ends when asked to: {status}", status in (0, -15))


class Adopted:
    """A process that another one started and left to this one, with what is used here of a Popen."""

    def __init__(self, number):
        self.pid, self.status = number, None

    def poll(self):
        if self.status is None:
            number, status = os.waitpid(self.pid, os.WNOHANG)
            self.status = os.waitstatus_to_exitcode(status) if number else None
        return self.status

    def send_signal(self, sign):
        if self.poll() is None:
            os.kill(self.pid, sign)

    def kill(self):
        self.send_signal(signal.SIGKILL)

    def wait(self, seconds=10):
        if until(lambda: self.poll() is not None, seconds):
            return self.status
        raise subprocess.TimeoutExpired(str(self.pid), seconds)
