#include "panchanga/Festivals.h"
#include "panchanga/RuleText.h"

#include <tuple>

namespace dinmala::panchanga {

namespace {

constexpr std::array<std::string_view, 6> kParts{"sunrise", "midday", "afternoon", "evening", "moonrise", "midnight"};
constexpr std::array<std::string_view, 4> kTrusts{"unknown", "inferred", "named", "known"};
constexpr std::array<std::string_view, 1> kEditions{"first"};
constexpr std::array<std::string_view, 4> kDaysOff{"none", "observed", "group", "national"};

void readBase(Words& words, Festival& festival) {
    using Kind = Festival::Kind;
    if (words.peek() == "first") {
        words.take("first");
        festival.firstFrom = words.weekday();
        if (words.take("'from'") != "from") {
            words.complain("'first Sunday' goes on with 'from'");
        }
    }
    const std::string_view word = words.take("rule");
    if (word == "unknown") {
        festival.kind = Kind::unknown;
    } else if (word == "bs" || word == "ad") {
        festival.kind = word == "bs" ? Kind::bsDate : Kind::adDate;
        std::tie(festival.month, festival.day) = words.monthDay();
    } else if (word == "on") {
        festival.kind = Kind::dates;
        do {
            festival.dates.push_back(words.adDate());
        } while (!words.done());
    } else if (word == "dated") {
        festival.kind = Kind::dates;
    } else if (word == "lunar") {
        festival.kind = Kind::lunar;
        festival.month = words.oneOf("lunar month", kMonths) + 1;
        festival.tithi = words.tithi();
    } else if (word == "adhika") {
        festival.kind = Kind::lunar;
        festival.adhika = true;
        festival.tithi = words.tithi();
    } else if (word == "every") {
        festival.kind = Kind::everyMonth;
        if (wholeNumber(words.peek())) {
            festival.bothHalves = true;
            festival.tithi = words.number("tithi", 1, 14);
        } else {
            festival.tithi = words.tithi();
        }
    } else if (word == "moon") {
        festival.kind = Kind::moonEnters;
        if (words.take("'enters'") != "enters") {
            words.complain("'moon' goes on with 'enters'");
        }
        festival.degrees = words.number("longitude in degrees", 0, 359);
    } else if (word == "with") {
        festival.kind = Kind::withOther;
        festival.other = words.number("id", 1, 999);
    } else if (word == "between") {
        festival.kind = Kind::between;
        festival.other = words.number("id", 1, 999);
        festival.last = words.number("id", 1, 999);
    } else {
        words.complain("'" + std::string(word) + "' begins no rule");
    }
    if ((festival.kind == Kind::lunar || festival.kind == Kind::everyMonth) && !words.done()) {
        festival.part = static_cast<DayPart>(words.oneOf("part of the day", kParts));
        festival.partGiven = true;
    }
}

void readModifier(Words& words, Festival& festival) {
    const std::string_view word = words.take("modifier");
    if (word == "weekday") {
        festival.weekday = words.weekday();
    } else if (word == "shift") {
        festival.shift = words.number("shift in days", -10, 10);
    } else if (word == "as") {
        festival.sameAs = words.number("id", 1, 999);
    } else if (word == "behind") {
        do {
            festival.behind.push_back(words.number("id", 1, 999));
        } while (!words.done());
    } else if (word == "edition") {
        festival.firstEdition = words.oneOf("edition", kEditions) == 0;
    } else if (word == "from") {
        festival.from = words.number("BS year", 1999, 2099);
    } else if (word == "until") {
        festival.until = words.number("BS year", 1999, 2099);
    } else if (word == "moves") {
        festival.movesTo = words.number("id", 1, 999);
        do {
            festival.moved.push_back(words.adDate());
        } while (!words.done());
    } else if (word == "last") {
        if (words.take("'by'") != "by") {
            words.complain("'last' goes on with 'by'");
        }
        festival.lastBy = words.monthDay();
    } else if (word == "later") {
        festival.later = true;
    } else if (word == "earlier") {
        festival.earlier = true;
    } else if (word == "near") {
        if (words.take("'by'") != "by") {
            words.complain("'near' goes on with 'by'");
        }
        festival.rival = static_cast<DayPart>(words.oneOf("part of the day", kParts));
    } else if (word == "householders") {
        festival.fast = Festival::Fast::householders;
    } else if (word == "vaishnava") {
        festival.fast = Festival::Fast::vaishnava;
    } else if (word == "only" || word == "never") {
        do {
            (word == "only" ? festival.only : festival.never).push_back(words.number("BS year", 1999, 2099));
        } while (!words.done());
    } else if (word == "but") {
        do {
            festival.but.push_back(words.adDate());
        } while (!words.done());
    } else {
        words.complain("'" + std::string(word) + "' is no modifier");
    }
}

Complaint readFestival(std::string_view text, Festival& festival) {
    const std::vector<std::string_view> fields = split(text, '|');
    if (fields.size() != 4) {
        return "a line is 'id | trust | rule | source'";
    }
    const std::optional<int> id = wholeNumber(fields[0]);
    if (!id || *id < 1) {
        return "'" + std::string(fields[0]) + "' is no id";
    }
    festival.id = *id;
    const std::optional<int> trust = placeOf(fields[1], kTrusts);
    if (!trust) {
        return "'" + std::string(fields[1]) + "' is none of unknown, inferred, named, known";
    }
    festival.trust = static_cast<Trust>(*trust);
    festival.text = std::string(fields[2]);
    bool base = true;
    for (const std::string_view clause : split(fields[2], ',')) {
        Words words(clause);
        base ? readBase(words, festival) : readModifier(words, festival);
        base = false;
        if (Complaint complaint = words.finish()) {
            return complaint;
        }
    }
    if ((festival.kind == Festival::Kind::unknown) != (festival.trust == Trust::unknown)) {
        return "a rule is unknown exactly when its trust is";
    }
    festival.source = std::string(fields[3]);
    return festival.source.empty() ? Complaint{"the source is missing"} : std::nullopt;
}

/// `2070 2072-2075 2079-`: BS years; nothing for a text of another form.
std::optional<std::vector<std::pair<int, int>>> yearRanges(std::string_view text) {
    std::vector<std::pair<int, int>> ranges;
    for (const std::string_view word : split(text, ' ')) {
        const std::vector<std::string_view> ends = split(word, '-');
        const std::optional<int> from = wholeNumber(ends.front());
        const std::optional<int> until = ends.back().empty() ? 2099 : wholeNumber(ends.back());
        if (ends.size() > 2 || !from || !until || *from < 1999 || *until < *from || *until > 2099) {
            return std::nullopt;
        }
        ranges.emplace_back(*from, *until);
    }
    return ranges;
}

}  // namespace

std::string_view partName(DayPart part) { return kParts[static_cast<std::size_t>(part)]; }

std::optional<FileError> Festivals::read(std::istream& rules, const std::string& fileName) {
    return readRules(rules, fileName, [&](std::string_view text, int number) -> Complaint {
        Festival festival;
        if (Complaint complaint = readFestival(text, festival)) {
            return complaint;
        }
        festival.line = number;
        if ((festival.other != 0 && !festivals_.contains(festival.other)) ||
            (festival.last != 0 && !festivals_.contains(festival.last))) {
            return "goes by the day of an id that has no line above";
        }
        if (festival.sameAs != 0 &&
            (!festivals_.contains(festival.sameAs) || festivals_.at(festival.sameAs).sameAs != 0)) {
            return "is another name of an id that has no line above, or is one itself";
        }
        if (festival.movesTo != 0 && !festivals_.contains(festival.movesTo)) {
            return "moves to the day of an id that has no line above";
        }
        if (!festivals_.emplace(festival.id, festival).second) {
            return "id " + std::to_string(festival.id) + " has a line already";
        }
        return std::nullopt;
    });
}

std::optional<FileError> Festivals::readCorrections(std::istream& corrections, const std::string& fileName) {
    return readRules(corrections, fileName, [&](std::string_view text, int) -> Complaint {
        const std::vector<std::string_view> fields = split(text, '|');
        if (fields.size() != 3 || fields[2].empty()) {
            return "a line is 'AD date | id | source'";
        }
        Words date(fields[0]);
        Correction correction{0, date.adDate(), std::string(fields[2])};
        if (Complaint complaint = date.finish()) {
            return complaint;
        }
        Words ids(fields[1]);
        do {
            correction.id = ids.number("id", 1, 999);
            if (!ids.complaint() && !festivals_.contains(correction.id)) {
                ids.complain("id " + std::to_string(correction.id) + " has no rule");
            }
            corrections_.push_back(correction);
        } while (!ids.done());
        return ids.finish();
    });
}

std::optional<FileError> Festivals::readHolidays(std::istream& holidays, const std::string& fileName) {
    return readRules(holidays, fileName, [&](std::string_view text, int) -> Complaint {
        const std::vector<std::string_view> fields = split(text, '|');
        if (fields.size() != 4 || fields[3].empty()) {
            return "a line is 'id | kind | years | source'";
        }
        Words kind(fields[1]);
        const auto dayOff = static_cast<Holiday>(kind.oneOf("kind of holiday", kDaysOff));
        if (Complaint complaint = kind.finish()) {
            return complaint;
        }
        const auto ranges = yearRanges(fields[2]);
        if (!ranges) {
            return "'" + std::string(fields[2]) + "' is no list of BS years such as 2071-2074 2079-";
        }
        Words ids(fields[0]);
        do {
            const int id = ids.number("id", 1, 999);
            if (!ids.complaint() && !festivals_.contains(id)) {
                ids.complain("id " + std::to_string(id) + " has no rule");
            }
            for (const auto& [from, until] : *ranges) {
                if (!ids.complaint() &&
                    (this->dayOff(id, from) != Holiday::none || this->dayOff(id, until) != Holiday::none)) {
                    ids.complain("id " + std::to_string(id) + " has a line for those years already");
                }
                holidays_[id].push_back({dayOff, from, until});
            }
        } while (!ids.done());
        return ids.finish();
    });
}

}  // namespace dinmala::panchanga
