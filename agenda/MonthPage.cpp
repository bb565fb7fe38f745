#include "agenda/MonthPage.h"

#include "base/Names.h"

namespace dinmala {

std::optional<MonthPage> monthPage(const BsCalendar& calendar, BsYearMonth month) {
    const std::size_t index = calendar.indexOf(month);
    if (index >= calendar.months().size()) return std::nullopt;
    const BsCalendar::Month& row = calendar.months()[index];
    return MonthPage{month, row.length, row.first(), std::chrono::weekday{row.first()}};
}

std::vector<AlmanacDay> monthDays(const Edition& edition, BsYearMonth month) {
    std::vector<AlmanacDay> days;
    const auto page = monthPage(edition.calendar, month);
    if (!page) return days;
    days.reserve(page->length);
    for (unsigned day = 1; day <= page->length; ++day) {
        const BsDate date{month.year, month.month, BsDay{day}};
        auto found = edition.almanac.day(date);
        if (!found) found = AlmanacDay{date, page->first + std::chrono::days{day - 1}, Grade::published, {}, {}};
        days.push_back(*std::move(found));
    }
    return days;
}

std::string adMonthsOf(const MonthPage& page) {
    const std::chrono::year_month_day first{page.first};
    const std::chrono::year_month_day last{page.last()};
    std::string name{adMonthShort(first.month())};
    if (first.year() != last.year()) name += " " + std::to_string(int{first.year()});
    name += "/";
    name += adMonthShort(last.month());
    return name + " " + std::to_string(int{last.year()});
}

}  // namespace dinmala
