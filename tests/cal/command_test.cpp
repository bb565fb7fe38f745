#include "tests/cal/Command.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

namespace dinmala::test {
namespace {

using nlohmann::json;

// Columns, weeks and the mark of today stand as a person sees them.
TEST(Calendar, DrawsAMonth) {
    EXPECT_EQ(run("--date 2013-06-20").out,
              "            आषाढ २०७० (Jun/Jul 2013)\n"
              " आइत    सोम    मङ्गल   बुध     बिहि   शुक्र    शनि\n"
              "                                            १ 15\n"
              "  २ 16   ३ 17   ४ 18   ५ 19 [ ६ 20]  ७ 21   ८ 22\n"
              "  ९ 23  १० 24  ११ 25  १२ 26  १३ 27  १४ 28  १५ 29\n"
              " १६ 30  १७  1  १८  2  १९  3  २०  4  २१  5  २२  6\n"
              " २३  7  २४  8  २५  9  २६ 10  २७ 11  २८ 12  २९ 13\n"
              " ३० 14  ३१ 15\n");
    EXPECT_EQ(run("--date 2070-03-05 --from bs --lang en 2070 9").out,
              "         Poush 2070 (Dec 2013/Jan 2014)\n"
              " Sun    Mon    Tue    Wed    Thu    Fri    Sat\n"
              "         1 16   2 17   3 18   4 19   5 20   6 21\n"
              "  7 22   8 23   9 24  10 25  11 26  12 27  13 28\n"
              " 14 29  15 30  16 31  17  1  18  2  19  3  20  4\n"
              " 21  5  22  6  23  7  24  8  25  9  26 10  27 11\n"
              " 28 12  29 13  30 14\n");
    EXPECT_EQ(run("२०७० ३ --digits western").out, run("2070 3 --digits western").out);
    // The table's ends, where a neighbour is missing.
    EXPECT_NE(run("1999 1").out.find("         १ 13   २ 14"), std::string::npos);
    EXPECT_NE(run("2099 12").out.find(" २९ 12  ३० 13"), std::string::npos);
}

TEST(Calendar, DrawsAYear) {
    const std::string year = run("2070 --lang en --date 2013-06-20").out;
    EXPECT_NE(year.find("      Baishakh                 Jestha                  Ashadh\n"), std::string::npos) << year;
    EXPECT_NE(year.find(" 29 30 31                26 27 28 29 30 31       23 24 25 26 27 28 29\n"), std::string::npos);
    EXPECT_NE(year.find("  2  3  4  5[ 6] 7  8\n"), std::string::npos) << year;
}

// Colours and cursor moves are for a terminal that takes them and a person who
// wants them. What follows a name that terminals measure differently is placed by
// its column.
TEST(Calendar, SuitsATerminal) {
    const std::string coloured = runOnTerminal("--date 2013-06-20", "");
    EXPECT_NE(coloured.find("\033[7m ६ 20\033[0m"), std::string::npos) << coloured;
    EXPECT_NE(coloured.find("मङ्गल\033[23Gबुध"), std::string::npos) << coloured;
    EXPECT_EQ(coloured.find('['), coloured.find("\033[") + 1);  // no bracket but those of the escapes
    const std::string plain = runOnTerminal("--date 2013-06-20", "NO_COLOR=1");
    EXPECT_EQ(plain.find('m'), std::string::npos) << plain;
    EXPECT_NE(plain.find("[ ६ 20]"), std::string::npos);
    EXPECT_NE(plain.find("मङ्गल\033[23Gबुध"), std::string::npos);
    EXPECT_NE(runOnTerminal("--date 2013-06-20", "NO_COLOR=").find("\033[7m"), std::string::npos);  // empty is unset
    EXPECT_EQ(runOnTerminal("--date 2013-06-20", "TERM=dumb").find('\033'), std::string::npos);
    EXPECT_EQ(run("--date 2013-06-20").out.find('\033'), std::string::npos);
}

TEST(Convert, TakesADateInItsForms) {
    EXPECT_EQ(run("convert 2013-04-14").out, "2070-01-01\n");
    EXPECT_EQ(run("convert --from bs 2070-01-01").out, "2013-04-14\n");
    for (const char* text : {"20130514", "2013/5/14", "2013.05.14", "२०१३-०५-१४"}) {
        EXPECT_EQ(run(std::string{"convert "} + text).out, "2070-01-31\n") << text;
    }
    EXPECT_EQ(run("convert 2013-04-14 --digits devanagari").out, "२०७०-०१-०१\n");
}

// Every kind of bad line is told with its number; the others are converted, and
// the lines stay beside those they came from.
TEST(Convert, GoesOnAfterABadLine) {
    const Result result = run("convert",
                              "2013-04-14\n2013-02-31\n\n2013-4\n2050-01-01\r\n2013-13-01\n2013-04-00\n201304145\n"
                              "\033[31m\n2013-04/14\n" +
                                  std::string(200'000, '7') + "\n 1942-04-13 \r\n2043-04-13");
    EXPECT_EQ(result.out, "2070-01-01\n\n\n\n\n\n\n\n\n\n\n1999-01-01\n2099-12-30\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.substr(0, result.err.find("line 11")),
              "dinmala-cal: line 2: AD 2013-02-31: the month has days 1 to 28\n"
              "dinmala-cal: line 3: the line is empty\n"
              "dinmala-cal: line 4: \"2013-4\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 5: AD 2050-01-01 lies outside the table, AD 1942-04-13 to 2043-04-13\n"
              "dinmala-cal: line 6: AD 2013-13-01: there is no month 13\n"
              "dinmala-cal: line 7: AD 2013-04-00: the month has days 1 to 30\n"
              "dinmala-cal: line 8: \"201304145\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 9: \"?[31m\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 10: \"2013-04/14\" is not a date such as 2070-01-31\n"
              "dinmala-cal: ");
    const Result bs = run("convert --from bs", "2070-01-32\n1998-12-01\n2100-01-01\n2070-01-31\n");
    EXPECT_EQ(bs.out, "\n\n\n2013-05-14\n");
    EXPECT_EQ(bs.err.substr(0, bs.err.find('\n')), "dinmala-cal: line 1: BS 2070-01-32: the month has days 1 to 31");
}

// A line on the seam of two reads is one line. The whole table goes there and back.
TEST(Convert, TakesTheWholeTableThereAndBack) {
    std::string bs;
    for (int year = 1999; year <= 2099; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= 29; ++day) {
                char line[16];
                bs.append(line, static_cast<std::size_t>(
                                    std::snprintf(line, sizeof line, "%d-%02d-%02d\n", year, month, day)));
            }
        }
    }
    const Result ad = run("convert --from bs", bs);
    EXPECT_EQ(ad.status, 0);
    EXPECT_EQ(run("convert", ad.out).out, bs);
}

TEST(Json, IsJsonEverywhere) {
    for (const char* arguments :
         {"", "2070 3", "2070", "convert 2013-04-14", "weekday 2013-04-14", "events 2070", "events 2013-04-14",
          "tithi 2070", "tithi 2013-04-14", "upcoming --date 2013-04-14", "upcoming --important --date 2013-04-14"}) {
        const Result result = run(std::string{"--json "} + arguments);
        EXPECT_EQ(result.status, 0) << arguments;
        EXPECT_TRUE(json::accept(result.out)) << arguments << "\n" << result.out;
        EXPECT_EQ(result.out.find('\033'), std::string::npos);
    }
    const json month = json::parse(run("2070 1 --json --date 2013-04-14").out);
    EXPECT_EQ(month["days"].size(), 31u);
    EXPECT_EQ(month["days"][0], (json{{"bs", "2070-01-01"},
                                      {"ad", "2013-04-14"},
                                      {"weekday", 1},
                                      {"today", true},
                                      {"tithi", {"चतुर्थी"}},
                                      {"events", {"बैशाख सङ्क्रान्ति", "नयाँ वर्ष", "सिरुवा पावनी पर्व"}}}));
    const json lines = json::parse(run("convert --json", "2013-04-14\nx\xff\n").out);
    EXPECT_EQ(lines[0]["bs"], "2070-01-01");
    EXPECT_EQ(lines[1]["line"], 2);
    EXPECT_EQ(run("convert --json").out, "[]\n");
}

TEST(Almanac, ListsDaysYearsAndWhatIsToCome) {
    EXPECT_EQ(run("weekday 2013-04-14 --lang en").out, "Sunday\n");
    EXPECT_EQ(run("weekday --date 2013-04-16").out, "मङ्गलवार\n");
    EXPECT_EQ(run("tithi --from bs 2070-01-01").out, "चतुर्थी\n");
    EXPECT_EQ(run("events 2070 --lang en").out.substr(0, 11), "2070-01-01 ");
    EXPECT_EQ(json::parse(run("tithi 2070 --json").out)["days"].size(), 365u);
    EXPECT_EQ(run("upcoming --date 2014-04-11").out,
              "२०७०-१२-२९  2014-04-12  भोलि            शनि प्रदोष व्रत\n"
              "२०७०-१२-३०  2014-04-13    २ दिन बाँकी    महावीर जयन्ती\n");
    EXPECT_EQ(run("upcoming --important --lang en --date 2014-03-29").out,
              "2070-12-16  2014-03-30  tomorrow        घोडे जात्रा\n"
              "2070-12-25  2014-04-08  in  10 days     राम नवमी\n");
    EXPECT_EQ(run("upcoming --date 2014-04-13").out, "");
}

// 1 for a date without an answer, 2 for a command line that cannot be understood.
TEST(Failures, AreToldAndLeaveTheirStatus) {
    for (const char* arguments :
         {"2100", "1998 12", "2070 13", "2070 0", "x", "convert 2013-02-29", "weekday 1942-04-12", "events 2060",
          "tithi 2099-01-01 --from bs", "upcoming --date 2020-01-01", "--date 2070-01-32 --from bs", "--date today"}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 1) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err.substr(0, 13), "dinmala-cal: ") << arguments;
    }
    for (const char* arguments : {"--lang fr", "--from", "convert 2013-04-14 2013-04-15", "--no-such", "2070 1 2"}) {
        EXPECT_EQ(run(arguments).status, 2) << arguments;
    }
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_NE(std::system(DINMALA_CAL " 2070 >/dev/full 2>/dev/null"), 0);
    EXPECT_NE(std::system("echo 2013-04-14 | " DINMALA_CAL " convert >/dev/full 2>/dev/null"), 0);
}

}  // namespace
}  // namespace dinmala::test
