/// The event catalogue: what an event is called, on which BS days of a year
/// events fall, and which events are still to come.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "almanac/YearList.h"
#include "base/Clock.h"

namespace dinmala {

/// The texts that an event catalogue is built from. They must outlive it.
struct EventTexts {
    std::span<const KeyedText> names;           ///< id, name
    std::span<const KeyedText> years;           ///< year key "2070", tokens ddMM + id
    std::span<const KeyedText> importantYears;  ///< year key, tokens yyyyMMdd + id
};

/// The lists compiled into the program, made from almanac/data.
[[nodiscard]] const EventTexts& embeddedEventTexts();

/// Year keys are four Western digits ("2070"); day-month keys two digits of day
/// and two of month ("0207" is day 2 of month 7). Any other key finds nothing.
class DataStoreEvents {
public:
    explicit DataStoreEvents(Clock clock = systemNow, const EventTexts& texts = embeddedEventTexts());

    /// The name of an event id such as "5"; nothing when the id has no name.
    [[nodiscard]] std::optional<std::string_view> getEventByIndex(std::string_view id) const;

    /// The names of a year's events in list order; tokens without a name are
    /// left out. Empty for a year without a list.
    [[nodiscard]] std::vector<std::string> getEventsAtYear(std::uint64_t year) const;

    /// The important events of BS 2070 that have not begun in Nepal, in date
    /// order, whatever the year now: "<name>~भोलि" for tomorrow's, else
    /// "<name>~<days> दिन बाँकी" with Devanagari digits, and "<name>~0" in the
    /// instant at which the event's day begins.
    ///
    /// Makes Nepal time the process's default time zone and leaves it so; that
    /// is deliberate, later day counts rely on it.
    [[nodiscard]] std::vector<std::string> getUpComingEvents() const;

    /// "<name>^<month>/<day>" for each event of a year after the given month and
    /// day, itself not included, in list order; Western digits without leading
    /// zeros. Empty for a year without a list.
    [[nodiscard]] std::vector<std::string> getUpcomingEventsOfYearAfterMonthAndDay(std::uint64_t year,
                                                                                   std::uint64_t month,
                                                                                   std::uint64_t day) const;

    /// The same as values: what getUpcomingEventsOfYearAfterMonthAndDay() spells out.
    struct NamedDay {
        std::uint64_t month;
        std::uint64_t day;
        std::string_view name;
    };
    [[nodiscard]] std::vector<NamedDay> daysAfter(std::uint64_t year, std::uint64_t month, std::uint64_t day) const;

    /// The number of tokens in a year's list, those without a name included; 0
    /// for a year without a list.
    [[nodiscard]] std::uint64_t getNumberOfEventsAtYear(std::uint64_t year) const;

    /// The names of a day's events in list order; see namesOfDay().
    [[nodiscard]] std::vector<std::string> getEventAtYearAndDayMonth(std::string_view year,
                                                                     std::string_view dayMonth) const;

    /// Names by id, lists by year, important lists by year.
    [[nodiscard]] const TextMap& events() const { return *events_; }
    [[nodiscard]] const TextMap& events_map() const { return *events_map_; }
    [[nodiscard]] const TextMap& imp_events() const { return *imp_events_; }

private:
    [[nodiscard]] std::optional<std::string_view> listOfYear(std::uint64_t year) const;

    Clock clock_;
    std::shared_ptr<const TextMap> events_;
    std::shared_ptr<const TextMap> events_map_;
    std::shared_ptr<const TextMap> imp_events_;
};

}  // namespace dinmala
