"""triggers [PROGRAM]: what makes the running program refresh, seen by the lines that it writes. Sets the machine's
clock to the time that it is, for which it needs the right."""

import datetime
import time

from trials.bus import Bus, PlayedLogind, Program
from trials.clock import Clock, may_set_machine_clock, set_machine_clock
from trials.trial import until


class Lines:
    """The program as lines, with a logind that is played, and with a clock that stands still if one is given."""

    def __init__(self, trial, executable, clock=None):
        self.bus, self.clock = Bus(trial), clock
        self.logind = PlayedLogind(self.bus)
        self.environment = {"DINMALA_FACE": "lines", "DBUS_SYSTEM_BUS_ADDRESS": self.bus.address,
                            **(clock.environment if clock else {})}
        self.program = Program(trial, executable, self.bus, **self.environment)
        trial.need("a line at the start", lambda: self.count() == 1)
        if not clock:
            trial.need("this may set the machine's clock", may_set_machine_clock())
            trial.need("it hears a set of the clock", lambda: self.made(set_machine_clock))
        trial.need("it hears the machine wake", lambda: self.made(self.wakes))

    def wakes(self):
        self.logind.sleeping(False)

    def falls_asleep(self):
        self.logind.sleeping(True)

    def count(self):
        return self.program.out().count("\n")

    def last(self):
        return self.program.out().split("\n")[-2]

    def made(self, cause, expected=1, seconds=1.5):
        """How many lines a cause has made; one that is expected is waited for, and one too many for a while."""
        # The change of a minute makes a line too.
        until(lambda: self.clock or 2 <= datetime.datetime.now().second < 57)
        before = self.count()
        cause()
        until(lambda: self.count() > before, seconds if expected else 0.3)
        until(lambda: self.count() > before + expected, 0.06)
        return self.count() - before


def run(trial, executable):
    def expect(what, expected, cause):
        # On a busy machine GLib lets a second's tick fall out.
        trial.equal(f"{what}: lines", lines.made(cause, expected, 10), expected)

    lines = Lines(trial, executable)
    expect("clock set", 1, set_machine_clock)
    expect("going to sleep", 0, lines.falls_asleep)
    expect("waking", 1, lines.wakes)
    lines.program.end()

    # faketime's library loses the timer that hears a set of the clock, so that was first.
    clock = Clock(trial)
    lines = Lines(trial, executable, clock)
    for minutes in 1, -1:
        before = lines.last()
        expect(f"{minutes} minute", 1, lambda: clock.move(minutes=minutes))
        trial.check(f"{before} became {lines.last()}", before != lines.last())
    before = lines.last()
    lines.falls_asleep()
    clock.move(hours=3)
    begin = time.monotonic()
    expect("three hours pass, asleep; the minute is the same", 0, lambda: until(lambda: time.monotonic() > begin + 1.2))
    expect("waking from them", 1, lines.wakes)
    after = lines.last()
    trial.check(f"{before} became {after}", before != after)
    lines.program.end()
    fresh = Program(trial, executable, lines.bus, **lines.environment)
    trial.check("a fresh program writes a line", lambda: "\n" in fresh.out())
    trial.equal("which is that of the waking", fresh.out(), after + "\n")
    fresh.end()
