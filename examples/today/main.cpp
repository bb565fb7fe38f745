// Today in both calendars, or an AD date such as 2013-04-14, with its tithi and festivals.
#include <chrono>
#include <iostream>

#include "almanac/Edition.h"
#include "base/BsCalendar.h"
#include "base/DateText.h"
#include "base/Names.h"
#include "base/TimeZone.h"

int main(int argc, char** argv) {
    using namespace dinmala;
    using namespace std::chrono;

    // The calendar as Nepal publishes it; firstEdition() is as it was first made.
    const Edition& edition = currentEdition();

    sys_days day{floor<days>(kathmandu().toLocal(systemNow())).time_since_epoch()};
    if (argc > 1) {
        const auto read = readDate(argv[1]);
        const year_month_day ad =
            read && read->year ? std::chrono::year{*read->year} / read->month / read->day : year_month_day{};
        if (!ad.ok()) {
            std::cerr << argv[1] << " is not a day\n";
            return 1;
        }
        day = ad;
    }
    const auto date = edition.calendar.toDate(day);
    if (!date) {
        std::cerr << "the calendar reaches from " << dateText(edition.calendar.firstDate()) << " to "
                  << dateText(edition.calendar.lastDate()) << "\n";
        return 1;
    }
    std::cout << nameAt(kWeekDaysNepali, weekday{day}.c_encoding() + 1) << " " << dateText(*date) << "\n";

    if (const auto listed = edition.almanac.day(*date)) {
        for (const Tithi& tithi : listed->tithis) std::cout << tithiTitle(tithi.number) << "\n";
        for (const Event& event : listed->events) std::cout << event.name << "\n";
    }
}
