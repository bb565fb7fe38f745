"""window-HOST [PROGRAM [PICTURES]]: the month window, which is beside the program, from a real click on the item in a
panel with a window manager: its place, toggle, Esc, the keyboard elsewhere, double and many clicks, the menu's row. In
MATE and Xfce also two monitors, one of which goes. In MATE also what a screen reader hears of it, at midnight too; no
display, no session bus; months on paper; a second start while its dialogs are open."""

import datetime
import json
import os
import signal
import subprocess

from gi.repository import GLib

from trials.panels import TEXT, TILE, Story
from trials.screen import Screen
from trials.trial import HERE, Stop, running, until

NAME = "org.dinmala.Dinmala.Window"
MANAGERS = {"mate": ["marco"], "xfce": ["xfwm4", "--compositor=off"]}
PANELS = {"mate": "mate-panel", "xfce": "xfce4-panel", "lxqt": "lxqt-panel"}


class Monitors(Screen):
    """Two of 1024 x 768 beside each other."""

    def __init__(self, trial):
        parts = ('Section "Device"\nIdentifier "two"\nDriver "dummy"\nVideoRam 32768\nEndSection\n'
                 'Section "Screen"\nIdentifier "both"\nDevice "two"\nDefaultDepth 24\nEndSection\n')
        server = trial.start(["Xorg", "-displayfd", "1", "-config", trial.write("xorg.conf", parts), "-logfile", trial.path("xorg.log"),
                              "-noreset", "-novtswitch", "-sharevts"], stdout=subprocess.PIPE, text=True)
        self.display = f":{server.stdout.readline().strip()}"
        self.environment = trial.environment(DISPLAY=self.display)
        self.run("xrandr", "--addmode", "DUMMY1", "1024x768")
        self.run("xrandr", "--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0")
        self.run("xrandr")  # without the question the second still counts as not connected


class Listener:
    """trials/listener.py, and what it has told so far."""

    def __init__(self, trial, environment):
        self.process = trial.start(["/usr/bin/python3", os.path.join(HERE, "trials/listener.py")], environment,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.text, self.facts = b"", []

    def heard(self, key):
        """The last that was told of this."""
        self.text += self.process.stdout.read() or b""
        *lines, self.text = self.text.split(b"\n")
        self.facts += [json.loads(line) for line in lines]
        return next((fact[key] for fact in reversed(self.facts) if fact.get(key)), None)

    def table(self):
        self.process.stdin.write(b"\n")
        self.process.stdin.flush()
        return until(lambda: self.heard("table"), 3)


class Window:
    def __init__(self, story):
        self.story, self.trial, self.bus = story, story.trial, story.bus
        self.executable = os.path.join(os.path.dirname(story.executable), "dinmala-window")
        self.environment = {**story.host.environment, **story.clock.environment}

    def box(self, name="dinmala-window", environment=None):
        """x, y, width and height of a program's widest window that is seen, or None."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--class", name, "getwindowgeometry", "--shell", "%@"],
                               env=environment or self.environment, capture_output=True, text=True).stdout
        boxes = [dict(line.split("=") for line in one.splitlines() if "=" in line) for one in found.split("WINDOW=")[1:]]
        boxes = [tuple(int(one[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")) for one in boxes]
        return max(boxes, key=lambda one: one[2], default=None)

    def number(self):
        return self.bus.owner(NAME)

    def gone(self):
        return not self.box() and not self.number() and not running(self.executable)

    def click(self, times=1, delay=100):
        self.story.screen.point(*self.story.spot)
        self.story.screen.run("xdotool", "click", "--repeat", str(times), "--delay", str(delay), "1")

    def opens(self, what, do):
        self.trial.need(f"{what} opens the window", lambda: do() or True)
        if not self.trial.check("  it is there", self.box, 10):
            self.story.picture("not-there")
            raise Stop
        until(lambda: False, 0.6)  # a click counts for another one only after a double click's time

    def run(self, *words, **more):
        environment = {name: value for name, value in {**self.environment, **more}.items() if value is not None}
        return subprocess.run([self.executable, *words], env=environment, capture_output=True, text=True, timeout=30)

    def clicks(self):
        trial, screen = self.trial, self.story.screen
        self.opens("a click on the item", self.click)
        x, y, width, height = self.box()
        panel = self.box(PANELS[self.story.name])
        trial.equal(f"  beside the panel and whole: {width} x {height} at {x}, {y}",
                    (y, x >= 0 and x + width <= 1280 and y + height <= 720), (panel[1] + panel[3], True))
        middle = max(0, min(self.story.spot[0] - width // 2, 1280 - width))
        trial.equal("  at the pointer", abs(x - middle) <= 1, True)
        self.story.picture("window")
        self.click()
        trial.check("a second click closes it, and its program ends", self.gone)
        until(lambda: False, 0.5)
        self.opens("a click", self.click)
        screen.press("Escape")
        trial.check("Esc closes it", self.gone)
        until(lambda: False, 0.5)
        self.opens("a double click", lambda: self.click(2))
        trial.check("  and leaves it open", self.box)
        other = trial.start(["gsimplecal"], self.environment)
        self.take_keyboard()
        trial.check("the keyboard elsewhere closes it", self.gone)
        self.opens("the menu's row", lambda: self.story.program.menu.choose("Calendar"))
        screen.press("p")
        self.take_keyboard()
        trial.check("pinned it stays", self.box)
        trial.end(other)
        self.run()
        trial.check("a start without options closes it", self.gone)
        until(lambda: False, 0.5)
        self.click(40, 50)
        until(lambda: False, 1)
        trial.check("20 clicks a second leave one window or none", len(running(self.executable)) <= 1)
        trial.check("and the program", self.story.program.alive())
        self.end()

    def take_keyboard(self):
        """Another window gets it, as by a click on that one."""
        name = until(lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "gsimplecal"],
                                            env=self.environment, capture_output=True, text=True).stdout.split())
        self.story.screen.run("xdotool", "windowactivate", "--sync", name[-1])
        until(lambda: False, 1)

    def end(self):
        if number := self.number():
            os.kill(number, signal.SIGTERM)
        until(self.gone, 5)

    def two_monitors(self):
        """An X server without hardware is for root."""
        trial, screen = self.trial, Monitors(self.trial)
        environment = {**self.environment, "DISPLAY": screen.display}
        manager = trial.start(MANAGERS[self.story.name], environment)
        until(lambda: not subprocess.run(["xdotool", "get_desktop"], env=environment, capture_output=True).returncode)
        screen.point(1500, 5)
        lone = trial.start([self.executable], environment)
        box = trial.need("with two monitors it is there", lambda: self.box(environment=environment))
        trial.check(f"  whole on the pointer's: {box}", 1024 <= box[0] <= 2048 - box[2] and 0 <= box[1] <= 768 - box[3])
        screen.run("xrandr", "--output", "DUMMY1", "--off")
        trial.check("  and on the other one when that is gone",
                    lambda: 0 <= self.box(environment=environment)[0] <= 1024 - box[2])
        trial.end(lone)
        trial.end(manager)

    def ask(self, action, *parameters):
        self.bus.connection.call(NAME, "/org/dinmala/Dinmala/Window", "org.freedesktop.Application", "ActivateAction",
                                 GLib.Variant("(sava{sv})", (action, parameters, {})), None, 0, -1, None, None)

    def survives(self):
        """A second start closes it, but not under a printer's dialog; what strangers ask is no harm."""
        trial, screen = self.trial, self.story.screen
        lone = trial.start([self.executable], self.environment)
        trial.need("it is there to be closed", self.box)
        until(lambda: False, 0.5)
        bare = self.box()
        screen.press("ctrl+p")
        trial.check("Ctrl+P asks for a printer", lambda: self.box() != bare)
        self.run()
        self.story.picture("printing")
        screen.press("Escape")
        trial.check("  and a second start meanwhile leaves it open", lambda: self.box() == bare and lone.poll() is None)
        self.ask("show", GLib.Variant("(xss)", (2 ** 32, "", "")))
        until(lambda: False, 1)
        trial.equal("  nor does a day out of all calendars end it", lone.poll(), None)
        lone.send_signal(signal.SIGSTOP)
        self.ask("toggle")
        self.ask("open")
        until(lambda: False, 0.3)
        lone.send_signal(signal.SIGCONT)
        until(lambda: False, 1)
        trial.check("  closed and asked for in one breath it stays", lambda: self.box() and lone.poll() is None)
        screen.press("F1")
        self.run()
        trial.equal("  with its keys open it is closed by a second start, and ends with", lone.poll, 0)

    def midnight(self, listener):
        trial, clock = self.trial, self.story.clock
        before, clock.now = clock.now, datetime.datetime(2026, 11, 24, 18, 14, 57)
        clock.move()
        lone = trial.start([self.executable], {name: value for name, value in self.environment.items() if name != "NO_AT_BRIDGE"})
        trial.check("three seconds before midnight it is at 24 November",
                    lambda: "२४ नोभेम्बर २०२६" in (listener.heard("focus") or ""))
        clock.move(seconds=5)
        trial.check("  and after it at the next day, the keyboard too",
                    lambda: "२५ नोभेम्बर २०२६" in (listener.heard("focus") or "") and "today" in listener.heard("focus"))
        self.story.picture("midnight")
        trial.end(lone)
        clock.now = before
        clock.move()

    def hears(self):
        trial, screen = self.trial, self.story.screen
        environment = {**self.environment, "NO_AT_BRIDGE": None}
        environment = {name: value for name, value in environment.items() if value is not None}
        listener = Listener(trial, environment)
        trial.need("a screen reader listens", lambda: listener.heard("ready"))
        trial.start([self.executable, "--date", "2083-08-07"], environment)
        trial.need("the window is there for it", self.box)
        table = trial.need("it finds the table", listener.table, 20)
        roles = [{role for role, _ in row} for row in table]
        trial.equal("  a row of headers and six weeks of cells", (roles, [len(row) for row in table]),
                    ([{"table column header"}] + 6 * [{"table cell"}], 7 * [7]))
        names = [name for row in table[1:] for _, name in row]
        trial.check("  every cell has a name of its own", len(set(names)) == 42 and all(names))
        month = [name for name in names if "मंसिर २०८३" in name]
        wanted = [f", {day} मंसिर २०८३," for day in "१ २ ३ ४ ५ ६ ७ ८ ९ १० ११ १२ १३ १४ १५".split()]
        trial.check("  in the order of the days", all(part in name for part, name in zip(wanted, month)))
        for digits, part in (("western", ", 15 मंसिर 2083,"), ("devanagari", ", १५ मंसिर २०८३,")):
            trial.write("home/.config/dinmala/preferences.ini", f"[display]\ndigits={digits}\n")
            trial.check(f"  {digits} digits when they are chosen elsewhere",
                        lambda: any(part in name for _, name in sum(listener.table() or [], [])), 10)
        for key, part in (("Right", " ८ मंसिर २०८३"), ("Down", " १५ मंसिर २०८३"), ("Next", " १५ पौष २०८३"),
                          ("shift+Prior", " १५ पौष २०८२"), ("Home", "today")):
            screen.press(key)
            trial.check(f"  it hears {part.strip()} after {key}", lambda: part in (listener.heard("focus") or ""), 8)
        screen.press("Tab")
        trial.check("  Tab leaves the days", lambda: listener.heard("focus") == "The day", 8)
        screen.press("shift+Tab")
        trial.check("  and comes back to the chosen one", lambda: "today" in (listener.heard("focus") or ""), 8)
        self.run("--date", "2083-08-07", NO_AT_BRIDGE=None)
        x, y, *_ = self.box()
        screen.point(x + 50, y + 110)
        screen.run("xdotool", "click", "--repeat", "2", "--delay", "100", "1")
        trial.check("  a double click opens a day", lambda: listener.heard("focus") == "Details of the day", 8)
        screen.press("Right")
        trial.check("  of the month before: it is 29 Kartik", lambda: " ३० कार्तिक २०८३" in (listener.heard("focus") or ""), 8)
        screen.run("setxkbmap", "np,us")
        screen.press("30")  # the place of U
        trial.check("  U where Nepali is being written", lambda: listener.heard("focus") == "Upcoming", 8)
        screen.run("setxkbmap", "us")
        for words, part in ((("--date", "2084-01-01"), " १ बैशाख २०८४"),
                            (("--edition", "first", "--month", "2083-02"), "no tithi or festival is listed")):
            self.run(*words, NO_AT_BRIDGE=None)
            trial.check(f"  and {part.strip()} when {' '.join(words)} is asked for meanwhile",
                        lambda: part in (listener.heard("focus") or ""), 8)
        self.end()
        lone = trial.start([self.executable, "--date", "2083-08-07"], {**environment, "DINMALA_EDITION": "first"})
        trial.check("  the edition that the environment asks for, its dates too",
                    lambda: " ७ मंसिर २०८३, २२ नोभेम्बर" in (listener.heard("focus") or ""))
        trial.end(lone)
        self.midnight(listener)
        trial.end(listener.process)


def alone(trial, window):
    """What needs no panel."""
    said = window.run(DISPLAY=None, WAYLAND_DISPLAY=None)
    trial.equal("without a display it says so and ends with", (said.returncode, "there is no display" in said.stderr), (2, True))
    trial.equal("a wrong date is refused with", window.run("--date", "2083-13-01").returncode, 2)
    paper = trial.path("month.pdf")
    trial.equal("a month on paper, without a display", (window.run("--print", paper, DISPLAY=None).returncode,
                                                        open(paper, "rb").read(5) if os.path.exists(paper) else b""),
                (0, b"%PDF-"))
    trial.equal("but not in a place that is not there", window.run("--print", "/nowhere/month.pdf").returncode, 1)
    lone = trial.start([window.executable], {**window.environment, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"})
    trial.check("without a session bus it works alone", window.box)
    trial.end(lone)
    lone = trial.start([window.executable], {**window.environment, "GDK_DPI_SCALE": "1.8"})
    box = trial.need("with large letters there is a window", window.box)
    trial.check(f"  whole on the screen: {box}", box[0] >= 0 and box[1] >= 0 and box[0] + box[2] <= 1280 and box[1] + box[3] <= 720)
    trial.end(lone)
    window.hears()
    window.survives()


def run(trial, host, program, pictures=None):
    story = Story(trial, host, program, pictures)
    window = Window(story)
    trial.need("the window's program is beside the panel's", os.path.exists(window.executable))
    if host in MANAGERS:
        story.host.start(*MANAGERS[host])
    if host == "mate":
        alone(trial, window)
    if host in MANAGERS and os.getuid() == 0:
        window.two_monitors()
    trial.need("the panel is up", story.host.up, 60)
    story.away()
    story.picture("empty", story.screen.still(15))
    story.start()
    trial.need("the item is registered", story.bus.registered)
    story.find(story.drawn("the item", "item", TEXT if story.host.texts else TILE))
    window.clicks()
    story.program.end()
