"""A screen that nobody sees: its pictures, mouse and keyboard."""

import collections
import subprocess

from PIL import ImageChops, ImageGrab

from trials.trial import until

Box = collections.namedtuple("Box", "x y width height")


def difference(before, after, place=None):
    """Where two pictures differ, within a place: a Box of no size where they do not."""
    left, top, width, height = place or (0, 0, *before.size)
    pictures = [picture.crop((left, top, left + width, top + height)) for picture in (before, after)]
    box = ImageChops.difference(*pictures).point(lambda value: 255 * (value > 15)).getbbox()
    return Box(left + box[0], top + box[1], box[2] - box[0], box[3] - box[1]) if box else Box(left, top, 0, 0)


class Screen:
    """Of the first number that is free, by the whole machine: a changed root has the same numbers."""

    def __init__(self, trial, size="1280x720"):
        server = trial.start(["Xvfb", "-displayfd", "1", "-screen", "0", f"{size}x24", "-noreset"], stdout=subprocess.PIPE, text=True)
        number = server.stdout.readline().strip()
        trial.need("there is a screen", number.isdigit())
        self.display = f":{number}"
        self.environment = trial.environment(DISPLAY=self.display)
        self.run("xsetroot", "-solid", "#5f8fae")

    def run(self, *command):
        subprocess.run(command, env=self.environment, check=True, stdout=subprocess.DEVNULL)

    def shot(self):
        return ImageGrab.grab(xdisplay=self.display).convert("RGB")

    def still(self, seconds=5):
        """A picture of what has come to rest."""
        last = [self.shot()]

        def rests():
            before = last[0]
            until(lambda: False, 0.25)
            last[0] = self.shot()
            return not difference(before, last[0]).width

        until(rests, seconds)
        return last[0]

    def point(self, x, y):
        self.run("xdotool", "mousemove", str(x), str(y))

    def click(self, button):
        self.run("xdotool", "click", str(button))

    def press(self, *keys):
        self.run("xdotool", "key", "--delay", "150", *keys)
        until(lambda: False, 0.3)  # a menu's next row shows nothing that could be waited for
