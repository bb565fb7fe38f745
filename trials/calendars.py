"""calendars [PROGRAM]: what dinmala-cal writes for other calendar programs, read by python3-icalendar: counts against the
almanac's for three years in both editions, whole and in lines that any reader takes; the file that --output and --follow
keep, and files that they must leave alone. Needs dinmala-cal of the same build."""

import datetime
import json
import os
import resource
import subprocess

import icalendar

YEARS = {"first": ("2066", "2070", "2071"), "current": ("2070", "2083", "2090")}


def run(trial, executable):
    cal = next((one for one in (os.path.join(os.path.dirname(executable), place) for place in ("../cal/dinmala-cal", "dinmala-cal"))
                if os.path.exists(one)), None)
    trial.need("dinmala-cal is there", cal)

    def ask(*words, fails=False):
        ended = subprocess.run([cal, *words], capture_output=True, env=trial.environment(), check=False, timeout=60)
        if fails:
            return ended.returncode, ended.stderr.decode()
        return ended.stdout

    def entries(*words):
        return icalendar.Calendar.from_ical(ask(*words).decode()).walk("VEVENT")

    for edition, years in YEARS.items():
        for year in years:
            days = json.loads(ask("--edition", edition, "--json", "events", year))["days"]
            wanted = sorted((day["ad"], name) for day in days for name in day["events"])
            found = entries("--edition", edition, "ics", year)
            trial.equal(f"{edition}, {year}: {len(wanted)} events, each on its day",
                        sorted((str(one["DTSTART"].dt), str(one["SUMMARY"])) for one in found), wanted)
            trial.equal("  of as many UIDs", len({str(one["UID"]) for one in found}), len(found))
    found = entries("ics", "--days", "--months", "--lang", "en", "2084")
    trial.check("all last a day, take no time, and are tentative in a year that is not published",
                found and all(type(one["DTSTART"].dt) is datetime.date and one["TRANSP"] == "TRANSPARENT"
                              and one["STATUS"] == "TENTATIVE" for one in found))
    used = lambda: sum(resource.getrusage(resource.RUSAGE_CHILDREN)[:2])
    began = used()
    text = ask("ics", "1999", "2099")
    took = used() - began
    trial.check(f"101 years in {took:.2f} s of the processor, {text.count(b'BEGIN:VEVENT')} entries", took <= 2)
    trial.check("no line of more than 75 bytes, each of whole characters",
                all(len(line) <= 75 and line.decode() is not None for line in text.split(b"\r\n")))

    path = trial.path("calendar.ics")
    content = lambda: open(path, "rb").read() if os.path.exists(path) else b""
    trial.equal("a file is written", ask("ics", "--output", path, "2083", fails=True), (0, ""))
    trial.check("and is a calendar", len(icalendar.Calendar.from_ical(content().decode()).walk("VEVENT")) > 400)
    with open(path, "ab") as file:
        file.write(b"X-MINE:1\r\n")
    mine = content()
    status, said = ask("ics", "--output", path, "2083", fails=True)
    trial.check(f"a changed one stays: {said.strip()[-60:]}", status == 1 and content() == mine)
    trial.equal("until it is forced", (ask("ics", "--output", path, "--force", "2083", fails=True), content() != mine), ((0, ""), True))
    for place in "/proc/none/a.ics", "/dev/full", trial.folder:
        status, said = ask("ics", "--output", place, "2083", fails=True)
        trial.check(f"{said.strip()[-70:]}", status == 1 and said.count("\n") == 1)

    os.remove(path)
    follower = trial.start([cal, "ics", "--follow", path])
    trial.check("a followed file comes", lambda: b"END:VCALENDAR" in content())
    trial.check("and its program goes on", follower.poll() is None)
    trial.equal("until it is ended", trial.end(follower), -15)
    trial.check("nothing half written is left", not [name for name in os.listdir(trial.folder) if name.startswith(".dinmala")])
