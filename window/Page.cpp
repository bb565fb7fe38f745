#include "window/Page.h"

#include <algorithm>
#include <utility>

#include "agenda/MonthPage.h"
#include "agenda/Sentences.h"
#include "base/Text.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

/// The day's grade in a word or two; empty where there is nothing to doubt.
std::string gradeWords(const AlmanacDay& day) {
    switch (day.grade) {
        case Grade::published:
            break;
        case Grade::sure:
            return tr("not yet published");
        case Grade::near:
            return tr("not yet published, may be a day earlier or later");
        case Grade::open:
            return tr("not yet published, left open by the reckoning");
    }
    return {};
}

}  // namespace

std::string inDigits(const std::string& text, Digits digits) {
    return digits == Digits::devanagari ? inDevanagari(text) : text;
}

Page::Page(Edition edition, sys_days today, PageLook look)
    : edition_(std::move(edition)), today_(today), chosen_(inTable(today)), look_(look) {
    layOut();
}

bool Page::press(PageKey key) {
    const sys_days before = chosen_;
    switch (key) {
        case PageKey::dayBack:
            goTo(chosen_ - days{1});
            break;
        case PageKey::dayForward:
            goTo(chosen_ + days{1});
            break;
        case PageKey::weekBack:
            goTo(chosen_ - days{7});
            break;
        case PageKey::weekForward:
            goTo(chosen_ + days{7});
            break;
        case PageKey::monthBack:
            moveMonths(std::chrono::months{-1});
            break;
        case PageKey::monthForward:
            moveMonths(std::chrono::months{1});
            break;
        case PageKey::yearBack:
            moveMonths(std::chrono::months{-12});
            break;
        case PageKey::yearForward:
            moveMonths(std::chrono::months{12});
            break;
        case PageKey::today:
            goTo(inTable(today_));
            break;
    }
    return chosen_ != before;
}

bool Page::goTo(sys_days day) {
    if (!edition_.calendar.covers(day)) return false;
    if (day == chosen_) return true;
    chosen_ = day;
    layOut();
    return true;
}

bool Page::goTo(BsYearMonth month) {
    const auto day = edition_.calendar.toDays({month.year, month.month, BsDay{1}});
    return day && goTo(*day);
}

void Page::moveMonths(std::chrono::months months) {
    BsDate date = *edition_.calendar.toDate(chosen_) + months;
    const unsigned length = edition_.calendar.daysIn(date.yearMonth());
    if (length == 0) return;
    date.day = std::min(date.day, BsDay{length});
    goTo(*edition_.calendar.toDays(date));
}

void Page::setToday(sys_days today) {
    if (today == today_) return;
    if (chosen_ == inTable(today_)) chosen_ = inTable(today);
    today_ = today;
    layOut();
}

void Page::setEdition(Edition edition) {
    edition_ = std::move(edition);
    chosen_ = inTable(chosen_);
    layOut();
}

void Page::setLook(PageLook look) {
    look_ = look;
    layOut();
}

std::size_t Page::chosenCell() const { return static_cast<std::size_t>((chosen_ - cells_.front().day).count()); }

BsYearMonth Page::month() const { return edition_.calendar.toDate(chosen_)->yearMonth(); }

std::string Page::title() const {
    const BsYearMonth shown = month();
    return std::string{bsMonthName(shown.month, look_.language)} + " " +
           numberText(static_cast<std::uint64_t>(int{shown.year}), look_.digits);
}

std::string Page::adMonths() const { return adMonthsOf(*monthPage(edition_.calendar, month())); }

std::array<std::string_view, 7> Page::weekDays() const {
    std::array<std::string_view, 7> names;
    for (unsigned i = 0; i < 7; ++i) names[i] = weekDayShort(i + 1, look_.language);
    return names;
}

std::array<std::string_view, 7> Page::weekDaysWhole() const {
    std::array<std::string_view, 7> names;
    for (unsigned i = 0; i < 7; ++i) names[i] = weekDayName(i + 1, look_.language);
    return names;
}

std::vector<std::string> Page::yearNotes() const {
    const BsYear year = month().year;
    std::string note;
    if (!edition_.almanac.holds(year)) {
        note = noListsNote(edition_, year);
    } else if (!edition_.isPublished(year)) {
        note = tr("provisional: Nepal has not published BS {1}", {std::to_string(int{year})});
    }
    if (note.empty()) return {};
    return {inDigits(note, look_.digits)};
}

std::vector<std::string> Page::notes() const {
    std::vector<std::string> notes = yearNotes();
    if (!edition_.calendar.covers(today_)) notes.insert(notes.begin(), tr("today lies outside the table"));
    return notes;
}

sys_days Page::inTable(sys_days day) const {
    return std::clamp(day, edition_.calendar.firstDay(), edition_.calendar.lastDay());
}

void Page::layOut() {
    const sys_days first = monthPage(edition_.calendar, month())->first;
    const sys_days sunday = first - (std::chrono::weekday{first} - std::chrono::Sunday);
    for (std::size_t i = 0; i < kCells; ++i) cells_[i] = cellOf(sunday + days{i});
}

Cell Page::cellOf(sys_days day) const {
    Cell cell;
    cell.day = day;
    cell.date = edition_.calendar.toDate(day);
    cell.adDay = std::to_string(unsigned{std::chrono::year_month_day{day}.day()});
    cell.today = day == today_;
    cell.chosen = day == chosen_;
    cell.otherMonth = !cell.date || cell.date->yearMonth() != month();
    cell.saturday = std::chrono::weekday{day} == std::chrono::Saturday;
    if (!cell.date) {
        cell.spoken = spokenOf(cell, std::nullopt);
        return cell;
    }

    cell.bsDay = numberText(unsigned{cell.date->day}, look_.digits);
    const auto listed = edition_.almanac.day(*cell.date);
    if (listed) {
        for (const Tithi& tithi : listed->tithis) {
            if (!cell.tithi.empty()) cell.tithi += "/ ";
            const bool isEnglish = look_.language == Language::english && tithi.number != 0;
            cell.tithi += isEnglish ? tithiName(tithi.number, Language::english) : tithi.name;
        }
        const auto best = std::max_element(listed->events.begin(), listed->events.end(),
                                           [](const Event& a, const Event& b) { return a.holiday < b.holiday; });
        const bool named = best != listed->events.end() && best->holiday != Holiday::none;
        if (named) cell.event = eventName(*best, look_.language);
        cell.moreEvents = listed->events.size() > (named ? 1U : 0U);
        cell.holiday = listed->holiday();
        cell.grade = listed->grade;
    }
    cell.spoken = spokenOf(cell, listed);
    return cell;
}

std::string Page::spokenOf(const Cell& cell, const std::optional<AlmanacDay>& day) const {
    std::vector<std::string> parts{std::string{weekDayName(weekDayNumber(cell.day), look_.language)},
                                   dateWords(cell.day, look_.language, look_.digits)};
    if (cell.date) parts.insert(parts.begin() + 1, dateWords(*cell.date, look_.language, look_.digits));
    if (!cell.date) {
        parts.push_back(tr("outside the table"));
    } else if (day) {
        for (const Tithi& tithi : day->tithis) parts.push_back(tithiWords(tithi, look_.language));
        for (const Event& event : day->events) parts.emplace_back(eventName(event, look_.language));
        if (cell.holiday > Holiday::observed) parts.push_back(holidayWords(cell.holiday));
    } else {
        parts.push_back(tr("no tithi or festival is listed"));
    }
    if (cell.today) parts.push_back(tr("today"));
    if (day) {
        if (std::string words = gradeWords(*day); !words.empty()) parts.push_back(std::move(words));
    }
    return joined(parts, ", ");
}

}  // namespace dinmala
