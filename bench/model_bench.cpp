// What one refresh and one search cost. They defend "rebuild everything at every
// refresh" with numbers: run build/release/bench/model_bench.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "agenda/EditionSource.h"
#include "base/Text.h"
#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"

namespace dinmala {
namespace {

// 2013-10-14 12:00 in Nepal, a day with tithi and events.
Moment pinned() {
    return Moment{std::chrono::sys_days{std::chrono::year{2013} / 10 / 14}} + std::chrono::hours{6} +
           std::chrono::minutes{15};
}

// As the shell refreshes: a new store with both catalogues, then the seven pieces.
void refresh(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        const DataStore ds{pinned};
        const std::string year = std::to_string(ds.currentBSYear());
        benchmark::DoNotOptimize(DataStoreFunctions::convertStringNumber2Nepali(year));
        benchmark::DoNotOptimize(ds.getMonthName("bs", "long", ds.currentBSMonth()));
        benchmark::DoNotOptimize(
            DataStoreFunctions::getNepaliDateDigitFor(static_cast<std::int32_t>(ds.getBsCurrentDay())));
        benchmark::DoNotOptimize(
            ds.getWeekDayName("bs", "short", static_cast<std::uint64_t>(intValue(ds.getCurrentBSDayOfWeek()))));
        benchmark::DoNotOptimize(ds.getCurrentBSTime());
        const std::string key = padded(ds.getBsCurrentDay(), 2) + padded(ds.currentBSMonth(), 2);
        benchmark::DoNotOptimize(joined(ds.getDayTithi(year, key), "/ "));
        benchmark::DoNotOptimize(joined(ds.getDayEvent(year, key), "/ "));
    }
}
BENCHMARK(refresh)->Unit(benchmark::kMicrosecond);

// The current edition as the shell refreshes: the folders looked at, a store without lists, the day's almanac.
void refreshCurrent(benchmark::State& state) {
    EditionSource source;
    for ([[maybe_unused]] auto _ : state) {
        const Edition& edition = source.get(EditionId::current);
        const DataStore ds{pinned, StoreTexts{{}, {}, {}, edition.calendar, {}}};
        const auto day = edition.almanac.day(*edition.calendar.toDate(std::chrono::floor<std::chrono::days>(pinned())));
        benchmark::DoNotOptimize(DataStoreFunctions::convertStringNumber2Nepali(std::to_string(ds.currentBSYear())));
        benchmark::DoNotOptimize(ds.getMonthName("bs", "long", ds.currentBSMonth()));
        benchmark::DoNotOptimize(
            DataStoreFunctions::getNepaliDateDigitFor(static_cast<std::int32_t>(ds.getBsCurrentDay())));
        benchmark::DoNotOptimize(ds.getCurrentBSTime());
        std::string events;
        for (const Event& event : day->events) events += event.name;
        benchmark::DoNotOptimize(events);
    }
}
BENCHMARK(refreshCurrent)->Unit(benchmark::kMicrosecond);

void storeOfTheCurrentEdition(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(storeTexts(currentEdition()));
}
BENCHMARK(storeOfTheCurrentEdition)->Unit(benchmark::kMillisecond);

void bothCatalogues(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        const DataStoreEvents events{pinned};
        const DataStoreTithi tithis;
        benchmark::DoNotOptimize(&events);
        benchmark::DoNotOptimize(&tithis);
    }
}
BENCHMARK(bothCatalogues)->Unit(benchmark::kMicrosecond);

void eventsOfADay(benchmark::State& state) {
    const DataStoreEvents events{pinned};
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(events.getEventAtYearAndDayMonth("2070", "2806"));
}
BENCHMARK(eventsOfADay)->Unit(benchmark::kMicrosecond);

/// Every day of the table as AD and BS text, in an order that no predictor knows.
std::vector<std::string> days(const DataStore& store, bool bs) {
    std::vector<std::string> texts;
    std::uint32_t random = 1;
    for (int i = 0; i < 4096; ++i) {
        random = random * 1664525u + 1013904223u;
        const std::string& record = store.dataArray()[(random >> 8) % kMonthCount];
        texts.push_back(bs ? "15" + record.substr(0, 6) : record.substr(8, 8));
    }
    return texts;
}

void findIndexByAd(benchmark::State& state) {
    const DataStore store{pinned};
    const auto texts = days(store, false);
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(store.findIndexByAd(texts[i++ % texts.size()]));
}
BENCHMARK(findIndexByAd);

void findIndexByBs(benchmark::State& state) {
    const DataStore store{pinned};
    const auto texts = days(store, true);
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(store.findIndexByBs(texts[i++ % texts.size()]));
}
BENCHMARK(findIndexByBs);

}  // namespace
}  // namespace dinmala
