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

bool report(const char* name, Conversion convert, const std::vector<std::string>& texts, double target) {
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
    return fastCheck == plainCheck;
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
    const bool agree = report("AD to BS", &DataStore::convertAd2Bs, adDates, 700);
    return report("BS to AD", &DataStore::convertBs2Ad, bsDates, 400) && agree ? 0 : 1;
}
