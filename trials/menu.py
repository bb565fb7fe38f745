"""menu [PROGRAM]: the marked rows of the menu over the bus, each beside the preference file, and a restart."""

from trials.bus import Bus, Program

KEYS = {"icon": "Flag", "year": "Year", "month": "Month", "day": "Day", "dow": "Weekday", "time": "Time",
        "tithi": "Tithi", "event": "Events"}
DEFAULT = ["Month", "Day", "Time"]


def filed(folder):
    """The titles of the rows whose keys are on in the preference file below a home."""
    try:
        with open(f"{folder}/.config/dinmala/preferences.ini", encoding="utf-8") as file:
            on = {line.split("=")[0] for line in file if line.strip().endswith("=true")}
    except FileNotFoundError:
        return None
    return [title for key, title in KEYS.items() if key in on]


def shown(menu):
    """The titles of the marked rows that choose what is shown, or None while there is no menu."""
    marked = menu.marked()
    return None if marked is None else [title for title in marked if title in KEYS.values()]


def run(trial, executable):
    bus, home = Bus(trial), trial.path("home")
    pieces = list(KEYS.values())[1:]
    program = Program(trial, executable, bus)

    def choose(*titles):
        for title in titles:
            program.menu.choose(title)
        return " and ".join(titles)

    def expect(what, wanted):
        trial.equal(what, lambda: (shown(program.menu), filed(home)), (wanted, wanted))

    trial.need("the menu is there", program.menu.rows)
    expect("at the first start", DEFAULT)
    expect(choose("Flag"), ["Flag"])
    expect(f"{choose('Flag')} again", DEFAULT)
    for piece in pieces:
        expect(choose("Flag", piece), [piece])
        expect(f"{choose(piece)}, the only one", DEFAULT)
    for piece in pieces:
        before = shown(program.menu)
        choose(piece)
        wanted = [one for one in pieces if (one in before) != (one == piece)]
        expect(f"{piece} beside others", wanted or DEFAULT)
    last = shown(program.menu)
    program.end()
    program = Program(trial, executable, bus)
    expect("after a restart", last)
    program.end()
