// How long the computed sky takes: a year of tithis may take 10 ms.

#include "Panchanga.h"

#include <benchmark/benchmark.h>

namespace {

using namespace dinmala::panchanga;
using namespace std::chrono;

// 365 sunrises with the tithi of each, and the ends of all 371 or so tithis of the year.
void yearOfTithis(benchmark::State& state) {
    const Panchanga panchanga;
    const sys_days first{2013y / April / 14};
    for (auto _ : state) {
        benchmark::DoNotOptimize(panchanga.dayTithis(first, 365));
        const double end = startOfDay(first + days{365}, kKathmandu);
        Tithi tithi = panchanga.tithiAt(startOfDay(first, kKathmandu));
        while (tithi.begin < end) {
            tithi = panchanga.tithiAt(tithi.end + 1e-4);
            benchmark::DoNotOptimize(tithi);
        }
    }
}
BENCHMARK(yearOfTithis)->Unit(benchmark::kMillisecond);

void oneDay(benchmark::State& state) {
    const Panchanga panchanga;
    const sys_days day{2013y / October / 14};
    for (auto _ : state) {
        benchmark::DoNotOptimize(panchanga.dayTithi(day));
    }
}
BENCHMARK(oneDay)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
