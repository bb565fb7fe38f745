// What a conversion costs against a plain scan: all days of the table, text in,
// text out, on one core. The unit is measured in the same run, so the ratios hold
// on a slow machine and on a busy one; of several rounds the fastest counts.
//
// The plain scan is the same conversion by a store that was handed the table as
// 1212 text records of its own: it reads them one after the other.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "almanac/Edition.h"
#include "calendar/DataStore.h"
#include "calendar/MonthRecord.h"

namespace {

using dinmala::DataStore;
using Conversion = std::optional<std::string> (DataStore::*)(std::string_view) const;

/// Nanoseconds for each text; the lengths of the results go into `check`.
double nanoseconds(const DataStore& store, Conversion convert, const std::vector<std::string>& texts, int rounds,
                   std::size_t& check) {
    double best = 1e18;
    for (int round = 0; round < rounds; ++round) {
        check = 0;
        const auto start = std::chrono::steady_clock::now();
        for (const std::string& text : texts) {
            const auto converted = (store.*convert)(text);
            check += converted ? converted->size() + static_cast<std::size_t>(converted->back()) : 1'000'000;
        }
        const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
        best = std::min(best, took.count() / static_cast<double>(texts.size()));
    }
    return best;
}

/// The same days as values, of the embedded months and of a table that begins elsewhere: nanoseconds a date.
template <typename From, typename Convert>
double typedNanoseconds(const std::vector<From>& days, Convert&& convert) {
    double best = 1e18;
    for (int round = 0; round < 100; ++round) {
        std::int64_t check = 0;
        const auto start = std::chrono::steady_clock::now();
        for (const From& day : days) check += convert(day);
        const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
        if (check == 0) std::fputs("nothing was converted\n", stderr);
        best = std::min(best, took.count() / static_cast<double>(days.size()));
    }
    return best;
}

void reportTyped(const char* name, const dinmala::BsCalendar& calendar, double adUnit, double bsUnit) {
    std::vector<std::chrono::sys_days> civil;
    std::vector<dinmala::BsDate> dates;
    for (auto day = calendar.firstDay(); day <= calendar.lastDay(); day += std::chrono::days{1}) {
        civil.push_back(day);
        dates.push_back(*calendar.toDate(day));
    }
    const double toBs = typedNanoseconds(civil, [&](std::chrono::sys_days day) {
        return static_cast<std::int64_t>(unsigned{calendar.toDate(day)->day});
    });
    const double toAd = typedNanoseconds(
        dates, [&](const dinmala::BsDate& date) { return calendar.toDays(date)->time_since_epoch().count(); });
    std::printf("%-24s %10.3f ns, %.0f times the plain scan (targets: 5 ns, 1000 times)\n",
                (std::string{name} + ", days to BS").c_str(), toBs, adUnit / toBs);
    std::printf("%-24s %10.3f ns, %.0f times the plain scan (targets: 5 ns, 450 times)\n",
                (std::string{name} + ", BS to days").c_str(), toAd, bsUnit / toAd);
}

/// @return nanoseconds of the plain scan, or 0 when the two do not agree
double report(const char* name, Conversion convert, const std::vector<std::string>& texts, double target) {
    const DataStore store;
    DataStore plain;
    plain.setDataArray(std::vector<std::string>{store.dataArray()});
    std::size_t fastCheck = 0;
    std::size_t plainCheck = 0;
    const double unit = nanoseconds(plain, convert, texts, 7, plainCheck);
    const double fast = nanoseconds(store, convert, texts, 100, fastCheck);
    std::printf("%-24s %10.3f ns, plain scan %.0f ns: %.0f times (target: at least %.0f times)\n", name, fast, unit,
                unit / fast, target);
    if (fastCheck != plainCheck) std::fprintf(stderr, "%s: the two do not agree\n", name);
    return fastCheck == plainCheck ? unit : 0;
}

}  // namespace

int main() {
    const DataStore store;
    std::vector<std::string> adDates;
    std::vector<std::string> bsDates;
    for (const std::string& record : store.dataArray()) {
        const int length = dinmala::fieldValue(record, dinmala::record::kBsNoOfDays);
        for (int day = 1; day <= length; ++day) {
            bsDates.push_back((day < 10 ? "0" : "") + std::to_string(day) + record.substr(0, 6));
            std::string adDate = store.convertBs2Ad(bsDates.back()).value_or("");
            std::erase(adDate, '-');
            adDates.push_back(std::move(adDate));
        }
    }
    std::printf("all %zu days of the table\n", adDates.size());
    const double adUnit = report("AD to BS", &DataStore::convertAd2Bs, adDates, 700);
    const double bsUnit = report("BS to AD", &DataStore::convertBs2Ad, bsDates, 400);
    reportTyped("typed", dinmala::firstEdition().calendar, adUnit, bsUnit);
    std::vector<std::uint8_t> lengths;
    for (unsigned i = 0; i < dinmala::kMonthCount; ++i) lengths.push_back(static_cast<std::uint8_t>(29 + i * 7 % 4));
    const auto other = dinmala::BsCalendar::make({dinmala::BsYear{1900}, dinmala::BsMonth{5}}, {}, lengths);
    reportTyped("any table", *other, adUnit, bsUnit);
    return adUnit > 0 && bsUnit > 0 ? 0 : 1;
}
