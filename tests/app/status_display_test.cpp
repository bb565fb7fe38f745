#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

using test::nepal;
using test::Shell;

class StatusDisplay : public testing::Test {
protected:
    void show(std::initializer_list<std::string_view> keys) {
        if (shell.delegate->statusItem() == nullptr) shell.delegate->awakeFromNib();
        shell.preferences.values.clear();  // behind the rules' back
        for (const std::string_view key : keys) shell.preferences.setBoolForKey(true, key);
        shell.delegate->updateData();
    }

    Shell shell{nepal(2013, 4, 20, 6, 30)};
};

// BS 2070 Baishakh 7, a Saturday.
TEST_F(StatusDisplay, ComposesTheTitleOfTheChosenPieces) {
    show({"month", "day", "time"});
    EXPECT_EQ(shell.title(), " बैशाख ७ ०६:३०");
    show({"year"});
    EXPECT_EQ(shell.title(), "२०७०");
    show({"year", "month", "day", "dow", "time"});
    EXPECT_EQ(shell.title(), "२०७० बैशाख ७ शनिवार ०६:३०");
    show({"dow"});
    EXPECT_EQ(shell.title(), " शनिवार");
    show({});  // changed from outside since the rules were applied
    EXPECT_EQ(shell.title(), "");
    // The menu has everything, whatever is chosen.
    EXPECT_EQ(shell.date.title(), "२०७० बैशाख ७ शनिवार ०६:३०");
    const char* const texts[] = {"२०७०", "बैशाख", "७", "शनिवार", "०६:३०"};
    for (std::size_t i = 0; i < std::size(texts); ++i) EXPECT_EQ(shell.labels[i].stringValue(), texts[i]);
}

// 5 Baishakh has five events and 1 Bhadra two others: a key turned round shows, as does a
// year in other digits, another separator, and one list in the other's place.
TEST_F(StatusDisplay, TellsTithiAndEventsOfTheDay) {
    shell.now = nepal(2013, 4, 18, 6, 30);
    show({"tithi", "event"});
    const std::string events = "गोरखकाली पूजा/ चैते दशैं/ अष्टमी व्रत/ श्री श्वेत मत्स्येन्द्रनाथ रथयात्रा (जमयात)/ श्री भवानी उत्पत्ति";
    EXPECT_EQ(shell.title(), " अष्टमी " + events);
    EXPECT_EQ(shell.description.title(), "अष्टमी, " + events);
    EXPECT_EQ(shell.labels[5].stringValue(), "अष्टमी");
    EXPECT_EQ(shell.labels[6].stringValue(), events);
    shell.now = nepal(2030, 4, 20, 6, 30);  // a year without lists: an empty piece still adds its blank
    show({"year", "tithi", "event"});
    EXPECT_EQ(shell.title(), "२०८७  ");
    EXPECT_EQ(shell.description.title(), ", ");
    EXPECT_EQ(shell.labels[6].stringValue(), "");
}

TEST_F(StatusDisplay, ShowsTheFlagAloneAndLeavesNoneBesideAText) {
    show({"icon", "year"});
    ASSERT_NE(shell.delegate->statusItem()->image(), nullptr);
    EXPECT_EQ(shell.title(), std::nullopt);
    EXPECT_EQ(shell.delegate->statusImage()->path, "/res/NepalFlag.png");
    EXPECT_NE(shell.delegate->statusImage(), shell.delegate->statusHighLightImage());  // loaded twice
    EXPECT_EQ(shell.delegate->statusItem()->alternateImage(), shell.delegate->statusHighLightImage());

    shell.log.clear();
    show({"year"});
    EXPECT_EQ(shell.delegate->statusItem()->alternateImage(), nullptr);
    EXPECT_EQ(shell.log, (std::vector<std::string>{"-", "'२०७०'"}));  // cleared before it is set

    shell.missingResources = "NepalFlag.png";
    show({"icon"});
    EXPECT_EQ(shell.delegate->statusItem()->image(), nullptr);
    EXPECT_EQ(shell.title(), std::nullopt);
}

TEST_F(StatusDisplay, IsHonestOutsideTheTable) {
    // The last three are past what a moment can hold: 1 January AD 2600, a Wednesday, the end of time and its begin.
    for (const Moment outside :
         {nepal(2043, 4, 14, 0, 0), nepal(1942, 4, 12, 23, 59), momentOf(19880938800),
          momentOf(std::numeric_limits<std::int64_t>::max()), momentOf(std::numeric_limits<std::int64_t>::min())}) {
        shell.now = outside;
        show({"year", "month", "day"});
        EXPECT_EQ(shell.title(), "– – –");
        EXPECT_EQ(shell.description.title(), "–, आजको मिति पात्रोमा छैन");
    }
    shell.now = momentOf(19880938800);
    show({"dow", "time"});
    EXPECT_EQ(shell.title(), " बुधवार १६:४५");
    shell.now = nepal(2043, 4, 13, 12, 0);
    show({"year", "month", "day"});
    EXPECT_EQ(shell.title(), "२०९९ चैत्र ३०");
}

TEST_F(StatusDisplay, RefreshesWithoutAnyOutletOrLogo) {
    shell.missingResources = "logo.png";
    AppDelegate bare{shell.platform(), {}};
    bare.awakeFromNib();
    EXPECT_EQ(bare.statusItem()->title(), " बैशाख ७ ०६:३०");
    bare.setYear(nullptr);
    bare.changeAppStartup(nullptr);
    (void)bare.checkUpdate();
    shell.delegate->awakeFromNib();
    EXPECT_EQ(shell.logo.image(), nullptr);
    EXPECT_EQ(bare.statusItem()->title(), "२०७० बैशाख ७ ०६:३०");
}

}  // namespace
}  // namespace dinmala
