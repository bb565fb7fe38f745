"""gnome-stock [PROGRAM [PICTURES]]: what a GNOME session without any extension has: the notice of a festival, the month
window from the app grid, festivals in the clock's menu by a subscription. The build's other programs must be there."""

import os
import subprocess

from trials.clock import Clock
from trials.panels import Story
from trials.trial import until

WINDOW = "org.dinmala.Dinmala.Window"
SOURCE = """[Data Source]
DisplayName=Nepali calendar
Enabled=true
Parent=local-stub
[Calendar]
BackendName=local
Color=#c8102e
Selected=true
[Local Backend]
CustomFile=file://{}
"""
MENU, NOTICE = (240, 32, 800, 900), (340, 32, 600, 200)


def run(trial, program, pictures=None):
    build = os.path.dirname(os.path.dirname(program))
    home = trial.path("home")
    story = Story(trial, "gnome-stock", program, pictures)
    host, bus = story.host, story.bus
    events = trial.path("home/calendar.ics")
    subprocess.run([os.path.join(build, "cal/dinmala-cal"), "ics", "--output", events], check=True, env=host.environment)
    trial.write("home/.config/evolution/sources/dinmala.source", SOURCE.format(events))
    for part in "app", "window":
        subprocess.run(["cmake", "--install", build, "--prefix", f"{home}/.local", "--component", part], check=True,
                       stdout=trial.log)
    host.environment["PATH"] = f"{home}/.local/bin:{host.environment['PATH']}"
    trial.write(f"home/.local/share/dbus-1/services/{WINDOW}.service",
                f"[D-BUS Service]\nName={WINDOW}\nExec={home}/.local/bin/dinmala-window --gapplication-service\n")
    trial.need("GNOME's shell is up, with nobody who takes items", lambda: host.up() and not bus.owner("org.kde.StatusNotifierWatcher"), 60)
    host.environment["WAYLAND_DISPLAY"] = "wayland-0"  # as a session's manager does it
    bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "UpdateActivationEnvironment",
             "(a{ss})", host.environment)
    until(lambda: False, 10)  # the shell's own notices of its start have gone
    story.picture("empty", story.screen.still(15))

    story.screen.point(640, 15)
    story.screen.click(1)
    # Without events it ends at half of that height.
    trial.check("the clock's menu opens, with today's festivals", story.differs("clock", "empty", MENU, 200, 560, 30))
    story.screen.press("Escape")
    until(lambda: False, 1)

    trial.write("home/.config/dinmala/preferences.ini", "[display]\ntell=morning\ntell_of=all\n")
    story.clock = Clock(trial)
    story.start()
    trial.check("the program waits unseen", lambda: bus.owner() == story.program.id)
    story.picture("before")
    story.clock.move(minutes=1)
    trial.check("a festival's notice is shown", story.differs("notice", "before", NOTICE, 200, 40))
    for key, down in (("Super", True), ("a", True), ("a", False), ("Super", False)):
        story.screen.key(key, down)
    trial.check("the app grid opens", story.differs("grid", "before", (0, 40, 1280, 1000), 60, 60))
    until(lambda: False, 2)
    story.picture("grid")
    story.screen.press(*"calendar")
    until(lambda: False, 2)
    story.picture("found")
    story.screen.press("Return")
    trial.need("the month window is opened from it", lambda: bus.owner(WINDOW), 20)
    trial.check("and seen", story.differs("window", "before", (0, 40, 1280, 1000), 400, 400))
    story.program.end()
