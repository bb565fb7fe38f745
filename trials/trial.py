"""What every trial is made of: checks, waiting, and processes that end with it."""

import contextlib
import ctypes
import os
import shutil
import signal
import subprocess
import tempfile
import time

from gi.repository import GLib

HERE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


class Stop(Exception):
    """Nothing further can be tried."""


def until(condition, seconds=10):
    """What `condition` gives as soon as it is true, or at the end. Whatever this program plays goes on meanwhile."""
    end = time.monotonic() + seconds
    while not (value := condition()) and time.monotonic() < end:
        if not GLib.MainContext.default().iteration(False):
            time.sleep(0.005)
    return value


@contextlib.contextmanager
def acting_as(user):
    """Does what stands within with another user's rights; None is this user."""
    if user:
        os.setegid(user.pw_gid)
        os.seteuid(user.pw_uid)
    try:
        yield
    finally:
        os.seteuid(os.getuid())
        os.setegid(os.getgid())


class Trial:
    """Counts what holds and what does not; a home of its own; `with` ends all that was started, by its number."""

    def __init__(self):
        self.checks = self.failures = 0
        self.folder = tempfile.mkdtemp(prefix="dinmala-trial-")
        os.chmod(self.folder, 0o755)
        self.log = open(self.path("log"), "ab", buffering=0)
        # Whatever a child leaves running becomes a child of this process (PR_SET_CHILD_SUBREAPER).
        ctypes.CDLL(None).prctl(36, 1, 0, 0, 0)

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def write(self, name, text):
        path = self.path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def environment(self, home=None, **more):
        home = home or self.path("home")
        os.makedirs(os.path.join(home, "run"), 0o700, exist_ok=True)
        return {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "TZ": "UTC", "HOME": home, "no_proxy": "*",
                "XDG_CONFIG_HOME": f"{home}/.config", "XDG_DATA_HOME": f"{home}/.local/share",
                "XDG_CACHE_HOME": f"{home}/.cache", "XDG_RUNTIME_DIR": f"{home}/run",
                "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={home}/run/system", **more}

    def check(self, what, holds, seconds=10):
        """Writes whether it holds: a value, or a question that is asked until it does."""
        value = until(holds, seconds) if callable(holds) else holds
        self.checks += 1
        self.failures += not value
        print("ok     " if value else "FAILED ", what() if callable(what) else what, flush=True)
        return value

    def equal(self, what, found, wanted):
        """`found` is a value, or a question that is asked until its answer is the wanted one."""
        ask = found if callable(found) else lambda: found
        if not self.check(what, lambda: ask() == wanted, 5 if callable(found) else 0):
            print(f"         {ask()} and not {wanted}", flush=True)

    def need(self, what, holds, seconds=10):
        value = self.check(what, holds, seconds)
        if not value:
            raise Stop
        return value

    def start(self, command, environment=None, user=None, **more):
        if user:
            more.update(user=user.pw_uid, group=user.pw_gid, extra_groups=[])
        more = {"stdin": subprocess.DEVNULL, "stdout": self.log, "stderr": self.log, **more}
        return subprocess.Popen(command, env=environment or self.environment(), **more)

    def end(self, process, sign=signal.SIGTERM, seconds=10):
        """How a child ended: its status, negative for a signal; "does not end" if it had to be killed."""
        process.send_signal(sign)
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            return "does not end"

    def end_all(self):
        def none_left():
            with contextlib.suppress(ChildProcessError):
                while os.waitpid(-1, os.WNOHANG)[0]:
                    pass
            return not children()

        for sign in [signal.SIGTERM] + 40 * [signal.SIGKILL]:
            for number in children():
                with contextlib.suppress(ProcessLookupError):
                    os.kill(number, sign)
            if until(none_left, 2 if sign == signal.SIGTERM else 0.05):
                break

    def close(self):
        self.end_all()
        self.log.close()
        shutil.rmtree(self.folder, ignore_errors=True)


def children():
    """The processes that stem from this one and have not ended."""
    parents = {}
    for number in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError), open(f"/proc/{number}/stat", "rb") as stat:
            state, parent, *_ = stat.read().rsplit(b")", 1)[1].split()
            if state != b"Z":
                parents[int(number)] = int(parent)
    found = {os.getpid()}
    while more := {number for number, parent in parents.items() if parent in found} - found:
        found |= more
    return found - {os.getpid()}


def running(executable):
    """Those of them that run this file."""
    def file(number):
        with contextlib.suppress(OSError):
            return os.readlink(f"/proc/{number}/exe")

    return [number for number in children() if file(number) == executable]
