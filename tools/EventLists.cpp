#include "tools/EventLists.h"

#include "panchanga/RuleText.h"

#include <algorithm>
#include <optional>
#include <set>
#include <tuple>

namespace dinmala::tools {

namespace {

/// Fills one year's list from its plan.
class EventFiller {
public:
    /// @param firstNewId the first id that the year brought in
    /// @param where      what begins a complaint
    EventFiller(const EventPlan& plan, int firstNewId, const SkyYear& sky, const Festivals& festivals,
                const Names& names, std::string where)
        : plan_(plan),
          firstNewId_(firstNewId),
          sky_(sky),
          festivals_(festivals),
          names_(names),
          where_(std::move(where)) {}

    std::vector<Token> fill(const Dated& important) {
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
    using MonthDay = EventPlan::MonthDay;

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
        const BsDate date = *sky_.calendar().toDate(one.day);
        return {static_cast<int>(unsigned{date.month}), static_cast<int>(unsigned{date.day})};
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

    void addGiven(const Dated& important) {
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
            const MonthDay day = dayOf({date, ListGrade::dated});
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
        std::stable_sort(ids.begin(), ids.end(), [&](int a, int b) {
            const auto rank = [&](int id) {
                const Trust trust = festivals_.all().at(id).trust;
                const int age = id > plan_.newest ? 2 : id >= firstNewId_ ? 0 : 1;
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
                        if (dayOf(one) == day && one.grade != ListGrade::usual && takes(day, id)) {
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
        for (const ListGrade grade : {ListGrade::dated, ListGrade::sure}) {
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

    const EventPlan& plan_;
    int firstNewId_;
    const SkyYear& sky_;
    const Festivals& festivals_;
    const Names& names_;
    std::string where_;
    std::map<MonthDay, std::vector<Token>> days_;
    std::set<MonthDay> closed_;
    std::set<int> listed_;
    std::size_t count_ = 0;
    std::map<int, std::vector<Occurrence>> reckoned_;
    bool otherNames_ = false;  ///< whether a day may have two names of one festival
};

}  // namespace

EventPlans::EventPlans(std::istream& plans, const std::string& fileName) : fileName_(fileName) {
    using MonthDay = EventPlan::MonthDay;
    EventPlan* plan = nullptr;
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
    const std::optional<FileError> error = readRules(plans, fileName, [&](std::string_view text, int number) {
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
            words.complain("a file begins with 'year'");
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
            (what == "twice" ? plan->twice : plan->standing).push_back({month, day, id, words.rest()});
        } else if (what == "important") {
            plan->important = words.take("file name");
        } else if (what == "later") {
            plan->later = ids(words);
        } else {
            words.complain("'" + std::string(what) + "' begins no line");
        }
        return words.finish();
    });
    if (error) {
        throw FileError{*error};
    }
}

std::string EventPlans::importantFile(int year) const {
    const auto plan = plans_.find(year);
    return plan == plans_.end() ? std::string{} : plan->second.important;
}

std::vector<Token> EventPlans::list(const SkyYear& sky, const Festivals& festivals, const Names& names,
                                    const Dated& important) const {
    const auto plan = plans_.find(sky.year());
    if (plan == plans_.end()) {
        throw FileError{fileName_ + ": has no year " + std::to_string(sky.year())};
    }
    const auto before = plans_.find(sky.year() - 1);
    const int firstNewId = before == plans_.end() ? 1 : before->second.newest + 1;
    return EventFiller{plan->second, firstNewId, sky, festivals, names, fileName_ + ":"}.fill(important);
}

}  // namespace dinmala::tools
