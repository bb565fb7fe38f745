#include "base/BsCalendar.h"

#include <algorithm>
#include <string>

namespace dinmala {

namespace {

constexpr unsigned kShortest = 28;
constexpr unsigned kLongest = 33;

}  // namespace

Result<BsCalendar> BsCalendar::make(BsYearMonth firstMonth, std::chrono::sys_days firstDay,
                                    std::span<const std::uint8_t> lengths) {
    using namespace std::chrono;
    if (lengths.empty()) return TextError{0, 0, "has no month"};
    const BsYearMonth last = firstMonth + std::chrono::months{static_cast<int>(lengths.size()) - 1};
    if (!firstMonth.ok() || !last.ok()) return TextError{0, 0, "leaves the years 1 to 9999"};
    auto table = std::make_shared<Table>();
    table->firstMonth = firstMonth;
    table->first = firstDay;
    table->months.reserve(lengths.size());
    sys_days day = firstDay;
    BsYearMonth name = firstMonth;
    for (const std::uint8_t length : lengths) {
        if (length < kShortest || length > kLongest) {
            return TextError{0, 0, "gives a month " + std::to_string(unsigned{length}) + " days"};
        }
        table->months.push_back({static_cast<std::int32_t>(day.time_since_epoch().count()), name, length});
        day += days{length};
        name += std::chrono::months{1};
    }
    table->days = static_cast<std::uint32_t>((day - firstDay).count());
    std::size_t index = 0;
    for (std::uint32_t offset = 0; offset < table->days; offset += kBlock) {
        const sys_days at = firstDay + days{offset};
        while (at >= table->months[index].first() + days{table->months[index].length}) ++index;
        table->monthAtBlock.push_back(static_cast<std::uint16_t>(index));
    }
    return BsCalendar{std::move(table)};
}

BsDate BsCalendar::lastDate() const {
    const Month& month = table_->months.back();
    return {month.name.year, month.name.month, BsDay{month.length}};
}

unsigned BsCalendar::daysIn(BsYearMonth month) const {
    const std::size_t index = indexOf(month);
    return index < table_->months.size() ? table_->months[index].length : 0;
}

unsigned BsCalendar::daysIn(BsYear year) const {
    const std::size_t first = indexOf({year, BsMonth{1}});
    const std::size_t last = indexOf({year, BsMonth{12}});
    if (first >= table_->months.size() || last >= table_->months.size()) return 0;
    const Month& end = table_->months[last];
    return static_cast<unsigned>(end.firstDay - table_->months[first].firstDay) + end.length;
}

unsigned BsCalendar::dayOfYear(const BsDate& date) const {
    const auto day = toDays(date);
    const std::size_t first = indexOf({date.year, BsMonth{1}});
    if (!day || first >= table_->months.size()) return 0;
    return static_cast<unsigned>((*day - table_->months[first].first()).count()) + 1;
}

bool operator==(const BsCalendar& a, const BsCalendar& b) {
    return a.table_ == b.table_ ||
           (a.table_->firstMonth == b.table_->firstMonth && a.table_->first == b.table_->first &&
            std::ranges::equal(a.table_->months, b.table_->months, {}, &BsCalendar::Month::length,
                               &BsCalendar::Month::length));
}

}  // namespace dinmala
