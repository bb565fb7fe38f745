"""edition [PROGRAM]: the choice between editions in the menu, live and after a restart; lines that follow choices; years
from files in the running program, and twelve bad files. Needs dinmala-cal of the same build."""

import os
import subprocess
import time

from trials.bus import Bus, Menu, PlayedPanel, Program

CURRENT, FIRST = Menu.EDITIONS


def run(trial, executable):
    cal = os.path.join(os.path.dirname(executable), "../cal/dinmala-cal")
    trial.need("dinmala-cal is beside the program", os.path.exists(cal))

    def ask(*words):
        return subprocess.run([cal, *words], capture_output=True, text=True, env=trial.environment(), check=True).stdout

    folder = trial.path("home/.local/share/dinmala/almanac")
    os.makedirs(folder)
    trial.write("home/.config/dinmala/preferences.ini", "[display]\nmonth=true\nday=true\n")
    bus = Bus(trial)
    PlayedPanel(bus, shows_texts=True)
    program = Program(trial, executable, bus)
    trial.need("the menu is there", program.menu.rows)

    def row(number):
        return program.menu.rows()[number + 1][1].get("label", "")  # below the row of the month window

    def refreshed(number):
        for _ in range(2):  # as any choice in the menu refreshes
            program.menu.choose("Year")
        return row(number)

    today = ask("--digits", "western", "convert", time.strftime("%Y-%m-%d", time.gmtime(time.time() + 20700))).strip()
    first = ask("--edition", "first", "--digits", "western", "convert",
                time.strftime("%Y-%m-%d", time.gmtime(time.time() + 20700))).strip()
    western = str.maketrans("०१२३४५६७८९", "0123456789")
    shown = lambda: (row(0).translate(western).split()[0], int(row(0).translate(western).split()[2]))
    wanted = lambda date: (date.split("-")[0], int(date.split("-")[2]))
    trial.equal("an old preference file gets the current edition", (shown(), program.menu.edition()), (wanted(today), CURRENT))
    trial.check("and one message says so", lambda: program.said().count("as Nepal publishes it today") == 1)
    trial.check("its description has more than a comma", lambda: len(row(1)) > 5 and not row(1).endswith(", "))
    program.menu.choose(FIRST)
    trial.equal("the first edition is shown at once", (shown(), program.menu.edition()), (wanted(first), FIRST))
    trial.check("the two differ today", today != first)
    program.end()
    program = Program(trial, executable, bus)
    trial.need("the menu is there again", program.menu.rows)
    trial.equal("the choice is kept", program.menu.edition(), FIRST)
    program.menu.choose(CURRENT)
    trial.equal("and undone", (shown(), program.menu.edition()), (wanted(today), CURRENT))
    lines = Program(trial, executable, bus, DINMALA_FACE="lines", DINMALA_LINES="json")
    trial.check("lines run beside it", lines.out)
    for face in "first", "again":
        before = lines.out().count("\n")
        program.menu.choose("Weekday")
        trial.check(f"a choice in the panel reaches them, {face}", lambda: lines.out().count("\n") > before, 2)
    lines.end()
    wrong = Program(trial, executable, bus, DINMALA_FACE="lines", DINMALA_LINES="xml")
    trial.equal("lines that are not there end with", wrong.process.poll, 2)
    trial.check(f"  and say so: {wrong.said().strip()}", "xml" in wrong.said())
    program.end()
    program = Program(trial, executable, bus, DINMALA_EDITION="first")
    trial.need("the menu is there once more", program.menu.rows)
    trial.equal("the environment goes before the choice", program.menu.edition(), FIRST)
    program.end()

    program = Program(trial, executable, bus)
    trial.need("the menu is there for the years", program.menu.rows)
    trial.check("nobody is told twice", "as Nepal publishes it today" not in program.said())
    year, before = today.split("-")[0], row(1)
    good = ask("almanac", year)
    line = next(line for line in good.splitlines() if line.startswith(today))
    changed = good.replace(line, " ".join(line.split()[:3]) + " 5")
    path = os.path.join(folder, f"{year}.txt")
    with open(path, "w", encoding="utf-8") as file:
        file.write(changed)
    trial.check("a year's file is followed by the running program", lambda: refreshed(1).endswith(", नयाँ वर्ष"))
    os.remove(path)
    trial.equal("and given up when it goes", refreshed(1), before)

    days = good.splitlines(keepends=True)
    middle = len(days) // 2
    bad = {
        "a wrong sum": "".join(days[:-2]),
        "33 days": good.replace(f"{year}-02-01", f"{year}-01-32").replace(f"{year}-02-02", f"{year}-01-33"),
        "bad encoding": good.encode() + b"# \xff\xfe\n",
        "a missing day": "".join(days[:middle] + days[middle + 1:]),
        "an unknown id": changed.replace(" 5\n", " 998\n"),
        "carriage returns": good.replace("\n", "\r\n"),
        "a byte-order mark": "\ufeff" + good,
        "half written": good[:len(good) // 2],
        "huge": good + "#" * (2 << 20) + "\n",
        "a directory": os.mkdir,
        "a FIFO": os.mkfifo,
        "no permission": lambda path: os.symlink("/proc/1/mem", path)  # what not even root may read,
    }
    for what, content in bad.items():
        said = program.said()
        if callable(content):
            content(path)
        else:
            with open(path, "wb") as file:
                file.write(content if isinstance(content, bytes) else content.encode())
        trial.equal(f"{what}: the built-in year stays", refreshed(1), before)
        trial.check(f"{what}: {program.said()[len(said):].strip()[-90:]}", lambda: path in program.said()[len(said):])
        (os.rmdir if os.path.isdir(path) and not os.path.islink(path) else os.remove)(path)
        refreshed(1)
    program.end()
