#include "tests/cal/Command.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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
    EXPECT_EQ(run("2071 3 --date 2013-06-20").out.find('['), std::string::npos);  // today is of another year
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

TEST(Convert, TakesADateOfEitherCalendar) {
    EXPECT_EQ(run("convert 2013-04-14").out, "2070-01-01\n");
    EXPECT_EQ(run("convert --from bs 2070-01-01").out, "2013-04-14\n");
    EXPECT_EQ(run("convert 2013-04-14 --digits devanagari").out, "२०७०-०१-०१\n");
}

// Every kind of bad line is told with its number; the others are converted, and
// the lines stay beside those they came from.
TEST(Convert, GoesOnAfterABadLine) {
    const Result result = run("convert",
                              "2013-04-14\n2013-02-31\n\n2013-4\n2050-01-01\r\n2013-13-01\n2013-04-00\n201304145\n"
                              "\033[31m\n2013-04/14\n" +
                                  std::string(200'000, '7') + "\n2013-04-14" + std::string(5000, ' ') + "\n\xc2\x9b" +
                                  "1m\xff\n 1942-04-13 \r\n2043-04-13");
    EXPECT_EQ(result.out, "2070-01-01\n\n\n\n\n\n\n\n\n\n\n\n\n1999-01-01\n2099-12-30\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "dinmala-cal: line 2: AD 2013-02-31: the month has days 1 to 28\n"
              "dinmala-cal: line 3: the line is empty\n"
              "dinmala-cal: line 4: \"2013-4\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 5: AD 2050-01-01 lies outside the table, AD 1942-04-13 to 2043-04-13\n"
              "dinmala-cal: line 6: AD 2013-13-01: there is no month 13\n"
              "dinmala-cal: line 7: AD 2013-04-00: the month has days 1 to 30\n"
              "dinmala-cal: line 8: \"201304145\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 9: \"?[31m\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 10: \"2013-04/14\" is not a date such as 2070-01-31\n"
              "dinmala-cal: line 11: the line is longer than 4096 bytes\n"
              "dinmala-cal: line 12: the line is longer than 4096 bytes\n"
              "dinmala-cal: line 13: \"?1m?\" is not a date such as 2070-01-31\n");
    const Result bs = run("convert --from bs", "2070-01-32\n1998-12-01\n2100-01-01\n2070-01-31\n");
    EXPECT_EQ(bs.out, "\n\n\n2013-05-14\n");
    EXPECT_EQ(bs.err.substr(0, bs.err.find('\n')), "dinmala-cal: line 1: BS 2070-01-32: the month has days 1 to 31");
}

// A line on the seam of two reads is one line.
TEST(Convert, TakesALongStreamThereAndBack) {
    std::string ad, bs;
    for (int i = 0; i < 36000; ++i) {
        ad += "2013-05-" + std::to_string(15 + i % 9) + "\n";
        bs += "2070-02-0" + std::to_string(1 + i % 9) + "\n";
    }
    EXPECT_EQ(run("convert", ad).out, bs);
    EXPECT_EQ(run("convert --from bs", bs).out, ad);
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
    const json listed = json::parse(run("--json events 2071").out);
    for (const json& day : listed["days"]) EXPECT_FALSE(day["events"].empty());
    const json month = json::parse(run("2070 1 --json --date 2013-04-14").out);
    EXPECT_EQ(month["days"].size(), 31u);
    EXPECT_TRUE(json::parse(run("2080 1 --json").out)["days"][0]["tithiNumber"].is_null());
    EXPECT_EQ(month["days"][0], (json{{"bs", "2070-01-01"},
                                      {"ad", "2013-04-14"},
                                      {"weekday", 1},
                                      {"today", true},
                                      {"tithi", {"चतुर्थी"}},
                                      {"events", {"बैशाख सङ्क्रान्ति", "नयाँ वर्ष", "सिरुवा पावनी पर्व"}},
                                      {"tithiNumber", 4},
                                      {"eventIds", {428, 5, 542}},
                                      {"holiday", nullptr},
                                      {"grade", nullptr}}));
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
    EXPECT_EQ(run("upcoming --important --lang en --date 2014-03-30").out,
              "2070-12-25  2014-04-08  in   9 days     राम नवमी\n");
    EXPECT_EQ(run("upcoming --date 2014-04-13").out, "");
}

constexpr const char* kCurrent = "DINMALA_EDITION=current";

// The option goes before the environment, that before the panel's choice, and without any it is the current one.
TEST(Editions, AreChosenAndDiffer) {
    const std::string first = "2083-08-08\n", current = "2083-08-07\n";
    const auto day = [](const char* option, const char* environment) {
        return run(std::string{"convert 2026-11-23 "} + option, "", environment).out;
    };
    EXPECT_EQ(day("", ""), current);
    EXPECT_EQ(day("", "DINMALA_EDITION=first"), first);
    EXPECT_EQ(day("--edition current", "DINMALA_EDITION=first"), current);
    testFolder().write("dinmala/preferences.ini", "[other]\nedition=current\n[display]\nedition = first\n");
    EXPECT_EQ(day("", ""), first);
    EXPECT_EQ(day("", kCurrent), current);
    testFolder().write("dinmala/preferences.ini", "[display]\nedition=second\n[other]\nedition=first\n");
    EXPECT_EQ(day("", ""), current);
    const std::string preferences = testFolder().path("dinmala/preferences.ini");
    std::filesystem::remove(preferences);
    ASSERT_EQ(mkfifo(preferences.c_str(), 0600), 0);  // not waited for
    EXPECT_EQ(day("", ""), current);
    std::filesystem::remove_all(testFolder().path("dinmala"));
    for (const Result& wrong :
         {run("--edition second"), run("--edition ''"), run("2083", "", "DINMALA_EDITION=second")}) {
        EXPECT_EQ(wrong.status, 2);
        EXPECT_NE(wrong.err.find("there are first and current"), std::string::npos) << wrong.err;
    }
}

// Marks stand beside the days that have them, and only marks that occur are told.
TEST(Editions, MarkHolidaysAndWhatIsNotSure) {
    EXPECT_EQ(run("--lang en --date 2028-11-17 2085 8", "", kCurrent).out,
              "           Mangsir 2085 (Nov/Dec 2028)\n"
              " Sun    Mon    Tue    Wed    Thu    Fri    Sat\n"
              "                              1 16 [ 2*17]  3*18\n"
              "  4*19   5 20   6 21   7*22   8 23   9 24  10 25\n"
              " 11 26  12 27  13 28  14 29  15 30  16  1? 17  2\n"
              " 18  3  19  4~ 20  5~ 21  6  22  7  23  8  24  9\n"
              " 25 10  26 11  27 12  28 13  29 14  30 15\n"
              "\n"
              " * public holiday\n"
              " ~ close to being otherwise: the date or the tithi\n"
              " ? undecided until Nepal publishes the year: the date or the tithi\n"
              " provisional: Nepal has not published BS 2085\n");
    EXPECT_NE(run("--lang en --date 2028-12-04 2085 8", "", kCurrent).out.find(" 18  3 [19  4] 20  5~ 21  6"),
              std::string::npos);  // the bracket takes the mark's place
    const std::string published = run("--lang en 2083 6", "", kCurrent).out;
    EXPECT_EQ(published.substr(published.find("\n\n")), "\n\n * public holiday\n");
    EXPECT_EQ(run("2083 8", "", kCurrent).out.find('*'), std::string::npos);
    EXPECT_NE(run("2085", "", kCurrent).out.find("१६?१७"), std::string::npos);
}

TEST(Editions, TellGradesIdsAndTheNextYear) {
    const json days = json::parse(run("2083 6 --json", "", kCurrent).out)["days"];
    EXPECT_EQ(days[2]["eventIds"][0], 650);  // Constitution Day
    EXPECT_EQ(days[2]["eventIds"].size(), days[2]["events"].size());
    EXPECT_EQ(days[2]["holiday"], "national");
    EXPECT_EQ(days[2]["grade"], "published");
    EXPECT_EQ(days[2]["tithiNumber"], 8);
    EXPECT_EQ(days[17]["tithiNumber"], 23);  // the 24th runs at no sunrise
    EXPECT_EQ(json::parse(run("tithi 1999 --json", "", kCurrent).out)["days"].size(), 366u);
    EXPECT_EQ(json::parse(run("events --from bs 2085-08-16 --json", "", kCurrent).out)["grade"], "open");
    const json upcoming = json::parse(run("upcoming --json --date 2026-11-23", "", kCurrent).out);
    EXPECT_EQ(upcoming.back()["ad"], "2027-11-21");
    EXPECT_EQ(upcoming.back()["daysLeft"], 363);
    const json holidays = json::parse(run("upcoming --important --json --date 2026-11-23", "", kCurrent).out);
    EXPECT_EQ(holidays[0]["id"], 130);
}

std::string yearFile(int year) {
    const std::string text = contentOf(SOURCE_DIR "/almanac/years/" + std::to_string(year) + ".txt");
    return text.substr(text.find('\n') + 1);  // without the comment on who made it
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

// What is written can be read, and takes the place of the built-in year when it lies in a folder; a bad file is told
// and changes nothing.
TEST(YearFiles, AreWrittenCheckedAndTaken) {
    for (const int year : {1999, 2083, 2085}) {
        EXPECT_EQ(run("almanac " + std::to_string(year), "", kCurrent).out, yearFile(year)) << year;
    }
    int next = 2084;  // the first that Nepal has not published
    while (yearFile(next).find("computed") == std::string::npos) ++next;
    const std::string year = std::to_string(next);
    const std::string good = replaced(yearFile(next), "computed", "published");
    const std::string said = run("check-year -", good).out;
    EXPECT_TRUE(said.starts_with("-: BS " + year + ", published, 36") && said.ends_with("fits into the calendar\n"))
        << said;
    const std::string bad = replaced(good, year + "-01-05", year + "-01-06");
    EXPECT_EQ(run("check-year -", bad).err,
              "dinmala-cal: -:6: " + year + "-01-06 does not follow " + year + "-01-04\n");
    // The year after it is published, so it does not give way.
    const std::string published = yearFile(2082);
    const Result shorter = run("check-year -", published.substr(0, published.find("2082-12-30")));
    EXPECT_EQ(shorter.status, 1);
    EXPECT_NE(shorter.err.find("ends on 2026-04-12"), std::string::npos) << shorter.err;
    EXPECT_EQ(run("check-year /tmp").err, "dinmala-cal: /tmp: is not a regular file\n");
    EXPECT_EQ(run("check-year -", std::string(1 << 20, '#') + "\n").err,
              "dinmala-cal: -: is larger than 1048576 bytes\n");

    testFolder().write("2098.txt", good);  // a folder refuses it by its name, so here too
    EXPECT_NE(run("check-year " + testFolder().path("2098.txt")).err.find("2098.txt:1: is of the year " + year),
              std::string::npos);
    const std::string file = "dinmala/almanac/" + year + ".txt";
    testFolder().write(file, good);
    EXPECT_EQ(run("almanac " + year, "", kCurrent).out, good);
    EXPECT_EQ(run(year + " 1", "", kCurrent).out.find("provisional"), std::string::npos);
    EXPECT_EQ(json::parse(run("explain --json --from bs " + year + "-01-18", "", kCurrent).out)["date"]["yearFromFile"],
              true);
    testFolder().write(file, bad);
    const Result refused = run("almanac " + year, "", kCurrent);
    EXPECT_EQ(refused.out, yearFile(next));
    EXPECT_NE(refused.err.find(year + ".txt:6: "), std::string::npos) << refused.err;
    EXPECT_EQ(run("convert 2013-04-14").err, "");  // the first edition takes no files
    std::filesystem::remove_all(testFolder().path("dinmala"));
}

// What is explained is what is listed, by the rules that the program carries.
TEST(Explain, TellsWhatDecidesADay) {
    const auto explained = [](const std::string& date) {
        return json::parse(run("explain --json " + date, "", kCurrent).out);
    };
    for (const char* date : {"1943-11-08", "1963-10-17", "1985-10-20", "2010-11-04", "2026-10-18", "2028-12-01"}) {
        const json day = explained(date);
        const json listed = json::parse(run(std::string{"events --json "} + date, "", kCurrent).out);
        EXPECT_EQ(day["tithi"]["number"], listed["tithiNumber"]) << date;
        EXPECT_FALSE(day["events"].empty()) << date;
        for (const json& event : day["events"]) EXPECT_TRUE(event["rule"].is_string()) << date << event;
    }
    const json tihar = explained("2010-11-04");
    json corrected;
    for (const json& event : tihar["events"]) {
        if (event["id"] == 121) corrected = event;
    }
    EXPECT_EQ(corrected["reckonedDay"], "2010-11-05");
    EXPECT_NE(corrected["correction"].get<std::string>().find("the calendar committee"), std::string::npos);
    // By the instants: the full moon begins a minute before this sunrise.
    const json open = explained("2028-12-01");
    EXPECT_EQ(open["tithi"]["begin"], "2028-12-01 06:38");
    EXPECT_EQ(open["sunrise"], "2028-12-01 06:39");
    EXPECT_LT(open["tithi"]["marginMinutes"], 2.0);
    EXPECT_EQ(open["tithi"]["grade"], "open");
    EXPECT_EQ(open["date"]["published"], false);
    const std::string text = run("explain 2010-11-04 --lang en", "", kCurrent).out;
    EXPECT_NE(text.find("  Rule: lunar Kartik dark 13 sunrise (known; custom)\n"
                        "  Decided by sunrise, 06:18, in कृष्ण त्रयोदशी from 2010-11-03 17:02 to 14:46.\n"),
              std::string::npos)
        << text;
    EXPECT_NE(run("explain 2026-03-18 --lang en", "", kCurrent).out.find("move by 105 min "), std::string::npos);
    EXPECT_NE(run("explain 2013-04-14").out.find("\nचतुर्थी\n"), std::string::npos);
    EXPECT_EQ(run("explain 2020-01-01").status, 1);  // the first edition has no lists there
}

// A locale that is not installed, as on this machine every Nepali one, still names the language of the messages; what
// asks for another language, or for none, is followed.
TEST(Messages, AreInTheLanguageOfALocaleThatIsNotInstalled) {
    const auto told = [](const std::string& environment) {
        return run("2100", "", "LANG= LC_ALL= LC_MESSAGES= LANGUAGE= DINMALA_EDITION=first " + environment).err;
    };
    const std::string english = told("LC_ALL=C LANG=ne_IN.UTF-8");
    const std::string nepali = told("LANG=ne_IN.UTF-8");
    EXPECT_EQ(english.find("तालिका"), std::string::npos) << english;
    EXPECT_NE(nepali, english);
    EXPECT_EQ(told("LC_ALL=ne_IN"), nepali);
    EXPECT_EQ(told("LC_MESSAGES=ne_NP LANG=en_US.UTF-8"), nepali);
    EXPECT_EQ(told("LANG=ne_IN.UTF-8 LANGUAGE=en"), english);
    EXPECT_EQ(told("LANG=xx_YY"), english);
}

// 1 for a date without an answer, 2 for a command line that cannot be understood.
TEST(Failures, AreToldAndLeaveTheirStatus) {
    for (const char* arguments :
         {"2100", "1998 12", "2070 13", "2070 0", "x", "convert 2013-02-29", "weekday 1942-04-12", "events 2060",
          "tithi 2099-01-01 --from bs", "upcoming --date 2020-01-01", "--date 2070-01-32 --from bs", "--date today",
          // An empty text is not today.
          "--date ''", "weekday ''", "convert ''", "events ''", "''", "ics --output ''", "ics --follow ''"}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 1) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err.substr(0, 13), "dinmala-cal: ") << arguments;
    }
    for (const char* arguments : {"--lang fr", "--from", "convert 2013-04-14 2013-04-15", "--no-such", "2070 1 2"}) {
        EXPECT_EQ(run(arguments).status, 2) << arguments;
    }
    EXPECT_EQ(run("--help").status, 0);
    for (const char* arguments : {"2070", "convert", "--help", "--version"}) {
        const std::string command = std::string{"echo 2013-04-14 | " DINMALA_CAL " "} + arguments;
        EXPECT_NE(std::system((command + " >/dev/full 2>/dev/null").c_str()), 0) << arguments;
    }
}

}  // namespace
}  // namespace dinmala::test
