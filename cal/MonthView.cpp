#include "cal/MonthView.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "agenda/MonthPage.h"
#include "base/Names.h"
#include "cal/Columns.h"
#include "cal/Json.h"
#include "i18n/Translation.h"

namespace dinmala::cal {

namespace {

constexpr unsigned kDaysOfWeek = 7;
constexpr unsigned kSaturday = 7;

constexpr std::string_view kHolidayMark = "*";
constexpr std::string_view kNearMark = "~";
constexpr std::string_view kOpenMark = "?";

/// A month with what is shown of it.
struct Month {
    MonthPage page;
    std::vector<AlmanacDay> days;  // empty where nothing of them is shown
    unsigned today = 0;            // 0 when it lies in another month

    [[nodiscard]] const AlmanacDay* day(unsigned number) const { return days.empty() ? nullptr : &days[number - 1]; }
};

Month shownMonth(const Edition& edition, BsYearMonth month, std::optional<BsDate> today, const Settings& settings) {
    // Without grades there are no marks either.
    const bool withDays = settings.json || edition.almanac.graded();
    return {*monthPage(edition.calendar, month), withDays ? monthDays(edition, month) : std::vector<AlmanacDay>{},
            today && today->yearMonth() == month ? unsigned{today->day} : 0};
}

bool isHoliday(const AlmanacDay* day) { return day != nullptr && day->holiday() == Holiday::national; }

/// "" for a day that is published or sure.
std::string_view gradeMark(const AlmanacDay* day) {
    if (day == nullptr || day->grade <= Grade::sure) return {};
    return day->grade == Grade::near ? kNearMark : kOpenMark;
}

/// How wide a month is drawn. A day stands in a cell with a column on either side
/// for the brackets of today; in the narrow form two cells share that column.
struct Layout {
    int cell;
    int today;  // from bracket to bracket
    bool withAdDays;
    [[nodiscard]] constexpr int width() const { return cell * static_cast<int>(kDaysOfWeek); }
};
constexpr Layout kWide{7, 7, true};
constexpr Layout kNarrow{3, 4, false};

void putMark(Line& line, int column, std::string_view mark) {
    if (!mark.empty()) line.put(column, mark);
}

/// One week of a month, from `column` on.
void putWeek(Line& line, int column, const Month& month, std::size_t week, const Layout& layout,
             const Settings& settings) {
    for (unsigned weekDay = 0; weekDay < kDaysOfWeek; ++weekDay) {
        const unsigned number = month.page.dayAt(week, weekDay);
        if (number == 0) continue;
        const AlmanacDay* day = month.day(number);
        const int at = column + static_cast<int>(weekDay) * layout.cell;
        const bool isToday = number == month.today;
        const bool free = weekDay + 1 == kSaturday || isHoliday(day);
        const std::string_view holiday = isHoliday(day) ? kHolidayMark : std::string_view{};
        const std::string_view grade = gradeMark(day);
        const std::string bs = numberText(number, settings.digits, 2);
        const bool reversed = isToday && settings.colours;
        const std::string style = reversed ? (free ? "7;31" : "7") : settings.colours && free ? "31" : "";
        if (isToday && !reversed) line.put(at, "[");
        if (!layout.withAdDays) {
            line.put(at + 1, bs, style);
            // The next cell's bracket stands where a mark would.
            const bool taken =
                (isToday && !reversed) || (weekDay + 1 < kDaysOfWeek && !settings.colours && month.today == number + 1);
            if (!taken) putMark(line, at + 3, holiday.empty() ? grade : holiday);
        } else {
            const std::chrono::year_month_day ad{month.page.first + std::chrono::days{number - 1}};
            const std::string adDay = numberText(unsigned{ad.day()}, Digits::western, 2);
            if (reversed) {
                line.put(at + 1, bs + (holiday.empty() ? " " : std::string{holiday}) + adDay, style);
            } else {
                line.put(at + 1, bs, style);
                if (!holiday.empty()) line.put(at + 3, holiday, style);
                line.put(at + 4, adDay, settings.colours ? (free ? "2;31" : "2") : "");
            }
            if (!isToday || reversed) putMark(line, at + 6, grade);
        }
        if (isToday && !reversed) line.put(at + layout.today - 1, "]");
    }
}

void putCentred(Line& line, int column, int width, std::string_view text, const Settings& settings) {
    line.put(column + std::max(0, (width - columnsOf(text)) / 2), text, settings.colours ? "1" : "");
}

void putWeekDays(Line& line, int column, const Layout& layout, const Settings& settings) {
    for (unsigned weekDay = 1; weekDay <= kDaysOfWeek; ++weekDay) {
        const std::string_view name =
            layout.withAdDays ? weekDayShort(weekDay, settings.language) : weekDayLetter(weekDay, settings.language);
        line.put(column + static_cast<int>(weekDay - 1) * layout.cell + 1, name,
                 settings.colours && weekDay == kSaturday ? "31" : "");
    }
}

/// What the marks in these months mean, a line for each that occurs, and whether the year is published.
std::string legend(const Edition& edition, const std::vector<Month>& months) {
    bool holiday = false;
    bool near = false;
    bool open = false;
    for (const Month& month : months) {
        for (const AlmanacDay& day : month.days) {
            holiday = holiday || isHoliday(&day);
            near = near || gradeMark(&day) == kNearMark;
            open = open || gradeMark(&day) == kOpenMark;
        }
    }
    std::string text;
    const auto tell = [&text](std::string_view mark, const std::string& meaning) {
        text.append(" ").append(mark).append(" ").append(meaning).append("\n");
    };
    if (holiday) tell(kHolidayMark, tr("public holiday"));
    if (near) tell(kNearMark, tr("close to being otherwise: the date or the tithi"));
    if (open) tell(kOpenMark, tr("undecided until Nepal publishes the year: the date or the tithi"));
    if (const BsYear year = months.front().page.month.year; !edition.isPublished(year)) {
        text.append(" ").append(tr("provisional: Nepal has not published BS {1}", {std::to_string(int{year})}));
        text += '\n';
    }
    return text.empty() ? text : "\n" + text;
}

Json monthJson(const Edition& edition, const Month& month) {
    const BsYearMonth name = month.page.month;
    Json days = Json::array();
    for (const AlmanacDay& day : month.days) {
        Json json = jsonOf(day.date, day.day);
        json["today"] = unsigned{day.date.day} == month.today;
        addDay(json, day, edition.almanac.graded(), true, true);
        days.push_back(std::move(json));
    }
    return {{"year", int{name.year}},
            {"month", unsigned{name.month}},
            {"name", bsMonthName(name.month, Language::nepali)},
            {"nameEnglish", bsMonthName(name.month, Language::english)},
            {"days", std::move(days)}};
}

}  // namespace

std::string monthText(const Edition& edition, BsYearMonth month, std::optional<BsDate> today,
                      const Settings& settings) {
    const std::vector<Month> shown{shownMonth(edition, month, today, settings)};
    if (settings.json) return printed(monthJson(edition, shown.front()));
    const MonthPage& page = shown.front().page;
    Line line{settings.terminal};
    const std::string title = std::string{bsMonthName(month.month, settings.language)} + " " +
                              numberText(static_cast<std::uint64_t>(int{month.year}), settings.digits) + " (" +
                              adMonthsOf(page) + ")";
    putCentred(line, 0, kWide.width(), title, settings);
    std::string text = line.take();
    putWeekDays(line, 0, kWide, settings);
    text += line.take();
    for (std::size_t week = 0; week < page.weeks(); ++week) {
        putWeek(line, 0, shown.front(), week, kWide, settings);
        text += line.take();
    }
    return text + legend(edition, shown);
}

std::string yearText(const Edition& edition, BsYear year, std::optional<BsDate> today, const Settings& settings) {
    constexpr std::size_t kMonthsInARow = 3;
    constexpr int kGap = 3;
    constexpr int kStep = kNarrow.width() + kGap;
    std::vector<Month> months;
    for (unsigned month = 1; month <= 12; ++month) {
        months.push_back(shownMonth(edition, {year, BsMonth{month}}, today, settings));
    }
    if (settings.json) {
        Json json{{"year", int{year}}, {"months", Json::array()}};
        for (const Month& month : months) json["months"].push_back(monthJson(edition, month));
        return printed(json);
    }
    Line line{settings.terminal};
    putCentred(line, 0, kStep * static_cast<int>(kMonthsInARow) - kGap,
               numberText(static_cast<std::uint64_t>(int{year}), settings.digits), settings);
    std::string text = line.take();
    for (std::size_t row = 0; row < months.size(); row += kMonthsInARow) {
        text += line.take();
        const auto across = [&](auto&& putMonth) {
            for (std::size_t i = 0; i < kMonthsInARow; ++i) putMonth(static_cast<int>(i) * kStep, months[row + i]);
            text += line.take();
        };
        across([&](int column, const Month& month) {
            putCentred(line, column, kNarrow.width(), bsMonthName(month.page.month.month, settings.language), settings);
        });
        across([&](int column, const Month& month) {
            putCentred(line, column, kNarrow.width(), adMonthsOf(month.page), Settings{});
        });
        across([&](int column, const Month&) { putWeekDays(line, column, kNarrow, settings); });
        std::size_t weeks = 0;
        for (std::size_t i = 0; i < kMonthsInARow; ++i) weeks = std::max(weeks, months[row + i].page.weeks());
        for (std::size_t week = 0; week < weeks; ++week) {
            across([&](int column, const Month& month) { putWeek(line, column, month, week, kNarrow, settings); });
        }
    }
    return text + legend(edition, months);
}

}  // namespace dinmala::cal
