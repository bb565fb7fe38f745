// Today in both calendars, or what an AD date (yyyyMMdd) is in Bikram Sambat.
#include <iostream>
#include <string>

#include "calendar/DataStore.h"

int main(int argc, char** argv) {
    // A store stands for the moment at which it was made: make a new one to refresh.
    const dinmala::DataStore store;
    const std::string adDate = argc > 1 ? argv[1] : store.getCurrentNepalDateTime();

    // Nothing for a day that its month does not have.
    const auto bsDate = store.convertAd2Bs(adDate);
    if (!bsDate) {
        std::cerr << adDate << " is not a day\n";
        return 1;
    }
    std::cout << store.getWeekDayName("bs", "long", store.getWeekDayByAd(adDate)) << " " << *bsDate << "\n";

    // The catalogues take a year and day with month: "2070", "0101".
    if (argc == 1 && store.coversToday()) {
        const std::string day = std::to_string(100 + store.getBsCurrentDay()).substr(1);
        const std::string month = std::to_string(100 + store.currentBSMonth()).substr(1);
        for (const std::string& event : store.getDayEvent(std::to_string(store.currentBSYear()), day + month)) {
            std::cout << event << "\n";
        }
    }
}
