import importlib
import os
import subprocess
import sys
import time
import traceback

from trials.trial import HERE, Stop, Trial

# Each subject's module, with what it is given first, and the lists of packages that it needs.
HOSTS = ["mate", "xfce", "mate-indicator", "xfce-indicator", "lxqt", "plasma", "gnome", "waybar"]
SUBJECTS = {
    "menu": ("menu", [], ["trials"]),
    "edition": ("edition", [], ["trials"]),
    "notifications": ("notifications", [], ["trials"]),
    "search": ("search", [], ["trials"]),
    "calendars": ("calendars", [], ["trials", "calendars"]),
    "triggers": ("triggers", [], ["trials"]),
    "update-check": ("update_check", [], ["trials"]),
    "two-users": ("two_users", [], ["trials"]),
    "autostart": ("autostart", [], ["trials", "screen", "session"]),
    "attacks": ("attacks", [], ["trials"]),
    "soak": ("soak", [], ["trials"]),
    **{f"window-{host}": ("window", [host], ["trials", "screen", host, "window"]) for host in ("mate", "xfce", "lxqt")},
    "window-sway": ("window_sway", [], ["trials", "screen", "waybar"]),
    "window-figures": ("window_figures", [], ["trials", "screen", "window"]),
    "gnome-stock": ("gnome_stock", [], ["trials", "screen", "gnome", "gnome_stock"]),
    "can-fail": ("can_fail", [], ["trials", "screen", "session", "mate"]),
    **{f"panels-{host}": ("panels", [host], ["trials", "screen", host]) for host in HOSTS},
}


def usage():
    print(f"usage: scripts/trial {'|'.join(SUBJECTS)}|desktops [PROGRAM [...]]\n\n"
          "PROGRAM is build/release/app/dinmala when none is named. Ends with 1 where something was not as it should be.\n")
    for name in sorted({module for module, _, _ in SUBJECTS.values()}):
        print(importlib.import_module(f"trials.{name}").__doc__)
    return 2


def run(subject, executable, *more):
    module, first, lists = SUBJECTS[subject]
    installer = os.path.join(HERE, "scripts/install-packages")
    if os.path.exists(installer):
        subprocess.run([installer, *lists], check=True)
    began = time.monotonic()
    trial = Trial()
    try:
        importlib.import_module(f"trials.{module}").run(trial, *first, executable, *more)
    except Stop:
        pass
    except Exception as error:  # a trial that cannot go on has failed, whatever the reason; the rest may be tried
        trial.check(f"{subject} goes to its end: {error!r}", False)
        traceback.print_exc()
    finally:
        trial.close()
    failed = trial.failures or not trial.checks
    print(f"{subject}: {trial.checks - trial.failures} of {trial.checks} as expected, "
          f"{time.monotonic() - began:.0f} s{', FAILED' if failed else ''}", flush=True)
    return bool(failed)


def main(subject=None, executable=None, *more):
    executable = os.path.realpath(executable or os.path.join(HERE, "build/release/app/dinmala"))
    if subject == "desktops":
        return any([run(f"panels-{host}", executable, *more) for host in HOSTS])
    if subject not in SUBJECTS:
        return usage()
    if not os.path.exists(executable):
        print(f"there is no program {executable}")
        return 2
    return run(subject, executable, *more)


sys.exit(main(*sys.argv[1:]))
