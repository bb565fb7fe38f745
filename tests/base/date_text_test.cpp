#include "base/DateText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "base/Text.h"

namespace dinmala {
namespace {

TEST(DateText, ReadsDatesAsPeopleWriteThem) {
    struct Case {
        std::string_view text;
        DateFields date;
    };
    const auto bs = CalendarKind::bs;
    const auto ad = CalendarKind::ad;
    for (const Case& one : {Case{"2013-04-14", {2013, 4, 14, {}}}, Case{"2013/4/14", {2013, 4, 14, {}}},
                            Case{"20130414", {2013, 4, 14, {}}}, Case{"२०७०.१.३२", {2070, 1, 32, {}}},
                            Case{"2083 mangsir 7", {2083, 8, 7, bs}}, Case{"7 Mangsir 2083", {2083, 8, 7, bs}},
                            Case{"७ मंसिर", {std::nullopt, 8, 7, bs}}, Case{"फागुन ७, २०८२", {2082, 11, 7, bs}},
                            Case{"Nov 23, 2026", {2026, 11, 23, ad}}, Case{"may 1", {std::nullopt, 5, 1, ad}}}) {
        const auto date = readDate(one.text);
        ASSERT_TRUE(date) << one.text;
        EXPECT_EQ(*date, one.date) << one.text;
    }
}

// Each month by the names that newspapers, offices and people have for it.
TEST(DateText, KnowsEveryNameOfAMonth) {
    constexpr std::string_view kNames[] = {"baishakh baisakh vaishakh vaisakh बैशाख वैशाख",
                                           "jestha jeth jyeshtha jyestha jesth जेठ जेष्ठ ज्येष्ठ",
                                           "ashadh asar asadh ashad aashadh आषाढ असार अषाढ",
                                           "shrawan saun sawan shravan साउन श्रावण सावन",
                                           "bhadra bhadau bhadaun भाद्र भदौ",
                                           "ashwin asoj aswin ashoj आश्विन असोज अश्विन",
                                           "kartik kattik कार्तिक कात्तिक",
                                           "mangsir marga mangshir मंसिर मङ्सिर मार्ग",
                                           "poush pus push paush पौष पुस पुष",
                                           "magh माघ",
                                           "falgun phalgun fagun phagun फाल्गुण फाल्गुन फागुन",
                                           "chaitra chait चैत्र चैत"};
    int month = 0;
    for (const std::string_view names : kNames) {
        ++month;
        forEachPiece(names, ' ', [&](std::string_view name) {
            const auto read = readMonthName(name);
            ASSERT_TRUE(read) << name;
            EXPECT_EQ(read->calendar, CalendarKind::bs) << name;
            EXPECT_EQ(read->month, month) << name;
        });
    }
}

// The place is where the text stops being a date.
TEST(DateText, TellsWhereATextStopsBeingADate) {
    struct Case {
        std::string_view text;
        std::size_t column;
    };
    for (const auto& [text, column] :
         {Case{"", 1}, Case{"2013", 5}, Case{"213-04-14", 1}, Case{"2013-04/14", 8}, Case{"2013-04-14x", 11},
          Case{"2013-04-140", 11}, Case{"2013-x4-14", 6}, Case{"2013-4", 7}, Case{"7 mangsirr 2083", 3},
          Case{"7 8 mangsir", 3}, Case{"mangsir", 8}, Case{"123 mangsir 2083", 1}, Case{"mangsir kartik 7", 9}}) {
        const auto date = readDate(text);
        ASSERT_FALSE(date) << text;
        EXPECT_EQ(date.error().column, column) << text;
    }
}

// What is written is read again, in both digits.
TEST(DateText, WritesWhatItReads) {
    for (const Digits digits : {Digits::western, Digits::devanagari}) {
        const auto date = readDate(dateText(bsDate(2070, 2, 9), digits));
        ASSERT_TRUE(date);
        EXPECT_EQ(*date, (DateFields{2070, 2, 9, {}}));
    }
    EXPECT_EQ(dateText(bsDate(2070, 2, 9), Digits::devanagari), "२०७०-०२-०९");
    EXPECT_EQ(numberText(7, Digits::devanagari, 3), "  ७");
    EXPECT_EQ(readNumber("२०७०"), 2070);
    for (const std::string_view bad : {"", "20700", "-1", "7x", "७x"}) EXPECT_EQ(readNumber(bad), std::nullopt) << bad;
    EXPECT_EQ(inWestern("अ१२x\xE0\xA5"), "अ12x\xE0\xA5");
}

}  // namespace
}  // namespace dinmala
