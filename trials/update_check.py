"""update-check [PROGRAM]: the item is in the panel before anything is asked of the server, no server holds the launch up
or ends the program, the row of a newer version shows or not, and the links lead to the host."""

import contextlib
import os
import re
import shutil
import socket
import threading
import time

from trials.bus import Bus, PlayedPanel, Program
from trials.trial import HERE, until


def body(text, status="200 OK"):
    data = text if isinstance(text, bytes) else text.encode()
    return f"HTTP/1.1 {status}\r\nContent-Length: {len(data)}\r\n\r\n".encode() + data


def redirect(to):
    return f"HTTP/1.1 302 Found\r\nLocation: {to}\r\nContent-Length: 0\r\n\r\n".encode()


def drip(connection, stop):
    connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n")
    while not stop.wait(0.5):
        connection.sendall(b" ")


# What the server does, and whether the row is to show. What the answers mean is the unit tests'.
CASES = {
    "a newer version": (body('{"update":1}'), True),
    "no newer version": (body('{"update":0}'), False),
    "a page": (body("<h1>Not Found</h1>", "404 Not Found"), False),
    "cut short": (body('{"update":1}' + " " * 50)[:-50], False),
    "10 MB of garbage": (body(bytes(range(256)) * 40960), False),
    "60,000 lists, not closed": (body("[" * 60000), False),
    "a redirect to the answer": (lambda path: redirect("/next") if path != "/next" else body('{"update":1}'), True),
    "a redirect to a file": (redirect("file:///etc/hostname"), False),
    "closes at once": (b"", False),
    "no HTTP": (b"SSH-2.0-x\r\n\r\n", False),
    "accepts, never answers": (lambda connection, stop: stop.wait(30), False),
    "a byte every half second": (drip, False),
    "never accepts": ("full", False),
    "no server": (None, False),
}
# How long the launch may be held, in seconds: while connecting, and in all.
QUICK, CONNECTING, WHOLE = 1.5, 4.5, 11.5
HELD = {"accepts, never answers": WHOLE, "a byte every half second": WHOLE, "never accepts": CONNECTING}


class Server:
    """One kind of answer on a free loopback port."""

    def __init__(self, answer):
        self.answer, self.lines, self.first, self.stop = answer, [], None, threading.Event()
        self.socket = socket.create_server(("127.0.0.1", 0), backlog=0 if answer == "full" else 16)
        self.port, self.fillers = self.socket.getsockname()[1], []
        if answer is None:
            self.socket.close()
        elif answer == "full":  # connections that nobody accepts: the next one waits
            for _ in range(3):
                self.fillers.append(filler := socket.socket())
                filler.setblocking(False)
                filler.connect_ex(("127.0.0.1", self.port))
        else:
            threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            try:
                connection, _ = self.socket.accept()
            except OSError:
                return
            self.first = self.first or time.monotonic()
            threading.Thread(target=self.handle, args=(connection,), daemon=True).start()

    def handle(self, connection):
        with connection:
            try:
                request = b""
                while b"\r\n\r\n" not in request:
                    request += connection.recv(4096) or b"\r\n\r\n"
                self.lines.append(request.decode("latin-1").split("\r\n")[0])
                if isinstance(self.answer, bytes):
                    connection.sendall(self.answer)
                elif self.answer.__code__.co_argcount == 1:
                    connection.sendall(self.answer(self.lines[-1].split(" ")[1]))
                else:
                    self.answer(connection, self.stop)
            except OSError:
                pass  # the program had enough

    def close(self):
        self.stop.set()
        with contextlib.suppress(OSError):
            self.socket.shutdown(socket.SHUT_RDWR)  # else its thread waits on, and takes the next server's connection
        for one in [*self.fillers, self.socket]:
            one.close()


def resources(trial):
    """The program's own resources, as version 2.0 build 7."""
    folder = trial.path("resources")
    shutil.copytree(os.path.join(HERE, "app/resources"), folder)
    path = os.path.join(folder, "Info.plist")
    with open(path, encoding="utf-8") as file:
        text = file.read()
    for key, value in ("CFBundleShortVersionString", "2.0"), ("CFBundleVersion", "7"):
        text = re.sub(f"(<key>{key}</key>\\s*<string>)[^<]*", f"\\g<1>{value}", text)
    trial.write("resources/Info.plist", text)
    return folder


def browser(trial):
    """A browser that writes down what it is asked to open."""
    script = trial.write("browser", f"#!/bin/sh\nprintf '%s\\n' \"$@\" >>{trial.path('opened')}\n")
    os.chmod(script, 0o755)
    trial.write("home/.local/share/applications/browser.desktop", "[Desktop Entry]\nType=Application\nName=Browser\n"
                f"Exec={script} %u\nMimeType=x-scheme-handler/http;\n")
    trial.write("home/.config/mimeapps.list", "[Default Applications]\nx-scheme-handler/http=browser.desktop\n")


def start(trial, executable, answer):
    server, bus = Server(answer), Bus(trial)
    panel = PlayedPanel(bus)
    program = Program(trial, executable, bus, DINMALA_RESOURCES=trial.path("resources"),
                      DINMALA_SITE_HOST=f"127.0.0.1:{server.port}")
    return server, panel, program


def one_answer(trial, executable, name, answer, expected):
    server, panel, program = start(trial, executable, answer)
    until(lambda: panel.items and program.menu.rows(), 10)
    program.item.properties()  # as a panel does at once: then it is shown, and the check begins
    held, row, began = 0.0, None, time.monotonic()
    while program.alive():
        asked = time.monotonic()
        row = next((one for _, one in program.menu.rows() if one.get("label", "").startswith("A newer version")), None)
        held = max(held, time.monotonic() - asked)
        # Long enough after the request; where none arrives, as long as a connection may take.
        if server.first and asked > server.first + 0.7 or asked > began + 4:
            break
        until(lambda: False, 0.01)
    before = panel.registered_at and (server.first is None or panel.registered_at < server.first)
    asked = answer is None or answer == "full" or server.first
    shown = bool(row) and row.get("visible", True)
    said, server_lines = program.said(), server.lines
    ended = trial.end(program.process)
    server.close()
    panel.close()
    trial.check(f"{name}: row {'shown' if shown else 'hidden'}, item {'before the request' if before else 'LATE'}, launch "
                f"held {held * 1000:.0f} ms, ended {ended}{', said ' + said if said else ''}",
                row and asked and shown == expected and before and held <= HELD.get(name, QUICK) and ended in (0, -15) and not said)
    return server_lines


def run(trial, executable):
    resources(trial)
    browser(trial)
    for name, (answer, expected) in CASES.items():
        lines = one_answer(trial, executable, name, answer, expected)
        if name == "a newer version":
            trial.equal("what version 2.0 build 7 asks", lines, ["GET /apps/mac/request/vcheck/v/2.0/b/7 HTTP/1.1"])

    server, _, program = start(trial, executable, CASES["a newer version"][0])
    site = f"http://127.0.0.1:{server.port}"
    rows = trial.need("the menu of the links", program.menu.rows)
    program.item.properties()
    pictured = [number for number, one in rows if "icon-data" in one or "icon-name" in one]
    trial.equal("one row has a picture, the logo", len(pictured), 1)
    opened = lambda: open(trial.path("opened")).read().splitlines() if os.path.exists(trial.path("opened")) else []
    program.menu.choose(pictured[0])
    trial.equal("the logo row opens", opened, [site + "/?ref=mac"])
    program.menu.choose(next(n for n, one in rows if one.get("label", "").startswith("A newer version")))
    trial.equal("the row of a newer version opens", lambda: opened()[1:], [site + "/apps/mac/"])
    server.close()
    program.end()
