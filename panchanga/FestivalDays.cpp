#include "panchanga/Festivals.h"

#include <algorithm>
#include <cmath>

namespace dinmala::panchanga {

using std::chrono::days;
using std::chrono::sys_days;

namespace {

constexpr std::array<std::string_view, 3> kGrades{"usual", "sure", "dated"};

constexpr double kMinute = 1.0 / 1440.0;
constexpr double kFar = 180.0;                 // minutes; no margin is told beyond
constexpr double kArunodaya = 96.0 * kMinute;  // dawn: four ghatika before sunrise

/// The moment of `part` on `day`.
double momentOf(DayPart part, sys_days day, const SunTimes& sun) {
    const double rise = sun.sunrise(day);
    const double set = sun.sunset(day);
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
            return 0.5 * (set + sun.sunrise(day + days{1}));
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
Found dayOf(double begin, double end, DayPart part, bool later, const SkyYear& sky) {
    const sys_days first = civilDay(begin, sky.panchanga().place()) - days{1};
    std::optional<sys_days> found;
    std::size_t count = 0;
    sys_days holding = first;
    for (sys_days day = first; day <= first + days{4}; day += days{1}) {
        const double moment = momentOf(part, day, sky.sun());
        if (moment >= begin && moment < end) {
            found = later || !found ? day : *found;
            ++count;
        }
        if (sky.sun().sunrise(day) < begin) {
            holding = day;
        }
    }
    if (found) {
        return {*found, count};
    }
    return {part == DayPart::sunrise ? holding : dayOf(begin, end, DayPart::sunrise, later, sky).day, 0};
}

/// By how many minutes the ends of a tithi may move before dayOf() gives another day than `day`, kFar at most.
double marginOf(const Tithi& tithi, DayPart part, bool later, sys_days day, const SkyYear& sky) {
    constexpr double kJust = 1e-6;  // a tenth of a second
    double margin = kFar;
    // Only an end that passes a moment of a day can move the day.
    for (sys_days near = day - days{2}; near <= day + days{2}; near += days{1}) {
        for (const DayPart passed : {part, DayPart::sunrise}) {
            const double moment = momentOf(passed, near, sky.sun());
            for (const bool atBegin : {true, false}) {
                const double bound = atBegin ? tithi.begin : tithi.end;
                const double minutes = std::abs(moment - bound) / kMinute;
                if (minutes >= margin) {
                    continue;
                }
                const double moved = moment + (moment < bound ? -kJust : kJust);
                if (dayOf(atBegin ? moved : tithi.begin, atBegin ? tithi.end : moved, part, later, sky).day != day) {
                    margin = minutes;
                }
            }
        }
    }
    return margin;
}

/// The day of a tithi by the rule of `festival`, and how sure it is.
Celebration celebrationOf(const Tithi& tithi, const Festival& festival, const SkyYear& sky) {
    const Found found = dayOf(tithi.begin, tithi.end, festival.part, festival.later, sky);
    Celebration one;
    one.day = found.day;
    one.tithi = tithi;
    one.part = festival.part;
    one.moment = momentOf(festival.part, found.day, sky.sun());
    one.twoDays = found.count == 0 || (found.count == 2 && !festival.later && !festival.earlier);
    one.margin = marginOf(tithi, festival.part, festival.later, found.day, sky);
    if (!festival.partGiven) {
        for (const DayPart part : {DayPart::midday, DayPart::afternoon}) {
            one.twoDays = one.twoDays || dayOf(tithi.begin, tithi.end, part, festival.later, sky).day != found.day;
            one.margin = std::min(one.margin, marginOf(tithi, part, festival.later, found.day, sky));
        }
    }
    return one;
}

/// An ekadashi that householders and Vaishnavas keep on two days: nothing in years when they agree. Vaishnavas wait a
/// day when the dashami still runs at dawn, or when the ekadashi runs at two sunrises.
std::optional<Celebration> fastOf(const Tithi& tithi, const Festival& festival, const SkyYear& sky) {
    const Found found = dayOf(tithi.begin, tithi.end, DayPart::sunrise, false, sky);
    const double dawn = sky.sun().sunrise(found.day) - kArunodaya;
    const bool waits = tithi.begin > dawn || found.count == 2;
    if (!waits) {
        return std::nullopt;
    }
    Celebration one;
    one.day = festival.fast == Festival::Fast::vaishnava ? found.day + days{1} : found.day;
    one.tithi = tithi;
    one.moment = sky.sun().sunrise(found.day);
    // An end that moves beyond a second sunrise changes nothing when the dawn has told already.
    const double begins = std::abs(tithi.begin - dawn) / kMinute;
    const double ends = tithi.begin < dawn ? (tithi.end - sky.sun().sunrise(found.day + days{1})) / kMinute : kFar;
    one.margin = std::min({kFar, begins, ends});
    if (dayOf(tithi.begin + kSureMinutes * kMinute, tithi.end, DayPart::sunrise, false, sky).day != found.day) {
        one.margin = std::min(one.margin, std::abs(one.moment - tithi.begin) / kMinute);
    }
    return one;
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

std::string_view gradeName(ListGrade grade) { return kGrades[static_cast<std::size_t>(grade)]; }

std::vector<Celebration> Festivals::around(const Festival& festival, const SkyYear& sky, bool first) const {
    using Kind = Festival::Kind;
    const Place& place = sky.panchanga().place();
    const BsCalendar& calendar = sky.calendar();
    std::vector<Celebration> found;
    const auto fixed = [&found](sys_days day) {
        Celebration one;
        one.day = day;
        one.margin = kFar;
        found.push_back(one);
    };
    switch (festival.kind) {
        case Kind::unknown:
            break;
        case Kind::bsDate:
            for (int year = sky.year() - 1; year <= sky.year() + 1; ++year) {
                const BsDate date =
                    bsDate(year, static_cast<unsigned>(festival.month), static_cast<unsigned>(festival.day));
                if (const auto day = calendar.toDays(date)) {
                    fixed(*day);
                }
            }
            break;
        case Kind::adDate:
            for (int year = sky.year() - 58; year <= sky.year() - 56; ++year) {
                const std::chrono::year_month_day date{std::chrono::year{year} / festival.month / festival.day};
                if (date.ok()) {
                    fixed(date);
                }
            }
            break;
        case Kind::dates:
            for (const sys_days day : festival.dates) {
                fixed(day);
            }
            break;
        case Kind::lunar:
        case Kind::everyMonth:
            for (const NamedTithi& named : sky.tithis()) {
                const auto& [tithi, date] = named;
                const bool number =
                    tithi.number == festival.tithi || (festival.bothHalves && tithi.number == festival.tithi + 15);
                const bool ownMonth = date.month == festival.month ||
                                      (!first && sky.twoMonths(named) && date.month % 12 + 1 == festival.month);
                const bool month = festival.kind == Kind::everyMonth ||
                                   (date.adhika == festival.adhika && (festival.adhika || ownMonth));
                if (!number || !month) {
                    continue;
                }
                if (festival.fast == Festival::Fast::plain) {
                    Celebration& one = found.emplace_back(celebrationOf(tithi, festival, sky));
                    one.twoDays = one.twoDays ||
                                  (!first && festival.rival &&
                                   dayOf(tithi.begin, tithi.end, *festival.rival, festival.later, sky).day != one.day);
                } else if (const auto fast = fastOf(tithi, festival, sky)) {
                    found.push_back(*fast);
                } else {
                    continue;
                }
                found.back().unsettled = sky.unsettled(named) && festival.kind == Kind::lunar;
            }
            break;
        case Kind::moonEnters:
            for (const double moment : moonEntries(festival.degrees, startOfDay(sky.from(), place),
                                                   startOfDay(sky.to(), place), sky.panchanga())) {
                // The day runs from sunrise to sunrise.
                Celebration one;
                one.day = civilDay(moment, place);
                one.day -= days{moment < sky.sun().sunrise(one.day) ? 1 : 0};
                one.moment = moment;
                one.margin = std::min({kFar, (moment - sky.sun().sunrise(one.day)) / kMinute,
                                       (sky.sun().sunrise(one.day + days{1}) - moment) / kMinute});
                found.push_back(one);
            }
            break;
        case Kind::withOther:
            found = around(festivals_.at(festival.other), sky, first);
            break;
        case Kind::between: {
            constexpr days kLongest{15};
            const std::vector<Celebration> ends = around(festivals_.at(festival.last), sky, first);
            for (const Celebration& begin : around(festivals_.at(festival.other), sky, first)) {
                for (const Celebration& end : ends) {
                    for (sys_days day = begin.day + days{1}; end.day - begin.day < kLongest && day < end.day;
                         day += days{1}) {
                        Celebration one;
                        one.day = day;
                        one.margin = std::min(begin.margin, end.margin);
                        one.unsettled = begin.unsettled || end.unsettled;
                        found.push_back(one);
                    }
                }
            }
            break;
        }
    }

    std::vector<Celebration> result;
    for (Celebration& one : found) {
        one.festival = &festival;
        one.byBsDate = festival.kind == Kind::bsDate || (festival.kind == Kind::withOther && one.byBsDate);
        if (festival.firstFrom) {
            one.day += *festival.firstFrom - std::chrono::weekday{one.day};
        }
        one.day += std::chrono::days{festival.shift};
        if (first) {
            for (const sys_days dated : festival.but) {
                if (std::abs((dated - one.day).count()) <= 2) {
                    one = {.festival = one.festival, .day = dated, .margin = kFar};
                }
            }
        } else if (std::find(festival.moved.begin(), festival.moved.end(), one.day) != festival.moved.end()) {
            for (const Celebration& other : around(festivals_.at(festival.movesTo), sky, first)) {
                if (std::abs((other.day - one.day).count()) < 15) {
                    one.day = other.day;
                    one.twoDays = true;
                }
            }
        }
        if (!festival.weekday || std::chrono::weekday{one.day} == *festival.weekday) {
            result.push_back(one);
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
    std::vector<Occurrence> result;
    for (const Celebration& one : around(festival, sky, true)) {
        if (one.day < sky.first() || one.day > sky.last()) {
            continue;
        }
        const bool reckoned = one.tithi.number != 0 || one.moment != 0.0;
        const bool sure = !one.twoDays && one.margin > kSureMinutes;
        result.push_back({one.day, !reckoned ? ListGrade::dated : sure ? ListGrade::sure : ListGrade::usual});
    }
    return result;
}

}  // namespace dinmala::panchanga
