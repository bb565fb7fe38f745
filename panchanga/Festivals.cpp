#include "panchanga/Festivals.h"

#include <algorithm>
#include <tuple>

namespace dinmala::panchanga {

using std::chrono::days;
using std::chrono::sys_days;

namespace {

/// How a festival ranks among those of its day that are no more of a holiday: least first.
int weightOf(const Festival& festival) {
    using Kind = Festival::Kind;
    if ((festival.kind == Kind::everyMonth && !festival.lastBy) || festival.kind == Kind::moonEnters) {
        return 4;  // vows of each month
    }
    if (festival.trust == Trust::inferred) {
        return 3;
    }
    if (festival.source.starts_with("un")) {
        return 2;  // days of the whole world
    }
    return festival.trust == Trust::known ? 0 : 1;
}

Grade celebrationGrade(const Celebration& one) {
    if (one.correction != nullptr) {
        return Grade::published;
    }
    if (one.unsettled) {
        return Grade::open;
    }
    const Grade reckoned = gradeOf(one.margin);
    const bool doubted = one.twoDays || one.festival->trust == Trust::inferred;
    return doubted ? std::max(reckoned, Grade::near) : reckoned;
}

/// Of all days, leaves the last that is not after the day that the rule names.
void keepLast(std::vector<Celebration>& found, const Festival& festival, const SkyYear& sky) {
    const auto [month, day] = *festival.lastBy;
    const BsDate by = bsDate(sky.year(), static_cast<unsigned>(month), static_cast<unsigned>(day));
    const sys_days last = sky.calendar().toDays(by).value_or(sky.last());
    std::erase_if(found, [last](const Celebration& one) { return one.day > last; });
    std::stable_sort(found.begin(), found.end(),
                     [](const Celebration& a, const Celebration& b) { return a.day < b.day; });
    found.erase(found.begin(), found.empty() ? found.end() : found.end() - 1);
}

/// Puts a dated day in the place of the reckoned one next to it; beside it when another source took that place already.
void takeDated(std::vector<Celebration>& found, const Festival& festival, const Correction& dated) {
    constexpr days kSame{20};  // the next full moon, or the same festival in the next year, is another one
    Celebration* nearest = nullptr;
    for (Celebration& one : found) {
        const days apart = std::chrono::abs(one.day - dated.day);
        const bool taken = one.correction != nullptr && one.day != dated.day;
        if (!taken && apart <= kSame && (nearest == nullptr || apart < std::chrono::abs(nearest->day - dated.day))) {
            nearest = &one;
        }
    }
    if (nearest == nullptr) {
        nearest = &found.emplace_back();
        nearest->festival = &festival;
    } else if (nearest->day != dated.day) {
        nearest->reckonedDay = nearest->day;
    }
    nearest->day = dated.day;
    nearest->correction = &dated;
}

}  // namespace

Holiday Festivals::dayOff(int id, int year) const {
    const auto entry = holidays_.find(id);
    if (entry != holidays_.end()) {
        for (const HolidayYears& years : entry->second) {
            if (years.from <= year && year <= years.until) {
                return years.kind;
            }
        }
    }
    return Holiday::none;
}

std::vector<Celebration> Festivals::celebrations(const SkyYear& sky, bool corrected) const {
    std::vector<const Correction*> sources;
    for (const Correction& dated : corrections_) {
        if (corrected && dated.day >= sky.from() && dated.day <= sky.to()) {
            sources.push_back(&dated);
        }
    }
    std::vector<Celebration> year;
    for (const auto& [id, festival] : festivals_) {
        if (festival.firstEdition || sky.year() < festival.from || sky.year() > festival.until) {
            continue;
        }
        std::vector<Celebration> found = around(festival, sky, false);
        if (festival.lastBy) {
            keepLast(found, festival, sky);
        }
        for (const Correction* dated : sources) {
            if (dated->id == id || dated->id == festival.sameAs) {
                takeDated(found, festival, *dated);
            }
        }
        for (Celebration& one : found) {
            if (one.day < sky.first() || one.day > sky.last()) {
                continue;
            }
            one.grade = celebrationGrade(one);
            one.dayOff = dayOff(id, sky.year());
            year.push_back(one);
        }
    }
    std::stable_sort(year.begin(), year.end(), [](const Celebration& a, const Celebration& b) {
        const auto key = [](const Celebration& one) {
            return std::tuple{one.day, -static_cast<int>(one.dayOff), weightOf(*one.festival)};
        };
        return key(a) < key(b);
    });
    // Of two names for one festival, one line may call the other the better.
    const auto behind = [this](int id, int other) {
        const std::vector<int>& better = festivals_.at(id).behind;
        return std::find(better.begin(), better.end(), other) != better.end();
    };
    const auto earlier = [](const Celebration& a, const Celebration& b) { return a.day < b.day; };
    std::erase_if(year, [&, all = year](const Celebration& one) {
        const auto [begin, end] = std::equal_range(all.begin(), all.end(), one, earlier);
        return std::any_of(begin, end, [&](const Celebration& other) {
            const int id = one.festival->id;
            const int beside = other.festival->id;
            return behind(id, beside) || (one.festival->sameAs == beside && !behind(beside, id));
        });
    });
    return year;
}

}  // namespace dinmala::panchanga
