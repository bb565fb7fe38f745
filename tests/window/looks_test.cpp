// Where the window stands and whether its colours can be read: what it reckons for itself, without a toolkit.
#include <gtest/gtest.h>

#include <random>

#include "window/Contrast.h"
#include "window/Placement.h"

namespace dinmala {
namespace {

bool isWithin(const Box& inner, const Box& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.right() <= outer.right() &&
           inner.bottom() <= outer.bottom();
}

TEST(Placement, StandsBesideAPanelOnEachEdgeAndNeverOverIt) {
    const Box monitor{1366, 40, 1366, 768};  // the second of two, lower than the first
    constexpr int kWidth = 578, kHeight = 700;
    struct Case {
        const char* name;
        Box panel, work, place;
        int x, y;  ///< of a click on the panel
    };
    const Case cases[] = {
        {"top", {1366, 40, 1366, 26}, {1366, 66, 1366, 742}, {2154, 66, 578, 700}, 2700, 50},
        {"bottom", {1366, 780, 1366, 28}, {1366, 40, 1366, 740}, {1711, 80, 578, 700}, 2000, 800},
        {"left", {1366, 40, 40, 768}, {1406, 40, 1326, 768}, {1406, 40, 578, 700}, 1380, 60},
        {"right", {2692, 40, 40, 768}, {1366, 40, 1326, 768}, {2114, 108, 578, 700}, 2710, 800},
    };
    for (const Case& one : cases) {
        const Box work = without(monitor, monitor, one.panel);
        EXPECT_EQ(work, one.work) << one.name;
        EXPECT_EQ(placeBeside(work, one.x, one.y, kWidth, kHeight), one.place) << one.name;
        // The window manager may have taken the panel off already.
        EXPECT_EQ(without(work, monitor, one.panel), work) << one.name;
    }
    EXPECT_EQ(without(monitor, monitor, {0, 0, 1366, 26}), monitor);       // a panel of the other monitor
    EXPECT_EQ(without(monitor, monitor, {1366, 300, 1366, 26}), monitor);  // at no edge
    // What a panel keeps is told from the desktop's edge: over another monitor, or over nothing.
    const Box left{0, 0, 1366, 768}, right{1366, 0, 1366, 768};
    const Box inner{0, 0, 1406, 768};  // of a panel on the right monitor's left edge
    EXPECT_EQ(without(right, right, inner), (Box{1406, 0, 1326, 768}));
    EXPECT_EQ(without(left, left, inner), left);
    EXPECT_EQ(without(left, left, {0, 40, 1406, 728}), left);  // the right one being lower
    EXPECT_EQ(without(monitor, monitor, {1366, 0, 1366, 66}), (Box{1366, 66, 1366, 742}));
    std::mt19937 any{14};
    const Box work{1366, 66, 1366, 742};
    for (int i = 0; i < 1000; ++i) {
        const int x = static_cast<int>(any() % 3000), y = static_cast<int>(any() % 900);
        ASSERT_TRUE(isWithin(placeBeside(work, x, y, kWidth, kHeight), work)) << x << ' ' << y;
    }
    EXPECT_EQ(placeBeside({0, 26, 400, 300}, 390, 10, kWidth, kHeight), (Box{0, 26, kWidth, kHeight}));  // too small
}

TEST(Contrast, EveryColourCanBeReadOnEveryPaper) {
    EXPECT_NEAR(contrast({0, 0, 0}, {1, 1, 1}), 21, 0.01);
    EXPECT_NEAR(contrast({0.4667, 0.4667, 0.4667}, {1, 1, 1}), 4.48, 0.01);  // #777, known to miss by a little
    for (int paper = 0; paper < 27; ++paper) {
        constexpr double kShades[] = {0, 0.5, 1};
        const Colour background{kShades[paper % 3], kShades[paper / 3 % 3], kShades[paper / 9]};
        for (const Colour& wanted : {Colour{0.75, 0.11, 0.16}, Colour{0.21, 0.52, 0.89}, background}) {
            EXPECT_GE(contrast(readable(wanted, background), background), 4.5) << paper;
        }
    }
    const Colour dark{0.1, 0.1, 0.1};
    EXPECT_EQ(readable(dark, {1, 1, 1}).red, dark.red);  // what can be read stays
}

}  // namespace
}  // namespace dinmala
