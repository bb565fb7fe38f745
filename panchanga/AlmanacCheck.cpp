#include "AlmanacCheck.h"

#include "RuleText.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

namespace dinmala::panchanga {

using std::chrono::sys_days;

namespace {

constexpr int kFirstYear = 2065;
constexpr int kLastYear = 2071;

std::ifstream opened(const std::string& path) {
    std::ifstream file{path};
    if (!file) {
        throw FileError{path + ": cannot be read"};
    }
    return file;
}

std::string contents(const std::string& path) {
    std::ifstream file = opened(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Reads one file of the source tree: `make(stream, path)`.
template <typename Make>
auto read(const std::string& root, const std::string& path, Make make) {
    const std::string full = root + "/" + path;
    std::ifstream file = opened(full);
    return make(file, full);
}

/// `2013-10-14 | 62 | source | why the list differs`
std::vector<DatedFact> readDatedFacts(std::istream& file, const std::string& fileName) {
    std::vector<DatedFact> facts;
    readRules(file, fileName, [&](std::string_view text, int) {
        const std::vector<std::string_view> fields = split(text, '|');
        if (fields.size() != 3 && fields.size() != 4) {
            throw std::string("a line is 'date | id | source', with '| why the list differs' where it does");
        }
        Words date{fields[0]};
        Words id{fields[1]};
        facts.push_back({date.adDate(), id.number("id", 1, 999), std::string(fields[2]),
                         fields.size() == 4 ? std::string(fields[3]) : std::string{}});
    });
    return facts;
}

/// How many UTF-16 code units `text` takes: two for a character beyond the first plane.
std::size_t utf16Length(std::string_view text) {
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        units += byte >= 0xF0 ? 2U : (byte & 0xC0U) != 0x80U ? 1U : 0U;
    }
    return units;
}

using Tokens = std::vector<Token>;

std::vector<std::string> texts(const Tokens& tokens) {
    std::vector<std::string> all;
    for (const Token& token : tokens) {
        all.push_back(token.text());
    }
    return all;
}

/// The day's tokens by its key, day then month: "0101".
Tokens onDay(const Tokens& tokens, std::string_view key) {
    Tokens found;
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(found),
                 [key](const Token& token) { return token.text().compare(0, 4, key) == 0; });
    return found;
}

/// The names of the tokens that have one, in order.
std::vector<std::string> namesOf(const Tokens& tokens, const EventPlans::Names& names) {
    std::vector<std::string> found;
    for (const Token& token : tokens) {
        if (const auto name = names.find(token.id); name != names.end()) {
            found.push_back(name->second);
        }
    }
    return found;
}

/// What comes after a month and day, as name^month/day.
std::vector<std::string> afterDay(const Tokens& tokens, const EventPlans::Names& names, int month, int day) {
    std::vector<std::string> found;
    for (const Token& token : tokens) {
        const auto name = names.find(token.id);
        if (name != names.end() && std::pair{token.month, token.day} > std::pair{month, day}) {
            found.push_back(name->second + "^" + std::to_string(token.month) + "/" + std::to_string(token.day));
        }
    }
    return found;
}

/// The days of a list and how many tokens each has.
std::map<std::string, std::size_t> dayCounts(const Tokens& tokens) {
    std::map<std::string, std::size_t> counts;
    for (const Token& token : tokens) {
        ++counts[token.text().substr(0, 4)];
    }
    return counts;
}

using Names = std::vector<std::string>;

/// The fixed facts: what the lists are known to hold, written out here apart from the files and the rules.
class Facts {
public:
    Facts(const AlmanacFiles& files, const BsCalendar& calendar) : files_(files), calendar_(calendar) {}

    std::vector<Finding> all() {
        names();
        events();
        eventQueries();
        tithis();
        tithiQueries();
        important();
        return std::move(findings_);
    }

private:
    void fact(std::string what, bool holds) { findings_.push_back({std::move(what), holds}); }

    const Tokens& eventsOf(int year) const { return of(files_.events, year); }
    const Tokens& tithisOf(int year) const { return of(files_.tithis, year); }
    static const Tokens& of(const std::map<int, Tokens>& lists, int year) {
        static const Tokens kNone;
        const auto list = lists.find(year);
        return list == lists.end() ? kNone : list->second;
    }

    void names() {
        fact("629 event ids have a name", files_.eventNames.size() == 629);
        static const std::set<int> kUnnamed{55,  85,  89,  90,  182, 184, 186, 188, 190, 192,
                                            194, 463, 537, 538, 539, 540, 595, 610, 626};
        bool right = true;
        for (int id = 1; id <= 648; ++id) {
            right = right && files_.eventNames.contains(id) != kUnnamed.contains(id);
        }
        fact("the other 19 of 1 to 648 are the known ones", right);
        bool lengths = true, separators = true;
        for (const auto& [id, name] : files_.eventNames) {
            lengths = lengths && utf16Length(name) >= 5 && utf16Length(name) <= 43;
            separators = separators && name.find_first_of("~^") == std::string::npos;
        }
        fact("event names are 5 to 43 code units long", lengths);
        fact("no event name holds a separator", separators);
        static const std::set<int> kNoTithi{31, 38, 40, 42, 43, 44, 46};
        right = files_.tithiNames.size() == 54;
        for (int id = 1; id <= 61; ++id) {
            right = right && files_.tithiNames.contains(id) != kNoTithi.contains(id);
        }
        fact("54 tithi ids of 1 to 61 have a name, the known 7 have none", right);
    }

    /// Facts that both kinds of list share.
    void shape(const std::string& kind, int year, const Tokens& tokens, std::size_t count, const std::string& first,
               const std::string& last) {
        const std::string where = kind + " " + std::to_string(year) + ": ";
        fact(where + std::to_string(count) + " tokens", tokens.size() == count);
        fact(where + "first is " + first, !tokens.empty() && tokens.front().text() == first);
        fact(where + "last is " + last, !tokens.empty() && tokens.back().text() == last);
        fact(where + "days ascend", std::is_sorted(tokens.begin(), tokens.end(), [](const Token& a, const Token& b) {
                 return std::pair{a.month, a.day} < std::pair{b.month, b.day};
             }));
        fact(where + "no day is past the end of its month",
             std::all_of(tokens.begin(), tokens.end(), [&](const Token& token) {
                 return token.month >= 1 && token.month <= 12 && token.day >= 1 &&
                        token.day <= calendar_.monthLength(year, token.month);
             }));
    }

    void events() {
        struct Year {
            int year;
            std::size_t tokens;
            std::string first, last;
            std::size_t ids, most;
        };
        std::size_t total = 0;
        std::vector<std::string> unnamed, repeated;
        for (const Year& known :
             {Year{2065, 86, "01015", "211215", 85, 6}, Year{2066, 187, "01015", "2812173", 144, 6},
              Year{2067, 328, "01015", "3012330", 261, 6}, Year{2068, 352, "0101170", "3012330", 275, 5},
              Year{2069, 447, "01015", "3112330", 344, 5}, Year{2070, 467, "0101428", "3012430", 363, 5},
              Year{2071, 462, "0101428", "3012330", 321, 6}}) {
            const Tokens& tokens = eventsOf(known.year);
            const std::string where = "events " + std::to_string(known.year) + ": ";
            total += tokens.size();
            shape("events", known.year, tokens, known.tokens, known.first, known.last);
            std::set<int> ids;
            for (const Token& token : tokens) {
                ids.insert(token.id);
                if (!files_.eventNames.contains(token.id)) {
                    unnamed.push_back(std::to_string(known.year) + " " + token.text());
                }
            }
            fact(where + std::to_string(known.ids) + " distinct ids", ids.size() == known.ids);
            const auto counts = dayCounts(tokens);
            std::size_t most = 0;
            std::vector<std::string> fullest;
            for (const auto& [day, count] : counts) {
                most = std::max(most, count);
                if (count == 6) {
                    fullest.push_back(day);
                }
            }
            fact(where + "at most " + std::to_string(known.most) + " tokens a day",
                 known.year >= 2068 ? most == known.most : most <= known.most);
            if (known.year == 2071) {
                fact(where + "six tokens on 0905 and 1606 only", fullest == Names{"0905", "1606"});
            }
            const Names all = texts(tokens);
            fact(where + "New Year on 01015", std::count(all.begin(), all.end(), "01015") == 1);
            std::set<std::string> seen;
            for (const std::string& text : all) {
                if (!seen.insert(text).second) {
                    repeated.push_back(std::to_string(known.year) + " " + text);
                }
            }
        }
        fact("events: the years are 2065 to 2071", files_.events.size() == 7);
        fact("events: 2,329 tokens in all", total == 2329);
        fact("events: four tokens without a name, the known ones",
             unnamed.size() == 4 &&
                 std::set<std::string>(unnamed.begin(), unnamed.end()) ==
                     std::set<std::string>{"2065 290555", "2066 250189", "2066 250190", "2066 180555"});
        fact("events: three tokens twice, the known ones",
             repeated == Names{"2069 1704207", "2070 3001216", "2071 160635"});
    }

    void eventQueries() {
        const auto day = [this](int year, std::string_view key) {
            return namesOf(onDay(eventsOf(year), key), files_.eventNames);
        };
        fact("day 0101 of 2070", day(2070, "0101") == Names{"बैशाख सङ्क्रान्ति", "नयाँ वर्ष", "सिरुवा पावनी पर्व"});
        fact("day 3001 of 2070", day(2070, "3001") == Names{"अक्षय तृतिया", "अक्षय तृतिया", "नाला महालक्ष्मी यात्रा"});
        fact("day 2501 of 2066", day(2066, "2501") == Names{"कानुन / रेडक्रस दिवस"});
        fact("day 2501 of 2066 has three tokens", onDay(eventsOf(2066), "2501").size() == 3);
        fact("day 2905 of 2065 is empty, but for one token",
             day(2065, "2905").empty() && onDay(eventsOf(2065), "2905").size() == 1);
        fact("day 1606 of 2071 holds 35 twice", [this] {
            const Names all = texts(onDay(eventsOf(2071), "1606"));
            return std::count(all.begin(), all.end(), "160635") == 2;
        }());
        for (const auto& [year, count] : {std::pair<int, std::size_t>{2065, 85},
                                          {2066, 184},
                                          {2067, 328},
                                          {2068, 352},
                                          {2069, 447},
                                          {2070, 467},
                                          {2071, 462}}) {
            fact("names of " + std::to_string(year) + ": " + std::to_string(count),
                 namesOf(eventsOf(year), files_.eventNames).size() == count);
        }
        const auto after = [this](int year, int month, int dayOfMonth) {
            return afterDay(eventsOf(year), files_.eventNames, month, dayOfMonth);
        };
        fact("after 12/28 of 2070", after(2070, 12, 28) == Names{"शनि प्रदोष व्रत^12/29", "महावीर जयन्ती^12/30"});
        fact("after 0/0 of 2070: one for each token", after(2070, 0, 0).size() == 467);
        fact("after 12/30 of 2070: none", after(2070, 12, 30).empty());
        const Names later = after(2065, 5, 28);
        fact("after 5/28 of 2065 the first is Ghatasthapana", !later.empty() && later.front() == "घटस्थापना^6/14");
    }

    void tithis() {
        struct Year {
            int year;
            std::size_t tokens;
            std::string first, last;
            std::size_t days, several;
        };
        std::size_t total = 0;
        std::set<int> ids;
        bool named = true;
        for (const Year& known :
             {Year{2065, 119, "160120", "311222", 119, 0}, Year{2066, 367, "010127", "311217", 364, 2},
              Year{2067, 378, "010118", "301212", 365, 13}, Year{2068, 379, "010113", "30125", 365, 14},
              Year{2069, 367, "01016", "311221", 366, 1}, Year{2070, 365, "01014", "30128", 365, 0},
              Year{2071, 365, "010117", "301211", 365, 0}}) {
            const Tokens& tokens = tithisOf(known.year);
            const std::string where = "tithis " + std::to_string(known.year) + ": ";
            total += tokens.size();
            shape("tithis", known.year, tokens, known.tokens, known.first, known.last);
            const auto counts = dayCounts(tokens);
            fact(where + std::to_string(known.days) + " days", counts.size() == known.days);
            std::vector<std::string> several;
            for (const auto& [day, count] : counts) {
                if (count > 1) {
                    several.push_back(day);
                }
            }
            fact(where + std::to_string(known.several) + " days with several tokens", several.size() == known.several);
            const auto has = [&several](const std::string& day) {
                return std::find(several.begin(), several.end(), day) != several.end();
            };
            if (known.year == 2065) {
                bool right = true;
                for (int month = 1; month <= 12; ++month) {
                    for (int day = 1; day <= calendar_.monthLength(2065, month); ++day) {
                        const std::string key = Token{month, day, 0, {}}.text().substr(0, 4);
                        const bool covered = key == "1601" || (month >= 9 && key != "0410");
                        right = right && counts.contains(key) == covered;
                    }
                }
                fact(where + "covers 1601 and months 9 to 12 but 0410", right);
            } else if (known.year == 2066) {
                fact(where + "only 0201 is left out", !counts.contains("0201"));
                fact(where + "three on 0101, two on 0802",
                     has("0802") && onDay(tokens, "0101").size() == 3 && onDay(tokens, "0802").size() == 2);
            } else if (known.year == 2067) {
                fact(where + "two on 1302", has("1302"));
            } else if (known.year == 2068) {
                fact(where + "two on 0601", has("0601"));
            } else if (known.year == 2069) {
                fact(where + "two on 2501", has("2501"));
            }
            for (const Token& token : tokens) {
                ids.insert(token.id);
                named = named && files_.tithiNames.contains(token.id);
            }
        }
        fact("tithis: the years are 2065 to 2071", files_.tithis.size() == 7);
        fact("tithis: 2,340 tokens in all", total == 2340);
        fact("tithis: every id has a name", named);
        bool used = true;
        for (const auto& [id, name] : files_.tithiNames) {
            used = used && ids.contains(id) == (id != 34 && id != 35 && id != 45);
        }
        fact("tithis: every name but 34, 35 and 45 is used", used);
    }

    void tithiQueries() {
        const auto day = [this](int year, std::string_view key) {
            return namesOf(onDay(tithisOf(year), key), files_.tithiNames);
        };
        fact("tithi 0101 of 2070", day(2070, "0101") == Names{"चतुर्थी"});
        fact("tithi 0101 of 2066", day(2066, "0101") == Names{"पञ्चमी", "षष्ठी", "दशमी"});
        fact("tithi 0201 of 2066", day(2066, "0201").empty());
        fact("tithi 0601 of 2068", day(2068, "0601") == Names{"प्रतिपदा", "द्वितीया"});
        fact("tithi 0101 of 2065", day(2065, "0101").empty());
        fact("tithi 1601 of 2065", day(2065, "1601") == Names{"द्वितीया"});
        fact("tithi 0109 of 2065", day(2065, "0109") == Names{"चौथी"});
        const auto name = files_.tithiNames.find(45);
        fact("tithi name 45", name != files_.tithiNames.end() && name->second == "दिनमाला");
    }

    void important() {
        const EventPlans::Dated& list = files_.important;
        fact("important 2070: 36 tokens", list.size() == 36);
        fact("important 2070: dates ascend",
             std::is_sorted(list.begin(), list.end(), [](const auto& a, const auto& b) { return a.first < b.first; }));
        fact("important 2070: every id has a name", std::all_of(list.begin(), list.end(), [this](const auto& one) {
                 return files_.eventNames.contains(one.second);
             }));
        using namespace std::chrono;
        fact("important 2070: from New Year to Ram Navami",
             !list.empty() && list.front() == std::pair{sys_days{year{2013} / April / 14}, 5} &&
                 list.back() == std::pair{sys_days{year{2014} / April / 8}, 169});
        const std::set<std::string> listed = [this] {
            const Names all = texts(eventsOf(2070));
            return std::set<std::string>(all.begin(), all.end());
        }();
        std::size_t found = 0;
        for (const auto& [date, id] : list) {
            const BsCalendar::Date bs = calendar_.date(date);
            found += bs.year == 2070 && listed.contains(Token{bs.month, bs.day, id, {}}.text()) ? 1U : 0U;
        }
        fact("important 2070: all 36 are in the year's list", found == 36);
    }

    const AlmanacFiles& files_;
    const BsCalendar& calendar_;
    std::vector<Finding> findings_;
};

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
        const sys_days first = rules.calendar.day(year, 1, 1);
        const auto days = panchanga.dayTithis(first, 366);
        for (const Token& token : tokens) {
            ++report.tithiTokens;
            const auto offset =
                static_cast<std::size_t>((rules.calendar.day(year, token.month, token.day) - first).count());
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
            const sys_days day = rules.calendar.day(year, token.month, token.day);
            const auto& ruled = days[token.id];
            const auto found =
                std::find_if(ruled.begin(), ruled.end(), [day](const Occurrence& one) { return one.day == day; });
            if (found == ruled.end()) {
                report.failures.push_back("event " + text + " is not on a day of its rule");
            } else {
                ++report.byGrade[std::string(gradeName(found->grade))];
                if (found->grade == Grade::usual) {
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
        const BsCalendar::Date bs = rules.calendar.date(fact.day);
        std::ostringstream text;
        text << static_cast<int>(ad.year()) << '-' << static_cast<unsigned>(ad.month()) << '-'
             << static_cast<unsigned>(ad.day()) << " id " << fact.id;
        const auto list = files.events.find(bs.year);
        if (list == files.events.end()) {
            report.failures.push_back("dated " + text.str() + ": no list holds that day");
            continue;
        }
        const auto& tokens = list->second;
        const bool listed =
            std::any_of(tokens.begin(), tokens.end(), [&fact](const Token& token) { return token.id == fact.id; });
        const Token token{bs.month, bs.day, fact.id, {}};
        bool agrees = std::find(tokens.begin(), tokens.end(), token) != tokens.end();
        if (!listed) {
            const SkyYear sky{bs.year, rules.calendar, panchanga};
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
                 eventFile(year, rules, panchanga, files.eventNames, important ? files.important : EventPlans::Dated{}),
                 "events");
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
        files.tithis[year] = read(root, tithi, readYearList);
        files.events[year] = read(root, events, readYearList);
        files.tithiText[year] = contents(root + "/" + tithi);
        files.eventText[year] = contents(root + "/" + events);
    }
    files.tithiNames = read(root, "almanac/data/tithi_names.txt", readNames);
    files.eventNames = readEventNames(root);
    files.important = read(root, "almanac/data/important-2070.txt", readDated);
    files.dated = read(root, "almanac/rules/dated.txt", readDatedFacts);
    return files;
}

AlmanacRules::AlmanacRules(const std::string& root)
    : calendar(read(root, "calendar/data/month_lengths.txt",
                    [](std::istream& file, const std::string& path) {
                        return BsCalendar{file, path};
                    })),
      festivals(read(root, "almanac/rules/festivals.txt",
                     [](std::istream& file, const std::string& path) {
                         return Festivals{file, path};
                     })),
      tithis(read(root, "almanac/rules/tithis.txt",
                  [](std::istream& file, const std::string& path) {
                      return TithiRules{file, path};
                  })),
      plans(read(root, "almanac/rules/years.txt", [](std::istream& file, const std::string& path) {
          return EventPlans{file, path};
      })) {}

EventPlans::Names readEventNames(const std::string& root) {
    return read(root, "almanac/data/event_names.txt", readNames);
}

EventPlans::Dated readImportant(const std::string& root, const AlmanacRules& rules, int year) {
    const std::string name = rules.plans.importantFile(year);
    return name.empty() ? EventPlans::Dated{} : read(root, "almanac/data/" + name, readDated);
}

std::string tithiFile(int year, const AlmanacRules& rules, const Panchanga& panchanga) {
    return "# The tithis of BS " + std::to_string(year) + ", made by make_almanac from almanac/rules.\n" +
           writeYearList(rules.tithis.list(year, rules.calendar, panchanga));
}

std::string eventFile(int year, const AlmanacRules& rules, const Panchanga& panchanga, const EventPlans::Names& names,
                      const EventPlans::Dated& important) {
    const SkyYear sky{year, rules.calendar, panchanga};
    return "# The events of BS " + std::to_string(year) + ", made by make_almanac from almanac/rules.\n" +
           writeYearList(rules.plans.list(sky, rules.festivals, names, important));
}

AlmanacReport checkAlmanac(const AlmanacFiles& files, const AlmanacRules& rules, const Panchanga& panchanga) {
    AlmanacReport report;
    report.facts = Facts{files, rules.calendar}.all();
    for (const Finding& finding : report.facts) {
        if (!finding.holds) {
            report.failures.push_back("fact: " + finding.what);
        }
    }
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
    const auto hold = std::count_if(facts.begin(), facts.end(), [](const Finding& one) { return one.holds; });
    std::ostringstream out;
    out << "facts of the lists: " << hold << " of " << facts.size() << " hold\n"
        << "tithi tokens: " << tithiAgree << " of " << tithiTokens
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

}  // namespace dinmala::panchanga
