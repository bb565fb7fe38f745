// Holds the current edition to facts that others published, and tells, as Markdown, how many hold, by year, and which
// do not.
//
//   measure_truth ROOT FACTS      ROOT the top of the source tree, FACTS the folder of the facts: npns.csv,
//                                 published_months.csv, tithi_days.txt, facts.csv, holidays.csv
//
// It judges nothing: the tests do.

#include "base/DateText.h"
#include "panchanga/DaySky.h"
#include "tools/YearMaker.h"

#include <cctype>
#include <cmath>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace dinmala;
using namespace dinmala::tools;
using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

namespace {

constexpr double kMinutes = 1440.0;

using Row = std::map<std::string, std::string>;  // by the head of its column

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') {
            quoted = !quoted;
        } else if (c == ',' && !quoted) {
            cells.emplace_back();
        } else if (c != '\r') {
            cells.back() += c;
        }
    }
    return cells;
}

std::vector<Row> rowsOf(const std::string& path) {
    std::ifstream file{path};
    std::string line;
    if (!std::getline(file, line)) {
        throw FileError{path + ": cannot be read"};
    }
    const std::vector<std::string> heads = cellsOf(line);
    std::vector<Row> rows;
    while (std::getline(file, line)) {
        const std::vector<std::string> cells = cellsOf(line);
        Row row;
        for (std::size_t i = 0; i < heads.size() && i < cells.size(); ++i) {
            row[heads[i]] = cells[i];
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

sys_days adDay(const std::string& text) {
    const Result<DateFields> fields = readDate(text);
    if (!fields || !fields->year) {
        throw FileError{"'" + text + "' is no date"};
    }
    return sys_days{std::chrono::year{*fields->year} / fields->month / fields->day};
}

std::string text(sys_days day) { return dateText(year_month_day{day}); }

/// Facts by a key, and how many of them hold.
struct Score {
    std::map<std::string, std::pair<int, int>> byKey;  // held, all
    std::vector<std::string> misses;

    void add(const std::string& key, bool holds, const std::string& miss) {
        auto& [held, all] = byKey[key];
        held += holds ? 1 : 0;
        ++all;
        if (!holds) {
            misses.push_back(miss);
        }
    }

    void print(const std::string& title, const std::string& head) const {
        std::cout << "\n## " << title << "\n\n| " << head << " | hold | of |\n|---|---|---|\n";
        int held = 0, all = 0;
        for (const auto& [key, counts] : byKey) {
            std::cout << "| " << key << " | " << counts.first << " | " << counts.second << " |\n";
            held += counts.first;
            all += counts.second;
        }
        std::cout << "| all | " << held << " | " << all << " |\n";
        for (const std::string& miss : misses) {
            std::cout << (&miss == &misses.front() ? "\nMisses:\n\n- " : "- ") << miss << '\n';
        }
    }
};

/// Minutes by which the reckoned instant of a printed one is late.
double minutesOff(const Panchanga& panchanga, const Row& row) {
    const std::string& time = row.at("time");
    const std::size_t colon = time.find(':');
    const sys_days day = adDay(row.at("ad_date"));
    const double said = startOfDay(day, panchanga.place()) + std::stod(time.substr(0, colon)) / 24.0 +
                        std::stod(time.substr(colon + 1)) / kMinutes;
    const std::string& what = row.at("what");
    double reckoned = 0.0;
    if (what == "sankranti") {
        reckoned = panchanga.sankranti(std::stoi(row.at("value")) / 30, said);
    } else if (what == "tithi_end") {
        const panchanga::Tithi tithi = panchanga.tithiAt(said);
        reckoned = std::abs(tithi.begin - said) < std::abs(tithi.end - said) ? tithi.begin : tithi.end;
    } else {
        reckoned = what == "sunrise" ? sunrise(day, panchanga.place()) : sunset(day, panchanga.place());
    }
    return (reckoned - said) * kMinutes;
}

void measureInstants(const std::string& folder, const Panchanga& panchanga) {
    std::map<std::string, std::vector<double>> errors;
    for (const Row& row : rowsOf(folder + "/npns.csv")) {
        errors[row.at("what")].push_back(minutesOff(panchanga, row));
    }
    std::cout
        << "\n## Printed instants\n\n| what | printed | minutes late, from | to | mean |\n|---|---|---|---|---|\n";
    for (const auto& [what, all] : errors) {
        double least = all.front(), most = all.front(), sum = 0.0;
        for (const double error : all) {
            least = std::min(least, error);
            most = std::max(most, error);
            sum += error;
        }
        std::cout << "| " << what << " | " << all.size() << " | " << std::fixed << std::setprecision(2) << least
                  << " | " << most << " | " << sum / static_cast<double>(all.size()) << " |\n";
    }
}

void measureMonths(const std::string& folder, const CurrentRules& rules) {
    Score starts, lengths;
    sys_days start = *rules.calendar.toDays(bsDate(kFirstYear, 1, 1));
    for (const Row& row : rowsOf(folder + "/published_months.csv")) {
        const int year = std::stoi(row.at("bs_year"));
        if (year < kFirstYear || year > kLastYear) {
            continue;
        }
        bool same = true;
        for (int month = 1; month <= 12; ++month) {
            const std::string column = "m" + std::to_string(100 + month).substr(1);
            const int length = std::stoi(row.at(column));
            const BsYearMonth bsMonth{BsYear{year}, BsMonth{static_cast<unsigned>(month)}};
            same = same && rules.calendar.daysIn(bsMonth) == static_cast<unsigned>(length);
            if (year <= rules.lastPublished) {
                const SolarMonth reckoned = rules.panchanga.solarMonth(year, month);
                std::ostringstream miss;
                miss << year << '-' << month << ": published " << text(start) << ", reckoned " << text(reckoned.first)
                     << "; " << std::fixed << std::setprecision(1) << reckoned.margin() << " minutes from the boundary";
                starts.add(std::to_string(year / 10) + "0s", reckoned.first == start, miss.str());
            }
            start += days{length};
        }
        lengths.add(row.at("status"), same, std::to_string(year) + " has other lengths");
    }
    starts.print("Month starts by the reckoning alone", "BS years");
    lengths.print("Years of the edition's month table", "status of the row");
}

void measureTithis(const std::string& folder, const CurrentRules& rules) {
    Score two, one;
    std::ifstream file{folder + "/tithi_days.txt"};
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::string year = line.substr(0, 4);
        const SkyYear sky{std::stoi(year), rules.calendar, rules.panchanga};
        sys_days day = sky.first();
        for (const char letter : line.substr(5)) {
            if (std::isalpha(static_cast<unsigned char>(letter)) != 0) {
                const int tithi = daySky(day, sky).tithi.tithi.number;
                const char ours = tithi == 15 ? 'o' : tithi == 30 ? 'p' : static_cast<char>('a' + (tithi - 1) % 15);
                const bool lower = std::islower(static_cast<unsigned char>(letter)) != 0;
                (lower ? one : two)
                    .add(year, std::tolower(static_cast<unsigned char>(letter)) == ours,
                         text(day) + ": published " + letter + ", reckoned " + ours);
            }
            day += days{1};
        }
    }
    two.print("Tithi at sunrise, days with two sources or more", "BS year");
    one.print("Tithi at sunrise, days with one source", "BS year");
}

/// The days of each festival in the current edition, by BS year; dated sources left out where `corrected` is false.
std::multimap<int, sys_days> festivalDays(int year, bool corrected, const CurrentRules& rules) {
    std::multimap<int, sys_days> found;
    const SkyYear sky{year, rules.calendar, rules.panchanga};
    for (const Celebration& one : rules.festivals.celebrations(sky, corrected)) {
        found.emplace(one.festival->id, one.day);
    }
    return found;
}

void measureFestivals(const std::string& folder, const CurrentRules& rules, bool corrected) {
    Score official, listed;
    std::map<int, std::multimap<int, sys_days>> years;
    std::set<std::string> seen;
    for (const Row& row : rowsOf(folder + "/facts.csv")) {
        const std::string kind = row.at("kind") == "listed" ? "listed" : "official";
        constexpr int kGaura = 649;  // the facts have no id for it
        const int id = row.at("event_id").empty() ? kGaura : std::stoi(row.at("event_id"));
        if (!seen.insert(kind + row.at("ad_date") + "/" + std::to_string(id)).second) {
            continue;  // another source of the same fact
        }
        const sys_days day = adDay(row.at("ad_date"));
        const int year = int{rules.calendar.toDate(day)->year};
        if (!years.contains(year)) {
            years[year] = festivalDays(year, corrected, rules);
        }
        const auto [from, to] = years[year].equal_range(id);
        bool holds = false;
        std::string ours;
        for (auto one = from; one != to; ++one) {
            holds = holds || one->second == day;
            ours += " " + text(one->second);
        }
        std::string miss = row.at("ad_date") + " " + row.at("festival") + " (" + std::to_string(id) + ", " +
                           row.at("kind") + ", " + row.at("source_id") + "): ours" + (ours.empty() ? " none" : ours);
        (kind == "listed" ? listed : official).add(std::to_string(year), holds, miss);
    }
    const std::string how = corrected ? ", rules and dated corrections" : ", rules alone";
    official.print("Festival days declared or observed" + how, "BS year");
    listed.print("Festival days in public calendars" + how, "BS year");
}

void measureHolidays(const std::string& folder, const CurrentRules& rules) {
    static const std::map<std::string, Holiday> kKinds{
        {"H", Holiday::national}, {"L", Holiday::group}, {"O", Holiday::observed}, {"-", Holiday::none}};
    Score score;
    for (const Row& row : rowsOf(folder + "/holidays.csv")) {
        const std::string& rule = row.at("rule");  // "BS 01-11"
        const bool bs = rule.compare(0, 2, "BS") == 0;
        const int month = std::stoi(rule.substr(3, 2)), dayOfMonth = std::stoi(rule.substr(6, 2));
        for (const auto& [column, value] : row) {
            if (!kKinds.contains(value) || column == "holiday" || column == "rule") {
                continue;
            }
            const int year = std::stoi(column);
            Holiday most = Holiday::none;
            for (const auto& [id, festival] : rules.festivals.all()) {
                const bool fixed = festival.kind == (bs ? Festival::Kind::bsDate : Festival::Kind::adDate) &&
                                   festival.month == month && festival.day == dayOfMonth;
                if (fixed) {
                    most = std::max(most, rules.festivals.dayOff(id, year));
                }
            }
            static const std::string kLetters = "-OLH";
            score.add(column, most == kKinds.at(value),
                      row.at("holiday") + " " + column + ": published " + value + ", ours " +
                          kLetters[static_cast<std::size_t>(most)]);
        }
    }
    score.print("Fixed national days, whether offices are closed", "BS year");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: measure_truth ROOT FACTS\n";
        return EXIT_FAILURE;
    }
    try {
        const CurrentRules rules{argv[1]};
        const std::string folder = argv[2];
        measureInstants(folder, rules.panchanga);
        measureMonths(folder, rules);
        measureTithis(folder, rules);
        measureFestivals(folder, rules, false);
        measureFestivals(folder, rules, true);
        measureHolidays(folder, rules);
        return EXIT_SUCCESS;
    } catch (const FileError& error) {
        std::cerr << error.text << '\n';
        return EXIT_FAILURE;
    }
}
