"""search [PROGRAM]: the desktops' search on a bus that starts it: both desktops' calls, how quick, what is chosen, wrong
calls, how it ends. Prints the times; an answer may take 20 ms."""

import datetime
import os
import shutil
import time

from gi.repository import Gio, GLib

from trials.bus import Bus, own, read
from trials.trial import HERE, until

NAME, PATH = "org.dinmala.Dinmala.Search", "/org/dinmala/Dinmala/Search"
SHELL, KRUNNER = "org.gnome.Shell.SearchProvider2", "org.kde.krunner1"
KLIPPER = "org.kde.klipper.klipper"
IDLE, MOST = 30, 0.020  # seconds
QUERIES = ["2083 mangsir 7", "७ मंसिर", "2026-11-23", "tihar", "दशैं 2084", "dashain 2027", "today bs", "lhosar", "firefox",
           "terminal", "tih", "maghe sank", "world water da", "purnima fast"]


class Search:
    """The service, called as a desktop does: who has the name is not asked first."""

    def __init__(self, bus):
        self.connection = bus.connection

    def call(self, interface, method, types, *values):
        done = []
        self.connection.call(NAME, PATH, interface, method, GLib.Variant(types, values), None, 0, 10000, None,
                             lambda _, result: done.append(result))
        while not done:
            GLib.MainContext.default().iteration(True)
        return self.connection.call_finish(done[0]).unpack()

    def find(self, text):
        return self.call(SHELL, "GetInitialResultSet", "(as)", text.split(" "))[0]

    def metas(self, *ids):
        return self.call(SHELL, "GetResultMetas", "(as)", ids)[0]

    def match(self, text):
        return self.call(KRUNNER, "Match", "(s)", text)[0]

    def error(self, interface, method, types, *values):
        try:
            self.call(interface, method, types, *values)
        except GLib.Error as error:
            return Gio.dbus_error_get_remote_error(error).rsplit(".", 1)[1]
        return None


class PlayedClipboard:
    def __init__(self, bus):
        self.connection, self.texts = bus.connect(), []
        xml = f"<node><interface name='{KLIPPER}'><method name='setClipboardContents'><arg type='s' direction='in'/></method></interface></node>"

        def called(connection, sender, path, interface, method, parameters, invocation):
            self.texts += parameters.unpack()
            invocation.return_value(None)

        self.connection.register_object("/klipper", Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0], called, None, None)
        own(self.connection, "org.kde.klipper")


def memory(number):
    return next(int(line.split()[1]) for line in read(f"/proc/{number}/status").splitlines() if line.startswith("VmRSS"))


def runs(number):
    return os.path.exists(f"/proc/{number}") and ") Z " not in read(f"/proc/{number}/stat")


def measure(trial, what, ask):
    times = []
    for text in QUERIES * 20:
        began = time.monotonic()
        ask(text)
        times.append(time.monotonic() - began)
    times.sort()
    trial.check(f"{what}: {times[len(times) // 2] * 1000:.2f} ms, 99 of 100 within {times[len(times) * 99 // 100] * 1000:.2f} ms, "
                f"the slowest of {len(times)} {times[-1] * 1000:.2f} ms", times[len(times) // 2] < MOST)


def run(trial, executable):
    # A copy, beside which a window can come and go.
    program = trial.path("bin/dinmala-search")
    os.makedirs(trial.path("bin"))
    shutil.copy(os.path.join(os.path.dirname(executable), "dinmala-search"), program)
    trial.write(f"home/.local/share/dbus-1/services/{NAME}.service", f"[D-BUS Service]\nName={NAME}\nExec={program}\n")
    bus = Bus(trial, {**trial.environment(), "XDG_DATA_DIRS": "/nowhere"})
    search = Search(bus)

    # Begun on demand.
    trial.equal("nothing runs before a desktop asks", bus.owner(NAME), None)
    began = time.monotonic()
    trial.equal("the first question starts it", search.find("2083 mangsir 7"), ["2026-11-23 bs"])
    trial.check(f"and is answered after {(time.monotonic() - began) * 1000:.0f} ms", time.monotonic() - began < 2)
    number = bus.owner(NAME)

    # As GNOME asks.
    today = (datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(hours=5, minutes=45)).date()
    trial.equal("today is Nepal's", search.find("today bs"), [f"{today} ad"])
    tihar = search.find("tihar 2083")
    trial.equal("a festival has its days", tihar, ["2026-11-07 120", "2026-11-08 121", "2026-11-08 66", "2026-11-11 68"])
    metas = search.metas(*tihar)
    trial.equal("each has its words", [(one["id"], one["name"]) for one in metas], [
        ("2026-11-07 120", "काग तिहार, २१ कार्तिक २०८३"), ("2026-11-08 121", "कुकुर तिहार, २२ कार्तिक २०८३"),
        ("2026-11-08 66", "लक्ष्मी पूजा, २२ कार्तिक २०८३"), ("2026-11-11 68", "भाइ टिका (किजा पूजा), २५ कार्तिक २०८३")])
    trial.check(f"and the rest: {metas[2]['description']}", metas[2]["description"].startswith("८ नोभेम्बर २०२६ · आइतवार · कृष्ण चतुर्दशी · "))
    trial.check("an icon that the shell takes", Gio.Icon.deserialize(GLib.Variant("(sv)", ("themed", GLib.Variant("as", ["dinmala"])))) and
                all(one["icon"] == ("themed", ["dinmala"]) for one in metas))
    trial.equal("without a window it has a text to copy", metas[2].get("clipboardText"), "लक्ष्मी पूजा, २२ कार्तिक २०८३, ८ नोभेम्बर २०२६")
    trial.equal("what is typed on is looked for anew", search.call(SHELL, "GetSubsearchResultSet", "(asas)", ["2026-11-07 120"], ["teej", "2083"])[0],
                ["2026-09-14 52"])
    trial.equal("nonsense finds nothing", [search.find(text) for text in ("fire", "2083", "tih", "holiday inn", "")], [[]] * 5)

    # As KRunner asks.
    trial.equal("KRunner's actions", search.call(KRUNNER, "Actions", "()"), ([("copy", "Copy", "edit-copy")],))
    match = search.match("2083 mangsir 7")
    trial.equal("KRunner's match", [(one[:4], one[5]["subtext"][:29]) for one in match],
                [(("2026-11-23 bs", "२३ नोभेम्बर २०२६, सोमवार", "dinmala", 100), "७ मंसिर २०८३ · शुक्ल चतुर्दशी")])
    fewest = int(read(os.path.join(HERE, f"packaging/{NAME}.desktop")).split("Min-Letter-Count=")[1].split()[0])
    trial.equal("words of two letters are found, and KRunner is to ask for them",
                [bool(search.match(word)) and len(word) >= fewest for word in ("छठ", "आज")], [True] * 2)
    trial.equal("the first stands first", [one[4] for one in search.match("tihar")] == sorted([one[4] for one in search.match("tihar")], reverse=True), True)
    clipboard = PlayedClipboard(bus)
    search.call(KRUNNER, "Run", "(ss)", "2026-11-23 bs", "")
    search.call(KRUNNER, "Run", "(ss)", "2026-11-23 nothing", "copy")
    trial.equal("without a window Enter copies, by Plasma's clipboard", lambda: clipboard.texts, ["२३ नोभेम्बर २०२६, ७ मंसिर २०८३"])

    # How quick.
    measure(trial, "GNOME's two calls, warm", lambda text: search.metas(*search.find(text)))
    measure(trial, "KRunner's call, warm", search.match)
    left, began = [4000], time.monotonic()
    for i in range(left[0]):
        bus.connection.call(NAME, PATH, KRUNNER, "Match", GLib.Variant("(s)", (QUERIES[i % len(QUERIES)],)), None, 0, 30000, None,
                            lambda source, result: left.__setitem__(0, left[0] - (source.call_finish(result) is not None)))
    until(lambda: not left[0], 30)
    trial.check(f"4000 questions at once are answered, {4000 / (time.monotonic() - began):.0f} a second", not left[0])

    print(f"         it takes {memory(number)} kB")

    # What no desktop does.
    for interface, method, types, *values in ((SHELL, "GetInitialResultSet", "(s)", "tihar"), (SHELL, "GetResultMetas", "(ai)", [1]),
                                              (KRUNNER, "Match", "(as)", ["tihar"]), (SHELL, "ActivateResult", "(s)", "x"),
                                              (KRUNNER, "Run", "()"), (SHELL, "LaunchSearch", "(asi)", [], 1)):
        trial.equal(f"{method}{types} is refused", search.error(interface, method, types, *values), "InvalidArgs")
    trial.equal("an unknown method is refused", search.error(SHELL, "Delete", "()"), "UnknownMethod")
    wrong = ["", "x", "2026-11-23", "2026-11-23 99", "-1 ad", "2026-11-23 ad\n", "9" * 100000, "../../etc/passwd ad", "𐍈\u200d\ufffd"]
    trial.equal("ids that were never given have no words", search.metas(*wrong), [])
    for text in wrong:
        search.call(SHELL, "ActivateResult", "(sasu)", text, [], 0)
        search.call(KRUNNER, "Run", "(ss)", text, "")
    trial.equal("huge texts find nothing", (search.find("tihar " * 200000), search.match("७" * 1000000)), ([], []))
    trial.equal("a hundred thousand ids are a list like another", search.call(SHELL, "GetResultMetas", "(as)", ["2026-11-23 ad"] * 100000)[0][0]["id"],
                "2026-11-23 ad")
    trial.equal("after all of it the same process answers", (search.find("teej 2083"), bus.owner(NAME)), (["2026-09-14 52"], number))

    # What a person has chosen.
    def prefer(text):
        trial.write("home/.config/dinmala/preferences.ini", f"[display]\n{text}\n")
        return search.metas(*search.find("2026-11-23"))[0]["name"]

    trial.equal("it follows language and digits", prefer("language=english\ndigits=western"), "7 Mangsir 2083, Monday")
    trial.equal("and the edition", prefer("language=english\ndigits=western\nedition=first"), "8 Mangsir 2083, Monday")
    trial.equal("and their change", prefer(""), "७ मंसिर २०८३, सोमवार")

    # Gone when nobody asks; begun anew, now with a window.
    asked = time.monotonic()
    trial.check(lambda: f"idle, it is gone after {time.monotonic() - asked:.1f} s", lambda: bus.owner(NAME) is None, IDLE + 10)
    trial.check("not while a person may still type", time.monotonic() - asked > IDLE - 2)
    trial.check("and its process with it", lambda: not runs(number))
    os.chmod(trial.write("bin/dinmala-window", f'#!/bin/sh\necho "$* $DESKTOP_STARTUP_ID" >>{trial.path("opened")}\n'), 0o755)
    bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "UpdateActivationEnvironment", "(a{ss})",
             {"DINMALA_EDITION": "first", "LC_ALL": "C.UTF-8"})
    (meta,) = search.metas(*search.find("23 nov 2026"))
    trial.equal("asked again it is there again, in the edition of its environment", meta["name"], "८ मंसिर २०८३, सोमवार")
    trial.equal("with a window nothing replaces what was copied", "clipboardText" in meta, False)

    def opened():
        return read(trial.path("opened")) if os.path.exists(trial.path("opened")) else ""

    search.call(SHELL, "ActivateResult", "(sasu)", "2026-11-23 ad", ["23", "nov"], 4711)
    trial.equal("GNOME's Enter opens the window at the day", opened, "--date 23 November 2026 dinmala-search_TIME4711\n")
    search.call(KRUNNER, "Run", "(ss)", "2026-11-08 66", "")
    search.call(KRUNNER, "Run", "(ss)", "2013-11-03 66", "")
    trial.equal("and so does KRunner's, where the edition has it", lambda: opened().splitlines()[1:], ["--date 3 November 2013 "])
    search.call(SHELL, "LaunchSearch", "(asu)", ["4", "may", "2025"], 0)
    trial.equal("the provider's own row opens the first day", lambda: opened().splitlines()[2:], ["--date 4 May 2025 "])
    search.call(KRUNNER, "Run", "(ss)", "2026-11-23 ad", "copy")
    trial.equal("copying is KRunner's other button", lambda: clipboard.texts[1:], ["८ मंसिर २०८३, २३ नोभेम्बर २०२६"])

    # The bus goes.
    number = bus.owner(NAME)
    trial.end(bus.daemon)
    trial.check("without the bus it ends", lambda: not runs(number))
    trial.check("and says why", lambda: "dinmala-search: the session bus has gone" in read(trial.path("log")))
