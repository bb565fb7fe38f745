// How long a year of the almanac takes: its tithis and festivals may take 10 ms.

#include "panchanga/Panchanga.h"
#include "tools/YearMaker.h"

#include <benchmark/benchmark.h>

namespace {

using namespace dinmala;
using namespace std::chrono;

// All that a year's file holds: every tithi and festival of the year with its grade, from the rules as read.
void yearOfTheAlmanac(benchmark::State& state) {
    const tools::CurrentRules rules{SOURCE_DIR};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(tools::makeYear(2083, rules));
    }
}
BENCHMARK(yearOfTheAlmanac)->Unit(benchmark::kMillisecond);

// 365 sunrises with the tithi of each, and the ends of all 371 or so tithis of the year.
void yearOfTithis(benchmark::State& state) {
    const panchanga::Panchanga panchanga{panchanga::kNepalReckoning};
    const sys_days first{2026y / April / 14};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(panchanga.dayTithis(first, 365));
        benchmark::DoNotOptimize(
            panchanga.tithis(startOfDay(first, panchanga.place()), startOfDay(first + days{365}, panchanga.place())));
    }
}
BENCHMARK(yearOfTithis)->Unit(benchmark::kMillisecond);

void oneDay(benchmark::State& state) {
    const panchanga::Panchanga panchanga{panchanga::kNepalReckoning};
    const sys_days day{2026y / November / 23};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(panchanga.dayTithi(day));
    }
}
BENCHMARK(oneDay)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
