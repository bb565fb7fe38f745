#include <gtest/gtest.h>

#include <limits>

#include "base/Names.h"
#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using F = DataStoreFunctions;
using test::nepal;

TEST(Numerals, ComeFromTheirTablesAndFallBackToEntryZero) {
    EXPECT_EQ(F::getNepaliDateDigitFor(0), "०");
    EXPECT_EQ(F::getNepaliDateDigitFor(7), "७");
    EXPECT_EQ(F::getNepaliDateDigitFor(32), "३२");
    EXPECT_EQ(F::getNepaliTimeDigitFor(5), "०५");
    EXPECT_EQ(F::getNepaliTimeDigitFor(59), "५९");
    for (const std::int32_t outside :
         {-1, 33, 60, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(F::getNepaliDateDigitFor(outside), "०") << outside;
    }
    EXPECT_EQ(F::getNepaliTimeDigitFor(60), "००");
    EXPECT_EQ(F::getNepaliTimeDigitFor(-1), "००");
    // An entry that is out of place in either table differs from its number.
    for (std::int32_t n = 0; n < 60; ++n) {
        EXPECT_EQ(F::getNepaliDateDigitFor(n), n < 33 ? F::convertNumber2Nepali(n) : "०");
        EXPECT_EQ(F::getNepaliTimeDigitFor(n), (n < 10 ? "०" : "") + F::convertNumber2Nepali(n));
    }
}

TEST(Numerals, ConvertWholeNumbersAndTexts) {
    EXPECT_EQ(F::convertNumber2Nepali(0), "०");
    EXPECT_EQ(F::convertNumber2Nepali(10), "१०");
    EXPECT_EQ(F::convertNumber2Nepali(2070), "२०७०");
    EXPECT_EQ(F::convertNumber2Nepali(-5), "५");
    EXPECT_EQ(F::convertNumber2Nepali(std::numeric_limits<std::int32_t>::min()), "२१४७४८३६४८");
    EXPECT_EQ(F::convertStringNumber2Nepali("1234567890"), "१२३४५६७८९०");
    EXPECT_EQ(F::convertStringNumber2Nepali("07"), "०७");
    EXPECT_EQ(F::convertStringNumber2Nepali("20-1"), "२००१");
    EXPECT_EQ(F::convertStringNumber2Nepali(""), "");
    // One digit for each UTF-16 unit, not for each byte.
    EXPECT_EQ(F::convertStringNumber2Nepali("अ"), "०");
    EXPECT_EQ(F::convertStringNumber2Nepali("é1"), "०१");
    EXPECT_EQ(F::convertStringNumber2Nepali("\U0001F600"), "००");
}

TEST(Names, OfTheStoreFollowTheirSelectorsExactly) {
    const DataStore store{[] { return nepal(2013, 4, 20); }};
    EXPECT_EQ(store.getWeekDayName("bs", "short", 1), "आइतवार");
    EXPECT_EQ(store.getWeekDayName("bs", "long", 7), "शनिवार");
    EXPECT_EQ(store.getWeekDayName("ad", "long", 3), "TUEDAY");
    EXPECT_EQ(store.getWeekDayName("ad", "Long", 1), "Sun");
    EXPECT_EQ(store.getWeekDayName("BS", "long", 4), "WEDENSDAY");
    EXPECT_EQ(store.getMonthName("bs", "long", 1), "बैशाख");
    EXPECT_EQ(store.getMonthName("ad", "short", 12), "Dec");
    EXPECT_EQ(store.getMonthName("ad", "long", 2), "FEBUARY");
    for (const std::uint64_t outside : {std::uint64_t{0}, std::uint64_t{13}, ~std::uint64_t{0}}) {
        EXPECT_EQ(store.getMonthName("bs", "long", outside), "");
        EXPECT_EQ(store.getMonthName("ad", "long", outside), "");
        EXPECT_EQ(store.getWeekDayName("bs", "long", outside), "");
    }
    EXPECT_EQ(store.getWeekDayName("ad", "short", 8), "");
}

TEST(Names, OfTheFunctionsWrapAround) {
    EXPECT_EQ(F::getNameForMonthInCalendarAndFormat(12, false, true), "DECEMBER");
    EXPECT_EQ(F::getNameForMonthInCalendarAndFormat(12, false, false), "Dec");
    EXPECT_EQ(F::getNameForMonthInCalendarAndFormat(14, true, false), "बैशाख");
    EXPECT_EQ(F::getNameForMonthInCalendarAndFormat(25, true, true), "चैत्र");
    EXPECT_EQ(F::getNameForMonthInCalendarAndFormat(13, true, true), "");
    EXPECT_EQ(F::getNameForMonthInCalendarAndFormat(13, false, true), "");
    EXPECT_EQ(F::getNameForWeekDayInCalendarAndFormat(9, true, false), "आइतवार");
    EXPECT_EQ(F::getNameForWeekDayInCalendarAndFormat(15, false, true), "SATURDAY");
    EXPECT_EQ(F::getNameForWeekDayInCalendarAndFormat(8, false, true), "");
}

// The spellings, code point for code point: an editor that normalises, or a look-
// alike letter, changes one of these.
TEST(Names, AreSpelledInTheseCodePoints) {
    EXPECT_EQ(kWeekDaysNepali[2], "\u092E\u0919\u094D\u0917\u0932\u0935\u093E\u0930");
    EXPECT_EQ(kWeekDaysNepali[4], "\u092C\u093F\u0939\u093F\u0935\u093E\u0930");
    EXPECT_EQ(kBsMonths[5], "\u0906\u0936\u094D\u0935\u093F\u0928");
    EXPECT_EQ(kBsMonths[7], "\u092E\u0902\u0938\u093F\u0930");
    EXPECT_EQ(kBsMonths[10], "\u092B\u093E\u0932\u094D\u0917\u0941\u0923");
    EXPECT_EQ(kDevanagariDigits[9], "\u096F");
}

}  // namespace
}  // namespace dinmala
