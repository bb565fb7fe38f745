"""two-users [PROGRAM]: two users on one machine, and two sessions of one user. As root: it makes two users and removes
them. Each bus has an instance of its own, no user's file is touched by the other, and what either session chooses stays."""

import os
import pwd
import re
import shutil
import stat
import subprocess

from trials.bus import Bus, Program
from trials.menu import filed, shown


class User:
    def __init__(self, trial, which):
        self.trial, self.name, self.home = trial, f"dinmala-{which}-{os.getpid()}", trial.path(which)
        subprocess.run(["useradd", "--no-create-home", "--shell", "/usr/sbin/nologin", self.name], check=True)
        self.entry = pwd.getpwnam(self.name)
        self.environment = trial.environment(self.home)
        for folder in self.home, f"{self.home}/run":
            os.chown(folder, self.entry.pw_uid, self.entry.pw_gid)
            os.chmod(folder, 0o700)

    def session(self, executable):
        """A bus and the program on it."""
        bus = Bus(self.trial, self.environment, self.entry)
        return bus, self.program(executable, bus)

    def program(self, executable, bus):
        program = Program(self.trial, executable, bus, self.entry, **self.environment)
        self.trial.need(f"{self.name}: the program is its bus's instance",
                        lambda: bus.owner() == program.id and program.menu.rows())
        return program


def run(trial, executable):
    trial.need("this is root", os.getuid() == 0)
    # To where every user may read.
    folder = trial.path("program")
    os.makedirs(folder)
    for name in "dinmala", "dinmala-fetch", "resources":
        one = os.path.join(os.path.dirname(executable), name)
        (shutil.copytree if os.path.isdir(one) else shutil.copy)(one, os.path.join(folder, name))
    executable = os.path.join(folder, "dinmala")
    users = []
    try:
        for which in "one", "two":
            users.append(User(trial, which))
        users_and_sessions(trial, executable, *users)
    finally:
        trial.end_all()
        for user in users:
            subprocess.run(["userdel", user.name], check=True)


def users_and_sessions(trial, executable, one, two):
    bus_a, first = one.session(executable)
    bus_b, other = two.session(executable)
    again = trial.start([executable], {**one.environment, "DINMALA_FACE": "panel", "DBUS_SESSION_BUS_ADDRESS": bus_a.address},
                        one.entry)
    trial.check("a second start on a bus ends with 0", lambda: again.poll() == 0)

    def choose(program, *titles):
        for title in titles:
            program.menu.choose(title)
        return shown(program.menu)

    trial.equal("one user chooses the year, and no events", choose(first, "Year", "Events", "Events"),
                ["Year", "Month", "Day", "Time"])
    trial.equal("in a file of the own", (filed(one.home), filed(two.home)),
                (["Year", "Month", "Day", "Time"], ["Month", "Day", "Time"]))
    of_file = os.stat(f"{one.home}/.config/dinmala/preferences.ini")
    trial.equal("which belongs to the user alone", (of_file.st_uid, stat.S_IMODE(of_file.st_mode)), (one.entry.pw_uid, 0o600))

    bus_c, second = one.session(executable)
    trial.equal("a second session starts with the choices", shown(second.menu), ["Year", "Month", "Day", "Time"])
    choose(first, "Events")
    choose(second, "Year")
    trial.equal("the file has both sessions' choices", filed(one.home), ["Month", "Day", "Time", "Events"])
    at_once = ["Weekday", "Tithi", "Weekday", "Tithi"]
    for title, reverse in zip(at_once, reversed(at_once)):
        for program, row in (first, title), (second, reverse):  # both are under way before either answers
            program.menu.choose_unawaited(row)
    first.menu.rows(), second.menu.rows()
    with open(f"{one.home}/.config/dinmala/preferences.ini", encoding="utf-8") as file:
        lines = file.read().splitlines()
    trial.check("choosing at once leaves the file whole", lines and all(
        line in ("", "[display]") or re.fullmatch("[a-z]+=(true|false)|edition=[a-z]+", line) for line in lines))
    trial.equal("the second session chooses the flag", choose(second, "Flag"), ["Flag"])
    trial.equal("the file has the flag alone", filed(one.home), ["Flag"])
    trial.equal("nothing is left beside it", os.listdir(f"{one.home}/.config/dinmala"), ["preferences.ini"])
    second.end()
    third = one.program(executable, bus_c)
    trial.equal("so has the next start", shown(third.menu), ["Flag"])
    trial.check("all still run", first.alive() and other.alive() and third.alive())
