/// Years, months, days and dates of the Bikram Sambat (BS) calendar as types of their
/// own: they mix neither with those of <chrono> nor with plain numbers.
///
/// How long a month is, and which day of the AD calendar a date is, tells a calendar
/// (BsCalendar.h). What stands here needs none.
#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace dinmala {

/// A BS year such as 2070.
class BsYear {
public:
    BsYear() = default;
    constexpr explicit BsYear(int year) : year_(static_cast<std::int16_t>(year)) {}
    constexpr explicit operator int() const { return year_; }

    /// Whether it is a year of four digits at most, 1 to 9999.
    [[nodiscard]] constexpr bool ok() const { return year_ >= 1 && year_ <= 9999; }

    constexpr BsYear& operator++() { return *this += std::chrono::years{1}; }
    constexpr BsYear& operator--() { return *this -= std::chrono::years{1}; }
    constexpr BsYear& operator+=(std::chrono::years years) {
        return *this = BsYear{year_ + static_cast<int>(years.count())};
    }
    constexpr BsYear& operator-=(std::chrono::years years) { return *this += -years; }
    friend constexpr BsYear operator+(BsYear year, std::chrono::years years) { return year += years; }
    friend constexpr BsYear operator-(BsYear year, std::chrono::years years) { return year -= years; }
    friend constexpr std::chrono::years operator-(BsYear a, BsYear b) { return std::chrono::years{a.year_ - b.year_}; }
    friend constexpr auto operator<=>(BsYear, BsYear) = default;

private:
    std::int16_t year_ = 0;
};

/// A month, 1 (बैशाख) to 12 (चैत्र). Sums count round the year, as those of std::chrono::month.
class BsMonth {
public:
    BsMonth() = default;
    constexpr explicit BsMonth(unsigned month) : month_(static_cast<std::uint8_t>(month)) {}
    constexpr explicit operator unsigned() const { return month_; }

    [[nodiscard]] constexpr bool ok() const { return month_ >= 1 && month_ <= 12; }

    constexpr BsMonth& operator++() { return *this += std::chrono::months{1}; }
    constexpr BsMonth& operator--() { return *this -= std::chrono::months{1}; }
    constexpr BsMonth& operator+=(std::chrono::months months) {
        const int place = (month_ - 1 + static_cast<int>(months.count() % 12) + 12) % 12;
        return *this = BsMonth{static_cast<unsigned>(place) + 1};
    }
    constexpr BsMonth& operator-=(std::chrono::months months) { return *this += -months; }
    friend constexpr BsMonth operator+(BsMonth month, std::chrono::months months) { return month += months; }
    friend constexpr BsMonth operator-(BsMonth month, std::chrono::months months) { return month -= months; }
    friend constexpr auto operator<=>(BsMonth, BsMonth) = default;

private:
    std::uint8_t month_ = 0;
};

/// A day of a month, 1 to 32.
class BsDay {
public:
    BsDay() = default;
    constexpr explicit BsDay(unsigned day) : day_(static_cast<std::uint8_t>(day)) {}
    constexpr explicit operator unsigned() const { return day_; }

    [[nodiscard]] constexpr bool ok() const { return day_ >= 1 && day_ <= 32; }
    friend constexpr auto operator<=>(BsDay, BsDay) = default;

private:
    std::uint8_t day_ = 0;
};

/// A month of a year.
struct BsYearMonth {
    BsYear year;
    BsMonth month;

    [[nodiscard]] constexpr bool ok() const { return year.ok() && month.ok(); }

    constexpr BsYearMonth& operator+=(std::chrono::months months) { return *this = *this + months; }
    constexpr BsYearMonth& operator-=(std::chrono::months months) { return *this = *this + -months; }
    friend constexpr BsYearMonth operator+(BsYearMonth a, std::chrono::months months) {
        const int place = a.place() + static_cast<int>(months.count());
        const int ofYear = place >= 0 ? place / 12 : (place - 11) / 12;
        return {BsYear{ofYear}, BsMonth{static_cast<unsigned>(place - ofYear * 12) + 1}};
    }
    friend constexpr BsYearMonth operator-(BsYearMonth a, std::chrono::months months) { return a + -months; }
    friend constexpr BsYearMonth operator+(BsYearMonth a, std::chrono::years years) {
        return {a.year + years, a.month};
    }
    friend constexpr BsYearMonth operator-(BsYearMonth a, std::chrono::years years) { return a + -years; }
    friend constexpr std::chrono::months operator-(BsYearMonth a, BsYearMonth b) {
        return std::chrono::months{a.place() - b.place()};
    }
    friend constexpr auto operator<=>(const BsYearMonth&, const BsYearMonth&) = default;

private:
    /// Months since month 1 of the year 0.
    [[nodiscard]] constexpr int place() const { return int{year} * 12 + static_cast<int>(unsigned{month}) - 1; }
};

/// A day of the BS calendar. Days are counted by a calendar: turn it to std::chrono::sys_days
/// and back (BsCalendar::toDays(), toDate()).
struct BsDate {
    BsYear year;
    BsMonth month;
    BsDay day;

    /// Whether some calendar may have such a day; BsCalendar::has() tells whether one does.
    [[nodiscard]] constexpr bool ok() const { return year.ok() && month.ok() && day.ok(); }
    [[nodiscard]] constexpr BsYearMonth yearMonth() const { return {year, month}; }

    /// The same day of another month or year, which may not have it.
    friend constexpr BsDate operator+(const BsDate& date, std::chrono::months months) {
        const BsYearMonth moved = date.yearMonth() + months;
        return {moved.year, moved.month, date.day};
    }
    friend constexpr BsDate operator-(const BsDate& date, std::chrono::months months) { return date + -months; }
    friend constexpr BsDate operator+(const BsDate& date, std::chrono::years years) {
        return {date.year + years, date.month, date.day};
    }
    friend constexpr BsDate operator-(const BsDate& date, std::chrono::years years) { return date + -years; }
    friend constexpr auto operator<=>(const BsDate&, const BsDate&) = default;
};

/// A BsDate of plain numbers, as they stand in a text or a table.
[[nodiscard]] constexpr BsDate bsDate(int year, unsigned month, unsigned day) {
    return {BsYear{year}, BsMonth{month}, BsDay{day}};
}

}  // namespace dinmala

template <>
struct std::hash<dinmala::BsYear> {
    std::size_t operator()(dinmala::BsYear year) const noexcept { return std::hash<int>{}(int{year}); }
};

template <>
struct std::hash<dinmala::BsYearMonth> {
    std::size_t operator()(const dinmala::BsYearMonth& month) const noexcept {
        return std::hash<unsigned>{}(static_cast<unsigned>(int{month.year}) * 16 + unsigned{month.month});
    }
};

template <>
struct std::hash<dinmala::BsDate> {
    std::size_t operator()(const dinmala::BsDate& date) const noexcept {
        return std::hash<dinmala::BsYearMonth>{}(date.yearMonth()) * 64 + unsigned{date.day};
    }
};
