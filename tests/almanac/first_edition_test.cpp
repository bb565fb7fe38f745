// The first edition's lists, as the program carries them, against what is known of them: first_edition_facts.txt.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "almanac/DataStoreEvents.h"
#include "almanac/DataStoreTithi.h"
#include "almanac/Edition.h"
#include "almanac/YearList.h"
#include "base/DateText.h"
#include "base/Text.h"
#include "panchanga/Panchanga.h"
#include "tests/support/Fingerprint.h"

namespace dinmala {
namespace {

using Texts = std::vector<std::string>;

int numberOf(std::string_view digits) { return readNumber(digits).value_or(0); }

std::size_t utf16Length(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(),
                      [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }) +
        std::count_if(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xF0U; }));
}

/// What one catalogue holds, as the facts ask for it.
class Lists {
public:
    Lists(const TextMap& names, const TextMap& years, std::size_t headLength) : names_(names), head_(headLength) {
        for (const auto& [year, list] : years) {
            Texts& tokens = years_[std::string(year)];
            forEachToken(list, headLength, [&tokens](const YearToken& token) {
                tokens.push_back(std::string(token.head) + std::string(token.id));
            });
        }
    }

    [[nodiscard]] Texts tokens(const std::string& year) const {
        const auto list = years_.find(year);
        return list == years_.end() ? Texts{} : list->second;
    }

    [[nodiscard]] bool named(const std::string& token) const { return names_.contains(token.substr(head_)); }

    /// The days of a list with the number of tokens of each.
    [[nodiscard]] std::map<std::string, int> days(const std::string& year) const {
        std::map<std::string, int> days;
        for (const std::string& token : tokens(year)) {
            ++days[token.substr(0, head_)];
        }
        return days;
    }

    /// How many tokens stand on no day of the year, or before the one that they follow.
    [[nodiscard]] std::size_t misplaced(const std::string& year) const {
        const BsCalendar& calendar = firstEdition().calendar;
        std::size_t count = 0;
        std::chrono::sys_days before{};
        for (const std::string& token : tokens(year)) {
            const auto number = [&token](std::size_t at, std::size_t length) {
                return numberOf(token.substr(at, length));
            };
            const auto day = head_ == kAdDateLength
                                 ? std::optional{std::chrono::sys_days{std::chrono::year{number(0, 4)} / number(4, 2) /
                                                                       number(6, 2)}}
                                 : calendar.toDays(bsDate(numberOf(year), static_cast<unsigned>(number(2, 2)),
                                                          static_cast<unsigned>(number(0, 2))));
            count += !day || *day < before ? 1U : 0U;
            before = day.value_or(before);
        }
        return count;
    }

    /// The answer to a question about all years.
    [[nodiscard]] std::string ofAll(const std::string& fact, const std::string& key) const {
        Texts years, unnamed, twice, unused, idsWithoutName;
        std::set<std::string> used;
        std::size_t count = 0, shortest = 99, longest = 0, separators = 0;
        int lastId = 0;
        std::uint32_t letters = test::fingerprint("");
        for (const auto& [year, list] : years_) {
            years.push_back(year);
            count += list.size();
            std::set<std::string> seen;
            for (const std::string& token : list) {
                used.insert(token.substr(head_));
                if (!named(token)) unnamed.push_back(year + "/" + token);
                if (!seen.insert(token).second) twice.push_back(year + "/" + token);
            }
        }
        for (const auto& [id, name] : names_) {
            lastId = std::max(lastId, numberOf(id));
            shortest = std::min(shortest, utf16Length(name));
            longest = std::max(longest, utf16Length(name));
            separators += name.find_first_of("~^") != std::string_view::npos ? 1U : 0U;
        }
        for (int id = 1; id <= lastId; ++id) {
            const std::string text = std::to_string(id);
            if (!names_.contains(text)) {
                idsWithoutName.push_back(text);
                continue;
            }
            if (!used.contains(text)) unused.push_back(text);
            letters = test::fingerprint(names_.at(text), test::fingerprint(text, letters));
        }
        std::sort(unnamed.begin(), unnamed.end());
        if (fact == "name") return std::string(names_.contains(key) ? names_.at(key) : "");
        const std::map<std::string, std::string> answers{{"years", joined(years, " ")},
                                                         {"tokens", std::to_string(count)},
                                                         {"names", std::to_string(names_.size())},
                                                         {"fingerprint", std::to_string(letters)},
                                                         {"last-id", std::to_string(lastId)},
                                                         {"ids-without-name", joined(idsWithoutName, " ")},
                                                         {"ids-not-used", joined(unused, " ")},
                                                         {"shortest-name", std::to_string(shortest)},
                                                         {"longest-name", std::to_string(longest)},
                                                         {"names-with-separator", std::to_string(separators)},
                                                         {"tokens-without-name", joined(unnamed, " ")},
                                                         {"tokens-twice", joined(twice, " ")}};
        return answers.contains(fact) ? answers.at(fact) : "no such fact";
    }

    /// The answer to a question about one year's list.
    [[nodiscard]] std::string ofYear(const std::string& year, const std::string& fact, const std::string& key) const {
        const Texts list = tokens(year);
        if (list.empty()) return "no such list";
        std::set<std::string> ids;
        Texts unnamed, early, leftOut, ofSize;
        int most = 0, several = 0;
        for (const std::string& token : list) {
            ids.insert(token.substr(head_));
            if (!named(token)) unnamed.push_back(token);
        }
        const auto byDay = days(year);
        for (const auto& [day, count] : byDay) {
            most = std::max(most, count);
            several += count > 1 ? 1 : 0;
            if (std::to_string(count) == key) ofSize.push_back(day);
            if (numberOf(day.substr(2)) < numberOf(key)) early.push_back(day);
        }
        if (fact == "days-left-out-from-month") {
            const BsCalendar& calendar = firstEdition().calendar;
            for (auto month = static_cast<unsigned>(numberOf(key)); month <= 12; ++month) {
                for (unsigned day = 1; day <= calendar.daysIn({BsYear{numberOf(year)}, BsMonth{month}}); ++day) {
                    const std::string text = std::to_string(10000 + day * 100 + month).substr(1);
                    if (!byDay.contains(text)) leftOut.push_back(text);
                }
            }
            return joined(leftOut, " ");
        }
        const auto onDay = byDay.find(key);
        const std::map<std::string, std::string> answers{
            {"tokens", std::to_string(list.size())},
            {"first", list.front()},
            {"last", list.back()},
            {"distinct-ids", std::to_string(ids.size())},
            {"most-a-day", std::to_string(most)},
            {"at-most-a-day", most <= 6 ? "6" : std::to_string(most)},
            {"names", std::to_string(list.size() - unnamed.size())},
            {"ids-without-name", joined(unnamed, " ")},
            {"count", std::to_string(std::count(list.begin(), list.end(), key))},
            {"misplaced", std::to_string(misplaced(year))},
            {"days", std::to_string(byDay.size())},
            {"days-of-several", std::to_string(several)},
            {"days-of", joined(ofSize, " ")},
            {"days-before-month", joined(early, " ")},
            {"tokens-on", std::to_string(onDay == byDay.end() ? 0 : onDay->second)}};
        return answers.contains(fact) ? answers.at(fact) : "no such fact";
    }

private:
    const TextMap& names_;
    std::size_t head_;
    std::map<std::string, Texts> years_;
};

class FirstEdition : public testing::Test {
protected:
    [[nodiscard]] std::string answer(const std::string& kind, const std::string& year, const std::string& fact,
                                     const std::string& key) const {
        if (fact == "day") {
            return joined(kind == "events" ? events.getEventAtYearAndDayMonth(year, key)
                                           : tithis.getTithiAtYearAndDayMonth(year, key),
                          " | ");
        }
        if (fact == "after" || fact == "first-after" || fact == "after-count") {
            const std::size_t slash = key.find('/');
            const Texts later = events.getUpcomingEventsOfYearAfterMonthAndDay(
                std::stoul(year), std::stoul(key.substr(0, slash)), std::stoul(key.substr(slash + 1)));
            return fact == "after"         ? joined(later, " | ")
                   : fact == "first-after" ? (later.empty() ? "" : later.front())
                                           : std::to_string(later.size());
        }
        if (fact == "not-in-the-year") {
            return notInTheYear();
        }
        const Lists& lists = kind == "events" ? eventLists : kind == "tithis" ? tithiLists : importantLists;
        return year == "all" ? lists.ofAll(fact, key) : lists.ofYear(year, fact, key);
    }

    /// The important events of 2070 that its list does not have on their day.
    [[nodiscard]] std::string notInTheYear() const {
        const Texts year = eventLists.tokens("2070");
        Texts missing;
        for (const std::string& token : importantLists.tokens("2070")) {
            const std::chrono::sys_days day{std::chrono::year{numberOf(token.substr(0, 4))} /
                                            numberOf(token.substr(4, 2)) / numberOf(token.substr(6, 2))};
            const BsDate date = firstEdition().calendar.toDate(day).value_or(BsDate{});
            const std::string head = std::to_string(10000 + unsigned{date.day} * 100 + unsigned{date.month}).substr(1);
            if (std::find(year.begin(), year.end(), head + token.substr(8)) == year.end()) missing.push_back(token);
        }
        return joined(missing, " ");
    }

    DataStoreEvents events;
    DataStoreTithi tithis;
    Lists eventLists{events.events(), events.events_map(), kDayMonthLength};
    Lists tithiLists{tithis.tithi(), tithis.tithi_map(), kDayMonthLength};
    Lists importantLists{events.events(), events.imp_events(), kAdDateLength};
};

// Each line of the file names the mistake that it catches: a token lost or moved, a name respelled, a day without one.
TEST_F(FirstEdition, HoldsToWhatIsKnownOfIt) {
    std::ifstream file{SOURCE_DIR "/tests/almanac/first_edition_facts.txt"};
    int facts = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        const std::size_t colon = line.find(':');
        ASSERT_NE(colon, std::string::npos) << line;
        std::istringstream question{line.substr(0, colon)};
        std::string kind, year, fact, key;
        question >> kind >> year >> fact >> key;
        const std::string expected = colon + 2 < line.size() ? line.substr(colon + 2) : "";
        EXPECT_EQ(answer(kind, year, fact, key), expected) << line;
        ++facts;
    }
    EXPECT_EQ(facts, 151);
}

// The numbers that stand for the lists' names, by the sky: 21 tokens tell another
// tithi than the one of their sunrise, mostly its neighbour.
TEST_F(FirstEdition, NumbersItsTithisAsTheSkyHasThem) {
    const panchanga::Panchanga sky{panchanga::kNepalReckoning};
    int untrue = 0, all = 0;
    for (const BsYear year : firstEdition().almanac.years()) {
        const auto running = sky.dayTithis(*firstEdition().calendar.toDays({year, BsMonth{1}, BsDay{1}}), 366);
        for (const AlmanacDay& day : firstEdition().almanac.year(year)) {
            const auto& now = running.at(static_cast<std::size_t>((day.day - running.front().day).count()));
            for (const Tithi& tithi : day.tithis) {
                if (tithi.number == 0) continue;  // a name of none
                ++all;
                untrue += tithi.number == now.tithi || tithi.number == now.skipped ? 0 : 1;
            }
        }
    }
    EXPECT_EQ(untrue, 21);
    EXPECT_GT(all, 2000);
}

// A name of the current edition's own must not reach the lists of 2015, nor be hidden by theirs.
TEST_F(FirstEdition, KeepsItsSpellings) {
    EXPECT_EQ(firstEdition().almanac.eventName(529), "\u0905\u093eर्य दिवस");
    EXPECT_EQ(currentEdition().almanac.eventName(529), "\u0906र्य दिवस");
}

}  // namespace
}  // namespace dinmala
