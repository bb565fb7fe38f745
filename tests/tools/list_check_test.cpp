// Holds the almanac's data files to everything known of them, and shows that the check notices what is wrong.

#include "tests/tools/ModernSky.h"
#include "tools/ListCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace dinmala::tools {
namespace {

class AlmanacData : public testing::Test {
protected:
    static const AlmanacRules& rules() {
        static const AlmanacRules kRules{SOURCE_DIR};
        return kRules;
    }
    static const AlmanacFiles& shipped() {
        static const AlmanacFiles kFiles = readAlmanac(SOURCE_DIR);
        return kFiles;
    }

    static AlmanacReport check(const AlmanacFiles& files, const Panchanga& panchanga = Panchanga{kFirstReckoning}) {
        return checkAlmanac(files, rules(), panchanga);
    }

    /// Whether a failure begins with `what`.
    static bool caughtBy(const AlmanacReport& report, const std::string& what) {
        return std::any_of(report.failures.begin(), report.failures.end(),
                           [&what](const std::string& failure) { return failure.compare(0, what.size(), what) == 0; });
    }

    Token& event(int year, const std::string& text) { return find(files.events[year], text); }
    Token& tithi(int year, const std::string& text) { return find(files.tithis[year], text); }

    static Token& find(std::vector<Token>& tokens, const std::string& text) {
        const auto found =
            std::find_if(tokens.begin(), tokens.end(), [&text](const Token& token) { return token.text() == text; });
        EXPECT_NE(found, tokens.end()) << text;
        return *found;
    }

    AlmanacFiles files = shipped();
};

// What a hand makes with make_almanac is what the check holds the files to.
TEST_F(AlmanacData, AYearsListIsMadeWithItsImportantDays) {
    const Dated important = readImportant(SOURCE_DIR, rules(), 2070);
    EXPECT_EQ(important.size(), 36U);
    EXPECT_TRUE(readImportant(SOURCE_DIR, rules(), 2069).empty());
    EXPECT_EQ(eventFile(2070, rules(), Panchanga{kFirstReckoning}, shipped().eventNames, important),
              shipped().eventText.at(2070));
}

TEST_F(AlmanacData, EveryEventIdHasOneRule) {
    Names names = readFile(SOURCE_DIR, "almanac/data/event_names_current.txt", readNames);
    names.insert(shipped().eventNames.begin(), shipped().eventNames.end());
    for (const auto& [id, name] : names) EXPECT_TRUE(rules().festivals.all().contains(id)) << id;
    EXPECT_EQ(rules().festivals.all().size(), names.size());
}

// Each mutation is a mistake that a hand on the data files could make. The text of the files is made to follow, so
// that it is not the comparison with the generator that notices.
TEST_F(AlmanacData, ATokenThatIsShiftedExchangedOrRenamedIsCaught) {
    event(2070, "280662").day = 29;  // Vijaya Dashami a day late
    event(2069, "080762").id = 61;   // the day's neighbour
    tithi(2068, "270123").day = 28;
    tithi(2070, "01014").id = 22;  // the name of the dark 4th in a bright half
    auto& tithis = files.tithis[2069];
    std::swap(tithis[100].id, tithis[101].id);
    files.eventText[2068].back() = ' ';  // one byte is enough for the comparison with what the rules make
    const AlmanacReport report = check(files);
    for (const char* failure :
         {"event 2070 290662 is not on a day of its rule", "dated 2013-10-14 id 62",
          "event 2069 080761 is not on a day of its rule", "tithi 2068 280123 is not in the sky",
          "tithi 2070 010122 is not in the sky", "tithi 2069 ", "events-2068.txt is not what make_almanac makes"}) {
        EXPECT_TRUE(caughtBy(report, failure)) << failure;
    }
}

TEST_F(AlmanacData, AModernReckoningInPlaceOfTheClassicalOneIsCaught) {
    const AlmanacReport report = check(shipped(), Panchanga{panchanga::modern::kModern});
    const auto wrong = std::count_if(report.failures.begin(), report.failures.end(),
                                     [](const std::string& failure) { return failure.compare(0, 6, "tithi ") == 0; });
    EXPECT_GT(wrong, 100);
    EXPECT_TRUE(caughtBy(report, "event "));
    EXPECT_TRUE(caughtBy(report, "tithi-2070.txt is not what"));
}

}  // namespace
}  // namespace dinmala::tools
