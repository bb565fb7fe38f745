"""can-fail: every subject that needs no screen must fail with programs that end at once, crash or do nothing."""

import os
import subprocess
import sys

from trials.trial import HERE

BROKEN = {"ends at once": "#!/bin/sh\nexit 0\n", "crashes": "#!/bin/sh\nkill -SEGV $$\n",
          "does nothing": "#!/bin/sh\nexec sleep 600\n"}
SUBJECTS = [["menu"], ["attacks"], ["triggers"], ["update-check"], ["two-users"], ["autostart"],
            *[["soak", "2", part] for part in ("panel", "bus", "clock", "sleep")], ["panels-mate"]]


def run(trial, executable):
    resources = os.path.join(os.path.dirname(executable), "resources")
    for what, script in BROKEN.items():
        folder = what.replace(" ", "-")
        os.makedirs(trial.path(folder))
        os.symlink(os.path.realpath(resources), trial.path(folder, "resources"))
        for name in "dinmala", "dinmala-fetch":
            os.chmod(trial.write(f"{folder}/{name}", script), 0o755)
        # All of them at once: they mostly wait.
        started = [(subject, trial.start([sys.executable, "-m", "trials", subject[0], trial.path(folder, "dinmala"),
                                          *subject[1:]], {**os.environ, "PYTHONPATH": HERE}, stdout=subprocess.PIPE,
                                         text=True)) for subject in SUBJECTS]
        for subject, process in started:
            out = process.communicate()[0]
            trial.check(f"{what}: {' '.join(subject)} fails: {(out.splitlines() or [''])[-1]}",
                        process.returncode == 1 and "FAILED" in out)
