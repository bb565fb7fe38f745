#include "Festivals.h"

#include "RuleText.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <tuple>

namespace dinmala::panchanga {

using std::chrono::days;
using std::chrono::sys_days;

namespace {

constexpr std::array<std::string_view, 6> kParts{"sunrise", "midday", "afternoon", "evening", "moonrise", "midnight"};
constexpr std::array<std::string_view, 4> kTrusts{"unknown", "inferred", "named", "known"};
constexpr std::array<std::string_view, 3> kGrades{"usual", "sure", "dated"};

constexpr double kMinute = 1.0 / 1440.0;
constexpr double kMargin = 25.0 * kMinute;     // how far the ends of a tithi may move before a day is no longer sure
constexpr double kArunodaya = 96.0 * kMinute;  // dawn: four ghatika before sunrise

void readBase(Words& words, Festival& festival) {
    using Kind = Festival::Kind;
    if (words.peek() == "first") {
        words.take("first");
        festival.firstFrom = words.weekday();
        if (words.take("'from'") != "from") {
            throw std::string("'first Sunday' goes on with 'from'");
        }
    }
    const std::string_view word = words.take("rule");
    if (word == "unknown") {
        festival.kind = Kind::unknown;
    } else if (word == "bs" || word == "ad") {
        festival.kind = word == "bs" ? Kind::bsDate : Kind::adDate;
        std::tie(festival.month, festival.day) = words.monthDay();
    } else if (word == "on") {
        festival.kind = Kind::dates;
        do {
            festival.dates.push_back(words.adDate());
        } while (!words.done());
    } else if (word == "lunar") {
        festival.kind = Kind::lunar;
        festival.month = words.oneOf("lunar month", kMonths) + 1;
        festival.tithi = words.tithi();
    } else if (word == "adhika") {
        festival.kind = Kind::lunar;
        festival.adhika = true;
        festival.tithi = words.tithi();
    } else if (word == "every") {
        festival.kind = Kind::everyMonth;
        if (wholeNumber(words.peek())) {
            festival.bothHalves = true;
            festival.tithi = words.number("tithi", 1, 14);
        } else {
            festival.tithi = words.tithi();
        }
    } else if (word == "moon") {
        festival.kind = Kind::moonEnters;
        if (words.take("'enters'") != "enters") {
            throw std::string("'moon' goes on with 'enters'");
        }
        festival.degrees = words.number("longitude in degrees", 0, 359);
    } else if (word == "with") {
        festival.kind = Kind::withOther;
        festival.other = words.number("id", 1, 999);
    } else {
        throw "'" + std::string(word) + "' begins no rule";
    }
    if ((festival.kind == Kind::lunar || festival.kind == Kind::everyMonth) && !words.done()) {
        festival.part = static_cast<DayPart>(words.oneOf("part of the day", kParts));
        festival.partGiven = true;
    }
}

void readModifier(Words& words, Festival& festival) {
    const std::string_view word = words.take("modifier");
    if (word == "weekday") {
        festival.weekday = words.weekday();
    } else if (word == "shift") {
        festival.shift = words.number("shift in days", -10, 10);
    } else if (word == "as") {
        festival.sameAs = words.number("id", 1, 999);
    } else if (word == "later") {
        festival.later = true;
    } else if (word == "earlier") {
        festival.earlier = true;
    } else if (word == "householders") {
        festival.fast = Festival::Fast::householders;
    } else if (word == "vaishnava") {
        festival.fast = Festival::Fast::vaishnava;
    } else if (word == "only" || word == "never") {
        do {
            (word == "only" ? festival.only : festival.never).push_back(words.number("BS year", 1999, 2099));
        } while (!words.done());
    } else if (word == "but") {
        do {
            festival.but.push_back(words.adDate());
        } while (!words.done());
    } else {
        throw "'" + std::string(word) + "' is no modifier";
    }
}

Festival readFestival(std::string_view text) {
    const std::vector<std::string_view> fields = split(text, '|');
    if (fields.size() != 4) {
        throw std::string("a line is 'id | trust | rule | source'");
    }
    Festival festival;
    const std::optional<int> id = wholeNumber(fields[0]);
    if (!id || *id < 1) {
        throw "'" + std::string(fields[0]) + "' is no id";
    }
    festival.id = *id;
    const std::optional<int> trust = placeOf(fields[1], kTrusts);
    if (!trust) {
        throw "'" + std::string(fields[1]) + "' is none of unknown, inferred, named, known";
    }
    festival.trust = static_cast<Trust>(*trust);
    const std::vector<std::string_view> clauses = split(fields[2], ',');
    Words base(clauses.front());
    readBase(base, festival);
    base.finish();
    for (std::size_t i = 1; i < clauses.size(); ++i) {
        Words modifier(clauses[i]);
        readModifier(modifier, festival);
        modifier.finish();
    }
    if ((festival.kind == Festival::Kind::unknown) != (festival.trust == Trust::unknown)) {
        throw std::string("a rule is unknown exactly when its trust is");
    }
    festival.source = std::string(fields[3]);
    if (festival.source.empty()) {
        throw std::string("the source is missing");
    }
    return festival;
}

/// The moment of `part` on `day`.
double momentOf(DayPart part, sys_days day, const Place& place) {
    const double rise = sunrise(day, place);
    const double set = sunset(day, place);
    switch (part) {
        case DayPart::sunrise:
            return rise;
        case DayPart::midday:
            return 0.5 * (rise + set);
        case DayPart::afternoon:
            return rise + 0.7 * (set - rise);
        case DayPart::evening:
            return set + 72.0 * kMinute;
        case DayPart::moonrise:
            return set + 170.0 * kMinute;
        case DayPart::midnight:
            return 0.5 * (set + sunrise(day + days{1}, place));
    }
    return rise;
}

/// Where a tithi puts a festival: the day, and on how many days the moment falls in the tithi.
struct Found {
    sys_days day;
    std::size_t count;
};

/// The day whose `part` falls between `begin` and `end`; where none does, the day whose sunrise does; and where there
/// is none either, the day that holds the tithi.
Found dayOf(double begin, double end, DayPart part, bool later, const Place& place) {
    const sys_days first = civilDay(begin, place) - days{1};
    std::vector<sys_days> found;
    sys_days holding = first;
    for (sys_days day = first; day <= first + days{4}; day += days{1}) {
        const double moment = momentOf(part, day, place);
        if (moment >= begin && moment < end) {
            found.push_back(day);
        }
        if (sunrise(day, place) < begin) {
            holding = day;
        }
    }
    if (found.empty()) {
        const sys_days day = part == DayPart::sunrise ? holding : dayOf(begin, end, DayPart::sunrise, later, place).day;
        return {day, 0};
    }
    return {later ? found.back() : found.front(), found.size()};
}

/// The day of a tithi by the rule of `festival`, and how sure it is.
Occurrence occurrenceOf(const Tithi& tithi, const Festival& festival, const Place& place) {
    const Found found = dayOf(tithi.begin, tithi.end, festival.part, festival.later, place);
    bool sure = found.count == 1 || (found.count == 2 && (festival.later || festival.earlier));
    std::vector<DayPart> parts{festival.part};
    if (!festival.partGiven) {
        parts = {DayPart::sunrise, DayPart::midday, DayPart::afternoon};
    }
    for (const DayPart part : parts) {
        for (const double begin : {tithi.begin - kMargin, tithi.begin + kMargin}) {
            for (const double end : {tithi.end - kMargin, tithi.end + kMargin}) {
                sure = sure && dayOf(begin, end, part, festival.later, place).day == found.day;
            }
        }
    }
    return {found.day, sure ? Grade::sure : Grade::usual};
}

/// An ekadashi that householders and Vaishnavas keep on two days: nothing in years when they agree. Vaishnavas wait a
/// day when the dashami still runs at dawn, or when the ekadashi runs at two sunrises.
std::optional<Occurrence> fastOf(const Tithi& tithi, const Festival& festival, const Place& place) {
    const Found found = dayOf(tithi.begin, tithi.end, DayPart::sunrise, false, place);
    const double dawn = sunrise(found.day, place) - kArunodaya;
    const bool waits = tithi.begin > dawn || found.count == 2;
    if (!waits) {
        return std::nullopt;
    }
    const bool clear = std::abs(tithi.begin - dawn) > kMargin;
    const sys_days day = festival.fast == Festival::Fast::vaishnava ? found.day + days{1} : found.day;
    const bool steady = dayOf(tithi.begin + kMargin, tithi.end, DayPart::sunrise, false, place).day == found.day;
    return Occurrence{day, clear && steady ? Grade::sure : Grade::usual};
}

/// The moments between `from` and `to` at which the Moon enters `degrees`.
std::vector<double> moonEntries(double degrees, double from, double to, const Panchanga& panchanga) {
    const auto ahead = [&](double jd) { return std::remainder(panchanga.moonLongitude(jd) - degrees, 360.0); };
    std::vector<double> moments;
    const int count = static_cast<int>(to - from);
    for (int i = 0; i < count; ++i) {  // day by day: the Moon goes 15 degrees at most
        double low = from + i;
        double high = low + 1.0;
        if (ahead(low) >= 0.0 || ahead(high) < 0.0 || ahead(high) > 90.0) {
            continue;
        }
        while (high - low > kMinute / 60.0) {
            const double middle = 0.5 * (low + high);
            (ahead(middle) < 0.0 ? low : high) = middle;
        }
        moments.push_back(high);
    }
    return moments;
}

}  // namespace

std::string_view gradeName(Grade grade) { return kGrades[static_cast<std::size_t>(grade)]; }

BsCalendar::BsCalendar(std::istream& lengths, const std::string& fileName) {
    using namespace std::chrono;
    sys_days next{year{1942} / April / 13};
    std::string line;
    for (int number = 1; std::getline(lengths, line); ++number) {
        const std::string_view text = trimmed(std::string_view{line}.substr(0, line.find('#')));
        if (text.empty()) {
            continue;
        }
        std::istringstream words{std::string(text)};
        int year = 0;
        char colon = 0;
        std::array<int, 12> months{};
        words >> year >> colon;
        for (int& length : months) {
            words >> length;
        }
        const bool follows = lengths_.empty() || year == firstYear_ + static_cast<int>(lengths_.size());
        if (!words || colon != ':' || !follows) {
            throw FileError{fileName + ":" + std::to_string(number) + ": no year and twelve lengths, in order"};
        }
        firstYear_ = lengths_.empty() ? year : firstYear_;
        lengths_.push_back(months);
        for (const int length : months) {
            starts_.push_back(next);
            next += days{length};
        }
    }
    if (lengths_.empty()) {
        throw FileError{fileName + ": no years"};
    }
}

bool BsCalendar::holds(int year) const {
    return year >= firstYear_ && year < firstYear_ + static_cast<int>(lengths_.size());
}

int BsCalendar::monthLength(int year, int month) const {
    return lengths_[static_cast<std::size_t>(year - firstYear_)][static_cast<std::size_t>(month - 1)];
}

sys_days BsCalendar::day(int year, int month, int dayOfMonth) const {
    return starts_[static_cast<std::size_t>((year - firstYear_) * 12 + month - 1)] + days{dayOfMonth - 1};
}

BsCalendar::Date BsCalendar::date(sys_days day) const {
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), day);
    const int index = static_cast<int>(after - starts_.begin()) - 1;
    return {firstYear_ + index / 12, index % 12 + 1,
            static_cast<int>((day - starts_[static_cast<std::size_t>(index)]).count()) + 1};
}

Festivals::Festivals(std::istream& rules, const std::string& fileName) {
    readRules(rules, fileName, [&](std::string_view text, int number) {
        Festival festival = readFestival(text);
        festival.line = number;
        if (festival.kind == Festival::Kind::withOther && !festivals_.contains(festival.other)) {
            throw std::string("goes by the day of an id that has no line above");
        }
        if (festival.sameAs != 0 &&
            (!festivals_.contains(festival.sameAs) || festivals_.at(festival.sameAs).sameAs != 0)) {
            throw std::string("is another name of an id that has no line above, or is one itself");
        }
        if (!festivals_.emplace(festival.id, festival).second) {
            throw "id " + std::to_string(festival.id) + " has a line already";
        }
    });
}

SkyYear::SkyYear(int year, const BsCalendar& calendar, const Panchanga& panchanga)
    : year_(year),
      calendar_(calendar),
      panchanga_(panchanga),
      first_(calendar.day(year, 1, 1)),
      last_(calendar.day(year, 12, calendar.monthLength(year, 12))) {
    const double end = startOfDay(to(), panchanga.place());
    Tithi tithi = panchanga.tithiAt(startOfDay(from(), panchanga.place()));
    while (tithi.begin < end) {
        tithis_.push_back({tithi, panchanga.lunarDateAt(0.5 * (tithi.begin + tithi.end))});
        tithi = panchanga.tithiAt(tithi.end + kMinute);
    }
}

// More than any shift and than the reach of 'first Sunday from', together.
constexpr days kAround{20};

sys_days SkyYear::from() const { return first_ - kAround; }

sys_days SkyYear::to() const { return last_ + kAround; }

std::vector<Occurrence> Festivals::around(const Festival& festival, const SkyYear& sky) const {
    using Kind = Festival::Kind;
    const Place& place = sky.panchanga().place();
    const BsCalendar& calendar = sky.calendar();
    std::vector<Occurrence> found;
    switch (festival.kind) {
        case Kind::unknown:
            break;
        case Kind::bsDate:
            for (int year = sky.year() - 1; year <= sky.year() + 1; ++year) {
                if (calendar.holds(year) && festival.day <= calendar.monthLength(year, festival.month)) {
                    found.push_back({calendar.day(year, festival.month, festival.day), Grade::dated});
                }
            }
            break;
        case Kind::adDate:
            for (int year = sky.year() - 58; year <= sky.year() - 56; ++year) {
                const std::chrono::year_month_day date{std::chrono::year{year} / festival.month / festival.day};
                if (date.ok()) {
                    found.push_back({date, Grade::dated});
                }
            }
            break;
        case Kind::dates:
            for (const sys_days day : festival.dates) {
                found.push_back({day, Grade::dated});
            }
            break;
        case Kind::lunar:
        case Kind::everyMonth:
            for (const auto& [tithi, date] : sky.tithis()) {
                const bool number =
                    tithi.number == festival.tithi || (festival.bothHalves && tithi.number == festival.tithi + 15);
                const bool month =
                    festival.kind == Kind::everyMonth ||
                    (date.adhika == festival.adhika && (festival.adhika || date.month == festival.month));
                if (!number || !month) {
                    continue;
                }
                if (festival.fast == Festival::Fast::plain) {
                    found.push_back(occurrenceOf(tithi, festival, place));
                } else if (const auto fast = fastOf(tithi, festival, place)) {
                    found.push_back(*fast);
                }
            }
            break;
        case Kind::moonEnters:
            for (const double moment : moonEntries(festival.degrees, startOfDay(sky.from(), place),
                                                   startOfDay(sky.to(), place), sky.panchanga())) {
                // The day runs from sunrise to sunrise.
                const auto dayAt = [&place](double jd) {
                    const sys_days day = civilDay(jd, place);
                    return jd < sunrise(day, place) ? day - days{1} : day;
                };
                const bool sure = dayAt(moment - kMargin) == dayAt(moment + kMargin);
                found.push_back({dayAt(moment), sure ? Grade::sure : Grade::usual});
            }
            break;
        case Kind::withOther:
            found = around(festivals_.at(festival.other), sky);
            break;
    }

    std::vector<Occurrence> result;
    for (Occurrence occurrence : found) {
        if (festival.firstFrom) {
            occurrence.day += *festival.firstFrom - std::chrono::weekday{occurrence.day};
        }
        occurrence.day += std::chrono::days{festival.shift};
        for (const sys_days dated : festival.but) {
            if (std::abs((dated - occurrence.day).count()) <= 2) {
                occurrence = {dated, Grade::dated};
            }
        }
        if (!festival.weekday || std::chrono::weekday{occurrence.day} == *festival.weekday) {
            result.push_back(occurrence);
        }
    }
    return result;
}

std::vector<Occurrence> Festivals::daysOf(int id, const SkyYear& sky) const {
    const auto entry = festivals_.find(id);
    if (entry == festivals_.end()) {
        return {};
    }
    const Festival& festival = entry->second;
    const auto listed = [&sky](const std::vector<int>& years) {
        return std::find(years.begin(), years.end(), sky.year()) != years.end();
    };
    if (listed(festival.never) || (!festival.only.empty() && !listed(festival.only))) {
        return {};
    }
    std::vector<Occurrence> result = around(festival, sky);
    std::erase_if(result, [&sky](const Occurrence& one) { return one.day < sky.first() || one.day > sky.last(); });
    return result;
}

}  // namespace dinmala::panchanga
