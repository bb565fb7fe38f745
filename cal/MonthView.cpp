#include "cal/MonthView.h"

#include <algorithm>
#include <array>
#include <vector>

#include "cal/Columns.h"
#include "cal/Json.h"
#include "cal/Names.h"
#include "calendar/Text.h"

namespace dinmala::cal {

namespace {

constexpr int kDaysOfWeek = 7;
constexpr std::uint64_t kSaturday = 7;

/// The showing month of a store, as its grid tells it.
struct Month {
    std::uint64_t year;
    std::uint64_t number;
    std::string adName;  // "Jun/Jul 2013"
    std::vector<std::int32_t> kinds;
    std::vector<std::int32_t> bsDays;
    std::vector<std::int32_t> adDays;
    std::int32_t today;  // 0 when it lies in another month
};

Month showing(DataStore& store, std::int32_t year, std::int32_t month) {
    store.seekByBsDate("01" + padded(static_cast<std::uint64_t>(month), 2) +
                       padded(static_cast<std::uint64_t>(year), 4));
    const bool oneYear = store.showingADStartYear() == store.showingADEndYear();
    std::string adName{adMonthShort(store.showingADStartMonth())};
    if (!oneYear) adName += " " + std::to_string(store.showingADStartYear());
    adName += "/";
    adName += adMonthShort(store.showingADEndMonth());
    adName += " " + std::to_string(store.showingADEndYear());
    const bool hasToday = store.coversToday() && store.cm_index() == store.sm_index();
    return {store.showingBSYear(),
            store.showingBSMonth(),
            std::move(adName),
            store.getMonthBSDaysIsCurrentNextOrPrevious(),
            store.getMonthBSDays(),
            store.getMonthADDays(),
            hasToday ? static_cast<std::int32_t>(store.getBsCurrentDay()) : 0};
}

/// How wide a month is drawn. A day stands in a cell with a column on either side
/// for the brackets of today; in the narrow form two cells share that column.
struct Layout {
    int cell;
    int today;  // from bracket to bracket
    bool withAdDays;
    [[nodiscard]] constexpr int width() const { return cell * kDaysOfWeek; }
};
constexpr Layout kWide{7, 7, true};
constexpr Layout kNarrow{3, 4, false};

/// One week of a month, from `column` on.
void putWeek(Line& line, int column, const Month& month, std::size_t week, const Layout& layout,
             const Settings& settings) {
    for (int weekDay = 0; weekDay < kDaysOfWeek; ++weekDay) {
        const std::size_t cell = week * kDaysOfWeek + static_cast<std::size_t>(weekDay);
        if (cell >= month.kinds.size() || month.kinds[cell] != 1) continue;
        const int at = column + weekDay * layout.cell;
        const bool today = month.bsDays[cell] == month.today;
        const bool free = static_cast<std::uint64_t>(weekDay) + 1 == kSaturday;
        std::string bs = numberText(static_cast<std::uint64_t>(month.bsDays[cell]), settings.devanagari, 2);
        const std::string ad =
            layout.withAdDays ? numberText(static_cast<std::uint64_t>(month.adDays[cell]), false, 2) : "";
        if (today && settings.colours) {
            const std::string both = layout.withAdDays ? bs.append(" ").append(ad) : bs;
            line.put(at + 1, both, free ? "7;31" : "7");
            continue;
        }
        if (today) line.put(at, "[");
        line.put(at + 1, bs, settings.colours && free ? "31" : "");
        if (layout.withAdDays) line.put(at + 4, ad, settings.colours ? (free ? "2;31" : "2") : "");
        if (today) line.put(at + layout.today - 1, "]");
    }
}

void putCentred(Line& line, int column, int width, std::string_view text, const Settings& settings) {
    line.put(column + std::max(0, (width - columnsOf(text)) / 2), text, settings.colours ? "1" : "");
}

void putWeekDays(Line& line, int column, const Layout& layout, const Settings& settings) {
    for (int weekDay = 0; weekDay < kDaysOfWeek; ++weekDay) {
        const auto number = static_cast<std::uint64_t>(weekDay) + 1;
        const std::string_view name =
            layout.withAdDays ? weekDayShort(number, settings.nepali) : weekDayLetter(number, settings.nepali);
        line.put(column + weekDay * layout.cell + 1, name, settings.colours && number == kSaturday ? "31" : "");
    }
}

std::size_t weeksOf(const Month& month) {
    const auto last = std::find(month.kinds.rbegin(), month.kinds.rend(), 1);
    return static_cast<std::size_t>(month.kinds.rend() - last + kDaysOfWeek - 1) / kDaysOfWeek;
}

Json monthJson(DataStore& store, const Month& month) {
    const DayFinder finder{store};
    const std::string year = std::to_string(month.year);
    Json days = Json::array();
    for (std::size_t cell = 0; cell < month.kinds.size(); ++cell) {
        if (month.kinds[cell] != 1) continue;
        const std::int32_t number = month.bsDays[cell];
        const auto day = finder.find(
            Date{static_cast<std::int32_t>(month.year), static_cast<std::int32_t>(month.number), number}, Calendar::Bs);
        if (!day) continue;
        const std::string key = padded(static_cast<std::uint64_t>(number), 2) + padded(month.number, 2);
        Json json = jsonOf(*day, finder);
        json["today"] = number == month.today;
        json["tithi"] = store.getDayTithi(year, key);
        json["events"] = store.getDayEvent(year, key);
        days.push_back(std::move(json));
    }
    return {{"year", month.year},
            {"month", month.number},
            {"name", bsMonthName(month.number, true)},
            {"nameEnglish", bsMonthName(month.number, false)},
            {"days", std::move(days)}};
}

}  // namespace

std::string monthText(DataStore& store, std::int32_t year, std::int32_t month, const Settings& settings) {
    const Month shown = showing(store, year, month);
    if (settings.json) return printed(monthJson(store, shown));
    Line line{settings.terminal};
    const std::string title = std::string{bsMonthName(shown.number, settings.nepali)} + " " +
                              numberText(shown.year, settings.devanagari) + " (" + shown.adName + ")";
    putCentred(line, 0, kWide.width(), title, settings);
    std::string text = line.take();
    putWeekDays(line, 0, kWide, settings);
    text += line.take();
    for (std::size_t week = 0; week < weeksOf(shown); ++week) {
        putWeek(line, 0, shown, week, kWide, settings);
        text += line.take();
    }
    return text;
}

std::string yearText(DataStore& store, std::int32_t year, const Settings& settings) {
    constexpr std::size_t kMonthsInARow = 3;
    constexpr int kGap = 3;
    constexpr int kStep = kNarrow.width() + kGap;
    std::vector<Month> months;
    for (std::int32_t month = 1; month <= 12; ++month) months.push_back(showing(store, year, month));
    if (settings.json) {
        Json json{{"year", year}, {"months", Json::array()}};
        for (const Month& month : months) json["months"].push_back(monthJson(store, month));
        return printed(json);
    }
    Line line{settings.terminal};
    putCentred(line, 0, kStep * static_cast<int>(kMonthsInARow) - kGap,
               numberText(static_cast<std::uint64_t>(year), settings.devanagari), settings);
    std::string text = line.take();
    for (std::size_t row = 0; row < months.size(); row += kMonthsInARow) {
        text += line.take();
        const auto across = [&](auto&& putMonth) {
            for (std::size_t i = 0; i < kMonthsInARow; ++i) putMonth(static_cast<int>(i) * kStep, months[row + i]);
            text += line.take();
        };
        across([&](int column, const Month& month) {
            putCentred(line, column, kNarrow.width(), bsMonthName(month.number, settings.nepali), settings);
        });
        across([&](int column, const Month& month) {
            putCentred(line, column, kNarrow.width(), month.adName, Settings{});
        });
        across([&](int column, const Month&) { putWeekDays(line, column, kNarrow, settings); });
        std::size_t weeks = 0;
        for (std::size_t i = 0; i < kMonthsInARow; ++i) weeks = std::max(weeks, weeksOf(months[row + i]));
        for (std::size_t week = 0; week < weeks; ++week) {
            across([&](int column, const Month& month) { putWeek(line, column, month, week, kNarrow, settings); });
        }
    }
    return text;
}

}  // namespace dinmala::cal
