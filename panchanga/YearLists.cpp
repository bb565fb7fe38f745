#include "YearLists.h"

#include "RuleText.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace dinmala::panchanga {

using std::chrono::sys_days;

namespace {

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

std::string rest(Words& words) {
    std::string text;
    while (!words.done()) {
        text += (text.empty() ? "" : " ") + std::string(words.take("word"));
    }
    return text;
}

/// A tithi's number within its half, 1 to 14, or 15 (full moon) or 30 (new moon).
int withinHalf(int tithi) { return tithi > 15 && tithi < 30 ? tithi - 15 : tithi; }

}  // namespace

std::string Token::text() const { return twoDigits(day) + twoDigits(month) + std::to_string(id); }

std::vector<Token> readYearList(std::istream& list, const std::string& fileName) {
    std::vector<Token> tokens;
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
        const std::size_t hash = line.find('#');
        Words words{std::string_view{line}.substr(0, hash)};
        if (words.done()) {
            continue;
        }
        const std::string_view key = words.take("day and month");
        const std::optional<int> dayMonth = key.size() == 4 ? wholeNumber(key) : std::nullopt;
        try {
            if (!dayMonth) {
                throw "'" + std::string(key) + "' is no day and month such as 3012";
            }
            do {
                tokens.push_back({*dayMonth % 100, *dayMonth / 100, words.number("id", 1, 999), {}});
            } while (!words.done());
        } catch (const std::string& complaint) {
            throw FileError{fileName + ":" + std::to_string(number) + ": " + complaint};
        }
        if (hash != std::string::npos) {
            tokens.back().note = trimmed(std::string_view{line}.substr(hash + 1));
        }
    }
    return tokens;
}

std::string writeYearList(const std::vector<Token>& tokens) {
    std::string text;
    for (std::size_t i = 0; i < tokens.size();) {
        const Token& first = tokens[i];
        std::string notes;
        text += twoDigits(first.day) + twoDigits(first.month);
        for (; i < tokens.size() && tokens[i].day == first.day && tokens[i].month == first.month; ++i) {
            text += " " + std::to_string(tokens[i].id);
            if (!tokens[i].note.empty()) {
                notes += (notes.empty() ? "  # " : "; ") + std::to_string(tokens[i].id) + ": " + tokens[i].note;
            }
        }
        text += notes + "\n";
    }
    return text;
}

TithiRules::TithiRules(std::istream& rules, const std::string& fileName) {
    readRules(rules, fileName, [&](std::string_view text, int) {
        Words words{text};
        const std::string_view what = words.take("kind of line");
        if (what == "plain") {
            const int tithi = words.number("tithi", 1, 30);
            const int bright = words.number("id", 1, 999);
            const int dark = words.number("id", 1, 999);
            plain_[tithi] = bright;
            if (tithi < 15) {
                plain_[tithi + 15] = dark;
            }
            words.finish();
            return;
        }
        if (what == "joined") {
            const int id = words.number("id", 1, 999);
            const int first = words.number("tithi", 1, 14);
            joined_[{first, words.number("tithi", 2, 14)}] = id;
            words.finish();
            return;
        }
        Year& year = years_[words.number("BS year", 1999, 2099)];
        if (what == "variant") {
            const int tithi = words.tithi();
            year.variants[tithi] = words.number("id", 1, 999);
        } else if (what == "observance") {
            const int month = words.oneOf("lunar month", kMonths) + 1;
            const int tithi = words.tithi();
            year.observances[{month, tithi}] = words.number("id", 1, 999);
        } else if (what == "skipped") {
            static constexpr std::array<std::string_view, 3> kWays{"sunrise", "joined", "both"};
            const int way = words.oneOf("way", kWays);
            year.joined = way == 1;
            year.both = way == 2;
            year.joinedFirst = way == 1 && !words.done() ? words.number("count", 1, 20) : -1;
        } else if (what == "both") {
            year.bothDays.push_back(words.monthDay());
        } else if (what == "cover") {
            const MonthDay first = words.monthDay();
            year.covers.emplace_back(first, words.monthDay());
        } else if (what == "empty") {
            year.empty.push_back(words.monthDay());
        } else if (what == "add" || what == "stands") {
            const auto [month, day] = words.monthDay();
            const int id = words.number("id", 1, 999);
            (what == "add" ? year.added : year.standing).push_back({month, day, id, rest(words)});
        } else {
            throw "'" + std::string(what) + "' begins no line";
        }
        words.finish();
    });
    if (plain_.size() != 30) {
        throw FileError{fileName + ": a tithi has no plain name"};
    }
}

std::vector<Token> TithiRules::list(int year, const BsCalendar& calendar, const Panchanga& panchanga) const {
    static const Year kPlainYear;
    const auto entry = years_.find(year);
    const Year& rules = entry == years_.end() ? kPlainYear : entry->second;
    const sys_days first = calendar.day(year, 1, 1);
    const sys_days last = calendar.day(year, 12, calendar.monthLength(year, 12));

    const auto plainId = [&](int tithi) {
        const auto variant = rules.variants.find(tithi);
        return variant == rules.variants.end() ? plain_.at(tithi) : variant->second;
    };
    const auto contains = [](const std::vector<MonthDay>& days, const MonthDay& day) {
        return std::find(days.begin(), days.end(), day) != days.end();
    };

    std::vector<Token> tokens;
    int joinedSoFar = 0;
    for (const DayTithi& today : panchanga.dayTithis(first, static_cast<int>((last - first).count()) + 1)) {
        const BsCalendar::Date date = calendar.date(today.day);
        const MonthDay key{date.month, date.day};
        const bool covered =
            rules.covers.empty() || std::any_of(rules.covers.begin(), rules.covers.end(), [&key](const auto& cover) {
                return cover.first <= key && key <= cover.second;
            });
        if (!covered || contains(rules.empty, key)) {
            continue;
        }
        const auto stands = std::find_if(rules.standing.begin(), rules.standing.end(), [&key](const Token& token) {
            return MonthDay{token.month, token.day} == key;
        });
        if (stands != rules.standing.end()) {
            tokens.push_back(*stands);
            continue;
        }
        const auto list = [&](int id) { tokens.push_back({date.month, date.day, id, {}}); };
        const LunarDate lunar = panchanga.lunarDateAt(today.sunrise);
        const auto observance = rules.observances.find({lunar.month, lunar.tithi});
        const bool observed = observance != rules.observances.end() && !lunar.adhika && !today.repeated;
        const auto joined =
            today.skipped == 0 ? joined_.end() : joined_.find({withinHalf(today.tithi), withinHalf(today.skipped)});
        const bool join = rules.joined && !contains(rules.bothDays, key) && joined != joined_.end() &&
                          (rules.joinedFirst < 0 || joinedSoFar < rules.joinedFirst);
        if (join) {
            ++joinedSoFar;
            list(joined->second);
        } else {
            list(observed ? observance->second : plainId(today.tithi));
            const bool both = rules.both || rules.joinedFirst >= 0 || contains(rules.bothDays, key);
            if (today.skipped != 0 && both) {
                list(plainId(today.skipped));
            }
        }
        for (const Token& token : rules.added) {
            if (MonthDay{token.month, token.day} == key) {
                tokens.push_back(token);
            }
        }
    }
    return tokens;
}

EventPlans::EventPlans(std::istream& plans, const std::string& fileName) : fileName_(fileName) {
    Plan* plan = nullptr;
    const auto key = [](Words& words) {
        const int dayMonth = words.number("day and month", 101, 3212);
        return MonthDay{dayMonth % 100, dayMonth / 100};
    };
    const auto ids = [](Words& words) {
        std::vector<int> found;
        do {
            found.push_back(words.number("id", 1, 999));
        } while (!words.done());
        return found;
    };
    readRules(plans, fileName, [&](std::string_view text, int number) {
        Words words{text};
        const std::string_view what = words.take("kind of line");
        if (what == "year") {
            plan = &plans_[words.number("BS year", 1999, 2099)];
            plan->line = number;
            plan->tokens = static_cast<std::size_t>(words.number("count of tokens", 1, 9999));
            plan->ids = static_cast<std::size_t>(words.number("count of ids", 1, 9999));
            plan->most = static_cast<std::size_t>(words.number("most tokens of a day", 1, 20));
            plan->newest = words.number("id", 1, 999);
        } else if (plan == nullptr) {
            throw std::string("a file begins with 'year'");
        } else if (what == "first" || what == "day" || what == "last" || what == "whole") {
            const MonthDay day = key(words);
            (what == "whole" ? plan->wholes : plan->days).emplace_back(day, ids(words));
            if (what == "first" || what == "whole") {
                plan->ordered.push_back(day);
            } else if (what == "last") {
                plan->last = day;
                plan->lastOfDay = plan->days.back().second.back();
            }
        } else if (what == "full") {
            const MonthDay day = key(words);
            plan->full[day] = static_cast<std::size_t>(words.number("count", 1, 20));
        } else if (what == "quiet") {
            const MonthDay from = key(words);
            plan->quiet.emplace_back(from, key(words));
        } else if (what == "stands" || what == "twice") {
            const auto [month, day] = key(words);
            const int id = words.number("id", 1, 999);
            (what == "twice" ? plan->twice : plan->standing).push_back({month, day, id, rest(words)});
        } else if (what == "important") {
            plan->important = words.take("file name");
        } else if (what == "later") {
            plan->later = ids(words);
        } else {
            throw "'" + std::string(what) + "' begins no line";
        }
        words.finish();
    });
}

std::string EventPlans::importantFile(int year) const {
    const auto plan = plans_.find(year);
    return plan == plans_.end() ? std::string{} : plan->second.important;
}

/// Fills one year's list from its plan.
class EventFiller {
public:
    EventFiller(const EventPlans::Plan& plan, const SkyYear& sky, const Festivals& festivals,
                const EventPlans::Names& names, std::string where)
        : plan_(plan), sky_(sky), festivals_(festivals), names_(names), where_(std::move(where)) {}

    std::vector<Token> fill(const EventPlans::Dated& important) {
        addGiven(important);
        fillFullDays();
        fillIds();
        fillRest();
        std::size_t count = 0;
        for (const auto& [day, tokens] : days_) {
            count += tokens.size();
            const auto full = plan_.full.find(day);
            if (full != plan_.full.end() && tokens.size() != full->second) {
                fail(twoDigits(day.second) + twoDigits(day.first) + " holds " + std::to_string(tokens.size()) +
                     " tokens, " + std::to_string(full->second) + " are wanted");
            }
        }
        if (listed_.size() != plan_.ids || count != plan_.tokens) {
            fail(std::to_string(listed_.size()) + " ids and " + std::to_string(count) + " tokens found, " +
                 std::to_string(plan_.ids) + " and " + std::to_string(plan_.tokens) + " are wanted");
        }
        std::vector<Token> list;
        for (auto& [day, tokens] : days_) {
            if (std::find(plan_.ordered.begin(), plan_.ordered.end(), day) == plan_.ordered.end()) {
                std::stable_sort(tokens.begin(), tokens.end(),
                                 [](const Token& a, const Token& b) { return a.id < b.id; });
            }
            if (day == plan_.last) {
                const int id = plan_.lastOfDay;
                std::stable_partition(tokens.begin(), tokens.end(), [id](const Token& one) { return one.id != id; });
            }
            list.insert(list.end(), tokens.begin(), tokens.end());
        }
        return list;
    }

private:
    using MonthDay = EventPlans::MonthDay;

    [[noreturn]] void fail(const std::string& what) const {
        throw FileError{where_ + std::to_string(plan_.line) + ": " + std::to_string(sky_.year()) + ": " + what};
    }

    void put(Token token) {
        listed_.insert(token.id);
        ++count_;
        days_[{token.month, token.day}].push_back(std::move(token));
    }

    /// The days of a festival in the year, reckoned once.
    const std::vector<Occurrence>& daysOf(int id) {
        const auto known = reckoned_.find(id);
        return known != reckoned_.end() ? known->second : reckoned_[id] = festivals_.daysOf(id, sky_);
    }

    [[nodiscard]] MonthDay dayOf(const Occurrence& one) const {
        const BsCalendar::Date date = sky_.calendar().date(one.day);
        return {date.month, date.day};
    }

    /// Puts a token that the rules must bear out.
    void putRuled(const MonthDay& day, int id) {
        for (const Token& token : plan_.standing) {
            if (MonthDay{token.month, token.day} == day && token.id == id) {
                put(token);
                return;
            }
        }
        for (const Occurrence& one : daysOf(id)) {
            if (dayOf(one) == day) {
                put({day.first, day.second, id, {}});
                return;
            }
        }
        fail("no rule puts " + std::to_string(id) + " on " + twoDigits(day.second) + twoDigits(day.first));
    }

    void addGiven(const EventPlans::Dated& important) {
        for (const auto& [day, ids] : plan_.wholes) {
            closed_.insert(day);
            for (const int id : ids) {
                putRuled(day, id);
            }
        }
        for (const auto& [day, ids] : plan_.days) {
            for (const int id : ids) {
                putRuled(day, id);
            }
        }
        for (const Token& token : plan_.standing) {
            if (!closed_.contains({token.month, token.day})) {
                put(token);
            }
        }
        for (const Token& token : plan_.twice) {
            putRuled({token.month, token.day}, token.id);
            putRuled({token.month, token.day}, token.id);
        }
        for (const auto& [date, id] : important) {
            const MonthDay day = dayOf({date, Grade::dated});
            if (!holds(day, id)) {
                putRuled(day, id);
            }
        }
    }

    [[nodiscard]] bool holds(const MonthDay& day, int id) const {
        const auto tokens = days_.find(day);
        return tokens != days_.end() && std::any_of(tokens->second.begin(), tokens->second.end(),
                                                    [id](const Token& token) { return token.id == id; });
    }

    /// Whether the day can take the festival: it is open, has room and does not list that name yet.
    [[nodiscard]] bool takes(const MonthDay& day, int id) const {
        if (closed_.contains(day)) {
            return false;
        }
        for (const auto& [from, to] : plan_.quiet) {
            if (from <= day && day <= to) {
                return false;
            }
        }
        const auto full = plan_.full.find(day);
        const std::size_t most = full == plan_.full.end() ? plan_.most : full->second;
        const auto tokens = days_.find(day);
        if (tokens == days_.end()) {
            return true;
        }
        return tokens->second.size() < most &&
               std::none_of(tokens->second.begin(), tokens->second.end(), [&](const Token& token) {
                   const auto there = names_.find(token.id);
                   return token.id == id || (!otherNames_ && sameAs(token.id) == sameAs(id)) ||
                          (there != names_.end() && there->second == names_.at(id));
               });
    }

    /// The id that stands for a festival and its other names.
    [[nodiscard]] int sameAs(int id) const {
        const auto festival = festivals_.all().find(id);
        return festival == festivals_.all().end() || festival->second.sameAs == 0 ? id : festival->second.sameAs;
    }

    [[nodiscard]] bool mayList(int id) const {
        return names_.contains(id) &&
               (id <= plan_.newest || std::find(plan_.later.begin(), plan_.later.end(), id) != plan_.later.end());
    }

    [[nodiscard]] bool monthly(int id) const {
        const Festival& festival = festivals_.all().at(id);
        return festival.kind == Festival::Kind::everyMonth || festival.kind == Festival::Kind::moonEnters;
    }

    /// The ids that the year may list, in the order in which they are wanted.
    [[nodiscard]] std::vector<int> wanted() const {
        std::vector<int> ids;
        for (const auto& [id, festival] : festivals_.all()) {
            if (mayList(id)) {
                ids.push_back(id);
            }
        }
        const int firstNew = firstNewId_;
        std::stable_sort(ids.begin(), ids.end(), [&](int a, int b) {
            const auto rank = [&](int id) {
                const Trust trust = festivals_.all().at(id).trust;
                const int age = id > plan_.newest ? 2 : id >= firstNew ? 0 : 1;
                const bool foremost = age == 1 && (trust == Trust::known || monthly(id));
                return std::pair{foremost ? 0 : age, -static_cast<int>(trust)};
            };
            return rank(a) < rank(b);
        });
        return ids;
    }

    void fillFullDays() {
        const std::vector<int> ids = wanted();
        for (const bool otherNames : {false, true}) {
            otherNames_ = otherNames;
            for (const auto& [day, count] : plan_.full) {
                for (const int id : ids) {
                    for (const Occurrence& one : daysOf(id)) {
                        if (dayOf(one) == day && one.grade != Grade::usual && takes(day, id)) {
                            put({day.first, day.second, id, {}});
                        }
                    }
                }
            }
        }
        otherNames_ = false;
    }

    void fillIds() {
        for (const int id : wanted()) {
            if (listed_.size() == plan_.ids) {
                return;
            }
            if (!listed_.contains(id)) {
                addOne(id);
            }
        }
    }

    /// Lists the first day of `id` that is sure and open and not listed yet. Returns whether there was one.
    bool addOne(int id) {
        for (const Grade grade : {Grade::dated, Grade::sure}) {
            for (const Occurrence& one : daysOf(id)) {
                const MonthDay day = dayOf(one);
                if (one.grade == grade && takes(day, id)) {
                    put({day.first, day.second, id, {}});
                    return true;
                }
            }
        }
        return false;
    }

    /// Adds further days of the ids listed, a day of each in turn: of yearly festivals first, then of monthly ones,
    /// and of these at last also where the day has another name of the festival.
    void fillRest() {
        const std::vector<int> ids = wanted();
        for (const auto& [often, otherNames] : {std::pair{false, false}, {true, false}, {true, true}}) {
            otherNames_ = otherNames;
            bool added = true;
            while (added) {
                added = false;
                for (const int id : ids) {
                    if (count_ == plan_.tokens) {
                        return;
                    }
                    if (listed_.contains(id) && monthly(id) == often && addOne(id)) {
                        added = true;
                    }
                }
            }
        }
    }

    const EventPlans::Plan& plan_;
    const SkyYear& sky_;
    const Festivals& festivals_;
    const EventPlans::Names& names_;
    std::string where_;
    int firstNewId_ = 0;
    std::map<MonthDay, std::vector<Token>> days_;
    std::set<MonthDay> closed_;
    std::set<int> listed_;
    std::size_t count_ = 0;
    std::map<int, std::vector<Occurrence>> reckoned_;
    bool otherNames_ = false;  ///< whether a day may have two names of one festival

    friend class EventPlans;
};

std::vector<Token> EventPlans::list(const SkyYear& sky, const Festivals& festivals, const Names& names,
                                    const Dated& important) const {
    const auto plan = plans_.find(sky.year());
    if (plan == plans_.end()) {
        throw FileError{fileName_ + ": has no year " + std::to_string(sky.year())};
    }
    EventFiller filler{plan->second, sky, festivals, names, fileName_ + ":"};
    const auto before = plans_.find(sky.year() - 1);
    filler.firstNewId_ = before == plans_.end() ? 1 : before->second.newest + 1;
    return filler.fill(important);
}

EventPlans::Names readNames(std::istream& names, const std::string& fileName) {
    EventPlans::Names byId;
    std::string line;
    for (int number = 1; std::getline(names, line); ++number) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::size_t bar = line.find('|');
        const std::optional<int> id = wholeNumber(std::string_view{line}.substr(0, bar));
        if (bar == std::string::npos || !id) {
            throw FileError{fileName + ":" + std::to_string(number) + ": no id and name"};
        }
        byId[*id] = line.substr(bar + 1);
    }
    return byId;
}

EventPlans::Dated readDated(std::istream& list, const std::string& fileName) {
    EventPlans::Dated dated;
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
        Words words{std::string_view{line}.substr(0, line.find('#'))};
        if (words.done()) {
            continue;
        }
        try {
            const int date = words.number("AD date", 19420413, 20430413);
            const std::chrono::year_month_day day{std::chrono::year{date / 10000} / (date / 100 % 100) / (date % 100)};
            if (!day.ok()) {
                throw "'" + std::to_string(date) + "' is no date";
            }
            do {
                dated.emplace_back(day, words.number("id", 1, 999));
            } while (!words.done());
        } catch (const std::string& complaint) {
            throw FileError{fileName + ":" + std::to_string(number) + ": " + complaint};
        }
    }
    return dated;
}

}  // namespace dinmala::panchanga
