/// The page of a calendar as a person leafs through it: a month's days as cells, one of them chosen. It knows no
/// toolkit; the window and the terminal draw it.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agenda/PageLook.h"
#include "almanac/Edition.h"

namespace dinmala {

/// A sentence with its numbers in the chosen digits.
[[nodiscard]] std::string inDigits(const std::string& text, Digits digits);

/// A day on the page, in six weeks that begin on Sunday.
struct Cell {
    std::chrono::sys_days day;
    std::optional<BsDate> date;  ///< nothing for a day outside the table, which shows no text but its AD day
    std::string bsDay;           ///< "७"
    std::string adDay;           ///< "23", Western in every look
    std::string tithi;           ///< the one at sunrise, and after "/ " one that is skipped; "" without lists
    std::string event;           ///< the most important one, where it is a holiday or kept officially
    bool moreEvents = false;     ///< events beside it
    Holiday holiday{};           ///< the best of the events'; none where the edition knows no holidays
    Grade grade{};               ///< of the day; published in the first edition and in years without lists
    bool today = false;
    bool chosen = false;
    bool otherMonth = false;  ///< of the month before or after
    bool saturday = false;
    /// The cell for one who hears it: weekday, whole BS and AD date, tithi, events, holiday or that nothing is listed,
    /// "today", how far the day can be trusted. Outside the table weekday and AD date, and that it is outside.
    std::string spoken;
};

enum class PageKey {
    dayBack,
    dayForward,
    weekBack,
    weekForward,
    monthBack,
    monthForward,
    yearBack,
    yearForward,
    today,
};

/// The month shown is always that of the chosen day, and the chosen day is always one of the table's.
class Page {
public:
    static constexpr std::size_t kWeeks = 6;
    static constexpr std::size_t kCells = kWeeks * 7;
    using Cells = std::array<Cell, kCells>;

    /// Begins at today, or at the end of the table that is next to it.
    Page(Edition edition, std::chrono::sys_days today, PageLook look);

    /// What a key does. A move to another month keeps the day's number, or takes the month's last day; one that would
    /// leave the table is none.
    /// @return whether it moved
    bool press(PageKey key);

    /// Choose a day, or the first of a month.
    /// @return false, and nothing moves, for one outside the table
    bool goTo(std::chrono::sys_days day);
    bool goTo(BsYearMonth month);

    /// A new day has begun, or the clock was set. A page that stood at today goes along.
    void setToday(std::chrono::sys_days today);
    /// Another edition, or the same with other years. The chosen day stays, as far as the table has it.
    void setEdition(Edition edition);
    void setLook(PageLook look);

    [[nodiscard]] const Edition& edition() const { return edition_; }
    [[nodiscard]] PageLook look() const { return look_; }
    [[nodiscard]] std::chrono::sys_days today() const { return today_; }
    [[nodiscard]] std::chrono::sys_days chosen() const { return chosen_; }
    [[nodiscard]] std::size_t chosenCell() const;
    [[nodiscard]] BsYearMonth month() const;

    /// "मंसिर २०८३" and "Nov/Dec 2026".
    [[nodiscard]] std::string title() const;
    [[nodiscard]] std::string adMonths() const;
    /// The headings of the seven columns, short and whole: "आइत" and "आइतवार".
    [[nodiscard]] std::array<std::string_view, 7> weekDays() const;
    [[nodiscard]] std::array<std::string_view, 7> weekDaysWhole() const;

    /// The 42 days, Sunday's first. Holds until the page changes.
    [[nodiscard]] const Cells& cells() const { return cells_; }

    /// What is to be said of the year: that it has no lists, that Nepal has not published it. A sentence; mostly none.
    [[nodiscard]] std::vector<std::string> yearNotes() const;
    /// And that today lies outside the table.
    [[nodiscard]] std::vector<std::string> notes() const;

private:
    [[nodiscard]] std::chrono::sys_days inTable(std::chrono::sys_days day) const;
    void moveMonths(std::chrono::months months);
    void layOut();
    [[nodiscard]] Cell cellOf(std::chrono::sys_days day) const;
    [[nodiscard]] std::string spokenOf(const Cell& cell, const std::optional<AlmanacDay>& day) const;

    Edition edition_;
    std::chrono::sys_days today_;
    std::chrono::sys_days chosen_;
    PageLook look_;
    Cells cells_;
};

}  // namespace dinmala
