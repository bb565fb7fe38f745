"""soak [PROGRAM [COUNT [panel|bus|clock|sleep ...]]]: what happens to the running program in months, COUNT times each
(100): the panel killed and started, the session bus killed under it, the clock set to the time it is, sleep and waking.
Memory and descriptors must stay."""

import os
import signal

from trials.bus import Bus, PlayedPanel, Program
from trials.clock import set_machine_clock
from trials.triggers import Lines
from trials.trial import children, until

MOST_KIB = 1024


class Measure:
    """Holds the end of its `with` to its beginning."""

    def __init__(self, trial, what, program):
        self.trial, self.what, self.folder = trial, what, f"/proc/{program.id}"

    def now(self):
        with open(f"{self.folder}/status") as status, open(f"{self.folder}/stat") as stat:
            rss = next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))
            times = stat.read().rsplit(")", 1)[1].split()[11:13]
        return rss, len(os.listdir(f"{self.folder}/fd")), sum(map(int, times)) * 1000 // os.sysconf("SC_CLK_TCK")

    def __enter__(self):
        self.before = self.now()

    def __exit__(self, failed, *_):
        if failed:
            return
        (rss, fds, cpu), (rss_end, fds_end, cpu_end) = self.before, self.now()
        self.trial.check(f"{self.what}: descriptors {fds} -> {fds_end}, RSS {rss} -> {rss_end} KiB, "
                         f"CPU {cpu_end - cpu} ms", fds_end <= fds and rss_end - rss <= MOST_KIB)


def panel(trial, executable, count):
    bus = Bus(trial)
    program = Program(trial, executable, bus)

    def one_panel(shows_texts):
        played = PlayedPanel(bus, shows_texts)
        found = until(lambda: played.items, 5) and program.item.properties()["Title"] and program.menu.rows()
        played.close()
        return bool(found)

    # The first panel of each kind and the update check are not yet the steady state.
    trial.need("panel: registered with the first three", [one_panel(n % 2 == 0) for n in range(3)] == 3 * [True])
    until(lambda: children() == {bus.daemon.pid, program.id}, 5)  # the update check has ended
    with Measure(trial, "panel", program):
        trial.equal("panel: registered", sum(one_panel(n % 2 == 0) for n in range(count)), count)
    program.end()


def bus(trial, executable, count):
    ends = clean = 0
    others = children()
    for n in range(count):
        bus = Bus(trial)
        program = Program(trial, executable, bus)
        shown = bool(until(program.menu.rows, 5))
        trial.end(bus.daemon, signal.SIGKILL if n % 2 else signal.SIGTERM)
        until(lambda: not program.alive(), 5)
        ends += shown and program.process.poll() == 1 and "the session bus has gone" in program.said()
        clean += until(lambda: children() <= others, 2)
    trial.equal("bus: ended with 1 and its message", ends, count)
    trial.equal("bus: no process was left", clean, count)


def clock(trial, executable, count):
    lines = Lines(trial, executable)
    with Measure(trial, "clock", lines.program):
        trial.equal("clock: one refresh", sum(lines.made(set_machine_clock) == 1 for _ in range(count)), count)
    lines.program.end()


def sleep(trial, executable, count):
    lines = Lines(trial, executable)
    with Measure(trial, "sleep", lines.program):
        made = [(lines.made(lines.falls_asleep, 0), lines.made(lines.wakes)) for _ in range(count)]
        trial.equal("sleep: no refresh on the way to sleep, one at waking", made.count((0, 1)), count)
    lines.program.end()


def run(trial, executable, count="100", *parts):
    every = {"panel": panel, "bus": bus, "clock": clock, "sleep": sleep}
    for part in parts or every:
        every[part](trial, executable, int(count))
