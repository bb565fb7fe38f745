#include "YearLists.h"

#include "RuleText.h"

#include <algorithm>
#include <tuple>

namespace dinmala::panchanga {

using std::chrono::sys_days;

namespace {

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

std::string rest(Words& words) {
    std::string text;
    while (!words.done()) {
        text += (text.empty() ? "" : " ") + std::string(words.take("word"));
    }
    return text;
}

/// A tithi's number within its half, 1 to 14, or 15 (full moon) or 30 (new moon).
int withinHalf(int tithi) { return tithi > 15 && tithi < 30 ? tithi - 15 : tithi; }

}  // namespace

std::string Token::text() const { return twoDigits(day) + twoDigits(month) + std::to_string(id); }

std::vector<Token> readYearList(std::istream& list, const std::string& fileName) {
    std::vector<Token> tokens;
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
        const std::size_t hash = line.find('#');
        Words words{std::string_view{line}.substr(0, hash)};
        if (words.done()) {
            continue;
        }
        const std::string_view key = words.take("day and month");
        const std::optional<int> dayMonth = key.size() == 4 ? wholeNumber(key) : std::nullopt;
        try {
            if (!dayMonth) {
                throw "'" + std::string(key) + "' is no day and month such as 3012";
            }
            do {
                tokens.push_back({*dayMonth % 100, *dayMonth / 100, words.number("id", 1, 999), {}});
            } while (!words.done());
        } catch (const std::string& complaint) {
            throw FileError{fileName + ":" + std::to_string(number) + ": " + complaint};
        }
        if (hash != std::string::npos) {
            tokens.back().note = trimmed(std::string_view{line}.substr(hash + 1));
        }
    }
    return tokens;
}

std::string writeYearList(const std::vector<Token>& tokens) {
    std::string text;
    for (std::size_t i = 0; i < tokens.size();) {
        const Token& first = tokens[i];
        std::string notes;
        text += twoDigits(first.day) + twoDigits(first.month);
        for (; i < tokens.size() && tokens[i].day == first.day && tokens[i].month == first.month; ++i) {
            text += " " + std::to_string(tokens[i].id);
            if (!tokens[i].note.empty()) {
                notes += (notes.empty() ? "  # " : "; ") + std::to_string(tokens[i].id) + ": " + tokens[i].note;
            }
        }
        text += notes + "\n";
    }
    return text;
}

TithiRules::TithiRules(std::istream& rules, const std::string& fileName) {
    std::string line;
    for (int number = 1; std::getline(rules, line); ++number) {
        const std::string_view text = trimmed(line);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        try {
            Words words{text};
            const std::string_view what = words.take("kind of line");
            if (what == "plain") {
                const int tithi = words.number("tithi", 1, 30);
                const int bright = words.number("id", 1, 999);
                const int dark = words.number("id", 1, 999);
                plain_[tithi] = bright;
                if (tithi < 15) {
                    plain_[tithi + 15] = dark;
                }
                words.finish();
                continue;
            }
            if (what == "joined") {
                const int id = words.number("id", 1, 999);
                const int first = words.number("tithi", 1, 14);
                joined_[{first, words.number("tithi", 2, 14)}] = id;
                words.finish();
                continue;
            }
            Year& year = years_[words.number("BS year", 1999, 2099)];
            if (what == "variant") {
                const int tithi = words.tithi();
                year.variants[tithi] = words.number("id", 1, 999);
            } else if (what == "observance") {
                const int month = words.oneOf("lunar month", kMonths) + 1;
                const int tithi = words.tithi();
                year.observances[{month, tithi}] = words.number("id", 1, 999);
            } else if (what == "skipped") {
                static constexpr std::array<std::string_view, 3> kWays{"sunrise", "joined", "both"};
                const int way = words.oneOf("way", kWays);
                year.joined = way == 1;
                year.both = way == 2;
                year.joinedFirst = way == 1 && !words.done() ? words.number("count", 1, 20) : -1;
            } else if (what == "both") {
                year.bothDays.push_back(words.monthDay());
            } else if (what == "cover") {
                const MonthDay first = words.monthDay();
                year.covers.emplace_back(first, words.monthDay());
            } else if (what == "empty") {
                year.empty.push_back(words.monthDay());
            } else if (what == "add" || what == "stands") {
                const auto [month, day] = words.monthDay();
                const int id = words.number("id", 1, 999);
                (what == "add" ? year.added : year.standing).push_back({month, day, id, rest(words)});
            } else {
                throw "'" + std::string(what) + "' begins no line";
            }
            words.finish();
        } catch (const std::string& complaint) {
            throw FileError{fileName + ":" + std::to_string(number) + ": " + complaint};
        }
    }
    if (plain_.size() != 30) {
        throw FileError{fileName + ": a tithi has no plain name"};
    }
}

std::vector<Token> TithiRules::list(int year, const BsCalendar& calendar, const Panchanga& panchanga) const {
    static const Year kPlainYear;
    const auto entry = years_.find(year);
    const Year& rules = entry == years_.end() ? kPlainYear : entry->second;
    const sys_days first = calendar.day(year, 1, 1);
    const sys_days last = calendar.day(year, 12, calendar.monthLength(year, 12));

    const auto plainId = [&](int tithi) {
        const auto variant = rules.variants.find(tithi);
        return variant == rules.variants.end() ? plain_.at(tithi) : variant->second;
    };
    const auto contains = [](const std::vector<MonthDay>& days, const MonthDay& day) {
        return std::find(days.begin(), days.end(), day) != days.end();
    };

    std::vector<Token> tokens;
    int joinedSoFar = 0;
    for (const DayTithi& today : panchanga.dayTithis(first, static_cast<int>((last - first).count()) + 1)) {
        const BsCalendar::Date date = calendar.date(today.day);
        const MonthDay key{date.month, date.day};
        const bool covered = rules.covers.empty() || std::any_of(rules.covers.begin(), rules.covers.end(),
                                                                 [&key](const auto& cover) {
                                                                     return cover.first <= key && key <= cover.second;
                                                                 });
        if (!covered || contains(rules.empty, key)) {
            continue;
        }
        const auto stands = std::find_if(rules.standing.begin(), rules.standing.end(), [&key](const Token& token) {
            return MonthDay{token.month, token.day} == key;
        });
        if (stands != rules.standing.end()) {
            tokens.push_back(*stands);
            continue;
        }
        const auto list = [&](int id) { tokens.push_back({date.month, date.day, id, {}}); };
        const LunarDate lunar = panchanga.lunarDateAt(today.sunrise);
        const auto observance = rules.observances.find({lunar.month, lunar.tithi});
        const bool observed = observance != rules.observances.end() && !lunar.adhika && !today.repeated;
        const auto joined = today.skipped == 0
                                ? joined_.end()
                                : joined_.find({withinHalf(today.tithi), withinHalf(today.skipped)});
        const bool join = rules.joined && !contains(rules.bothDays, key) && joined != joined_.end() &&
                          (rules.joinedFirst < 0 || joinedSoFar < rules.joinedFirst);
        if (join) {
            ++joinedSoFar;
            list(joined->second);
        } else {
            list(observed ? observance->second : plainId(today.tithi));
            const bool both = rules.both || rules.joinedFirst >= 0 || contains(rules.bothDays, key);
            if (today.skipped != 0 && both) {
                list(plainId(today.skipped));
            }
        }
        for (const Token& token : rules.added) {
            if (MonthDay{token.month, token.day} == key) {
                tokens.push_back(token);
            }
        }
    }
    return tokens;
}

}  // namespace dinmala::panchanga
