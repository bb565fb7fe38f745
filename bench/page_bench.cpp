// What leafing through the calendar's page costs before anything is drawn.
#include <benchmark/benchmark.h>

#include "window/DayDetails.h"

namespace dinmala {
namespace {

Page page() { return {currentEdition(), std::chrono::sys_days{std::chrono::year{2026} / 11 / 23}, {}}; }

// A month forth and a month back, in turns.
void monthFlip(benchmark::State& state) {
    Page flipped = page();
    bool forth = false;
    for ([[maybe_unused]] auto _ : state) {
        forth = !forth;
        benchmark::DoNotOptimize(flipped.press(forth ? PageKey::monthForward : PageKey::monthBack));
    }
}
BENCHMARK(monthFlip);

void detailsOfADay(benchmark::State& state) {
    const Page shown = page();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(dayDetails(shown));
}
BENCHMARK(detailsOfADay);

}  // namespace
}  // namespace dinmala
