// Nepal's clock and today's date; the name lookups.
#include <chrono>

#include "base/Names.h"
#include "base/Text.h"
#include "base/TimeZone.h"
#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"

namespace dinmala {

namespace {

/// What a calendar and a clock on a wall in Nepal show at one moment.
struct NepalTime {
    explicit NepalTime(Moment moment)
        : local(kathmandu().toLocal(moment)),
          day(std::chrono::floor<std::chrono::days>(local)),
          date(day),
          time(local - day) {}

    LocalTime local;
    std::chrono::local_days day;
    std::chrono::year_month_day date;
    std::chrono::hh_mm_ss<std::chrono::seconds> time;
};

std::uint64_t unsignedYear(const std::chrono::year_month_day& date) {
    return static_cast<std::uint64_t>(std::int64_t{int{date.year()}});
}

std::string digits(std::chrono::seconds::rep number) {
    return std::string{DataStoreFunctions::getNepaliTimeDigitFor(static_cast<std::int32_t>(number))};
}

std::string hoursAndMinutes(const NepalTime& now) {
    return digits(now.time.hours().count()) + ":" + digits(now.time.minutes().count());
}

}  // namespace

std::string DataStore::getCurrentNepalDateTime() const {
    const NepalTime now{clock_()};
    const auto two = [](auto number) { return padded(static_cast<std::uint64_t>(number), 2); };
    return padded(unsignedYear(now.date), 4) + two(unsigned{now.date.month()}) + two(unsigned{now.date.day()}) + " " +
           two(now.time.hours().count()) + ":" + two(now.time.minutes().count());
}

std::string DataStore::getCurrentAdDay() const { return std::to_string(unsigned{NepalTime{clock_()}.date.day()}); }

std::string DataStore::getCurrentAdMonth() const { return padded(unsigned{NepalTime{clock_()}.date.month()}, 2); }

std::string DataStore::getCurrentAdYear() const { return padded(unsignedYear(NepalTime{clock_()}.date), 4); }

std::string DataStore::getCurrentBSDayOfWeek() const {
    return std::to_string(std::chrono::weekday{NepalTime{clock_()}.day}.c_encoding() + 1);
}

std::string DataStore::getCurrentBSTime() const { return hoursAndMinutes(NepalTime{clock_()}); }

std::string DataStore::getCurrentBSTimeFull() {
    const NepalTime now{clock_()};
    reload_flag_ = now.time.to_duration() == std::chrono::seconds{1} ? 1 : 0;
    return hoursAndMinutes(now) + ":" + digits(now.time.seconds().count());
}

std::uint64_t DataStore::getNoOfDaysInMonth(std::uint64_t year, std::uint64_t month) const {
    constexpr std::uint64_t kLimit = 9999;
    if (year > kLimit || month > kLimit) return 0;
    const std::chrono::year_month first =
        std::chrono::year{static_cast<int>(year)} / 1 + std::chrono::months{static_cast<int>(month) - 1};
    return unsigned{(first / std::chrono::last).day()};
}

std::uint64_t DataStore::getAdPreviousYear() const {
    const auto year = static_cast<std::uint64_t>(intValue(getCurrentAdYear()));
    return intValue(getCurrentAdMonth()) == 1 ? year - 1 : year;
}

std::uint64_t DataStore::getAdPreviousMonth() const {
    const auto month = static_cast<std::uint64_t>(intValue(getCurrentAdMonth()));
    return month == 1 ? 12 : month - 1;
}

std::uint64_t DataStore::getBsCurrentDay() const {
    if (!coversToday_) return 0;
    const auto startDay = static_cast<std::int64_t>(currentADStartDay());
    const auto startMonth = static_cast<std::int64_t>(currentADStartMonth());
    const std::int64_t month = intValue(getCurrentAdMonth());
    const std::int64_t day = intValue(getCurrentAdDay());
    const auto lengthBefore = static_cast<std::int64_t>(getNoOfDaysInMonth(getAdPreviousYear(), getAdPreviousMonth()));
    // A BS month begins in one AD month and ends in the next: either today is in
    // the first of the two, or the first one's length comes on top.
    const bool inStartMonth = day >= startDay && month == startMonth;
    return static_cast<std::uint64_t>((inStartMonth ? 0 : lengthBefore) + day - startDay + 1);
}

std::string_view DataStore::getWeekDayName(std::string_view calendar, std::string_view form,
                                           std::uint64_t weekDay) const {
    if (calendar == "bs") return nameAt(kWeekDaysNepali, weekDay);
    return nameAt(form == "long" ? kWeekDaysLong : kWeekDaysShort, weekDay);
}

std::string_view DataStore::getMonthName(std::string_view calendar, std::string_view form, std::uint64_t month) const {
    if (calendar == "bs") return nameAt(kBsMonths, month);
    return nameAt(form == "long" ? kAdMonthsLong : kAdMonthsShort, month);
}

}  // namespace dinmala
