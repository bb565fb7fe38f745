#include "window/Conversion.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "agenda/Sentences.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Tells the part that is not understood, where it is not the whole text.
std::string whyNotRead(std::string_view text, const TextError& error) {
    const std::string western = inWestern(text);  // as the error's column counts
    if (error.column < 2 || error.column > western.size()) {
        return tr("{1} is not a date such as 2070-01-31", {shownText(text)});
    }
    const std::string_view rest = std::string_view{western}.substr(error.column - 1);
    return tr("{1} is not understood", {shownText(rest.substr(0, rest.find_first_of(" ,")))});
}

std::string answerText(const FoundDay& found, PageLook look) {
    const std::string bs = dateWords(found.bs, look.language, look.digits);
    const std::string ad = dateWords(found.day, look.language, look.digits);
    const bool isAd = found.told == CalendarKind::ad;
    return (isAd ? ad : bs) + " = " + (isAd ? bs : ad) + ", " +
           std::string{weekDayName(weekDayNumber(found.day), look.language)};
}

}  // namespace

Conversion convert(std::string_view text, const Page& page) {
    text = trimmed(text);
    Conversion result;
    if (text.empty()) return result;
    const Result<DateFields> read = readDate(text);
    if (!read) {
        result.problem = whyNotRead(text, read.error());
        return result;
    }
    const BsCalendar& calendar = page.edition().calendar;
    const auto written = [&](CalendarKind kind) {
        const int year = read->year.value_or(yearOfToday(page.today(), kind, calendar));
        return dateText(bsDate(year, static_cast<unsigned>(read->month), static_cast<unsigned>(read->day)));
    };
    for (const CalendarKind kind : {CalendarKind::ad, CalendarKind::bs}) {
        if (read->calendar.value_or(kind) != kind) continue;
        if (const auto found = readDay(written(kind), kind, calendar)) {
            result.answers.push_back({*found, answerText(*found, page.look())});
        }
    }
    const auto fromToday = [&](const Conversion::Answer& one) { return std::chrono::abs(one.day.day - page.today()); };
    std::stable_sort(result.answers.begin(), result.answers.end(),
                     [&](const auto& a, const auto& b) { return fromToday(a) < fromToday(b); });
    if (!result.answers.empty()) return result;

    // Of which calendar it is meant to be, its year tells best.
    const auto yearsOff = [&](CalendarKind kind) {
        return std::abs(*read->year - yearOfToday(page.today(), kind, calendar));
    };
    const CalendarKind meant = read->calendar                                             ? *read->calendar
                               : yearsOff(CalendarKind::ad) <= yearsOff(CalendarKind::bs) ? CalendarKind::ad
                                                                                          : CalendarKind::bs;
    result.problem = problemWith(written(meant), meant, calendar);
    return result;
}

}  // namespace dinmala
