#include "almanac/Edition.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>

#include "almanac/ListAlmanac.h"
#include "almanac/PackedYear.h"
#include "base/DateText.h"
#include "base/MonthLengths.h"
#include "base/Names.h"

namespace dinmala {

namespace {

#include "generated/bs_fixed_events.inc"
#include "generated/current_event_names.inc"
#include "generated/current_years.inc"
#include "generated/month_lengths.inc"

/// The names of the current edition's events by id, "" where there is none.
std::string_view currentEventName(std::uint16_t id) {
    static const auto kById = [] {
        std::array<std::string_view, 1000> names{};
        for (const auto& [key, name] : kCurrentEventNames) names[static_cast<std::size_t>(*readNumber(key))] = name;
        return names;
    }();
    return id < kById.size() ? kById[id] : std::string_view{};
}

AlmanacDay shown(const YearDay& day, bool published) {
    AlmanacDay result{day.date, day.day, day.dateGrade, {}, {}};
    if (!published) result.grade = std::max(day.dateGrade, day.tithiGrade);
    result.tithis.push_back({day.tithi, nameAt(kTithis, day.tithi), day.tithiGrade});
    if (day.skipped != 0) result.tithis.push_back({day.skipped, nameAt(kTithis, day.skipped), day.tithiGrade});
    result.events.reserve(day.events.size());
    for (const EventEntry& event : day.events) {
        result.events.push_back({event.id, currentEventName(event.id), event.holiday, event.grade});
    }
    return result;
}

/// The bytes of a year that the program carries; empty for another year.
std::string_view bytesOf(BsYear year) {
    if (kCurrentYears.empty() || year < packedHead(kCurrentYears.front()).year) return {};
    const auto place = static_cast<std::size_t>((year - packedHead(kCurrentYears.front()).year).count());
    return place < kCurrentYears.size() ? kCurrentYears[place] : std::string_view{};
}

std::optional<YearAlmanac> builtInYear(BsYear year) {
    const std::string_view bytes = bytesOf(year);
    return bytes.empty() ? std::nullopt : std::optional{unpackYear(bytes)};
}

/// The years that the program carries, some of them replaced.
class YearSource : public AlmanacSource {
public:
    std::map<BsYear, YearAlmanac> replaced;

    [[nodiscard]] bool graded() const override { return true; }

    [[nodiscard]] std::vector<BsYear> years() const override {
        std::vector<BsYear> years;
        years.reserve(kCurrentYears.size());
        for (const std::string_view bytes : kCurrentYears) years.push_back(packedHead(bytes).year);
        return years;
    }

    [[nodiscard]] std::optional<AlmanacDay> day(const BsDate& date) const override {
        if (const auto other = replaced.find(date.year); other != replaced.end()) {
            const auto& days = other->second.days;
            const auto found =
                std::lower_bound(days.begin(), days.end(), date,
                                 [](const YearDay& day, const BsDate& wanted) { return day.date < wanted; });
            if (found == days.end() || found->date != date) return std::nullopt;
            return shown(*found, other->second.published);
        }
        const std::string_view bytes = bytesOf(date.year);
        const auto found = bytes.empty() ? std::nullopt : unpackDay(bytes, date.month, date.day);
        if (!found) return std::nullopt;
        return shown(*found, packedHead(bytes).published);
    }

    [[nodiscard]] std::vector<AlmanacDay> year(BsYear year) const override {
        std::vector<AlmanacDay> days;
        if (const auto told = numbers(year)) {
            days.reserve(told->days.size());
            for (const YearDay& day : told->days) days.push_back(shown(day, told->published));
        }
        return days;
    }

    [[nodiscard]] std::string_view eventName(std::uint16_t id) const override { return currentEventName(id); }

    [[nodiscard]] std::optional<YearAlmanac> numbers(BsYear year) const override {
        const auto other = replaced.find(year);
        return other != replaced.end() ? other->second : builtInYear(year);
    }
};

std::vector<std::uint8_t> lengthsOf(const YearAlmanac& year) {
    std::vector<std::uint8_t> lengths(12);
    for (const YearDay& day : year.days) ++lengths[unsigned{day.date.month} - 1];
    return lengths;
}

/// Whether an event goes by the day of the BS month, and not by the sky or the AD calendar.
bool goesByBsDate(const EventEntry& event) {
    return std::binary_search(kBsFixedEvents.begin(), kBsFixedEvents.end(), event.id);
}

/// A built-in year that begins on another day: what the sky gives stays on its AD day, what goes by the BS date
/// moves along, and the first month takes up the difference. Nothing when that makes it too short or too long.
std::optional<YearAlmanac> beginningOn(std::chrono::sys_days first, const YearAlmanac& year) {
    const auto shift = static_cast<std::ptrdiff_t>((first - year.days.front().day).count());
    const auto oldLength = static_cast<std::ptrdiff_t>(lengthsOf(year).front());
    const std::ptrdiff_t length = oldLength - shift;
    if (length < 29 || length > 32) return std::nullopt;
    const YearAlmanac before = builtInYear(year.year - std::chrono::years{1}).value_or(YearAlmanac{});
    if (shift < 0 && before.days.size() < static_cast<std::size_t>(-shift)) return std::nullopt;
    YearAlmanac moved{year.year, year.published, {}};
    for (std::ptrdiff_t i = 0; i < length; ++i) {
        const std::ptrdiff_t place = i + shift;  // of the same AD day
        YearDay day = place >= 0 ? year.days[static_cast<std::size_t>(place)]
                                 : before.days[before.days.size() - static_cast<std::size_t>(-place)];
        std::erase_if(day.events, goesByBsDate);
        if (i < oldLength) {
            const auto& sameDate = year.days[static_cast<std::size_t>(i)].events;
            std::copy_if(sameDate.begin(), sameDate.end(), std::back_inserter(day.events), goesByBsDate);
        }
        day.date = {year.year, BsMonth{1}, BsDay{static_cast<unsigned>(i) + 1}};
        day.day = first + std::chrono::days{i};
        day.dateGrade = year.days.front().dateGrade;
        moved.days.push_back(std::move(day));
    }
    moved.days.insert(moved.days.end(), year.days.begin() + oldLength, year.days.end());
    return moved;
}

/// The calendar and the last published year of all years of a source.
Edition editionOf(std::shared_ptr<const YearSource> source) {
    std::vector<std::uint8_t> lengths;
    BsYear lastPublished;
    bool allPublished = true;
    for (const std::string_view bytes : kCurrentYears) {
        const PackedHead head = packedHead(bytes);
        const auto other = source->replaced.find(head.year);
        const bool isOther = other != source->replaced.end();
        const auto months =
            isOther ? lengthsOf(other->second) : std::vector<std::uint8_t>{head.lengths.begin(), head.lengths.end()};
        lengths.insert(lengths.end(), months.begin(), months.end());
        allPublished = allPublished && (isOther ? other->second.published : head.published);
        if (allPublished) lastPublished = head.year;
    }
    const PackedHead head = packedHead(kCurrentYears.front());
    auto calendar = BsCalendar::make({head.year, BsMonth{1}}, head.first, lengths);
    return {EditionId::current, *std::move(calendar), Almanac{std::move(source)}, lastPublished};
}

}  // namespace

std::optional<EditionId> editionNamed(std::string_view word) {
    if (word == "first") return EditionId::first;
    if (word == "current") return EditionId::current;
    return std::nullopt;
}

std::string_view editionName(EditionId edition) { return edition == EditionId::first ? "first" : "current"; }

const Edition& firstEdition() {
    static const Edition edition = [] {
        const BsCalendar calendar = *BsCalendar::make({BsYear{1999}, BsMonth{1}}, kFirstDayOf1999, kMonthLengths);
        return Edition{EditionId::first, calendar, almanacOfLists(embeddedEventTexts(), embeddedTithiTexts(), calendar),
                       calendar.lastDate().year};
    }();
    return edition;
}

const Edition& currentEdition() {
    static const Edition edition = editionOf(std::make_shared<YearSource>());
    return edition;
}

const Edition& builtInEdition(EditionId edition) {
    return edition == EditionId::first ? firstEdition() : currentEdition();
}

bool Edition::isPublished(BsYear year) const {
    const auto told = almanac.numbers(year);
    return told ? told->published : year <= lastPublished;
}

bool isCurrentEvent(std::uint16_t id) { return !currentEventName(id).empty(); }

Result<Edition> currentEditionWith(std::span<const YearAlmanac> years) {
    auto source = std::make_shared<YearSource>();
    const auto refuse = [](std::size_t place, std::string why) { return TextError{place + 1, 0, std::move(why)}; };
    for (std::size_t i = 0; i < years.size(); ++i) {
        if (!source->numbers(years[i].year)) return refuse(i, "is a year outside the calendar");
        source->replaced.insert_or_assign(years[i].year, years[i]);
    }
    for (std::size_t i = 0; i < years.size(); ++i) {
        const BsYear year = years[i].year;
        // Of two given years that do not meet, the computed one is refused, else the later one.
        const auto isRefusedFor = [&](const YearAlmanac& other) {
            return years[i].published == other.published ? other.year < year : other.published;
        };
        const auto isGiven = [&](BsYear one) {
            return std::any_of(years.begin(), years.end(), [&](const YearAlmanac& given) { return given.year == one; });
        };
        const BsYear yearBefore = year - std::chrono::years{1};
        const auto before = source->numbers(yearBefore);
        if (before && before->days.back().day + std::chrono::days{1} != years[i].days.front().day &&
            (!isGiven(yearBefore) || isRefusedFor(*before))) {
            return refuse(i, "begins on " + dateText(std::chrono::year_month_day{years[i].days.front().day}) +
                                 ", not on the day after BS " + std::to_string(int{before->year}));
        }
        const BsYear nextYear = year + std::chrono::years{1};
        const auto next = source->numbers(nextYear);
        if (!next || years[i].days.back().day + std::chrono::days{1} == next->days.front().day) continue;
        if (isGiven(nextYear) && !isRefusedFor(*next)) continue;  // that one is refused in its turn
        const auto moved = next->published || isGiven(nextYear)
                               ? std::nullopt
                               : beginningOn(years[i].days.back().day + std::chrono::days{1}, *next);
        if (!moved) {
            return refuse(i, "ends on " + dateText(std::chrono::year_month_day{years[i].days.back().day}) +
                                 ", not on the day before BS " + std::to_string(int{nextYear}));
        }
        source->replaced.insert_or_assign(nextYear, *moved);
    }
    return editionOf(std::move(source));
}

}  // namespace dinmala
