#include "agenda/ReadDay.h"

#include <algorithm>

namespace dinmala {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

bool isMonth(int month) { return month >= 1 && month <= 12; }

year_month_day adDate(const DateFields& date) { return std::chrono::year{*date.year} / date.month / date.day; }

/// REQUIRES: a month from 1 to 12.
BsDate bsDateOf(const DateFields& date) {
    return bsDate(*date.year, static_cast<unsigned>(date.month), static_cast<unsigned>(date.day));
}

}  // namespace

std::optional<FoundDay> readDay(std::string_view text, CalendarKind assumed, const BsCalendar& calendar) {
    const Result<DateFields> read = readDate(text);
    if (!read || !read->year || !isMonth(read->month)) return std::nullopt;
    const CalendarKind told = read->calendar.value_or(assumed);
    if (told == CalendarKind::bs) return foundDay(bsDateOf(*read), calendar);
    const year_month_day ad = adDate(*read);
    if (!ad.ok()) return std::nullopt;
    const auto bs = calendar.toDate(sys_days{ad});
    return bs ? std::optional{FoundDay{*bs, sys_days{ad}, told}} : std::nullopt;
}

std::optional<FoundDay> foundDay(const BsDate& date, const BsCalendar& calendar) {
    const auto day = calendar.toDays(date);
    return day ? std::optional{FoundDay{date, *day, CalendarKind::bs}} : std::nullopt;
}

int yearOfToday(sys_days today, CalendarKind kind, const BsCalendar& calendar) {
    today = std::clamp(today, calendar.firstDay(), calendar.lastDay());
    return kind == CalendarKind::bs ? int{calendar.toDate(today)->year} : int{year_month_day{today}.year()};
}

NoDay whyNoDay(std::string_view text, CalendarKind assumed, const BsCalendar& calendar) {
    using Why = NoDay::Why;
    const Result<DateFields> read = readDate(text);
    if (!read || !read->year) return {Why::notADate, assumed, {}};
    const CalendarKind told = read->calendar.value_or(assumed);
    if (!isMonth(read->month)) return {Why::noMonth, told, *read};
    const unsigned length = told == CalendarKind::bs
                                ? calendar.daysIn(bsDateOf(*read).yearMonth())
                                : unsigned{(adDate(*read).year() / adDate(*read).month() / std::chrono::last).day()};
    if (length > 0 && (read->day < 1 || static_cast<unsigned>(read->day) > length)) {
        return {Why::noDay, told, *read, length};
    }
    return {Why::outside, told, *read};
}

}  // namespace dinmala
