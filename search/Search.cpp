#include "search/Search.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "agenda/ReadDay.h"
#include "agenda/Sentences.h"
#include "base/Lines.h"
#include "base/Text.h"
#include "i18n/Translation.h"
#include "search/FestivalNames.h"

namespace dinmala {

namespace {

using std::chrono::sys_days;
using Words = std::vector<std::string>;

constexpr std::size_t kLongest = 120;  // bytes of a text that is read
constexpr std::size_t kMost = 5;

template <std::size_t N>
bool isOneOf(std::string_view word, const std::array<std::string_view, N>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Small Latin letters, Western digits; without commas and the point after a word.
Words wordsIn(std::string_view text) {
    std::string plain = inWestern(text);
    for (char& c : plain) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c == ',' || c == '\n' || c == '\r' || c == '?') c = ' ';
    }
    Words words;
    for (std::string_view word : wordsOf(plain)) {
        if (word.size() > 1 && word.ends_with('.') && word.find('.') == word.size() - 1) word.remove_suffix(1);
        words.emplace_back(word);
    }
    return words;
}

std::optional<CalendarKind> calendarNamed(std::string_view word) {
    constexpr auto kBs = std::to_array<std::string_view>({"bs", "b.s", "b.s.", "वि.सं", "वि.सं.", "विसं", "nepali"});
    constexpr auto kAd = std::to_array<std::string_view>({"ad", "a.d", "a.d.", "ई.सं", "ई.सं.", "सन्", "english"});
    if (isOneOf(word, kBs)) return CalendarKind::bs;
    if (isOneOf(word, kAd)) return CalendarKind::ad;
    return std::nullopt;
}

CalendarKind other(CalendarKind kind) { return kind == CalendarKind::ad ? CalendarKind::bs : CalendarKind::ad; }

class Query {
public:
    Query(std::string_view text, const Edition& edition, sys_days today)
        : edition_(edition), today_(today), words_(wordsIn(text)) {}

    [[nodiscard]] std::vector<SearchHit> hits() const {
        if (words_.empty()) return {};
        std::vector<SearchHit> found;
        if (const auto day = namedDay()) {
            if (edition_.calendar.toDate(*day)) found = {{*day, CalendarKind::ad, 0}};
        } else {
            found = dates();
            if (found.empty()) found = festivals();
        }
        if (found.size() > kMost && found.back().day >= today_) {
            std::erase_if(found, [&](const SearchHit& hit) { return hit.day < today_; });
        }
        if (found.size() > kMost) found.resize(kMost);
        return found;
    }

private:
    /// "today", "today bs", "nepali date": one word that names a day, or none for today where the rest says enough.
    [[nodiscard]] std::optional<sys_days> namedDay() const {
        struct Named {
            std::string_view word;
            int fromToday;
        };
        constexpr auto kDays = std::to_array<Named>({{"today", 0},
                                                     {"today's", 0},
                                                     {"todays", 0},
                                                     {"aaja", 0},
                                                     {"aja", 0},
                                                     {"aajako", 0},
                                                     {"आज", 0},
                                                     {"आजको", 0},
                                                     {"tomorrow", 1},
                                                     {"bholi", 1},
                                                     {"भोलि", 1},
                                                     {"भोलिको", 1},
                                                     {"yesterday", -1},
                                                     {"हिजो", -1},
                                                     {"हिजोको", -1}});
        constexpr auto kRest =
            std::to_array<std::string_view>({"date", "miti", "मिति", "in", "गते", "gate", "ko", "kati", "कति"});
        std::optional<int> fromToday;
        bool hasCalendar = false, hasDate = false;
        for (const std::string& word : words_) {
            const auto* const day =
                std::find_if(kDays.begin(), kDays.end(), [&](const Named& one) { return one.word == word; });
            if (day != kDays.end()) {
                if (fromToday) return std::nullopt;
                fromToday = day->fromToday;
            } else if (calendarNamed(word) || word == "नेपाली") {
                hasCalendar = true;
            } else if (isOneOf(word, kRest)) {
                hasDate = hasDate || word == "date" || word == "miti" || word == "मिति";
            } else {
                return std::nullopt;
            }
        }
        if (!fromToday && !(hasCalendar && hasDate)) return std::nullopt;
        return today_ + std::chrono::days{fromToday.value_or(0)};
    }

    [[nodiscard]] std::vector<SearchHit> dates() const {
        Words words = words_;
        std::optional<CalendarKind> told;
        if (words.size() > 1 && calendarNamed(words.front())) {
            told = calendarNamed(words.front());
            words.erase(words.begin());
        }
        if (words.size() > 1 && calendarNamed(words.back())) {
            const CalendarKind named = *calendarNamed(words.back());
            words.pop_back();
            if (words.size() > 1 && (words.back() == "in" || words.back() == "to")) {
                words.pop_back();
                told = other(named);
            }
        }
        const bool hasFillers = dropFillers(words);
        const std::string text = joined(words, " ");
        if (text.find_first_not_of("0123456789") == std::string::npos) return {};
        const Result<DateFields> read = readDate(text);
        if (!read || (hasFillers && !read->calendar)) return {};
        if (read->calendar) told = read->calendar;
        std::vector<SearchHit> found;
        for (const CalendarKind kind : {CalendarKind::ad, CalendarKind::bs}) {
            if (told.value_or(kind) != kind) continue;
            if (read->year) {
                add(found, *read, *read->year, kind);
                continue;
            }
            constexpr int kMostYears = 8;  // years from one 29 February to the next
            const int year = yearOfToday(today_, kind, edition_.calendar);
            for (int i = 0; i <= kMostYears && (found.empty() || found.back().day < today_); ++i) {
                add(found, *read, year + i, kind);
            }
        }
        if (read->year) {
            std::stable_sort(found.begin(), found.end(), [&](const SearchHit& a, const SearchHit& b) {
                return std::chrono::abs(a.day - today_) < std::chrono::abs(b.day - today_);
            });
        }
        return found;
    }

    /// Takes out what stands beside a date with a month's name: "7th of Mangsir", "मंसिर ७ गते".
    static bool dropFillers(Words& words) {
        constexpr auto kFillers =
            std::to_array<std::string_view>({"गते", "gate", "gatey", "साल", "sal", "of", "the", "तारिख"});
        const std::size_t before = words.size();
        std::erase_if(words, [&](const std::string& word) { return isOneOf(word, kFillers); });
        bool dropped = words.size() < before;
        for (std::string& word : words) {
            for (const std::string_view end : {"st", "nd", "rd", "th"}) {
                if (word.size() > 4 || !word.ends_with(end)) continue;
                const std::string number = word.substr(0, word.size() - end.size());
                if (!readNumber(number)) continue;
                word = number;
                dropped = true;
            }
        }
        return dropped;
    }

    void add(std::vector<SearchHit>& found, const DateFields& date, int year, CalendarKind kind) const {
        const BsDate written = bsDate(year, static_cast<unsigned>(date.month), static_cast<unsigned>(date.day));
        if (const auto day = readDay(dateText(written), kind, edition_.calendar)) {
            found.push_back({day->day, kind, 0});
        }
    }

    [[nodiscard]] std::vector<SearchHit> festivals() const {
        Words words = words_;
        std::optional<CalendarKind> told;
        if (words.size() > 1) told = calendarNamed(words.back());
        if (told) words.pop_back();
        std::optional<int> year;
        for (const bool atEnd : {true, false}) {
            if (words.empty() || year) break;
            const std::string& word = atEnd ? words.back() : words.front();
            if (word.size() != 4 || !readNumber(word)) continue;
            year = readNumber(word);
            words.erase(atEnd ? words.end() - 1 : words.begin());
        }
        if (told && !year) return {};
        if (words.size() > 1 && words[0] == "next") words.erase(words.begin());
        if (words.size() > 2 && words[0] == "when" && words[1] == "is") words.erase(words.begin(), words.begin() + 2);
        constexpr auto kAsked = std::to_array<std::string_view>({"date", "kahile", "कहिले"});
        if (words.size() > 1 && isOneOf(words.back(), kAsked)) words.pop_back();
        const std::vector<std::uint16_t> ids = festivalNamed(joined(words, " "));
        if (ids.empty()) return {};

        const BsYear now{yearOfToday(today_, CalendarKind::bs, edition_.calendar)};
        const int adNow = yearOfToday(today_, CalendarKind::ad, edition_.calendar);
        if (!year) return nextOf(ids, now);
        const bool isAd = told ? *told == CalendarKind::ad : std::abs(*year - adNow) < std::abs(*year - int{now});
        if (!isAd) return daysOf(ids, BsYear{*year});
        constexpr int kYearsBetween = 56;  // from an AD year's begin to the BS year that it lies in
        auto found = daysOf(ids, BsYear{*year + kYearsBetween});
        const auto later = daysOf(ids, BsYear{*year + kYearsBetween + 1});
        found.insert(found.end(), later.begin(), later.end());
        std::erase_if(found,
                      [&](const SearchHit& hit) { return int{std::chrono::year_month_day{hit.day}.year()} != *year; });
        return found;
    }

    /// The next day of each event; of a festival that goes on over today, also its days that have passed.
    [[nodiscard]] std::vector<SearchHit> nextOf(const std::vector<std::uint16_t>& ids, BsYear now) const {
        constexpr std::chrono::days kFestival{15};  // two days that lie no further apart are one festival's
        constexpr std::chrono::days kYear{385};     // the longest of the Moon's
        std::vector<SearchHit> all = daysOf(ids, now);
        const std::vector<SearchHit> later = daysOf(ids, now + std::chrono::years{1});
        all.insert(all.end(), later.begin(), later.end());
        auto first = std::find_if(all.begin(), all.end(), [&](const SearchHit& hit) { return hit.day >= today_; });
        if (first == all.end()) return {};
        while (first != all.begin() && first->day - std::prev(first)->day <= kFestival) --first;
        std::vector<SearchHit> found;
        for (; first != all.end() && (found.empty() || first->day <= today_ + kYear); ++first) {
            const bool again = std::any_of(found.begin(), found.end(),
                                           [&](const SearchHit& hit) { return hit.event == first->event; });
            if (!again) found.push_back(*first);
        }
        return found;
    }

    /// The days of a BS year that have one of the events.
    [[nodiscard]] std::vector<SearchHit> daysOf(const std::vector<std::uint16_t>& ids, BsYear year) const {
        std::vector<SearchHit> found;
        for (const AlmanacDay& day : edition_.almanac.year(year)) {
            for (const std::uint16_t id : ids) {
                const bool has = std::any_of(day.events.begin(), day.events.end(),
                                             [id](const Event& event) { return event.id == id; });
                if (has) found.push_back({day.day, CalendarKind::ad, id});
            }
        }
        return found;
    }

    const Edition& edition_;
    sys_days today_;
    Words words_;
};

/// How far a day that Nepal has not published can be trusted, in a word or two; "" for another.
std::string trustWords(Grade grade) {
    switch (grade) {
        case Grade::published:
            return {};
        case Grade::sure:
            return tr("reckoned, not published yet");
        case Grade::near:
            return tr("may be a day earlier or later");
        case Grade::open:
            return tr("left open by the reckoning");
    }
    return {};
}

}  // namespace

std::vector<SearchHit> search(std::string_view text, const Edition& edition, sys_days today) {
    if (text.size() > kLongest) return {};
    return Query{text, edition, today}.hits();
}

std::string hitId(const SearchHit& hit) {
    const std::string date = dateText(std::chrono::year_month_day{hit.day});
    if (hit.event != 0) return date + " " + std::to_string(hit.event);
    return date + (hit.told == CalendarKind::ad ? " ad" : " bs");
}

std::optional<SearchHit> hitOf(std::string_view id, const Edition& edition) {
    constexpr std::size_t kLongestId = 15;
    const std::size_t blank = id.find(' ');
    if (id.size() > kLongestId || blank == std::string_view::npos) return std::nullopt;
    const auto day = readDay(id.substr(0, blank), CalendarKind::ad, edition.calendar);
    if (!day) return std::nullopt;
    const std::string_view rest = id.substr(blank + 1);
    SearchHit hit{day->day, rest == "bs" ? CalendarKind::bs : CalendarKind::ad, 0};
    if (rest != "bs" && rest != "ad") {
        hit.event = static_cast<std::uint16_t>(readNumber(rest).value_or(0));
        const auto listed = edition.almanac.day(day->bs);
        const bool has = listed && std::any_of(listed->events.begin(), listed->events.end(),
                                               [&](const Event& event) { return event.id == hit.event; });
        if (!has) return std::nullopt;
    }
    return hitId(hit) == id ? std::optional{hit} : std::nullopt;
}

HitWords hitWords(const SearchHit& hit, const Edition& edition, sys_days today, Language language, Digits digits) {
    const auto date = edition.calendar.toDate(hit.day);
    if (!date) return {};
    const AlmanacDay day = edition.almanac.day(*date).value_or(AlmanacDay{*date, hit.day, {}, {}, {}});
    const std::string bs = dateWords(*date, language, digits), ad = dateWords(hit.day, language, digits);
    const std::string weekDay{weekDayName(weekDayNumber(hit.day), language)};

    const bool isAd = hit.told == CalendarKind::ad;
    HitWords words{(isAd ? bs : ad) + ", " + weekDay, {}, isAd ? bs + ", " + ad : ad + ", " + bs};
    Grade grade = day.grade;
    // A typed BS date is told again: digits may have been meant for the other calendar, and months have many spellings.
    const std::string again = hit.event != 0 ? ad : isAd ? std::string{} : bs;
    std::vector<std::string> told{again, hit.event != 0 ? weekDay : std::string{}, tithiWords(day, language),
                                  distanceWords(hit.day - today, digits)};
    const auto shown = std::find_if(day.events.begin(), day.events.end(), [&](const Event& event) {
        return hit.event != 0 ? event.id == hit.event : event.holiday == Holiday::national;
    });
    std::string name;
    if (shown != day.events.end()) name = eventName(*shown, language);
    if (hit.event != 0 && !name.empty()) {
        words.name = name + ", " + bs;
        words.copy = name + ", " + words.copy;
        grade = gradeOf(day, *shown);
        name = holidayWords(shown->holiday);
    }
    told.push_back(trustWords(grade));
    told.push_back(name);
    std::erase(told, std::string{});
    words.description = joined(told, " · ");
    return words;
}

}  // namespace dinmala
