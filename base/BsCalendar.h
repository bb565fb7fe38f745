/// A Bikram Sambat calendar as a value: any table of month lengths from any first day.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "base/BsDate.h"
#include "base/Result.h"

namespace dinmala {

/// Turns BS dates to civil days and back, without a search, for the months of its table.
///
/// Copies share the table, so a copy costs a pointer. Nothing throws; what lies outside
/// the table gives nothing, as each operation says.
class BsCalendar {
public:
    /// One month of the table.
    struct Month {
        std::int32_t firstDay = 0;  ///< its first day, in days since 1970-01-01
        BsYearMonth name;           ///< which month it is
        std::uint8_t length = 0;    ///< its own days

        [[nodiscard]] std::chrono::sys_days first() const { return std::chrono::sys_days{std::chrono::days{firstDay}}; }
    };

    /// A calendar of consecutive months.
    ///
    /// @param firstMonth the month that the first length belongs to
    /// @param firstDay   its first day
    /// @param lengths    days of each month, 28 to 33
    /// @return the error when there is no month, a length is out of that range, or the table
    ///         leaves the years 1 to 9999
    [[nodiscard]] static Result<BsCalendar> make(BsYearMonth firstMonth, std::chrono::sys_days firstDay,
                                                 std::span<const std::uint8_t> lengths);

    [[nodiscard]] BsDate firstDate() const { return {table_->firstMonth.year, table_->firstMonth.month, BsDay{1}}; }
    [[nodiscard]] BsDate lastDate() const;
    [[nodiscard]] std::chrono::sys_days firstDay() const { return table_->first; }
    [[nodiscard]] std::chrono::sys_days lastDay() const { return table_->first + std::chrono::days{table_->days - 1}; }
    [[nodiscard]] bool covers(std::chrono::sys_days day) const { return offsetOf(day) < table_->days; }

    /// The months in order, and the place of a month among them: months().size() or more for
    /// one outside the table.
    [[nodiscard]] std::span<const Month> months() const { return table_->months; }
    [[nodiscard]] std::size_t indexOf(BsYearMonth month) const {
        // A month before the first wraps to a number past the last.
        return month.month.ok() ? static_cast<std::size_t>((month - table_->firstMonth).count()) : ~std::size_t{0};
    }
    /// The place of the month that holds a day; months().size() for a day that the table does not cover.
    [[nodiscard]] std::size_t indexOf(std::chrono::sys_days day) const {
        const std::uint64_t offset = offsetOf(day);
        if (offset >= table_->days) return table_->months.size();
        // At most two months begin within a block.
        std::size_t index = table_->monthAtBlock[offset / kBlock];
        const auto number = static_cast<std::int32_t>(day.time_since_epoch().count());
        while (number >= table_->months[index].firstDay + table_->months[index].length) ++index;
        return index;
    }

    /// Days of a month, or of a whole year; 0 where the table does not have (all of) it.
    [[nodiscard]] unsigned daysIn(BsYearMonth month) const;
    [[nodiscard]] unsigned daysIn(BsYear year) const;

    [[nodiscard]] bool has(const BsDate& date) const {
        const std::size_t index = indexOf(date.yearMonth());
        return index < table_->months.size() && unsigned{date.day} - 1 < table_->months[index].length;
    }

    /// The civil day of a date; nothing for a date that the table does not have.
    [[nodiscard]] std::optional<std::chrono::sys_days> toDays(const BsDate& date) const {
        const std::size_t index = indexOf(date.yearMonth());
        if (index >= table_->months.size()) return std::nullopt;
        const Month& month = table_->months[index];
        const unsigned offset = unsigned{date.day} - 1;
        if (offset >= month.length) return std::nullopt;
        return month.first() + std::chrono::days{offset};
    }

    /// The date of a civil day; nothing for a day that the table does not cover.
    [[nodiscard]] std::optional<BsDate> toDate(std::chrono::sys_days day) const {
        const std::size_t index = indexOf(day);
        if (index >= table_->months.size()) return std::nullopt;
        const Month& month = table_->months[index];
        const auto number = static_cast<std::int32_t>(day.time_since_epoch().count());
        return BsDate{month.name.year, month.name.month, BsDay{static_cast<unsigned>(number - month.firstDay) + 1}};
    }

    /// 1 for the first day of its year; 0 for a date that the table does not have, or whose
    /// year begins before the table.
    [[nodiscard]] unsigned dayOfYear(const BsDate& date) const;

    friend bool operator==(const BsCalendar& a, const BsCalendar& b);

private:
    struct Table {
        BsYearMonth firstMonth;
        std::chrono::sys_days first;
        std::uint32_t days = 0;
        std::vector<Month> months;
        std::vector<std::uint16_t> monthAtBlock;  // the month that holds the first of each 32 days
    };

    explicit BsCalendar(std::shared_ptr<const Table> table) : table_(std::move(table)) {}

    /// From the first day on. A day before it wraps to a number past the last, and no count is cut: days far away are
    /// outside too.
    [[nodiscard]] std::uint64_t offsetOf(std::chrono::sys_days day) const {
        return static_cast<std::uint64_t>(day.time_since_epoch().count()) -
               static_cast<std::uint64_t>(table_->first.time_since_epoch().count());
    }

    static constexpr std::uint32_t kBlock = 32;

    std::shared_ptr<const Table> table_;
};

}  // namespace dinmala
