#pragma once

/// The sky over one BS year: its tithis in their lunar months, its sunrises and sunsets, and which months are in doubt.

#include "base/BsCalendar.h"
#include "panchanga/Panchanga.h"

#include <chrono>
#include <vector>

namespace dinmala::panchanga {

/// The sky over one BS year and some days around it, reckoned once for all festivals.
class SkyYear {
public:
    /// REQUIRES: `year` in the table of `calendar`. Keeps a reference to `panchanga`.
    SkyYear(int year, BsCalendar calendar, const Panchanga& panchanga);

    [[nodiscard]] int year() const { return year_; }
    [[nodiscard]] std::chrono::sys_days first() const { return first_; }
    [[nodiscard]] std::chrono::sys_days last() const { return last_; }
    [[nodiscard]] std::chrono::sys_days from() const;  ///< where the days before the year begin
    [[nodiscard]] std::chrono::sys_days to() const;    ///< where the days after it end
    [[nodiscard]] const BsCalendar& calendar() const { return calendar_; }
    [[nodiscard]] const Panchanga& panchanga() const { return panchanga_; }
    [[nodiscard]] const std::vector<NamedTithi>& tithis() const { return tithis_; }

    /// Sunrise and sunset from a week before from() to a week after to().
    [[nodiscard]] const SunTimes& sun() const { return sun_; }

    /// Whether the tithi, one of tithis(), is in a month with two sankrantis, so that the next month's name is its own
    /// too; and whether it is in doubt which month it belongs to: from the half before an extra month to the end of the
    /// lost one that follows it.
    [[nodiscard]] bool twoMonths(const NamedTithi& tithi) const { return doubtOf(tithi).twoMonths; }
    [[nodiscard]] bool unsettled(const NamedTithi& tithi) const { return doubtOf(tithi).unsettled; }

private:
    struct Doubt {
        bool twoMonths, unsettled;
    };
    [[nodiscard]] Doubt doubtOf(const NamedTithi& tithi) const {
        return doubts_.empty() ? Doubt{} : doubts_[static_cast<std::size_t>(&tithi - tithis_.data())];
    }
    void findDoubts();

    int year_;
    BsCalendar calendar_;
    const Panchanga& panchanga_;
    std::chrono::sys_days first_, last_;
    std::vector<NamedTithi> tithis_;
    SunTimes sun_;
    std::vector<Doubt> doubts_;  // by tithi; empty in a year without a lost month
};

}  // namespace dinmala::panchanga
