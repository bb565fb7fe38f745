// When a person is told of which festivals: a year through, minute by minute, on clocks all over the world.
#include "agenda/FestivalNotice.h"

#include <gtest/gtest.h>

#include <map>

#include "agenda/Today.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using namespace std::chrono;
using test::nepal;

struct Telling {
    Moment at;
    sys_days today;
    sys_days day;
    std::size_t events = 0;
};

/// A person with a clock, a choice, and what was told: kept, as between two starts of the program.
struct Person {
    TellChoice choice;
    TimeZone zone = kathmandu();
    ToldFestivals told = {};
    std::vector<Telling> tellings = {};
    std::size_t notices = 0;

    /// True when something was told.
    bool look(Moment now) {
        const auto due = dueNotice(currentEdition(), now, zone, choice, told);
        if (!due) return false;
        ++notices;
        for (const AlmanacDay& day : due->days) {
            tellings.push_back({now, due->today, day.day, day.events.size()});
            told.days.push_back(day.day);
        }
        return true;
    }
    void lookFrom(Moment from, Moment to, minutes step) {
        for (Moment now = from; now < to; now += step) look(now);
    }
    [[nodiscard]] std::vector<sys_days> days() const {
        std::vector<sys_days> result;
        for (const Telling& telling : tellings) result.push_back(telling.day);
        return result;
    }
};

/// The days of BS 2083 that have something to tell, counted apart from what is under test.
std::vector<sys_days> daysWith(TellOf of) {
    std::vector<sys_days> result;
    for (const AlmanacDay& day : currentEdition().almanac.year(BsYear{2083})) {
        if (of == TellOf::all ? !day.events.empty() : day.holiday() >= Holiday::group) result.push_back(day.day);
    }
    return result;
}

Moment beginOf(sys_days day) { return Moment{day} - (hours{5} + minutes{45}); }

constexpr sys_days kFirst{2026y / 4 / 14};  // BS 2083
constexpr sys_days kLast{2027y / 4 / 13};

// Each day once, at its time and no other, in every zone; also where no clock shows 07:00 in a day of Nepal's.
TEST(FestivalNotice, TellsOfEachDayOfAYearOnce) {
    ASSERT_EQ(kFirst, *currentEdition().calendar.toDays(bsDate(2083, 1, 1)));
    ASSERT_EQ(kLast + days{1}, *currentEdition().calendar.toDays(bsDate(2084, 1, 1)));
    struct Case {
        const char* zone;
        TellWhen when;
        int from, until;  ///< minutes of the person's day within which all of it is told
    };
    const Case cases[] = {
        {"Asia/Kathmandu", TellWhen::morning, 420, 420},        {"Asia/Kathmandu", TellWhen::evening, 1080, 1080},
        {"Europe/London", TellWhen::morning, 420, 420},         {"Europe/London", TellWhen::evening, 1080, 1080},
        {"America/New_York", TellWhen::morning, 420, 420},      {"America/Los_Angeles", TellWhen::morning, 615, 675},
        {"Pacific/Auckland", TellWhen::morning, 420, 435},      {"Pacific/Auckland", TellWhen::evening, 1080, 1080},
        {"Pacific/Kiritimati", TellWhen::morning, 495, 495},    {"Pacific/Chatham", TellWhen::morning, 420, 480},
        {"Atlantic/Cape_Verde", TellWhen::evening, 1080, 1080}, {"Atlantic/Azores", TellWhen::evening, 1080, 1095},
    };
    for (const Case& one : cases) {
        const test::MachineZoneGuard zone(one.zone);
        for (const TellOf of : {TellOf::holidays, TellOf::all}) {
            if (of == TellOf::holidays && &one != cases) continue;  // the choice knows no zones
            SCOPED_TRACE(std::string{one.zone} + (of == TellOf::all ? " all" : " holidays"));
            const bool evening = one.when == TellWhen::evening;
            Person person{{one.when, of}, machine(), {{kFirst - days{1}}, {}}};
            person.lookFrom(beginOf(kFirst) - (evening ? hours{24} : hours{0}),
                            beginOf(kLast) + (evening ? hours{0} : hours{24}), minutes{15});
            EXPECT_EQ(person.days(), daysWith(of));
            EXPECT_EQ(person.notices, person.tellings.size());
            for (const Telling& telling : person.tellings) {
                ASSERT_EQ(telling.day - telling.today, days{evening ? 1 : 0});
                const auto shown = machine().toLocal(telling.at);
                const auto minute = floor<minutes>(shown - floor<days>(shown)).count();
                ASSERT_TRUE(minute >= one.from && minute < one.until + 1) << minute;
            }
        }
    }
}

// Dashain's days, BS 2083-06-31 to 07-06: one after the other, all with a day off.
TEST(FestivalNotice, TellsWhatIsLeftToTellAfterSleep) {
    Person morning{{TellWhen::morning}};
    EXPECT_FALSE(morning.look(nepal(2026, 10, 11, 6, 59)));
    EXPECT_TRUE(morning.look(nepal(2026, 10, 11, 23, 59)));  // started late
    EXPECT_FALSE(morning.look(nepal(2026, 10, 11, 23, 59)));
    EXPECT_FALSE(morning.look(nepal(2026, 10, 12, 0, 0)));
    EXPECT_FALSE(morning.look(nepal(2026, 10, 12, 12, 0)));
    EXPECT_TRUE(morning.look(nepal(2026, 10, 19, 9, 0)));  // the 17th and 18th were slept through
    EXPECT_EQ(morning.days(), (std::vector<sys_days>{2026y / 10 / 11, 2026y / 10 / 19}));

    // Late for the day itself: tomorrow comes with it, and not again in the evening.
    Person evening{{TellWhen::evening}};
    EXPECT_FALSE(evening.look(nepal(2026, 10, 16, 17, 59)));
    EXPECT_TRUE(evening.look(nepal(2026, 10, 18, 0, 1)));
    EXPECT_EQ(evening.days(), (std::vector<sys_days>{2026y / 10 / 18, 2026y / 10 / 19}));
    EXPECT_FALSE(evening.look(nepal(2026, 10, 18, 18, 0)));
    EXPECT_FALSE(evening.look(nepal(2026, 10, 19, 17, 59)));
    EXPECT_TRUE(evening.look(nepal(2026, 10, 19, 18, 0)));
    EXPECT_EQ(evening.notices, 2u);
}

TEST(FestivalNotice, TellsNothingTwiceWhateverTheClockIsSetTo) {
    Person person{{TellWhen::evening, TellOf::all}};
    person.lookFrom(nepal(2026, 10, 1), nepal(2026, 11, 1), minutes{30});
    const auto october = person.days();
    person.lookFrom(nepal(2031, 1, 1), nepal(2031, 1, 20), minutes{30});  // years ahead, and back
    person.lookFrom(nepal(2026, 9, 25), nepal(2026, 11, 3), minutes{20});
    person.zone = {"", [](Moment) { return hours{-8}; }};  // the person travels
    person.choice = {TellWhen::morning, TellOf::holidays};
    person.lookFrom(nepal(2026, 10, 1), nepal(2026, 11, 3), minutes{20});
    std::map<sys_days, int> times;
    for (const Telling& telling : person.tellings) {
        ++times[telling.day];
        ASSERT_GE(telling.day, telling.today);
    }
    for (const auto& [day, count] : times) ASSERT_EQ(count, 1);
    for (const sys_days day : october) EXPECT_TRUE(times.contains(day));
    EXPECT_TRUE(times.contains(sys_days{2026y / 9 / 26}));  // but what the set clock brings anew is told
}

TEST(FestivalNotice, LeavesOutWhatItWasToldToLeaveOut) {
    constexpr std::uint16_t kGhatasthapana = 57;
    Person person{{TellWhen::morning, TellOf::all}};
    const Moment now = nepal(2026, 10, 11, 7, 0);
    const auto before = dueNotice(currentEdition(), now, person.zone, person.choice, person.told);
    ASSERT_TRUE(before);
    EXPECT_EQ(before->days[0].events.size(), 4u);
    EXPECT_EQ(before->days[0].events[0].id, kGhatasthapana);  // the day off first
    person.told.left = {kGhatasthapana};
    const auto after = dueNotice(currentEdition(), now, person.zone, person.choice, person.told);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->days[0].events.size(), 3u);
    person.choice.of = TellOf::holidays;
    EXPECT_FALSE(person.look(now));  // nothing else of the day is a holiday
}

// Clocks that no calendar reaches; an edition that knows no holidays tells of all it lists.
TEST(FestivalNotice, GoesByTheEdition) {
    for (const Moment now : {Moment::min() + days{10}, Moment::max() - days{10}, nepal(2043, 4, 14, 8, 0)}) {
        for (const TellWhen when : {TellWhen::morning, TellWhen::evening}) {
            EXPECT_FALSE(dueNotice(currentEdition(), now, kathmandu(), {when, TellOf::all}, {}));
        }
    }
    const auto due = dueNotice(firstEdition(), nepal(2013, 4, 14, 8, 0), kathmandu(), {TellWhen::morning}, {});
    ASSERT_TRUE(due);
    EXPECT_EQ(due->days[0].events.size(), 3u);
    EXPECT_FALSE(dueNotice(firstEdition(), nepal(2026, 10, 20, 8, 0), kathmandu(), {TellWhen::morning}, {}));
}

}  // namespace
}  // namespace dinmala
