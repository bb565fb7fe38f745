// What a person types into the desktop's search, and the days that it stands for.
#include "search/Search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "agenda/ReadDay.h"

namespace dinmala {
namespace {

using namespace std::chrono;

constexpr sys_days kToday{2026y / 11 / 24};  // 8 Mangsir 2083

std::string ids(std::string_view text, const Edition& edition = currentEdition(), sys_days today = kToday) {
    std::string found;
    for (const SearchHit& hit : search(text, edition, today)) found += (found.empty() ? "" : "; ") + hitId(hit);
    return found;
}

struct Case {
    std::string_view text, ids;
};

TEST(Search, FindsDatesInBothCalendars) {
    for (const Case& one :
         {Case{"2083 mangsir 7", "2026-11-23 bs"}, Case{"7 Mangsir, 2083", "2026-11-23 bs"},
          Case{"२०८३ साल मंसिर ७ गते", "2026-11-23 bs"}, Case{"7th of mangsir 2083 BS", "2026-11-23 bs"},
          Case{"  bs 2083/8/7 ", "2026-11-23 bs"}, Case{"2083-08-07 in ad", "2026-11-23 bs"},
          Case{"23 Nov 2026", "2026-11-23 ad"}, Case{"nov. 23rd, 2026 to bs", "2026-11-23 ad"},
          Case{"सन् २०२६ नोभेम्बर २३", "2026-11-23 ad"}, Case{"2070-01-31", "2013-05-14 bs"},
          // A date in both calendars is both, the nearer first.
          Case{"2026-11-23", "2026-11-23 ad; 1970-03-06 bs"}, Case{"2026-11-23 in bs", "2026-11-23 ad"},
          Case{"2042.1.1", "2042-01-01 ad; 1985-04-13 bs"},
          // Without a year it is this year's, and the next one's once that has passed.
          Case{"७ मंसिर", "2026-11-23 bs; 2027-11-23 bs"}, Case{"mangsir 8", "2026-11-24 bs"},
          Case{"25 december", "2026-12-25 ad"}, Case{"march 1", "2026-03-01 ad; 2027-03-01 ad"},
          Case{"29 feb", "2028-02-29 ad"}, Case{"३२ श्रावण", "2027-08-17 bs"}, Case{"31 june", ""}, Case{"32 chait", ""},
          // The ends of the table.
          Case{"1999-01-01 in ad", "1942-04-13 bs"}, Case{"13 april 2043", "2043-04-13 ad"}, Case{"14 april 2043", ""},
          Case{"12 april 1942", ""}, Case{"2100 baisakh 1", ""}, Case{"1998 chait 30", ""}}) {
        EXPECT_EQ(ids(one.text), one.ids) << one.text;
    }
}

TEST(Search, FindsTodayAndItsNeighbours) {
    for (const std::string_view text : {"today", "today bs", "Today in BS", "bs today", "nepali date", "bs date today",
                                        "today's nepali date", "आज", "आजको मिति", "aaja kati gate"}) {
        EXPECT_EQ(ids(text), "2026-11-24 ad") << text;
    }
    EXPECT_EQ(ids("tomorrow bs"), "2026-11-25 ad");
    EXPECT_EQ(ids("हिजो"), "2026-11-23 ad");
    EXPECT_EQ(ids("today", currentEdition(), 2060y / 1 / 1), "");  // which the table does not have
}

TEST(Search, FindsFestivals) {
    const std::string_view dashain84 = "2027-10-01 57; 2027-10-06 59; 2027-10-07 60; 2027-10-10 62";
    for (const Case& one :
         {Case{"tihar", "2027-10-27 120; 2027-10-28 121; 2027-10-29 66; 2027-10-31 68"}, Case{"दशैं 2084", dashain84},
          Case{"2084 दसैँ", dashain84}, Case{"dasai २०८४ bs", dashain84}, Case{"dashain 2027", dashain84},
          Case{"dasain 2027 AD", dashain84},
          Case{"next dashain",
               dashain84},  // One of its days on two; more than five of a year, of which those to come are shown.
          Case{"dashain 2083", "2026-10-11 57; 2026-10-17 59; 2026-10-18 60; 2026-10-19 60; 2026-10-21 62"},
          Case{"purnima fast 2080", "2023-05-05 207; 2023-06-03 207; 2023-07-02 207; 2023-08-01 207; 2023-08-30 207"},
          Case{"purnima fast 2083", "2026-11-24 207; 2026-12-23 207; 2027-01-22 207; 2027-02-20 207; 2027-03-21 207"},
          Case{"shivaratri 2027", "2027-03-06 159"}, Case{"teej", "2027-09-03 52"}, Case{"chhath", "2027-11-04 69"},
          Case{"holi", "2027-03-21 10; 2027-03-22 163"}, Case{"शिवरात्री", "2027-03-06 159"},
          Case{"2070 maghe sankranti", "2014-01-15 1"}, Case{"माघे सङ्क्रान्ति", "2027-01-15 1"},
          Case{"माघे संक्रान्ति", "2027-01-15 1"},
          Case{"lhosar", "2026-12-30 148; 2027-01-08 146; 2027-02-07 11; 2027-03-09 199"},
          Case{"new year", "2027-01-01 658; 2027-04-14 5"}, Case{"purnima fast", "2026-11-24 207"},
          Case{"when is bhai tika", "2027-10-31 68"}, Case{"भाईटिका कहिले", "2027-10-31 68"},
          Case{"x-mas", "2026-12-25 17"}, Case{"mother's day", "2027-05-06 23"},
          Case{"world water day", "2027-03-22 536"}, Case{"घण्टाकर्ण", "2027-08-01 248"},
          // The last two letters may be missing.
          Case{"maghe sankran", "2027-01-15 1"}, Case{"shivarat", "2027-03-06 159"},
          Case{"chhathh", "2027-11-04 69"}}) {
        EXPECT_EQ(ids(one.text), one.ids) << one.text;
    }
}

TEST(Search, TellsWhatIsLeftOfAFestival) {
    const auto on = [](std::string_view text, sys_days today) { return ids(text, currentEdition(), today); };
    // Two of them on one day.
    const std::string days = "2026-11-07 120; 2026-11-08 121; 2026-11-08 66; 2026-11-11 68";
    EXPECT_EQ(on("tihar", 2026y / 11 / 5), days);
    EXPECT_EQ(on("tihar", 2026y / 11 / 11), days);
    EXPECT_TRUE(on("tihar", 2026y / 11 / 12).starts_with("2027-10-27 120")) << on("tihar", 2026y / 11 / 12);
    EXPECT_EQ(on("new year", 2027y / 1 / 1), "2027-01-01 658; 2027-04-14 5");
    EXPECT_EQ(on("new year", 2027y / 1 / 2), "2027-04-14 5; 2028-01-01 658");
    EXPECT_EQ(on("chhath", 2043y / 4 / 13), "");  // the table's last day
}

// Its own lists end with BS 2071, its own months with others than today's after BS 2070.
TEST(Search, FollowsTheFirstEdition) {
    EXPECT_EQ(ids("tihar", firstEdition()), "");
    EXPECT_EQ(ids("tihar 2070", firstEdition()), "2013-11-01 120; 2013-11-02 121; 2013-11-03 66; 2013-11-05 68");
    EXPECT_EQ(ids("२०८३ मंसिर ८", firstEdition()), "2026-11-23 bs");
    EXPECT_EQ(ids("gathamuga 2068", firstEdition()), "2011-07-29 249");
}

TEST(Search, FindsNothingInWhatIsNeither) {
    for (const std::string_view numbers :
         {"7", "23", "2083", "7 8 9", "7 gate", "eid 12", "2026-11", "20261123", "1234567890", "2083-13-01",
          "2083-08-33", "192.168.1.1", "tihar 20833", "2083 mangsir", "2026-11-23-1", "mangsir 7 foo",
          "30 february 2026", "2083 mangsir 7 8"}) {
        EXPECT_EQ(ids(numbers), "") << numbers;
    }
    for (const std::string_view word : {"र", "bs", "ad", "tih", "cat", "fire", "mail", "dash", "chat", "date", "next",
                                        "holid", "teeth", "world", "march", "earth", "nepali", "mangsir", "national"}) {
        EXPECT_EQ(ids(word), "") << word;
    }
    for (const std::string_view words :
         {"", " ", "may", "in bs", "when is", "new york", "holiday inn", "tihar tihar", "human rights",
          "international day", "tomorrow never dies", "\xff\xfe", "\xe0\xa4"}) {
        EXPECT_EQ(ids(words), "") << words;
    }
    EXPECT_EQ(ids(std::string(100000, '7')), "");
    EXPECT_EQ(ids("tihar" + std::string(200, ' ')), "");
}

// A desktop has only the id of what was found when it asks for its words.
TEST(Search, AnIdTellsTheHitAndNothingElseDoes) {
    for (const std::string_view text : {"2083 mangsir 7", "2026-11-23", "tihar", "lhosar 2070", "13 april 2043"}) {
        for (const SearchHit& hit : search(text, currentEdition(), kToday)) {
            EXPECT_EQ(hitOf(hitId(hit), currentEdition()), hit) << text;
        }
    }
    for (const std::string_view id : {"", " ", "2026-11-23", "2026-11-23 ", "2026-11-23 as", "2026-11-23  ad",
                                      "2026-11-23 ad ", "2026/11/23 ad", "2026-11-23 66", "2026-11-08 066",
                                      "2026-11-08 65602", "2043-04-14 ad", "9999-99-99 ad", "\xff", "-", "0 ad"}) {
        EXPECT_EQ(hitOf(id, currentEdition()), std::nullopt) << id;
    }
    EXPECT_EQ(hitOf(std::string(100000, '2') + " ad", currentEdition()), std::nullopt);
}

TEST(Search, TellsAHitInTheChosenLook) {
    const auto words = [](const SearchHit& hit, Language language, const Edition& edition = currentEdition()) {
        const Digits digits = language == Language::english ? Digits::western : Digits::devanagari;
        const HitWords told = hitWords(hit, edition, kToday, language, digits);
        return told.name + " | " + told.description + " | " + told.copy;
    };
    const SearchHit yesterday{2026y / 11 / 23, CalendarKind::ad, 0};
    EXPECT_EQ(words(yesterday, Language::nepali),
              "७ मंसिर २०८३, सोमवार | शुक्ल चतुर्दशी · yesterday | ७ मंसिर २०८३, २३ नोभेम्बर २०२६");
    EXPECT_EQ(words({yesterday.day, CalendarKind::bs, 0}, Language::english),
              "23 November 2026, Monday | 7 Mangsir 2083 · Shukla Chaturdashi · yesterday | 23 November 2026, 7 "
              "Mangsir 2083");
    EXPECT_EQ(words({2026y / 12 / 25, CalendarKind::ad, 0}, Language::english),
              "10 Poush 2083, Friday | Krishna Dwitiya · in 31 days · Christmas | "
              "10 Poush 2083, 25 December 2026");
    EXPECT_EQ(
        words({2026y / 11 / 8, CalendarKind::ad, 66}, Language::english),
        "Laxmi Puja, 22 Kartik 2083 | 8 November 2026 · Sunday · Krishna Chaturdashi · 16 days ago · public holiday | "
        "Laxmi Puja, 22 Kartik 2083, 8 November 2026");
    EXPECT_EQ(words({2027y / 10 / 29, CalendarKind::ad, 66}, Language::english),
              "Laxmi Puja, 12 Kartik 2084 | 29 October 2027 · Friday · Aunsi · in 339 days · "
              "reckoned, not published yet · public holiday | Laxmi Puja, 12 Kartik 2084, 29 October 2027");
    EXPECT_NE(words({2026y / 4 / 21, CalendarKind::ad, 25}, Language::english).find("may be a day earlier or later"),
              std::string::npos);
    // The first edition knows neither holidays nor how sure it is, and has no tithis of this year.
    EXPECT_EQ(words({2013y / 11 / 3, CalendarKind::ad, 66}, Language::english, firstEdition()),
              "Laxmi Puja, 17 Kartik 2070 | 3 November 2013 · Sunday · Aunsi · 4769 days ago | "
              "Laxmi Puja, 17 Kartik 2070, 3 November 2013");
    EXPECT_EQ(words(yesterday, Language::english, firstEdition()),
              "8 Mangsir 2083, Monday | yesterday | 8 Mangsir 2083, 23 November 2026");
    EXPECT_EQ(words({2043y / 4 / 14, CalendarKind::bs, 0}, Language::english), " |  | ");
}

}  // namespace
}  // namespace dinmala
