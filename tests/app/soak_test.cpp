#include <gtest/gtest.h>

#include <vector>

#include "tests/support/LongLife.h"

namespace dinmala {
namespace {

using namespace std::chrono_literals;
using test::LongLife;

const std::vector<const char*> kPieces{"year", "month", "day", "dow", "time", "tithi", "event"};

// What stays from an earlier refresh shows here: a piece, a row or a picture that is
// not written again. bench/soak lives ten years with a comparison at every step.
TEST(Soak, ASpringLeavesNothingBehind) {
    // From BS 2071, the last year with lists, into one without.
    LongLife life(2015y / 3 / 10, LongLife::Compare::aroundMidnight, kPieces);
    life.liveUntil(2015y / 6 / 10);
    EXPECT_TRUE(life.faults.empty()) << testing::PrintToString(life.faults);
    EXPECT_EQ(life.steps, 92u * 57 + 3 * 4);
    EXPECT_EQ(life.comparisons, 92u * 11 + 3 * 4);
}

TEST(Soak, BothEndsOfTheTableAreCrossed) {
    for (const auto middle : {1942y / 4 / 13, 2043y / 4 / 14}) {
        for (const auto& shown : {kPieces, std::vector<const char*>{"icon"}}) {
            const std::chrono::sys_days day = middle;
            LongLife life(day - std::chrono::days{3}, LongLife::Compare::everyStep, shown);
            life.liveUntil(day + std::chrono::days{3});
            EXPECT_TRUE(life.faults.empty()) << testing::PrintToString(life.faults);
            EXPECT_EQ(life.comparisons, life.steps);
        }
    }
}

}  // namespace
}  // namespace dinmala
