#include "tools/ListCheck.h"

#include "panchanga/RuleText.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace dinmala::tools {

using std::chrono::sys_days;

namespace {

constexpr int kFirstYear = 2065;
constexpr int kLastYear = 2071;

/// `2013-10-14 | 62 | source | why the list differs`
std::vector<DatedFact> readDatedFacts(std::istream& file, const std::string& fileName) {
    std::vector<DatedFact> facts;
    const std::optional<FileError> error = readRules(file, fileName, [&](std::string_view text, int) -> Complaint {
        const std::vector<std::string_view> fields = split(text, '|');
        if (fields.size() != 3 && fields.size() != 4) {
            return "a line is 'date | id | source', with '| why the list differs' where it does";
        }
        Words date{fields[0]};
        Words id{fields[1]};
        facts.push_back({date.adDate(), id.number("id", 1, 999), std::string(fields[2]),
                         fields.size() == 4 ? std::string(fields[3]) : std::string{}});
        return date.complaint() ? date.finish() : id.finish();
    });
    if (error) {
        throw FileError{*error};
    }
    return facts;
}

using Tokens = std::vector<Token>;

/// The day's tokens by its key, day then month: "0101".
Tokens onDay(const Tokens& tokens, std::string_view key) {
    Tokens found;
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(found),
                 [key](const Token& token) { return token.text().compare(0, 4, key) == 0; });
    return found;
}

Token tokenOn(const BsDate& date, int id) {
    return {static_cast<int>(unsigned{date.month}), static_cast<int>(unsigned{date.day}), id, {}};
}

/// What a tithi name says: one or two tithis of a half, 15 the full moon, 30 the new moon; and for the names of
/// observances also the half and the month. Written out here, so that the check does not lean on the rules.
struct NamedTithis {
    std::vector<int> numbers;
    int half = 0;   // 1 bright, 2 dark, 0 either
    int month = 0;  // purnimanta, 1 Vaishakh; 0 any
};

const std::map<std::string, NamedTithis>& tithisByName() {
    static const std::map<std::string, NamedTithis> kNames{
        {"प्रतिपदा", {{1}}},
        {"द्वितीया", {{2}}},
        {"तृतिया", {{3}}},
        {"चतुर्थी", {{4}, 1}},
        {"चौथी", {{4}, 2}},
        {"पञ्चमी", {{5}}},
        {"षष्ठी", {{6}}},
        {"सप्तमी", {{7}}},
        {"अष्टमी", {{8}}},
        {"अष्टमी व्रत", {{8}, 1}},
        {"नवमी", {{9}}},
        {"दशमी", {{10}}},
        {"एकादशी", {{11}}},
        {"द्वादशी", {{12}}},
        {"त्रयोदशी", {{13}}},
        {"चतुर्दशी", {{14}}},
        {"पूर्णिमा", {{15}}},
        {"औंसी", {{30}}},
        {"आमावास्या", {{30}}},
        {"प्रतिपदा / द्वितीया", {{1, 2}}},
        {"द्वितीया / तृतिया", {{2, 3}}},
        {"तृतिया / चतुर्थी", {{3, 4}}},
        {"पञ्चमी / षष्ठी", {{5, 6}}},
        {"नवमी / दशमी", {{9, 10}}},
        {"एकादशी / द्वादशी", {{11, 12}}},
        {"त्रयोदशी / चतुर्दशी", {{13, 14}}},
        {"स्कन्द षष्ठी", {{6}, 1, 10}},
        {"वसन्त श्रावण", {{5}, 1, 10}},
        {"जेष्ठ शुक्ल तृतिया", {{3}, 1, 2}},
        {"सा. कृ. प्रतिप्रदा", {{1}, 2, 4}},
        {"सा. शु. प्रतिप्रदा", {{1}, 1, 4}},
        {"कुशे अौसी", {{30}, 2, 5}},
        {"वामन द्वादशी", {{12}, 1, 5}},
        {"अनन्त चतुर्दशी", {{14}, 1, 5}},
        {"महानवमी", {{9}, 1, 6}},
        {"अक्षय तृतिया", {{3}, 1, 1}},
        {"गंगा सप्तमी", {{7}, 1, 1}},
        {"वायु अष्टमी", {{8}, 1, 2}},
        {"गुंगा नवमी", {{9}, 2, 5}},
        {"सूर्य षष्ठी", {{6}, 1, 5}},
        {"मातृ नवमी", {{9}, 2, 6}},
        {"कुष्माण्ड नवमी", {{9}, 1, 7}},
        {"बाला चतुर्दशी", {{14}, 2, 8}},
    };
    return kNames;
}

/// Whether a day of the sky bears out a name: a single tithi runs at sunrise or is the day's skipped one, a pair are
/// the one at sunrise and the skipped one.
bool bearsOut(const DayTithi& today, const LunarDate& lunar, const NamedTithis& said) {
    const auto within = [](int tithi) { return tithi > 15 && tithi < 30 ? tithi - 15 : tithi; };
    const int half = today.tithi <= 15 ? 1 : 2;
    if (said.half != 0 && said.half != half && today.skipped == 0) {
        return false;
    }
    if (said.month != 0 && (lunar.adhika || lunar.month != said.month)) {
        return false;
    }
    if (said.numbers.size() == 2) {
        return within(today.tithi) == said.numbers[0] && today.skipped != 0 && within(today.skipped) == said.numbers[1];
    }
    return within(today.tithi) == said.numbers[0] || (today.skipped != 0 && within(today.skipped) == said.numbers[0]);
}

std::string join(const std::vector<std::string>& lines, const std::string& before) {
    std::string text;
    for (const std::string& line : lines) {
        text += before + line + "\n";
    }
    return text;
}

void checkTithis(const AlmanacFiles& files, const AlmanacRules& rules, const Panchanga& panchanga,
                 AlmanacReport& report) {
    // The tokens that are known to be untrue of the sky.
    static const std::set<std::string> kUntrue{"2065 160120", "2066 01015", "2066 010112", "2066 080217"};
    for (const auto& [year, tokens] : files.tithis) {
        const sys_days first = *rules.calendar.toDays(bsDate(year, 1, 1));
        const auto days = panchanga.dayTithis(first, 366);
        for (const Token& token : tokens) {
            ++report.tithiTokens;
            const auto offset = static_cast<std::size_t>((*rules.calendar.toDays(token.date(year)) - first).count());
            const auto name = files.tithiNames.find(token.id);
            const auto said = name == files.tithiNames.end() ? tithisByName().end() : tithisByName().find(name->second);
            const bool agrees = said != tithisByName().end() && offset < days.size() &&
                                bearsOut(days[offset], panchanga.lunarDateAt(days[offset].sunrise), said->second);
            const std::string text = std::to_string(year) + " " + token.text();  // "2065 160120"
            report.tithiAgree += agrees ? 1 : 0;
            if (agrees == kUntrue.contains(text)) {
                report.failures.push_back("tithi " + text + (agrees ? " is true after all" : " is not in the sky"));
            } else if (!agrees) {
                report.untrue.push_back(text);
                if (onDay(tokens, token.text().substr(0, 4)).back().note.empty()) {
                    report.failures.push_back("tithi " + text + " is untrue and its line does not say so");
                }
            }
        }
    }
}

void checkEvents(const AlmanacFiles& files, const AlmanacRules& rules, const Panchanga& panchanga,
                 AlmanacReport& report) {
    for (const auto& [year, tokens] : files.events) {
        const SkyYear sky{year, rules.calendar, panchanga};
        std::map<int, std::vector<Occurrence>> days;
        for (const Token& token : tokens) {
            ++report.eventTokens;
            const std::string text = std::to_string(year) + " " + token.text();
            if (!files.eventNames.contains(token.id)) {
                ++report.byGrade["stated"];
                if (onDay(tokens, token.text().substr(0, 4)).back().note.empty()) {
                    report.failures.push_back("event " + text + " has no name and its line does not say so");
                }
                continue;
            }
            if (!days.contains(token.id)) {
                days[token.id] = rules.festivals.daysOf(token.id, sky);
            }
            const sys_days day = *rules.calendar.toDays(token.date(year));
            const auto& ruled = days[token.id];
            const auto found =
                std::find_if(ruled.begin(), ruled.end(), [day](const Occurrence& one) { return one.day == day; });
            if (found == ruled.end()) {
                report.failures.push_back("event " + text + " is not on a day of its rule");
            } else {
                ++report.byGrade[std::string(gradeName(found->grade))];
                if (found->grade == ListGrade::usual) {
                    report.usual.push_back(text + ' ' + files.eventNames.at(token.id));
                }
            }
        }
    }
}

void checkDated(const AlmanacFiles& files, const AlmanacRules& rules, const Panchanga& panchanga,
                AlmanacReport& report) {
    for (const DatedFact& fact : files.dated) {
        const std::chrono::year_month_day ad{fact.day};
        const BsDate bs = *rules.calendar.toDate(fact.day);
        std::ostringstream text;
        text << static_cast<int>(ad.year()) << '-' << static_cast<unsigned>(ad.month()) << '-'
             << static_cast<unsigned>(ad.day()) << " id " << fact.id;
        const auto list = files.events.find(int{bs.year});
        if (list == files.events.end()) {
            report.failures.push_back("dated " + text.str() + ": no list holds that day");
            continue;
        }
        const auto& tokens = list->second;
        const bool listed =
            std::any_of(tokens.begin(), tokens.end(), [&fact](const Token& token) { return token.id == fact.id; });
        const Token token = tokenOn(bs, fact.id);
        bool agrees = std::find(tokens.begin(), tokens.end(), token) != tokens.end();
        if (!listed) {
            const SkyYear sky{int{bs.year}, rules.calendar, panchanga};
            const auto days = rules.festivals.daysOf(fact.id, sky);
            agrees =
                std::any_of(days.begin(), days.end(), [&fact](const Occurrence& one) { return one.day == fact.day; });
        }
        if (agrees != fact.disagreement.empty()) {
            report.failures.push_back("dated " + text.str() +
                                      (agrees ? ": agrees, though a reason to differ is given" : ": the list differs"));
        } else if (!agrees) {
            report.datedElse.push_back(text.str() + ": " + fact.disagreement);
        } else if (listed) {
            ++report.datedAgree;
        } else {
            report.datedUnlisted.push_back(text.str());
        }
    }
}

void checkMadeAnew(const AlmanacFiles& files, const AlmanacRules& rules, const Panchanga& panchanga,
                   AlmanacReport& report) {
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        const auto same = [&](const std::map<int, std::string>& texts, const std::string& made,
                              const std::string& kind) {
            const auto text = texts.find(year);
            if (text == texts.end() || text->second != made) {
                report.failures.push_back(kind + "-" + std::to_string(year) + ".txt is not what make_almanac makes");
            }
        };
        try {
            same(files.tithiText, tithiFile(year, rules, panchanga), "tithi");
            const bool important = !rules.plans.importantFile(year).empty();
            same(files.eventText,
                 eventFile(year, rules, panchanga, files.eventNames, important ? files.important : Dated{}), "events");
        } catch (const FileError& error) {
            report.failures.push_back(error.text);
        }
    }
}

}  // namespace

AlmanacFiles readAlmanac(const std::string& root) {
    AlmanacFiles files;
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        const std::string tithi = "almanac/data/tithi-" + std::to_string(year) + ".txt";
        const std::string events = "almanac/data/events-" + std::to_string(year) + ".txt";
        files.tithis[year] = readFile(root, tithi, readYearList);
        files.events[year] = readFile(root, events, readYearList);
        files.tithiText[year] = fileText(root, tithi);
        files.eventText[year] = fileText(root, events);
    }
    files.tithiNames = readFile(root, "almanac/data/tithi_names.txt", readNames);
    files.eventNames = readEventNames(root);
    files.important = readFile(root, "almanac/data/important-2070.txt", readDated);
    files.dated = readFile(root, "almanac/rules/dated.txt", readDatedFacts);
    return files;
}

AlmanacReport checkAlmanac(const AlmanacFiles& files, const AlmanacRules& rules, const Panchanga& panchanga) {
    AlmanacReport report;
    for (const auto& [id, name] : files.eventNames) {
        if (!rules.festivals.all().contains(id)) {
            report.failures.push_back("event id " + std::to_string(id) + " has no rule");
        }
    }
    checkTithis(files, rules, panchanga, report);
    checkEvents(files, rules, panchanga, report);
    checkDated(files, rules, panchanga, report);
    checkMadeAnew(files, rules, panchanga, report);
    return report;
}

std::string AlmanacReport::text() const {
    std::ostringstream out;
    out << "tithi tokens: " << tithiAgree << " of " << tithiTokens
        << " agree with the sky; known to be untrue: " << untrue.size() << "\n"
        << join(untrue, "    ") << "event tokens: " << eventTokens << "; on a day of their rule:";
    for (const auto& [grade, count] : byGrade) {
        out << ' ' << grade << ' ' << count;
    }
    out << "\n"
        << join(usual, "    usual: ") << "dated sources: " << datedAgree << " agree, " << datedUnlisted.size()
        << " agree with the rule of a festival that its year does not list, " << datedElse.size()
        << " differ for a reason given\n"
        << join(datedUnlisted, "    not listed: ") << join(datedElse, "    ") << "failures: " << failures.size() << "\n"
        << join(failures, "    ");
    return out.str();
}

}  // namespace dinmala::tools
