#include "agenda/EditionSource.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "almanac/YearFile.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

namespace fs = std::filesystem;

class EditionFromFolders : public testing::Test {
protected:
    static void write(const fs::path& file, const std::string& text) { std::ofstream{file} << text; }

    /// The built-in year with the lengths of two of its months changed by a day each, as Nepal may publish it.
    static YearAlmanac changed(int number, unsigned longer, unsigned shorter) {
        YearAlmanac year = *currentEdition().almanac.numbers(BsYear{number});
        year.published = true;
        const auto oldLength = [&](unsigned month) {
            return currentEdition().calendar.daysIn({year.year, BsMonth{month}});
        };
        BsDate date = bsDate(number, 1, 1);
        for (YearDay& day : year.days) {
            day.date = date;
            day.dateGrade = Grade::published;
            const unsigned month = unsigned{date.month};
            const unsigned length = oldLength(month) + (month == longer ? 1 : 0) - (month == shorter ? 1 : 0);
            date = unsigned{date.day} < length ? BsDate{date.year, date.month, BsDay{unsigned{date.day} + 1}}
                                               : BsDate{date.year, date.month, BsDay{1}} + std::chrono::months{1};
        }
        return year;
    }

    const TemporaryFolder above, below;
    const fs::path first = above.path(), second = below.path();
    EditionSource source{{first.string(), second.string(), above.path("none")}};
};

TEST_F(EditionFromFolders, TakesAYearWhileItsFileIsThere) {
    const BsCalendar before = source.get(EditionId::current).calendar;
    const YearAlmanac year = changed(2084, 3, 4);
    write(second / "2084.txt", yearFileText(year));
    const Edition& edition = source.get(EditionId::current);
    EXPECT_TRUE(source.takeProblems().empty());
    const unsigned length = before.daysIn({BsYear{2084}, BsMonth{3}});
    EXPECT_EQ(edition.calendar.daysIn({BsYear{2084}, BsMonth{3}}), length + 1);
    EXPECT_EQ(edition.calendar.daysIn({BsYear{2084}, BsMonth{4}}), before.daysIn({BsYear{2084}, BsMonth{4}}) - 1);
    EXPECT_EQ(edition.calendar.toDays(bsDate(2085, 1, 1)), before.toDays(bsDate(2085, 1, 1)));
    EXPECT_EQ(edition.lastPublished, BsYear{2084});
    EXPECT_EQ(edition.almanac.day(bsDate(2084, 3, length + 1))->grade, Grade::published);
    EXPECT_FALSE(edition.almanac.day(bsDate(2084, 3, length + 2)));
    EXPECT_FALSE(edition.almanac.day(bsDate(2100, 1, 1)));
    EXPECT_EQ(edition.almanac.numbers(BsYear{2084}), year);
    EXPECT_EQ(source.get(EditionId::first).calendar, firstEdition().calendar);

    // A file of a folder further up takes its place; without both the built-in year is back.
    write(first / "2084.txt", yearFileText(changed(2084, 9, 3)));
    EXPECT_EQ(source.get(EditionId::current).calendar.daysIn({BsYear{2084}, BsMonth{3}}), length - 1);
    fs::remove(first / "2084.txt");
    fs::remove(second / "2084.txt");
    EXPECT_EQ(source.get(EditionId::current).calendar, before);
}

TEST(YearFolders, CountOnlyWholePaths) {
    setenv("XDG_DATA_HOME", "relative", 1);
    setenv("XDG_DATA_DIRS", "/one::two:/three", 1);
    EXPECT_EQ(yearFolders(),
              (std::vector<std::string>{"/one/dinmala/almanac", "/three/dinmala/almanac", "/etc/dinmala/almanac"}));
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
}

// A year that ends a day later or earlier takes the day from the next one's first month, or gives it: the Sun's later
// months stay. The new year's day goes along, a lunar festival stays on its AD day.
TEST_F(EditionFromFolders, AYearOfAnotherLengthMovesTheBeginningOfTheNext) {
    const BsCalendar& old = currentEdition().calendar;
    for (const int days : {1, -1}) {
        YearAlmanac year = *currentEdition().almanac.numbers(BsYear{2086});
        year.published = true;
        for (YearDay& day : year.days) day.dateGrade = Grade::published;
        if (days > 0) {
            YearDay more = currentEdition().almanac.numbers(BsYear{2087})->days.front();
            more.events.clear();
            more.dateGrade = Grade::published;
            more.date = BsDate{year.year, BsMonth{12}, BsDay{unsigned{year.days.back().date.day} + 1}};
            year.days.push_back(more);
        } else {
            year.days.pop_back();
        }
        write(first / "2086.txt", yearFileText(year));
        const Edition& edition = source.get(EditionId::current);
        const auto problems = source.takeProblems();
        ASSERT_TRUE(problems.empty()) << problems.front();
        EXPECT_EQ(edition.calendar.toDays(bsDate(2087, 1, 1)),
                  *old.toDays(bsDate(2087, 1, 1)) + std::chrono::days{days});
        EXPECT_EQ(edition.calendar.toDays(bsDate(2087, 2, 1)), old.toDays(bsDate(2087, 2, 1)));
        EXPECT_EQ(edition.calendar.lastDay(), old.lastDay());
        const auto newYear = edition.almanac.day(bsDate(2087, 1, 1));
        ASSERT_TRUE(newYear);
        EXPECT_EQ(edition.lastPublished, currentEdition().lastPublished);  // the years between are not
        const auto hasNewYear = [](const AlmanacDay& day) {
            return std::any_of(day.events.begin(), day.events.end(), [](const Event& e) { return e.id == 5; });
        };
        EXPECT_TRUE(hasNewYear(*newYear));
        const auto days2087 = edition.almanac.year(BsYear{2087});
        EXPECT_EQ(std::count_if(days2087.begin(), days2087.end(), hasNewYear), 1);
        for (auto day = *edition.calendar.toDays(bsDate(2087, 1, 2)); day < *old.toDays(bsDate(2087, 3, 1));
             day += std::chrono::days{1}) {
            const auto was = currentEdition().almanac.day(*old.toDate(day));
            const auto is = edition.almanac.day(*edition.calendar.toDate(day));
            ASSERT_EQ(is->day, day);
            ASSERT_EQ(is->tithis.front().number, was->tithis.front().number);
        }
    }
    // Two days fewer, and the next year's first month would have 33.
    YearAlmanac year = *currentEdition().almanac.numbers(BsYear{2092});
    year.days.resize(year.days.size() - 2);
    fs::remove(first / "2086.txt");
    write(first / "2092.txt", yearFileText(year));
    EXPECT_EQ(source.get(EditionId::current).calendar, old);
    const auto problems = source.takeProblems();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(problems.front().find("not on the day before BS 2093"), std::string::npos) << problems.front();
}

// Of two files that do not meet, the published year is taken, whichever of the two it is.
TEST_F(EditionFromFolders, AComputedYearGivesWayToAPublishedOne) {
    const auto shorter = [](int number, bool published) {
        YearAlmanac year = *currentEdition().almanac.numbers(BsYear{number});
        year.published = published;
        for (YearDay& day : year.days) day.dateGrade = published ? Grade::published : day.dateGrade;
        year.days.pop_back();
        return yearFileText(year);
    };
    const auto builtIn = [](int number, bool published) {
        YearAlmanac year = *currentEdition().almanac.numbers(BsYear{number});
        year.published = published;
        return yearFileText(year);
    };
    const auto refused = [&] {
        (void)source.get(EditionId::current);
        const auto told = source.takeProblems();
        return told.size() == 1 ? told.front().substr(told.front().rfind('/') + 1, 8) : std::to_string(told.size());
    };
    write(first / "2086.txt", shorter(2086, true));
    write(first / "2087.txt", builtIn(2087, false));
    EXPECT_EQ(refused(), "2087.txt");
    EXPECT_EQ(source.get(EditionId::current).calendar.toDays(bsDate(2087, 1, 1)),
              *currentEdition().calendar.toDays(bsDate(2087, 1, 1)) - std::chrono::days{1});
    write(first / "2086.txt", shorter(2086, false));
    write(first / "2087.txt", builtIn(2087, true));
    EXPECT_EQ(refused(), "2086.txt");
    EXPECT_TRUE(source.get(EditionId::current).isPublished(BsYear{2087}));
    EXPECT_FALSE(source.get(EditionId::current).isPublished(BsYear{2086}));
}

TEST_F(EditionFromFolders, RefusesBadFilesWholeAndOnce) {
    const BsCalendar before = source.get(EditionId::current).calendar;
    const std::string good = yearFileText(changed(2084, 3, 4));
    const auto problem = [&] {
        EXPECT_EQ(source.get(EditionId::current).calendar, before);
        const auto told = source.takeProblems();
        EXPECT_TRUE(source.takeProblems().empty());
        return told.empty() ? std::string{} : told.front().substr(told.front().rfind('/') + 1);
    };
    write(first / "2084.txt", good.substr(0, good.size() / 2));
    EXPECT_TRUE(problem().starts_with("2084.txt:"));
    EXPECT_EQ(problem(), "");  // told already
    write(first / "2084.txt", std::string(2 << 20, '#'));
    EXPECT_EQ(problem(), "2084.txt: is larger than 1048576 bytes");
    write(first / "2084.txt", yearFileText(changed(2086, 9, 3)));
    EXPECT_EQ(problem(), "2084.txt:1: is of the year 2086");
    fs::remove(first / "2084.txt");
    fs::create_directory(first / "2084.txt");
    EXPECT_EQ(problem(), "2084.txt: is not a regular file");
    fs::remove(first / "2084.txt");
    ASSERT_EQ(mkfifo((first / "2084.txt").c_str(), 0600), 0);
    EXPECT_EQ(problem(), "2084.txt: is not a regular file");
    fs::remove(first / "2084.txt");
    fs::create_symlink(above.path("gone"), first / "2084.txt");
    EXPECT_EQ(problem(), "2084.txt: cannot be read: No such file or directory");
    fs::remove(first / "2084.txt");
    EXPECT_FALSE(source.newest());  // none was taken
    // A published year does not give way, and another good file beside a bad one is taken.
    YearAlmanac shorter = *currentEdition().almanac.numbers(BsYear{2082});
    shorter.days.pop_back();
    write(first / "2082.txt", yearFileText(shorter));
    EXPECT_EQ(problem(), "2082.txt: ends on 2026-04-12, not on the day before BS 2083");
    write(first / "2084.txt", good);
    EXPECT_NE(source.get(EditionId::current).calendar, before);
    EXPECT_TRUE(source.takeProblems().empty());
    const auto came = source.newest();
    ASSERT_TRUE(came);
    fs::last_write_time(first / "2082.txt", fs::file_time_type::clock::now() + std::chrono::hours{1});
    (void)source.get(EditionId::current);
    EXPECT_EQ(source.newest(), came) << "a refused file counts";
}

}  // namespace
}  // namespace dinmala
