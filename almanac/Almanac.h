/// What a day of the BS calendar has: its tithis and its events, as values.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/BsCalendar.h"
#include "base/Grade.h"

namespace dinmala {

/// "published", "sure", "near", "open"; "none", "observed", "group", "national".
[[nodiscard]] std::string_view gradeName(Grade grade);
[[nodiscard]] std::string_view holidayName(Holiday holiday);

/// The half of a lunar month.
enum class Paksha : std::uint8_t { bright, dark };

// --- A year as its data file tells it: numbers, no names ---------------------------------------

struct EventEntry {
    std::uint16_t id = 0;
    Holiday holiday = Holiday::none;
    Grade grade = Grade::sure;
    friend bool operator==(const EventEntry&, const EventEntry&) = default;
};

struct YearDay {
    BsDate date;
    std::chrono::sys_days day;
    Grade dateGrade = Grade::published;  ///< of the BS date
    std::uint8_t tithi = 0;              ///< running at sunrise, 1 to 30
    std::uint8_t skipped = 0;            ///< the next one, when it runs at no sunrise; else 0
    Grade tithiGrade = Grade::sure;
    std::vector<EventEntry> events;  ///< as they are listed
    friend bool operator==(const YearDay&, const YearDay&) = default;
};

struct YearAlmanac {
    BsYear year;
    bool published = false;     ///< Nepal has published the year's months
    std::vector<YearDay> days;  ///< every day of the year, in order
    friend bool operator==(const YearAlmanac&, const YearAlmanac&) = default;
};

// --- A day as it is shown: with names -------------------------------------------------------------

/// A tithi of a day, under the name by which its edition lists it.
struct Tithi {
    std::uint8_t number = 0;  ///< 1 to 30: 15 the full moon, 30 the new moon; 0 when the list's name is no tithi
    std::string_view name;
    Grade grade = Grade::sure;
    [[nodiscard]] Paksha paksha() const { return number <= 15 ? Paksha::bright : Paksha::dark; }
};

struct Event {
    std::uint16_t id = 0;
    std::string_view name;
    Holiday holiday = Holiday::none;
    Grade grade = Grade::sure;
};

struct AlmanacDay {
    BsDate date;
    std::chrono::sys_days day;
    Grade grade = Grade::published;  ///< of the BS date; the worse of it and the tithi's for a year not published
    std::vector<Tithi> tithis;       ///< the one at sunrise first
    std::vector<Event> events;       ///< in list order

    /// The best holiday among the events.
    [[nodiscard]] Holiday holiday() const;
};

/// Where an almanac's days come from.
class AlmanacSource {
public:
    AlmanacSource() = default;
    AlmanacSource(const AlmanacSource&) = delete;
    AlmanacSource& operator=(const AlmanacSource&) = delete;
    virtual ~AlmanacSource() = default;

    [[nodiscard]] virtual bool graded() const = 0;
    [[nodiscard]] virtual std::vector<BsYear> years() const = 0;
    [[nodiscard]] virtual std::optional<AlmanacDay> day(const BsDate& date) const = 0;
    [[nodiscard]] virtual std::vector<AlmanacDay> year(BsYear year) const = 0;
    [[nodiscard]] virtual std::optional<YearAlmanac> numbers(BsYear year) const = 0;
    [[nodiscard]] virtual std::string_view eventName(std::uint16_t id) const = 0;
};

/// The tithis and events of some years: a cheap value. Names are views into program text, or into
/// the texts that the almanac was made from.
class Almanac {
public:
    explicit Almanac(std::shared_ptr<const AlmanacSource> source) : source_(std::move(source)) {}

    /// Whether days, tithis and events carry grades and holidays. Where they do not, those fields say nothing.
    [[nodiscard]] bool graded() const { return source_->graded(); }

    /// The years that have any list, ascending.
    [[nodiscard]] std::vector<BsYear> years() const { return source_->years(); }
    [[nodiscard]] bool holds(BsYear year) const;

    /// A day with what is listed on it; nothing for a day that its calendar does not have, or a year without
    /// lists.
    [[nodiscard]] std::optional<AlmanacDay> day(const BsDate& date) const { return source_->day(date); }

    /// Every day of a year, in order; empty for a year without lists.
    [[nodiscard]] std::vector<AlmanacDay> year(BsYear year) const { return source_->year(year); }

    /// A year as its data file tells it; nothing for a year without lists, and where days carry no grades.
    [[nodiscard]] std::optional<YearAlmanac> numbers(BsYear year) const { return source_->numbers(year); }

    /// The name of an event; "" for an id without one.
    [[nodiscard]] std::string_view eventName(std::uint16_t id) const { return source_->eventName(id); }

private:
    std::shared_ptr<const AlmanacSource> source_;
};

}  // namespace dinmala
