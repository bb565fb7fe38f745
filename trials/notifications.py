"""notifications [PROGRAM]: notices of festivals on a played service, through a clock that is set and a restart; without a
service, and with one that comes late."""

import datetime
import os
import shutil

from gi.repository import Gio, GLib

from trials.bus import Bus, PlayedPanel, Program, own, read
from trials.clock import Clock
from trials.trial import until

SERVICE = "org.freedesktop.Notifications"
XML = f"""<node><interface name='{SERVICE}'>
<method name='GetCapabilities'><arg type='as' direction='out'/></method>
<method name='Notify'><arg type='s' direction='in'/><arg type='u' direction='in'/><arg type='s' direction='in'/>
<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='as' direction='in'/><arg type='a{{sv}}' direction='in'/>
<arg type='i' direction='in'/><arg type='u' direction='out'/></method>
</interface></node>"""
PATH = "/org/freedesktop/Notifications"


class PlayedService:
    """Takes notices and tells what a person does with them."""

    def __init__(self, bus, capabilities=("actions", "body", "body-markup")):
        self.connection, self.notices = bus.connect(), []

        def called(connection, sender, path, interface, method, parameters, invocation):
            if method == "GetCapabilities":
                invocation.return_value(GLib.Variant("(as)", (list(capabilities),)))
            else:
                self.notices.append(parameters.unpack())
                invocation.return_value(GLib.Variant("(u)", (len(self.notices),)))

        interface = Gio.DBusNodeInfo.new_for_xml(XML).interfaces[0]
        self.connection.register_object(PATH, interface, called, None, None)
        own(self.connection, SERVICE)

    def tell(self, signal, number, word):
        self.connection.emit_signal(None, PATH, SERVICE, signal, GLib.Variant("(us)", (number, word)))

    def leave(self):
        self.connection.close_sync()


def run(trial, executable):
    bus, state = Bus(trial, bare=True), trial.path("home/.local/state/dinmala/festivals")
    PlayedPanel(bus, shows_texts=True)

    def kept():
        return read(state) if os.path.exists(state) else ""

    def opened():
        return read(trial.path("opened")) if os.path.exists(trial.path("opened")) else ""

    # A copy, beside which a played window stands.
    window = trial.write("bin/dinmala-window", f'#!/bin/sh\necho "$* $XDG_ACTIVATION_TOKEN" >>{trial.path("opened")}\n')
    os.chmod(window, 0o755)
    beside = os.path.dirname(executable)
    resources = next(one for one in (f"{beside}/resources", f"{beside}/../share/dinmala") if os.path.isdir(one))
    executable = shutil.copy(executable, trial.path("bin/dinmala"))

    clock = Clock(trial, datetime.datetime(2026, 10, 17, 9, 0))

    def start():
        program = Program(trial, executable, bus, **clock.environment, TZ="Asia/Kathmandu", DINMALA_RESOURCES=resources)
        trial.need(f"the menu is there at {clock.now}", program.menu.rows)
        return program

    def pass_minutes(count):
        for _ in range(count):
            clock.move(minutes=1)
            until(lambda: False, 1.3)

    # फूलपाति is on 2026-10-17, a public holiday.
    service = PlayedService(bus)
    program = start()
    pass_minutes(2)
    trial.equal("nothing is told unless it was chosen", (service.notices, kept()), ([], ""))
    program.menu.choose("In the morning")
    trial.need("chosen, it is told at once", lambda: len(service.notices) == 1)
    name, replaces, icon, title, text, actions, hints, _ = service.notices[0]
    trial.equal("with the festival's name", (name, replaces, icon, title), ("Dinmala", 0, "dinmala", "Today: फूलपाति"))
    trial.check(f"and the date in Nepal: {text!r}", "३१ आश्विन २०८३" in text)
    trial.equal("and its buttons", actions[::2], ["default", "leave"])
    until(lambda: False, 1)  # what a person does is done after the notice is on show
    service.tell("ActivationToken", 1, "token-4711")
    service.tell("ActionInvoked", 1, "default")
    trial.equal("one shows the day, as words that are of no BS year", opened, "--date 17 October 2026 token-4711\n")
    trial.equal("it is kept that it was told", kept, "told 2026-10-17\n")
    program.end()
    program = start()
    pass_minutes(2)
    clock.move(days=-1)
    pass_minutes(1)
    trial.equal("a restart and a clock set back tell nothing twice", len(service.notices), 1)

    clock.move(days=3, hours=-2, minutes=-clock.now.minute - 2)
    pass_minutes(1)  # 06:59 on the 19th
    trial.equal("two days on it waits until seven", len(service.notices), 1)
    clock.move(minutes=1)
    trial.need("and tells by itself", lambda: len(service.notices) == 2)
    until(lambda: False, 1)  # what a person does is done after the notice is on show
    service.tell("ActionInvoked", 1, "nothing known")
    service.tell("ActionInvoked", 99, "leave")
    until(lambda: False, 1)
    trial.check("a button of another's notice is not ours", "left" not in kept())
    service.tell("ActionInvoked", 2, "leave")
    trial.check("a festival is left out by its button", lambda: "left " in kept())
    again = "Again those I left out"
    trial.check("the menu has a row that takes it back", lambda: next(
        one for _, one in program.menu.rows() if one.get("label") == again).get("visible", True))
    program.menu.choose(again)
    trial.equal("and it does", kept, "told 2026-10-17\ntold 2026-10-19\n")

    service.leave()
    trial.equal("a service that goes without a word is listened to no more", lambda: [
        rule for rules in bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Debug.Stats",
                                   "GetAllMatchRules")[0].values() for rule in rules if f"interface='{SERVICE}'" in rule], [])
    before = kept()
    clock.move(days=1)
    pass_minutes(2)
    trial.equal("without a service nothing is kept and nothing said", (kept(), program.said()), (before, ""))
    service = PlayedService(bus, ["body"])
    until(lambda: False, 0.5)
    pass_minutes(1)
    trial.need("a service that comes late is asked to tell", lambda: len(service.notices) == 1)
    trial.equal("without buttons, where it has none", service.notices[0][5], [])

    os.remove(state)
    os.mkdir(state)
    clock.move(days=1)
    pass_minutes(2)
    trial.check("what cannot be kept is told all the same, once", lambda: len(service.notices) >= 2 and
                sum("Today" in notice[3] for notice in service.notices) == 2)
    trial.equal(lambda: f"and one message says so: {program.said().strip()[-90:]}", lambda: program.said().count(state), 1)
    program.end()
