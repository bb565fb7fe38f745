"""The program's own clock, which stands still until it is moved, and the machine's."""

import datetime
import glob
import os
import time


class Clock:
    """By faketime's library: give `environment` to the program."""

    def __init__(self, trial, now=None):
        libraries = glob.glob("/usr/lib/*/faketime/libfaketime.so.1")
        self.file = trial.path("clock")
        self.environment = {"LD_PRELOAD": libraries[0], "FAKETIME_NO_CACHE": "1", "FAKETIME_DONT_FAKE_MONOTONIC": "1",
                            "FAKETIME_TIMESTAMP_FILE": self.file}
        self.now = now or datetime.datetime.utcnow().replace(second=10)
        self.move()

    def move(self, **by):
        self.now += datetime.timedelta(**by)
        with open(self.file + "-new", "w") as file:
            file.write(self.now.strftime("%Y-%m-%d %H:%M:%S\n"))
        os.chmod(self.file + "-new", 0o644)
        os.rename(self.file + "-new", self.file)


def may_set_machine_clock():
    try:
        set_machine_clock()
    except PermissionError:
        return False
    return True


def set_machine_clock():
    """To the time that it is: whoever listens for a set of the clock hears it, and nothing goes wrong."""
    time.clock_settime_ns(time.CLOCK_REALTIME, time.clock_gettime_ns(time.CLOCK_REALTIME))
