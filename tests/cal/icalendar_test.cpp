// What is written is read again by the iCalendar library, as a subscriber's program reads it.
#include "cal/ICalendar.h"

#include <gtest/gtest.h>
#include <libical/ical.h>
#include <sys/stat.h>

#include <map>
#include <memory>
#include <set>
#include <string>

#include "agenda/MonthPage.h"
#include "agenda/Sentences.h"
#include "almanac/ListAlmanac.h"
#include "base/Text.h"
#include "cal/CalendarFile.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala::cal {
namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;
using namespace std::chrono_literals;

constexpr sys_seconds kStamp{sys_days{std::chrono::year{2026} / 11 / 23}};

struct Entry {
    std::string day, summary, description, categories;
    icalproperty_status status;
    int sequence;
    bool opaque;
};

/// The entries by UID. A UID that comes twice fails.
std::map<std::string, Entry> read(const std::string& text) {
    std::map<std::string, Entry> entries;
    const std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> calendar{icalparser_parse_string(text.c_str()),
                                                                                 icalcomponent_free};
    EXPECT_TRUE(calendar);
    EXPECT_EQ(icalcomponent_count_errors(calendar.get()), 0);
    EXPECT_NE(icalrestriction_check(calendar.get()), 0);
    const auto orEmpty = [](const char* value) { return std::string{value != nullptr ? value : ""}; };
    for (icalcomponent* one = icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT); one != nullptr;
         one = icalcomponent_get_next_component(calendar.get(), ICAL_VEVENT_COMPONENT)) {
        const icaltimetype start = icalcomponent_get_dtstart(one);
        EXPECT_TRUE(start.is_date);
        icalproperty* kind = icalcomponent_get_first_property(one, ICAL_CATEGORIES_PROPERTY);
        icalproperty* transparent = icalcomponent_get_first_property(one, ICAL_TRANSP_PROPERTY);
        const Entry entry{icaltime_as_ical_string(start),
                          orEmpty(icalcomponent_get_summary(one)),
                          orEmpty(icalcomponent_get_description(one)),
                          orEmpty(icalproperty_get_categories(kind)),
                          icalcomponent_get_status(one),
                          icalcomponent_get_sequence(one),
                          icalproperty_get_transp(transparent) != ICAL_TRANSP_TRANSPARENT};
        EXPECT_TRUE(entries.emplace(icalcomponent_get_uid(one), entry).second) << icalcomponent_get_uid(one);
        EXPECT_FALSE(entry.opaque);
    }
    return entries;
}

ICalendarChoice years(int first, int last) { return {BsYear{first}, BsYear{last}}; }

std::string compact(sys_days day) {
    std::string text = dateText(std::chrono::year_month_day{day});
    std::erase(text, '-');
    return text;
}

TEST(ICalendar, HasEachEventOfTheAlmanacOnceOnItsDay) {
    for (const Edition* edition : {&firstEdition(), &currentEdition()}) {
        for (const int year : {2066, 2070, 2071}) {
            std::multiset<std::pair<std::string, std::string>> wanted, found;
            for (const AlmanacDay& day : edition->almanac.year(BsYear{year})) {
                for (const Event& event : day.events) wanted.emplace(compact(day.day), event.name);
            }
            for (const auto& [uid, entry] : read(iCalendarText(*edition, years(year, year), kStamp))) {
                found.emplace(entry.day, entry.summary);
                EXPECT_TRUE(uid.starts_with(std::to_string(year) + "-")) << uid;
            }
            EXPECT_GT(wanted.size(), 100U);
            EXPECT_EQ(found, wanted);
        }
    }
    ICalendarChoice all = years(2083, 2084);
    all.days = all.months = true;
    const auto entries = read(iCalendarText(currentEdition(), all, kStamp));
    std::size_t events = 0;
    for (const int year : {2083, 2084}) {
        for (const AlmanacDay& day : currentEdition().almanac.year(BsYear{year})) events += day.events.size();
    }
    EXPECT_EQ(entries.size(), events + 24 + currentEdition().calendar.daysIn(BsYear{2083}) +
                                  currentEdition().calendar.daysIn(BsYear{2084}));
    EXPECT_EQ(entries.at("day-2026-11-23@dinmala").summary, "७ मंसिर २०८३, शुक्ल चतुर्दशी");
    EXPECT_EQ(entries.at("month-2083-08@dinmala").day, "20261117");
}

TEST(ICalendar, TellsKindsAndWhatIsNotSure) {
    ICalendarChoice english = years(2083, 2090);
    english.language = Language::english;
    english.digits = Digits::western;
    const auto entries = read(iCalendarText(currentEdition(), english, kStamp));
    const Entry& published = entries.at("2083-62@dinmala");
    EXPECT_EQ(published.summary, "Vijaya Dashami");
    EXPECT_EQ(published.categories, "Public holiday");
    EXPECT_EQ(published.status, ICAL_STATUS_CONFIRMED);
    EXPECT_EQ(published.description.find("Nepal has not published"), std::string::npos);
    const Entry& later = entries.at("2090-62@dinmala");
    EXPECT_EQ(later.status, ICAL_STATUS_TENTATIVE);
    EXPECT_NE(later.description.find("Nepal has not published BS 2090 yet"), std::string::npos) << later.description;
    // Of one day: what makes one festival doubtful says nothing of another.
    const auto earlier = read(iCalendarText(currentEdition(), years(2079, 2079), kStamp));
    EXPECT_TRUE(earlier.at("2079-257@dinmala").description.ends_with("is on this day"));
    EXPECT_TRUE(earlier.at("2079-207-5@dinmala").description.ends_with("शुक्ल चतुर्दशी"));
    EXPECT_EQ(earlier.at("2079-207-5@dinmala").status, ICAL_STATUS_CONFIRMED);
    const Entry& near = entries.at("2083-25@dinmala");
    EXPECT_TRUE(near.description.ends_with("\nRato Machhindranath Jatra begins: may be a day earlier or later"))
        << near.description;
    EXPECT_EQ(near.status, ICAL_STATUS_TENTATIVE);
    // Its day is sure, itself it is not.
    EXPECT_TRUE(entries.at("2085-323@dinmala").description.ends_with("leaves this day open"));
    EXPECT_TRUE(entries.at("2085-505@dinmala").description.ends_with("surely so"));
    EXPECT_EQ(entries.at("2083-52@dinmala").categories, "Holiday of a group or region");
    EXPECT_EQ(entries.at("2083-4@dinmala").categories, "Festival");
    EXPECT_EQ(entries.at("2083-102@dinmala").summary, "प्रदोष व्रत");  // has no English name
}

// The lists of an almanac whose names have what iCalendar must escape, one far longer than a line.
TEST(ICalendar, EscapesAndFoldsBetweenCharacters) {
    std::string longName;
    for (int i = 0; i < 40; ++i) longName += "श्रीक्षेत्र😀";
    const std::string hard = "a\\b;c,d\"e:f\nनयाँ \\n वर्ष";
    const KeyedText names[] = {{"1", hard}, {"2", longName}};
    const KeyedText lists[] = {{"2070", "01011 01012 02011"}};
    const Edition edition{EditionId::first, firstEdition().calendar,
                          almanacOfLists({names, lists, {}}, {}, firstEdition().calendar), BsYear{2099}};
    const std::string text = iCalendarText(edition, years(2070, 2070), kStamp);
    const auto entries = read(text);
    EXPECT_EQ(entries.at("2070-1@dinmala").summary, hard);
    EXPECT_EQ(entries.at("2070-2@dinmala").summary, longName);
    EXPECT_EQ(entries.at("2070-1-2@dinmala").day, "20130415");
    ASSERT_TRUE(text.ends_with("\r\n"));
    forEachPiece(std::string_view{text}.substr(0, text.size() - 1), '\n', [](std::string_view line) {
        EXPECT_LE(line.size(), 76U) << line;  // 75 and the carriage return
        ASSERT_TRUE(line.ends_with('\r')) << line;
        const auto second = static_cast<unsigned char>(line[line.starts_with(' ') ? 1 : 0]);
        EXPECT_NE(second & 0xC0U, 0x80U) << "begins inside a character";
    });
}

// Newer data must replace the old where it is imported, and the same data give the same bytes.
TEST(ICalendar, KeepsUidsAndCountsUpWithTheData) {
    const auto text = [](sys_seconds stamp) { return iCalendarText(currentEdition(), years(2083, 2083), stamp); };
    EXPECT_EQ(text(kStamp), text(kStamp));
    const auto before = read(text(kStamp)), after = read(text(kStamp + 1h));
    ASSERT_EQ(before.size(), after.size());
    for (const auto& [uid, entry] : before) EXPECT_GT(after.at(uid).sequence, entry.sequence);

    YearAlmanac moved = *currentEdition().almanac.numbers(BsYear{2083});
    auto& days = moved.days;
    std::swap(days[100].events, days[101].events);
    const auto now = read(iCalendarText(*currentEditionWith(std::span{&moved, 1}), years(2083, 2083), kStamp));
    std::set<std::string> uids, uidsNow;
    for (const auto& [uid, entry] : before) uids.insert(uid);
    for (const auto& [uid, entry] : now) uidsNow.insert(uid);
    EXPECT_EQ(uids, uidsNow);
}

class CalendarFile : public testing::Test {
protected:
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/पात्रो.ics";
    const std::string one = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n";
    const std::string two = "BEGIN:VCALENDAR\r\nVERSION:2.1\r\nEND:VCALENDAR\r\n";
};

TEST_F(CalendarFile, IsReplacedOnlyAsItWasPutThere) {
    EXPECT_EQ(keepCalendarFile(path, one, false), std::nullopt);
    const std::string first = contentOf(path);
    EXPECT_NE(first.find("VERSION:2.0\r\n"), std::string::npos);
    std::filesystem::last_write_time(path, {});
    EXPECT_EQ(keepCalendarFile(path, one, false), std::nullopt);
    EXPECT_EQ(std::filesystem::last_write_time(path), std::filesystem::file_time_type{});  // not written again
    EXPECT_EQ(keepCalendarFile(path, two, false), std::nullopt);
    EXPECT_NE(contentOf(path), first);

    for (const std::string& other : {first + "X", first.substr(0, first.size() - 3), one, std::string{"my notes"},
                                     std::string{}, first.substr(0, 40)}) {
        std::ofstream{path} << other;
        EXPECT_NE(keepCalendarFile(path, one, false), std::nullopt) << other;
        EXPECT_EQ(contentOf(path), other);
    }
    EXPECT_EQ(keepCalendarFile(path, one, true), std::nullopt);
    EXPECT_EQ(contentOf(path), first);
}

// Whatever the clock says, and at Nepal's midnights at the latest.
TEST(FollowedFile, IsLookedAtAgainWithinAQuarterOfAnHour) {
    const sys_seconds midnight = sys_seconds{sys_days{std::chrono::year{2026} / 11 / 23}} + 18h + 15min;
    EXPECT_EQ(secondsToNextLook(midnight - 1s), 1s);
    EXPECT_EQ(secondsToNextLook(midnight), 900s);
    for (const sys_seconds now : {sys_seconds{-1s}, sys_seconds::min(), sys_seconds::max()}) {
        EXPECT_GE(secondsToNextLook(now), 1s);
        EXPECT_LE(secondsToNextLook(now), 900s);
    }
}

TEST_F(CalendarFile, KeepsLinksAndModesAndReplacesNothingButFiles) {
    EXPECT_EQ(keepCalendarFile(path, one, false), std::nullopt);
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const std::string link = folder.path() + "/link.ics";
    ASSERT_EQ(symlink(path.c_str(), link.c_str()), 0);
    EXPECT_EQ(keepCalendarFile(link, two, false), std::nullopt);
    struct stat status {};
    ASSERT_EQ(lstat(link.c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_NE(contentOf(path).find("2.1"), std::string::npos);

    const std::string fifo = folder.path() + "/fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& no : {folder.path(), fifo, std::string{"/dev/null"}, folder.path() + "/none/a.ics",
                                  std::string{"/proc/a.ics"}, std::string{}}) {
        EXPECT_NE(keepCalendarFile(no, one, true), std::nullopt) << no;
    }
    EXPECT_FALSE(folder.has("none"));
}

}  // namespace
}  // namespace dinmala::cal
