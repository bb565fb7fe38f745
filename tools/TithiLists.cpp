#include "tools/TithiLists.h"

#include "panchanga/RuleText.h"

#include <algorithm>
#include <optional>

namespace dinmala::tools {

using std::chrono::sys_days;

namespace {

/// A tithi's number within its half, 1 to 14, or 15 (full moon) or 30 (new moon).
int withinHalf(int tithi) { return tithi > 15 && tithi < 30 ? tithi - 15 : tithi; }

}  // namespace

TithiRules::TithiRules(std::istream& rules, const std::string& fileName) {
    const std::optional<FileError> error = readRules(rules, fileName, [&](std::string_view text, int) {
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
            return words.finish();
        }
        if (what == "joined") {
            const int id = words.number("id", 1, 999);
            const int first = words.number("tithi", 1, 14);
            joined_[{first, words.number("tithi", 2, 14)}] = id;
            return words.finish();
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
            (what == "add" ? year.added : year.standing).push_back({month, day, id, words.rest()});
        } else {
            words.complain("'" + std::string(what) + "' begins no line");
        }
        return words.finish();
    });
    if (error) {
        throw FileError{*error};
    }
    if (plain_.size() != 30) {
        throw FileError{fileName + ": a tithi has no plain name"};
    }
}

std::vector<Token> TithiRules::list(int year, const BsCalendar& calendar, const Panchanga& panchanga) const {
    static const Year kPlainYear;
    const auto entry = years_.find(year);
    const Year& rules = entry == years_.end() ? kPlainYear : entry->second;
    const sys_days first = *calendar.toDays(bsDate(year, 1, 1));

    const auto plainId = [&](int tithi) {
        const auto variant = rules.variants.find(tithi);
        return variant == rules.variants.end() ? plain_.at(tithi) : variant->second;
    };
    const auto contains = [](const std::vector<MonthDay>& days, const MonthDay& day) {
        return std::find(days.begin(), days.end(), day) != days.end();
    };

    std::vector<Token> tokens;
    int joinedSoFar = 0;
    for (const DayTithi& today : panchanga.dayTithis(first, static_cast<int>(calendar.daysIn(BsYear{year})))) {
        const BsDate date = *calendar.toDate(today.day);
        const int month = static_cast<int>(unsigned{date.month});
        const int day = static_cast<int>(unsigned{date.day});
        const MonthDay key{month, day};
        const bool covered =
            rules.covers.empty() || std::any_of(rules.covers.begin(), rules.covers.end(), [&key](const auto& cover) {
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
        const auto list = [&](int id) { tokens.push_back({month, day, id, {}}); };
        const LunarDate lunar = panchanga.lunarDateAt(today.sunrise);
        const auto observance = rules.observances.find({lunar.month, lunar.tithi});
        const bool observed = observance != rules.observances.end() && !lunar.adhika && !today.repeated;
        const auto joined =
            today.skipped == 0 ? joined_.end() : joined_.find({withinHalf(today.tithi), withinHalf(today.skipped)});
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

}  // namespace dinmala::tools
