#include "app/FaceChoice.h"

#include <gtest/gtest.h>

namespace dinmala {
namespace {

TEST(FaceChoice, FollowsWhatIsAskedElseWhatIsThere) {
    struct Case {
        Surroundings around;
        FaceKind kind;
        bool saysWhy;
    };
    for (const Case& one :
         {Case{{"lines", true, true, true}, FaceKind::lines, false},
          Case{{"terminal", true, true, false}, FaceKind::terminal, false},
          Case{{"panel", false, false, true}, FaceKind::panel, false},
          Case{{"", true, true, true}, FaceKind::panel, false}, Case{{{}, true, true, true}, FaceKind::panel, false},
          Case{{{}, true, false, true}, FaceKind::terminal, true},
          Case{{{}, false, false, true}, FaceKind::terminal, true},
          Case{{{}, true, false, false}, FaceKind::panel, false},  // the watcher comes late
          Case{{{}, false, false, false}, FaceKind::lines, false}}) {
        const auto choice = chooseFace(one.around);
        ASSERT_TRUE(choice);
        EXPECT_EQ(choice->kind, one.kind);
        EXPECT_EQ(!choice->why.empty(), one.saysWhy);
    }
    EXPECT_FALSE(chooseFace({"Panel", true, true, true}).has_value());
}

}  // namespace
}  // namespace dinmala
