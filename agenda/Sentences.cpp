#include "agenda/Sentences.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "almanac/EventWords.h"
#include "base/Text.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

std::string words(unsigned day, std::string_view month, int year, Digits digits) {
    return numberText(day, digits) + " " + std::string{month} + " " +
           numberText(static_cast<std::uint64_t>(year), digits);
}

std::string numbered(const DateFields& date) {
    return dateText(bsDate(*date.year, static_cast<unsigned>(date.month), static_cast<unsigned>(date.day)));
}

/// That Nepal has not published a day's year, and how sure the reckoning is; empty for one that it has.
std::string unpublishedNote(BsYear bsYear, Grade grade) {
    const std::string year = std::to_string(int{bsYear});
    switch (grade) {
        case Grade::published:
            break;
        case Grade::sure:
            return tr("Nepal has not published BS {1} yet: this day is reckoned, and surely so", {year});
        case Grade::near:
            return tr("Nepal has not published BS {1} yet: this day is reckoned, and could be a day off", {year});
        case Grade::open:
            return tr("Nepal has not published BS {1} yet: the reckoning leaves this day open", {year});
    }
    return {};
}

std::string adText(std::chrono::sys_days day) { return dateText(std::chrono::year_month_day{day}); }

}  // namespace

std::string dateWords(const BsDate& date, Language language, Digits digits) {
    return words(unsigned{date.day}, bsMonthName(date.month, language), int{date.year}, digits);
}

std::string dateWords(std::chrono::sys_days day, Language language, Digits digits) {
    const std::chrono::year_month_day date{day};
    return words(unsigned{date.day()}, adMonthName(date.month(), language), int{date.year()}, digits);
}

std::string dayArgument(std::chrono::sys_days day) { return dateWords(day, Language::english, Digits::western); }

std::string clockText(std::chrono::local_time<std::chrono::minutes> minute) {
    const auto ofDay = static_cast<std::uint64_t>((minute - std::chrono::floor<std::chrono::days>(minute)).count());
    return padded(ofDay / 60, 2) + ":" + padded(ofDay % 60, 2);
}

std::string tithiWords(const Tithi& tithi, Language language) {
    return tithi.number != 0 ? tithiTitle(tithi.number, language) : std::string{tithi.name};
}

std::string tithiWords(const AlmanacDay& day, Language language) {
    std::string text;
    for (const Tithi& tithi : day.tithis) {
        if (!text.empty()) text += " / ";
        text += tithiWords(tithi, language);
    }
    return text;
}

std::string_view eventName(const Event& event, Language language) {
    const std::string_view english = language == Language::english ? englishEventName(event.id) : std::string_view{};
    return english.empty() ? event.name : english;
}

std::string holidayWords(Holiday holiday) {
    switch (holiday) {
        case Holiday::none:
            return {};
        case Holiday::observed:
            return tr("observed, offices are open");
        case Holiday::group:
            return tr("holiday of a group or region");
        case Holiday::national:
            return tr("public holiday");
    }
    return {};
}

std::string distanceWords(std::chrono::days fromToday, Digits digits) {
    const auto count = fromToday.count();
    if (count == 0) return tr("today");
    if (count == 1) return tr("tomorrow");
    if (count == -1) return tr("yesterday");
    // Devanagari digits stand in no English sentence.
    if (messageLanguage().empty()) digits = Digits::western;
    const std::string number = numberText(static_cast<std::uint64_t>(count < 0 ? -count : count), digits);
    return count > 0 ? tr("in {1} days", {number}) : tr("{1} days ago", {number});
}

std::string trustNote(const AlmanacDay& day) {
    if (day.grade != Grade::published) return unpublishedNote(day.date.year, day.grade);
    for (const Event& event : day.events) {
        if (event.grade == Grade::open) return trustNote(day, event);
    }
    return {};
}

Grade gradeOf(const AlmanacDay& day, const Event& event) {
    if (day.grade != Grade::published) return std::max(day.grade, event.grade);
    return event.grade > Grade::sure ? event.grade : Grade::published;
}

std::string trustNote(const AlmanacDay& day, const Event& event, Language language) {
    const Grade grade = gradeOf(day, event);
    if (day.grade != Grade::published) return unpublishedNote(day.date.year, grade);
    const std::string name{eventName(event, language)};
    if (grade == Grade::near) return tr("{1}: may be a day earlier or later", {name});
    if (grade == Grade::open) return tr("the reckoning leaves open whether {1} is on this day", {name});
    return {};
}

std::string yearsWithLists(const Edition& edition) {
    const std::vector<BsYear> years = edition.almanac.years();
    if (years.empty()) return "none";
    return tr("{1} to {2}", {std::to_string(int{years.front()}), std::to_string(int{years.back()})});
}

std::string noListsNote(const Edition& edition, BsYear year) {
    return tr("there are no tithis and festivals for BS {1}; this edition has them for {2}",
              {std::to_string(int{year}), yearsWithLists(edition)});
}

std::string withoutControls(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const auto first = static_cast<unsigned char>(text[0]);
        // U+0000 to U+001F and U+007F; U+0080 to U+009F are C2 80 to C2 9F.
        const bool control = first < 0x20 || first == 0x7F ||
                             (length == 2 && first == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0);
        if (length == 0 || control) {
            shown += '?';
        } else {
            shown += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return shown;
}

std::string shownText(std::string_view text) {
    constexpr std::size_t kLongest = 60;
    std::string shown = withoutControls(text.substr(0, kLongest + 4));
    if (text.size() > kLongest) {
        // Not in the middle of a character.
        std::size_t end = std::min(kLongest, shown.size());
        while (end > 0 && (static_cast<unsigned char>(shown[end]) & 0xC0) == 0x80) --end;
        shown.resize(end);
        shown += "...";
    }
    return "\"" + shown + "\"";
}

std::string problemWith(std::string_view text, CalendarKind assumed, const BsCalendar& calendar) {
    const NoDay no = whyNoDay(text, assumed, calendar);
    if (no.why == NoDay::Why::notADate) return tr("{1} is not a date such as 2070-01-31", {shownText(text)});
    const bool ad = no.calendar == CalendarKind::ad;
    const std::string name = (ad ? "AD " : "BS ") + numbered(no.date);
    if (no.why == NoDay::Why::noMonth) return tr("{1}: there is no month {2}", {name, std::to_string(no.date.month)});
    if (no.why == NoDay::Why::noDay) {
        return tr("{1}: the month has days 1 to {2}", {name, std::to_string(no.monthLength)});
    }
    if (ad) {
        return tr("{1} lies outside the table, AD {2} to {3}",
                  {name, adText(calendar.firstDay()), adText(calendar.lastDay())});
    }
    return tr("{1} lies outside the table, BS {2} to {3}",
              {name, std::to_string(int{calendar.firstDate().year}), std::to_string(int{calendar.lastDate().year})});
}

}  // namespace dinmala
