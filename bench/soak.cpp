// Ten years of the shell on a moved clock: what it shows is at every step what a shell started then shows, and the
// memory it holds does not grow.
// usage: soak [YEARS]   exit 1 where either fails
#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "tests/support/LongLife.h"

namespace {

using namespace std::chrono_literals;
using dinmala::test::LongLife;

/// Bytes of the heap in use, and of the process in memory.
struct Memory {
    std::size_t heap = mallinfo2().uordblks;
    std::size_t resident = [] {
        std::size_t pages = 0;
        std::ifstream statm("/proc/self/statm");
        statm >> pages >> pages;
        return pages * 4096;
    }();
};

/// Texts differ in length from day to day. One byte lost at each refresh would be 180 KiB.
constexpr std::size_t kHeapBound = 4 << 10;
constexpr std::size_t kResidentBound = 512 << 10;

bool report(const LongLife& life) {
    for (const std::string& fault : life.faults) std::printf("FAULT: %s\n", fault.c_str());
    return life.faults.empty();
}

}  // namespace

int main(int argc, char** argv) {
    // What the allocator keeps at hand for each size would count as in use.
    if (std::getenv("GLIBC_TUNABLES") == nullptr) {
        setenv("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0:glibc.malloc.mxfast=0", 1);
        execv("/proc/self/exe", argv);
    }
    const std::chrono::years years{argc > 1 ? std::atoi(argv[1]) : 10};
    const auto begin = std::chrono::steady_clock::now();
    bool good = true;

    // BS 2065 to 2071 have lists, the years after them none.
    const auto birth = 2008y / 4 / 13;
    LongLife life(birth, LongLife::Compare::everyStep, {"year", "month", "day", "dow", "time", "tithi", "event"});
    life.liveUntil(birth + std::chrono::years{1});
    const Memory first;
    life.liveUntil(birth + years);
    const Memory last;
    good = report(life) && good;

    std::uint64_t steps = 0;
    for (const auto middle : {1942y / 4 / 13, 2043y / 4 / 14}) {
        const std::chrono::sys_days day = middle;
        LongLife end(day - std::chrono::days{40}, LongLife::Compare::everyStep, {"month", "day", "time"});
        end.liveUntil(day + std::chrono::days{40});
        good = report(end) && good;
        steps += end.steps;
    }

    const auto seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf("%d years: %llu refreshes compared with a fresh shell, %llu more at the table's ends, %.1f s\n",
                static_cast<int>(years.count()), static_cast<unsigned long long>(life.comparisons),
                static_cast<unsigned long long>(steps), seconds);
    std::printf("heap in use after the first year and at the end: %zu and %zu bytes (at most %zu more)\n", first.heap,
                last.heap, kHeapBound);
    std::printf("resident: %zu and %zu KiB (at most %zu more)\n", first.resident >> 10, last.resident >> 10,
                kResidentBound >> 10);
    good = last.heap <= first.heap + kHeapBound && last.resident <= first.resident + kResidentBound && good;
    std::puts(good ? "ok" : "FAILED");
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
