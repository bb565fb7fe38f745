"""attacks [PROGRAM]: what was done to the first version until something gave: a start at the end of a minute, buses that are
slow or refuse, a panel item without a text, choices made elsewhere, files that lie in the way, a helper that misbehaves."""

import contextlib
import datetime
import os
import shutil
import signal
import socket
import subprocess
import threading
import time

from trials.bus import NAME, Bus, PlayedPanel, Program
from trials.clock import Clock
from trials.trial import until
from trials.update_check import Server

DIGITS = str.maketrans("०१२३४५६७८९", "0123456789")


def title(program):
    try:
        return program.item.properties()["Title"].translate(DIGITS)
    except Exception:  # no item yet
        return ""


def seconds_of_processor(number):
    with open(f"/proc/{number}/stat", encoding="utf-8") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def end_of_a_minute(trial, executable):
    """The minute turns after the first refresh, and before a panel is there, as at login: it must not stay behind."""
    bus = Bus(trial)
    clock = Clock(trial).environment
    del clock["FAKETIME_TIMESTAMP_FILE"]
    begin = datetime.datetime(2026, 11, 24, 5, 59, 59).timestamp()
    program = Program(trial, executable, bus, FAKETIME=f"{begin - time.time():+.3f}", **clock)
    time.sleep(3)
    PlayedPanel(bus, shows_texts=True)
    trial.check(lambda: f"started at the end of a minute it shows the next one four seconds later: {title(program)}",
                lambda: title(program).endswith("11:45"), 3)
    program.end()


class SlowBus:
    """Stands between a program and its bus, and holds what the program says from a word on."""

    def __init__(self, trial, bus, word, seconds):
        place = trial.path("slow-bus")
        self.address = f"unix:path={place}"
        self.real = bus.address.split("path=")[1].split(",")[0]
        self.word, self.seconds = word, seconds
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.bind(place)
        self.socket.listen()
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            near, far = self.socket.accept()[0], socket.socket(socket.AF_UNIX)
            far.connect(self.real)
            threading.Thread(target=self.pass_on, args=(near, far, True), daemon=True).start()
            threading.Thread(target=self.pass_on, args=(far, near, False), daemon=True).start()

    def pass_on(self, source, target, holds):
        with contextlib.suppress(OSError):
            while data := source.recv(65536):
                if holds and self.word in data:
                    time.sleep(self.seconds)
                target.sendall(data)


def slow_and_refusing_buses(trial, executable):
    bus = Bus(trial)
    panel = PlayedPanel(bus)
    slow = SlowBus(trial, bus, b"RequestName", 3)
    started = trial.start([executable], {**trial.environment(), "DINMALA_FACE": "panel",
                                         "DBUS_SESSION_BUS_ADDRESS": slow.address})
    trial.check("a bus that gives the name after three seconds: it runs, in the panel",
                lambda: bus.owner() and panel.items and started.poll() is None, 15)
    trial.end(started)

    bus = Bus(trial, rules=f'<deny own="{NAME}"/>')
    panel = PlayedPanel(bus)
    program = Program(trial, executable, bus)
    trial.check("a bus that refuses the name: it runs, in the panel", lambda: program.alive() and panel.items)
    trial.check(lambda: f"and says so: {program.said().strip()}", lambda: "refuses the name" in program.said())
    program.end()


def menus_that_cannot_be_reached(trial, executable):
    for what, rules, command in (("a bus that does not pass the menu on", '<deny send_path="/MenuBar"/>', [executable]),
                                 ("38 MB of addresses", "", ["prlimit", f"--as={38 << 20}", executable])):
        bus = Bus(trial, rules=rules)
        panel = PlayedPanel(bus)
        program = Program(trial, command, bus)
        until(lambda: not program.alive(), 8)
        ended = program.process.poll()
        if ended is not None:
            trial.check(f"{what}: it ends, with {ended}, and says why: {program.said().strip()}", ended and program.said())
            continue
        before = seconds_of_processor(program.id)
        until(lambda: False, 4)
        used = (seconds_of_processor(program.id) - before) / 4
        trial.check(f"{what}: {used * 100:.0f} % of a core, an item: {len(panel.items)}", used < 0.05 and panel.items)
        trial.check(f"and says so: {program.said().strip()}", not rules or "menu cannot be reached" in program.said())
        program.end()


def an_item_without_text(trial, executable):
    trial.write("home/.config/dinmala/preferences.ini", "[display]\ntithi=true\nedition=first\n")
    bus = Bus(trial)
    PlayedPanel(bus, shows_texts=True)
    program = Program(trial, executable, bus, **Clock(trial, datetime.datetime(2024, 5, 1)).environment)
    trial.need("the item is there", lambda: title(program))
    item = program.item.properties()
    ink = sum(bytes(item["IconPixmap"][0][2])[::4])
    trial.check(f"tithi alone on a day without: label {item['XAyatanaLabel']!r}, title {item['Title']!r}, a picture",
                not item["XAyatanaLabel"] and item["Title"].strip() and ink > 10000)
    program.end()


def panels_that_read_all(trial, executable):
    bus = Bus(trial)
    PlayedPanel(bus)
    program = Program(trial, executable, bus)
    trial.need("the item is there", lambda: title(program))
    before = seconds_of_processor(program.id)
    for _ in range(200):
        program.item.properties()
    used = (seconds_of_processor(program.id) - before) / 200 * 1000
    trial.check(f"all properties of the item, pictures included, cost {used:.2f} ms", used < 1.5)
    program.end()


def choices_made_elsewhere(trial, executable):
    file = trial.write("home/.config/dinmala/preferences.ini", "[display]\nday=true\nedition=current\n")
    bus = Bus(trial)
    PlayedPanel(bus, shows_texts=True)
    program = Program(trial, executable, bus)
    trial.need("the item is there", lambda: title(program))
    trial.write("home/.config/dinmala/preferences.ini", "# by hand\n[display]\nyear=true\nedition=current\n")
    trial.check(lambda: f"a choice written by hand is followed: {title(program)}",
                lambda: title(program).strip() == str(datetime.date.today().year + 57), 3)
    program.menu.choose("Month")
    with open(file, encoding="utf-8") as kept:
        text = kept.read()
    trial.check("and a choice in the menu keeps it", "year=true" in text and "month=true" in text and "# by hand" in text)
    program.end()


def files_in_the_way(trial, executable):
    folder = trial.path("home/.config/dinmala")
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    left = trial.write("home/.config/dinmala/.dinmala-a1B2c3", "half")
    os.utime(left, (time.time() - 3600,) * 2)
    os.symlink("elsewhere/mine.ini", f"{folder}/preferences.ini")
    bus = Bus(trial)
    program = Program(trial, executable, bus)
    trial.need("the menu is there", program.menu.rows)
    trial.check("a link to what is not there stays a link, and its file is made",
                lambda: os.path.islink(f"{folder}/preferences.ini") and os.path.exists(f"{folder}/elsewhere/mine.ini"))
    program.end()
    os.unlink(f"{folder}/preferences.ini")
    damaged = 64 * "\0"  # as a power cut leaves it on some file systems
    trial.write("home/.config/dinmala/preferences.ini", damaged)
    left = trial.write("home/.config/dinmala/.dinmala-d4E5f6", "half")
    os.utime(left, (time.time() - 3600,) * 2)
    program = Program(trial, executable, bus)
    trial.need("the menu is there again", program.menu.rows)
    trial.check("what a kill left behind is removed", lambda: not os.path.exists(left))
    aside = f"{folder}/preferences.ini.corrupt"
    trial.check("a file of zeros is kept aside",
                lambda: os.path.exists(aside) and open(aside, encoding="utf-8").read() == damaged)
    trial.check(lambda: f"and that is told: {program.said().strip()}", lambda: "begun anew" in program.said())
    program.end()


def with_helper(trial, executable, script):
    """The program beside another helper."""
    folder = trial.path("program")
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    shutil.copy(executable, folder)
    os.symlink(os.path.join(os.path.dirname(os.path.realpath(executable)), "resources"), f"{folder}/resources")
    os.chmod(trial.write("program/dinmala-fetch", f"#!/bin/sh\ntouch {folder}/begun\n{script}\n"), 0o755)
    return f"{folder}/dinmala"


def helpers_that_misbehave(trial, executable):
    for what, script in (("stops", "kill -STOP $$"), ("writes without end", "exec cat /dev/zero"),
                         ("closes its output and stays", "exec >&-; sleep 60")):
        bus = Bus(trial)
        PlayedPanel(bus)
        program = Program(trial, with_helper(trial, executable, script), bus, DINMALA_SITE_HOST="127.0.0.1:9")
        until(program.menu.rows)
        program.item.properties()  # as a panel does: then it is shown, and the check begins
        trial.need(f"a helper that {what} begins", lambda: os.path.exists(trial.path("program/begun")), 20)
        began = time.monotonic()
        rows = until(program.menu.rows, 20)
        held = time.monotonic() - began
        trial.check(f"a helper that {what}: the menu answers after {held:.1f} s", rows and held < 12)
        program.end()


def helper_among_strangers(trial, executable):
    """The helper itself, with a server that never ends its trailers and one whose name is never told."""
    fetch = os.path.join(os.path.dirname(os.path.realpath(executable)), "dinmala-fetch")

    def trailers(connection, stop):
        connection.sendall(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n0\r\n")
        while not stop.is_set():
            connection.sendall(b"".join(b"X-%d: " % i + b"x" * 1000 + b"\r\n" for i in range(100)))

    def run(command):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=trial.environment())
        began = time.monotonic()
        if not until(lambda: os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOHANG | os.WNOWAIT), 30):
            os.kill(process.pid, signal.SIGKILL)  # Popen's own kill() would take its status away
        _, status, used = os.wait4(process.pid, 0)
        process.returncode = status
        return status, time.monotonic() - began, used.ru_maxrss / 1024

    server = Server(trailers)
    status, seconds, megabytes = run([fetch, f"http://127.0.0.1:{server.port}/"])
    server.close()
    trial.check(f"trailers without end: the helper ends after {seconds:.1f} s, at most {megabytes:.0f} MB",
                status and seconds < 11 and megabytes < 100)

    silent = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    try:
        silent.bind(("127.0.0.53", 53))
        subprocess.run(["unshare", "--mount", "true"], check=True)
    except (OSError, subprocess.CalledProcessError) as error:
        print(f"SKIPPED: a name server that is silent: {error}")
        return
    resolver = trial.write("resolv.conf", "nameserver 127.0.0.53\n")
    status, seconds, _ = run(["unshare", "--mount", "sh", "-c", f"mount --bind {resolver} /etc/resolv.conf && "
                              f"exec {fetch} http://slow.example/"])
    trial.check(f"a name server that is silent: the helper ends after {seconds:.1f} s", status and seconds < 11)
    silent.close()


def run(trial, executable):
    for attack in (end_of_a_minute, slow_and_refusing_buses, menus_that_cannot_be_reached, an_item_without_text,
                   panels_that_read_all, choices_made_elsewhere, files_in_the_way, helpers_that_misbehave, helper_among_strangers):
        shutil.rmtree(trial.path("home"), ignore_errors=True)
        try:
            attack(trial, executable)
        except Exception as error:  # one that cannot go on has failed; the next may be tried
            trial.check(f"{attack.__name__} goes to its end: {error!r}", False)
