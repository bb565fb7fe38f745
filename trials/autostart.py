"""autostart [PROGRAM]: "Start at login" in a real session, mate-session under Xvfb, by its row in the menu, from a plain
path and from an awkward one (the unit tests start many more)."""

import os
import shutil

from trials.bus import Bus, Menu, NAME, Program
from trials.screen import Screen
from trials.trial import HERE, running, until

ROW = "Start at login"


class Desktop:
    """Sessions that log in to one home, one after the other."""

    def __init__(self, trial, screen):
        self.trial, self.screen, self.autostart = trial, screen, trial.path("home/.config/autostart")
        # No window manager or panel: the session starts its autostart programs at once.
        trial.write("home/.config/glib-2.0/settings/keyfile", "[org/mate/desktop/session]\nrequired-components-list=@as []\n")
        trial.write("home/.config/autostart/marker.desktop",
                    f"[Desktop Entry]\nType=Application\nName=Marker\nExec=touch {trial.path('marker')}\n")

    def login(self):
        environment = self.trial.environment(DISPLAY=self.screen.display, GSETTINGS_BACKEND="keyfile")
        self.bus = Bus(self.trial, environment)
        self.menu = Menu(self.bus)
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address
        self.session = self.trial.start(["mate-session"], environment)
        self.trial.need("the session starts what is to be started", lambda: os.path.exists(self.trial.path("marker")), 30)
        os.remove(self.trial.path("marker"))

    def logout(self):
        for process in self.session, self.bus.daemon:
            self.trial.end(process)

    def entries(self):
        return sorted(set(os.listdir(self.autostart)) - {"marker.desktop"})

    def state(self):
        """Whether the row is marked, None while there is no menu; and the entries."""
        marked = self.menu.marked()
        return None if marked is None else ROW in marked, self.entries()


def try_path(trial, desktop, executable, folder, thoroughly):
    program = trial.path(folder, "dinmala")
    os.makedirs(os.path.dirname(program))
    shutil.copy(executable, program)
    shutil.copytree(os.path.join(HERE, "app/resources"), os.path.join(os.path.dirname(program), "resources"))
    entry, none = ["dinmala.desktop"], []

    desktop.login()
    by_hand = Program(trial, program, desktop.bus)
    trial.equal(f"{folder}: started by hand, no mark", desktop.state, (False, none))
    desktop.menu.choose(ROW)
    trial.equal("chosen: a mark and an entry", desktop.state, (True, entry))
    desktop.logout()
    trial.check("it ends with the session", lambda: not by_hand.alive())

    desktop.login()
    trial.equal("the next session starts it", lambda: (desktop.state(), len(running(program))), ((True, entry), 1))
    if thoroughly:
        shutil.copy(os.path.join(desktop.autostart, entry[0]), os.path.join(desktop.autostart, "twice.desktop"))
        desktop.logout()
        desktop.login()
        trial.equal("listed twice: it runs once, marked", lambda: (desktop.state(), len(running(program))),
                    ((True, entry + ["twice.desktop"]), 1))
        desktop.menu.choose(ROW)
        trial.equal("chosen: the later entry goes, the mark too", desktop.state, (False, entry))
        desktop.logout()
        desktop.login()
        trial.equal("the next session starts it by the other entry", desktop.state, (True, entry))
    desktop.menu.choose(ROW)
    trial.equal("chosen again: no mark, no entry", desktop.state, (False, none))
    desktop.logout()
    if thoroughly:
        desktop.login()
        # Nothing tells that a session will start no more; this is ten times what it took above.
        trial.check("the next session does not start it", not until(lambda: running(program) or desktop.bus.owner(NAME), 3))
        desktop.logout()


def run(trial, executable):
    desktop = Desktop(trial, Screen(trial, "800x600"))
    try_path(trial, desktop, executable, "plain", True)
    try_path(trial, desktop, executable, "all ' of \" them % at $ once ` \\ =;&|<>()*?#~ दिन", False)
