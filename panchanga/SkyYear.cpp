#include "panchanga/SkyYear.h"

#include <algorithm>

namespace dinmala::panchanga {

using std::chrono::days;
using std::chrono::sys_days;

// More than any shift and than the reach of 'first Sunday from', together.
constexpr days kAround{20};

SkyYear::SkyYear(int year, BsCalendar calendar, const Panchanga& panchanga)
    : year_(year),
      calendar_(std::move(calendar)),
      panchanga_(panchanga),
      first_(*calendar_.toDays(bsDate(year, 1, 1))),
      last_(first_ + days{calendar_.daysIn(BsYear{year}) - 1}),
      tithis_(panchanga.tithis(startOfDay(from(), panchanga.place()), startOfDay(to(), panchanga.place()))),
      sun_(from() - days{7}, to() + days{7}, panchanga.place()) {
    findDoubts();
}

void SkyYear::findDoubts() {
    // An extra month precedes a lost one by some three months at most.
    constexpr double kReach = 150.0;
    constexpr int kFullMoon = 15;
    std::vector<Doubt> doubts(tithis_.size());
    bool any = false;
    LunarMonth month{};
    for (std::size_t i = 0; i < tithis_.size(); ++i) {
        const Tithi& tithi = tithis_[i].tithi;
        if (i == 0 || tithi.number == 1) {
            month = panchanga_.lunarMonthAt(0.5 * (tithi.begin + tithi.end));
        }
        doubts[i].twoMonths = panchanga_.sankrantisIn(month) > 1;
        any = any || doubts[i].twoMonths;
    }
    if (!any) {
        return;
    }
    for (std::size_t lost = 0; lost < tithis_.size(); ++lost) {
        if (!doubts[lost].twoMonths) {
            continue;
        }
        std::size_t first = lost;
        for (std::size_t i = 0; i < lost; ++i) {
            if (tithis_[i].date.adhika && tithis_[lost].tithi.end - tithis_[i].tithi.begin < kReach) {
                first = std::min(first, i);
            }
        }
        // The dark half before the extra month is as much in doubt as the bright one after it.
        while (first > 0 && tithis_[first - 1].tithi.number > kFullMoon) {
            --first;
        }
        for (std::size_t i = first; i <= lost; ++i) {
            doubts[i].unsettled = true;
        }
    }
    doubts_ = std::move(doubts);
}

sys_days SkyYear::from() const { return first_ - kAround; }

sys_days SkyYear::to() const { return last_ + kAround; }

}  // namespace dinmala::panchanga
