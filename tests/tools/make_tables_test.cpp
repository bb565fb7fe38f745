// The generator refuses what is malformed, with file and line, and spells out the
// rest as it stands.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

class MakeTables : public testing::Test {
protected:
    /// Runs the generator; gives what it wrote, or its message after "refused: ".
    std::string run(const std::string& mode, const std::string& file, const std::string& text) {
        const std::string in = folder.write(file, text), out = folder.path("out");
        const std::string lengths = mode.starts_with("years") ? kLengths + " " : "";
        const std::string command = MAKE_TABLES " " + mode + " " + out + " " + lengths + in + " 2>&1";
        std::filesystem::remove(out);
        std::string said;
        FILE* pipe = popen(command.c_str(), "r");
        for (int c = 0; (c = std::fgetc(pipe)) != EOF;) said += static_cast<char>(c);
        if (pclose(pipe) != 0) return "refused: " + said;
        return contentOf(out);
    }

    static std::string with(std::string text, const std::string& old, const std::string& now) {
        return text.replace(text.find(old), old.size(), now);
    }

    const std::string kLengths = SOURCE_DIR "/calendar/data/month_lengths.txt";
    const TemporaryFolder folder;
};

TEST_F(MakeTables, RefusesABadLineOfLengths) {
    const std::string good = contentOf(kLengths);
    EXPECT_FALSE(run("months", "l.txt", good).starts_with("refused"));
    struct Case {
        std::string old, now, message;
    };
    for (const Case& one : {Case{"2070: 31 31 31 32", "2070: 31 31 31 33", "l.txt:72: gives month 4 33 days"},
                            Case{"2070: 31", "2070: 32", "l.txt:72: gives month 1 32 days"},
                            Case{"2070: 31 31", "2070: 31", "l.txt:72: has 11 lengths in place of 12"},
                            Case{"2070:", "2071:", "l.txt:72: has year 2071 where 2070 follows"},
                            Case{"2070: 31", "2070: 3l", "l.txt:72: 3l is not a month's length"},
                            Case{"2070: 31 31", "2070: 30 30", "l.txt:72: has a year of 363 days"},
                            Case{"2070:", "2070", "l.txt:72: does not begin with a year and a colon"},
                            Case{"\n2099: 31 31 32 31 31 31 30 29 29 30 30 30", "", "l.txt: ends before 2099"}}) {
        EXPECT_EQ(run("months", "l.txt", with(good, one.old, one.now)), "refused: " + one.message + "\n");
    }
}

TEST_F(MakeTables, RefusesABadLineOfAYear) {
    const auto year = [this](const std::string& text) { return run("years kYears", "events-2072.txt", text); };
    struct Case {
        std::string text, message;
    };
    for (const Case& one :
         {Case{"0101 5\n3008 4\n", ":2: 30 is past the end of month 8"}, Case{"0113 5\n", ":1: there is no month 13"},
          Case{"0100 5\n", ":1: there is no month 0"}, Case{"0001 5\n", ":1: there is no day 0"},
          Case{"0201 5\n0101 5\n", ":2: 0101 stands after a later day"},
          Case{"0102 5\n3101 5\n", ":2: 3101 stands after a later day"},
          Case{"0101 5\n0101 6\n", ":2: 0101 has a line already"}, Case{"0101\n", ":1: 0101 has no id"},
          Case{"101 5\n", ":1: 101 is not a day and a month"},
          Case{"0101 05\n", ":1: 05 is not an id of 1 to 3 digits without leading zero"},
          Case{"0101 1234\n", ":1: 1234 is not an id of 1 to 3 digits without leading zero"},
          Case{"0101 5a\n", ":1: 5a is not an id of 1 to 3 digits without leading zero"},
          Case{"0101 5\r\n", ":1: has a carriage return"}, Case{"# nothing\n", ": has no day"}}) {
        EXPECT_EQ(year(one.text), "refused: events-2072.txt" + one.message + "\n");
    }
}

TEST_F(MakeTables, SpellsOutListsNamesAndDatesAsTheyStand) {
    const std::string head = "// Made by tools/make_tables from ";
    EXPECT_EQ(run("years kYears", "events-2070.txt", "0101 428 5 542\n3001 216 216 # twice\n"),
              head +
                  "the year lists; do not edit.\nconstexpr std::array<KeyedText, 1> kYears{{\n"
                  "    {\"2070\", \"0101428 01015 0101542 3001216 3001216\"},\n}};\n");
    EXPECT_TRUE(run("years kYears", "events-2070.txt", "\t\n\t# note\n\v\n0101 5\n").ends_with("\"01015\"},\n}};\n"));
    EXPECT_EQ(run("fixed kFixed", "f.txt", "x|known|bs 1 1\n"),
              "refused: f.txt:1: x is not an id of 1 to 3 digits without leading zero\n");
    EXPECT_EQ(run("names kNames", "n.txt", "5|नयाँ वर्ष\n50|कुशे अौसी # kept\n"),
              head +
                  "n.txt; do not edit.\nconstexpr std::array<KeyedText, 2> kNames{{\n"
                  "    {\"5\", \"नयाँ वर्ष\"},\n    {\"50\", \"कुशे अौसी # kept\"},\n}};\n");
    EXPECT_EQ(run("dates kDates", "important-2070.txt", "20131012 60 314\n"),
              head +
                  "the dated lists; do not edit.\nconstexpr std::array<KeyedText, 1> kDates{{\n"
                  "    {\"2070\", \"2013101260 20131012314\"},\n}};\n");
    EXPECT_EQ(run("dates kDates", "important-2070.txt", "20130231 60\n"),
              "refused: important-2070.txt:1: there is no day 20130231\n");
    for (const char* const bad : {"5 नयाँ", "05|x", "6|x\n5|y", "5|", "5| x", "5|a~b", "5|a\"b"}) {
        EXPECT_TRUE(run("names kNames", "n.txt", bad).starts_with("refused: n.txt:")) << bad;
    }
}

}  // namespace
}  // namespace dinmala
