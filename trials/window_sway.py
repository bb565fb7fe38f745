"""window-sway [PROGRAM [PICTURES]]: the month window, which is beside the program, in sway, which has layers for panels:
it stands below waybar in the corner, closes by Esc, by a second start and by a click elsewhere; its dialogs stand above
it, and pinned it stays."""

import os

from trials.bus import Bus
from trials.hosts import Waybar
from trials.screen import Screen, difference
from trials.trial import until

BAR = 30


def run(trial, program, pictures=None):
    trial.executable, screen = program, Screen(trial)
    bus = Bus(trial, trial.environment(DISPLAY=screen.display))
    host = Waybar(trial, bus, screen)
    trial.need("waybar is up in sway", lambda: host.start_panel() and until(lambda: screen.shot().getpixel((5, 5)) != screen.shot().getpixel((5, 300)), 30))
    window = os.path.join(os.path.dirname(program), "dinmala-window")
    environment = {**host.environment, "WAYLAND_DISPLAY": "wayland-1", "GDK_BACKEND": "wayland"}
    screen.point(200, 500)
    bare = screen.still(15)

    def place():
        return difference(bare, screen.shot(), (0, BAR, 1280, 720 - BAR))

    def start():
        process = trial.start([window], environment)
        trial.need("a start shows it", lambda: place().width > 500, 20)
        screen.still()
        until(lambda: False, 1)
        return process

    def ends(process):
        return lambda: process.poll() is not None

    def keep(name):
        picture = screen.still()
        if pictures:
            os.makedirs(pictures, exist_ok=True)
            picture.save(os.path.join(pictures, f"sway-{name}.png"))
        return picture

    process = start()
    box = place()
    trial.equal(f"below the bar, in the corner: {tuple(box)}", (box.y, box.x + box.width), (BAR, 1280))
    opened = keep("window")
    screen.press("Next")
    trial.check("it has the keyboard", difference(keep("flipped"), bare, (0, BAR, 1280, 690)).width > 500)
    screen.press("Escape")
    trial.check("Esc closes it", ends(process))
    process = start()
    screen.click(1)
    trial.check("a click elsewhere closes it", ends(process))
    process = start()
    second = trial.start([window], environment)
    trial.check("a second start closes it", lambda: process.poll() is not None and second.poll() == 0)
    process = start()
    screen.press("F1")
    trial.check("its keys are shown", lambda: place().x < 400, 10)
    trial.check("  above it", difference(keep("keys"), opened, (700, 200, 400, 360)).width > 350)
    screen.press("Escape")
    trial.check("  and closed alone", lambda: place().x > 400 and process.poll() is None)
    screen.press("p")
    screen.click(1)
    until(lambda: False, 1)
    trial.check("pinned it stays", process.poll() is None and place().width > 500)
    trial.end(process)
    process = start()
    screen.press("F1")
    until(lambda: place().x < 400, 10)
    screen.press("Escape")
    until(lambda: place().x > 400)
    until(lambda: False, 1)
    screen.press("Escape")
    trial.check("after its keys it has the keyboard again: a second Esc closes it", ends(process))
