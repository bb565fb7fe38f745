"""window-figures [PROGRAM [STARTS]]: what the month window costs, beside gsimplecal in the same run: from its start to its
content, memory (also as the screen's first GTK program), months, years, and the table from end to end by its keys, what
wakes it. Needs a machine that does nothing else."""

import os
import statistics
import subprocess
import time

from trials.bus import Bus
from trials.screen import Screen
from trials.trial import until

COLOURS = 40  # as soon as texts are drawn; a bare window has a few


def status(number, key):
    with open(f"/proc/{number}/status", encoding="utf-8") as file:
        return next(int(line.split()[1]) for line in file if line.startswith(key))


def memory(number):
    """Megabytes: all, and its own."""
    return status(number, "VmRSS") / 1024, status(number, "RssAnon") / 1024


def cpu(number):
    """Milliseconds of all its threads."""
    total = 0
    for thread in os.listdir(f"/proc/{number}/task"):
        with open(f"/proc/{number}/task/{thread}/schedstat", encoding="utf-8") as file:
            total += int(file.read().split()[0])
    return total / 1e6


def switches(number):
    return sum(status(f"{number}/task/{thread}", "voluntary") for thread in os.listdir(f"/proc/{number}/task"))


class Bench:
    def __init__(self, trial):
        self.trial, self.screen = trial, Screen(trial, "640x720")
        bus = Bus(trial, trial.environment(DISPLAY=self.screen.display))
        self.environment = trial.environment(DISPLAY=self.screen.display, DBUS_SESSION_BUS_ADDRESS=bus.address)

        trial.start(["openbox"], self.environment)  # no GTK program, which the first one counts on
        until(lambda: False, 1)

    def start(self, *command):
        """The process, and milliseconds until its content is on the screen."""
        until(lambda: len(self.screen.shot().getcolors(1 << 20)) < 3, 5)
        began = time.monotonic()
        process = self.trial.start(command, self.environment)
        end = began + 10
        while len(self.screen.shot().getcolors(1 << 20)) < COLOURS and time.monotonic() < end:
            pass
        return process, (time.monotonic() - began) * 1000

    def end(self, process):
        self.trial.end(process)

    def keys(self, times, *keys):
        self.screen.run("xdotool", "key", "--delay", "8", *(times * keys))

    def rest(self, process):
        """Waits until it has done all that it was asked for."""
        used = [-1]

        def rests():
            before, used[0] = used[0], cpu(process.pid)
            until(lambda: False, 0.5)
            return used[0] == before

        until(rests, 120)

    def focus(self):
        number = subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "dinmala-window"],
                                env=self.environment, capture_output=True, text=True).stdout.split()[-1]
        self.screen.run("xdotool", "windowfocus", "--sync", number)


def run(trial, program, starts="12"):
    window = os.path.join(os.path.dirname(program), "dinmala-window")
    bench = Bench(trial)
    process, _ = bench.start(window)
    until(lambda: False, 1)
    first = memory(process.pid)
    bench.end(process)
    times = {"gsimplecal": [], window: []}
    sizes = {command: [] for command in times}
    for _ in range(int(starts)):
        for command in times:
            process, took = bench.start(command)
            until(lambda: False, 0.5)
            times[command].append(took)
            sizes[command].append(memory(process.pid))
            bench.end(process)
    middle = {command: statistics.median(all_of) for command, all_of in times.items()}
    ours, theirs = middle[window], middle["gsimplecal"]
    trial.check(f"to content: {ours:.0f} ms, gsimplecal {theirs:.0f}, {ours / theirs:.2f} times it (at most 150, 1.7)",
                ours <= 150 and ours <= 1.7 * theirs)
    rss, anon = (statistics.median(one) for one in zip(*sizes[window]))
    rss2, anon2 = (statistics.median(one) for one in zip(*sizes["gsimplecal"]))
    trial.check(f"RSS {rss:.1f} MB, its own {anon:.1f}; gsimplecal {rss2:.1f}, {anon2:.1f} (at most 36, 9)", rss <= 36 and anon <= 9)
    trial.check(f"as the screen's first GTK program: {first[0]:.1f}, {first[1]:.1f} (at most 36, 9)", first[0] <= 36 and first[1] <= 9)

    process, _ = bench.start(window)
    until(lambda: False, 0.5)
    bench.focus()
    bench.keys(24, "Next")  # texts that were never drawn are dearer
    before = cpu(process.pid)
    bench.keys(120, "Prior")
    until(lambda: False, 0.5)
    month = (cpu(process.pid) - before) / 120
    trial.check(f"a month's flip: {month:.2f} ms of the processor (at most 4)", month <= 4)
    before = cpu(process.pid)
    bench.keys(60, "shift+Next")
    until(lambda: False, 0.5)
    trial.check(f"a year's: {(cpu(process.pid) - before) / 60:.2f} ms (at most 4, 40 for its twelve months)",
                cpu(process.pid) - before <= 60 * 4 and month * 12 <= 40)
    until(lambda: False, 1)
    before, used = switches(process.pid), cpu(process.pid)
    until(lambda: False, 10)
    trial.check(f"ten seconds of doing nothing: {switches(process.pid) - before} times awake, {cpu(process.pid) - used:.1f} ms",
                switches(process.pid) - before <= 2)
    end_to_end = 1212  # months of the table
    bench.keys(end_to_end, "Prior")
    bench.keys(end_to_end, "Next")
    bench.rest(process)
    grown = memory(process.pid)[1]
    for _ in range(4):
        bench.keys(end_to_end, "Prior")
        bench.keys(end_to_end, "Next")
    bench.rest(process)
    trial.check(f"{8 * (end_to_end - 1):,} months more: from {grown:.1f} MB of its own to {memory(process.pid)[1]:.1f} (at most 1 more)",
                memory(process.pid)[1] <= grown + 1)
    bench.end(process)
