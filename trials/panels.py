"""panels-HOST [PROGRAM [PICTURES]]: the item in a real panel under Xvfb, by mouse and keyboard: drawn, its tooltip, menu,
submenu, the flag chosen, a new minute or day, the panel's end and return. In MATE and Xfce also every row by the mouse, start at login, a late
panel, a second start, the bus's end. PROGRAM may be an installed .desktop file, which is launched as a desktop does.
PICTURES is a folder for a picture of each step; TRIAL_ENV="NAME=VALUE ..." is given to the program."""

import os
import shutil
import signal

from trials.bus import Adopted, Bus, Program
from trials.clock import Clock
from trials.hosts import HOSTS
from trials.menu import filed
from trials.screen import Screen, difference
from trials.trial import until

TEXT, TILE = (60, 400), (9, 40)  # how wide an item may be, in pixels
BELOW = (0, 40, 1280, 620)


class Story:
    def __init__(self, trial, host_name, program, pictures=None):
        self.trial, self.name, self.folder = trial, host_name, pictures
        self.executable = trial.executable = program
        self.command = [program]
        if program.endswith(".desktop"):
            with open(program, encoding="utf-8") as entry:
                name = next(line[5:].strip() for line in entry if line.startswith("Exec="))
            self.executable, self.command = shutil.which(name), ["gio", "launch", program]
        if pictures:
            os.makedirs(pictures, exist_ok=True)
        self.clock = Clock(trial)
        screen = Screen(trial)
        address = ("--address=unix:path=" + trial.path("home/run/bus"),)
        self.bus = Bus(trial, trial.environment(DISPLAY=screen.display), address=address)
        self.host = HOSTS[host_name](trial, self.bus, screen)
        self.seen = {}

    @property
    def screen(self):
        return self.host.screen

    def start(self):
        more = dict(pair.split("=", 1) for pair in os.environ.get("TRIAL_ENV", "").split())
        self.program = Program(self.trial, self.command, self.bus, **self.host.environment, **self.clock.environment, **more)
        if len(self.command) > 1:
            until(lambda: self.bus.owner())
            self.program.process = Adopted(self.bus.owner() or self.program.id)
            self.program.id = self.program.process.pid

    def picture(self, name, picture=None):
        """Keeps what the screen shows when it has come to rest."""
        self.seen[name] = picture or self.screen.still()
        if self.folder:
            self.seen[name].save(os.path.join(self.folder, f"{self.name}-{name}.png"))
        return self.seen[name]

    def differs(self, name, before, place, width=1, height=1, seconds=8):
        """Whether in a place so much comes to differ from the picture `before`; the picture is kept. Gives where."""
        def box():  # of what rests: a light under the pointer that goes out is no difference
            found = difference(self.seen[before], self.picture(name), place)
            return found if found.width >= width and found.height >= height else None

        return until(box, seconds)

    def drawn(self, what, name, limits):
        box = self.differs(name, "empty", self.host.strip, limits[0])
        self.trial.need(f"{what} is drawn, {box.width if box else 'under ' + str(limits[0])} pixels wide",
                        box and box.width <= limits[1] + self.host.neighbours)
        return box

    def away(self):
        self.screen.point(640, 690 if self.host.strip[1] == 0 else 100)

    def open_menu(self, name="menu", before=None):
        """Clicks the item; gives the place of the menu that opened, or None."""
        if not before:
            self.away()
            self.picture(before := "closed")
        self.screen.point(*self.spot)
        until(lambda: False, 0.3)  # panels light up what is pointed at
        self.screen.click(self.host.button)
        return self.differs(name, before, BELOW, 100, 250)

    def find(self, box):
        end = -1 if self.name == "plasma" else 1  # what had to move stands on the item's other side
        self.spot = (box.x + box.width // 2 + end * (box.width // 2 - 11), box.y + box.height // 2)

    def is_on(self, *titles):
        return set(titles) <= set(filed(self.trial.path("home")) or [])

    def tell(self):
        trial, host = self.trial, self.host
        trial.need("the panel is up", host.up, 60)
        self.away()
        self.picture("empty", self.screen.still(15))
        if self.name == "waybar":
            lines = self.seen["empty"].crop((440, 4, 840, 24)).getcolors(8)
            trial.check("the module of lines shows the date", lines is None)
        self.start()
        trial.need("the item is registered", self.bus.registered)
        self.find(self.drawn("the item", "item", TEXT if host.texts else TILE))

        self.screen.point(*self.spot)
        if host.tooltip:
            trial.check("a tooltip is shown", self.differs("tooltip", "item", BELOW, 40, 12))
        self.away()
        trial.need("a click opens the menu", self.open_menu())
        host.to_row(self.row("Today"))
        host.into_row()
        trial.check("its submenu opens", self.differs("submenu", "menu", BELOW, 60, 100))
        host.leave_menu()

        self.clock.move(minutes=1)
        if host.texts:
            self.away()
            trial.check("the panel shows a new minute", self.differs("minute", "item", host.strip, 2))
        self.clock.move(days=1, minutes=1)  # the timer looks at the minute
        trial.check("the panel shows a new day", self.differs("day", "minute" if host.texts else "item", host.strip, 2))

        trial.need("the menu opens again", self.open_menu())
        host.to_row(self.row("Flag"))
        host.choose_row()
        trial.need("the flag was chosen in it", lambda: self.is_on("Flag"))
        self.away()
        self.find(self.drawn("the flag", "flag", TILE))
        if host.thorough:
            self.every_row()

        trial.check("the watcher goes with the panel", host.down())
        trial.need("the program outlives it", self.program.alive())
        trial.need("the panel is up again", host.up, 60)
        trial.check("the item is registered again", self.bus.registered)
        x, y = self.spot
        trial.check("and drawn where it stood", self.differs("panel-restarted", "empty", (x - 11, y - 11, 22, 22), 8))
        if host.thorough:
            self.late_panel_and_lost_bus()
        else:
            self.program.end()

    def row(self, title):
        return self.program.menu.place(title)

    def choose(self, title, holds):
        """A row by the mouse: the keyboard finds where it is."""
        row = self.row(title)
        self.open_menu("open")
        self.host.to_row(row)
        box = self.differs("choosing", "open", BELOW, 40, 8)
        if box:
            # Two places differ where a row was marked before: the lower is the new one.
            self.screen.point(box.x + box.width // 2, box.y + box.height - 8)
            until(lambda: False, 0.2)
            self.screen.click(1)
        self.trial.check(f"{title} by the mouse: {holds.__doc__ or 'its mark'}", box and until(holds, 5))
        self.away()

    def every_row(self):
        pieces = ["Year", "Month", "Day", "Weekday", "Time", "Tithi", "Events"]
        for number, piece in enumerate(pieces, 1):
            self.choose(piece, lambda: self.is_on(*pieces[:number]) and not self.is_on("Flag"))
        if self.host.texts:
            self.trial.check("the panel shows all pieces", self.differs("all-pieces", "flag", self.host.strip, 150))
        self.open_menu("all-pieces-menu")
        self.host.leave_menu()
        entry = self.trial.path("home/.config/autostart/dinmala.desktop")

        def starts():
            """an entry that starts the program"""
            return os.path.exists(entry) and f"Exec={self.executable}\n" in open(entry, encoding="utf-8").read()

        def none():
            """the entry has gone"""
            return not os.path.exists(entry)

        self.choose("Start at login", starts)
        self.choose("Start at login", none)
        self.choose("Flag", lambda: self.is_on("Flag"))
        self.find(self.drawn("the flag again", "flag-again", TILE))

    def late_panel_and_lost_bus(self):
        trial, host = self.trial, self.host
        self.program.end()
        host.down()
        self.start()
        trial.need("the program waits without a panel", lambda: self.bus.owner() == self.program.id)
        host.environment["GTK_THEME"] = "Adwaita:dark"
        trial.need("a late panel, dark", host.up, 60)
        trial.check("the item comes to it", self.bus.registered)
        self.picture("panel-late-dark")
        second = trial.start([self.executable], {**host.environment, "DINMALA_FACE": "panel"})
        trial.check("a second start ends at once with 0", lambda: second.poll() == 0, 5)
        self.bus.daemon.send_signal(signal.SIGTERM)
        trial.equal("the program ends with the bus, and its status is", lambda: self.program.process.poll(), 1)


def run(trial, host, program, pictures=None):
    story = Story(trial, host, program, pictures)
    story.tell()
