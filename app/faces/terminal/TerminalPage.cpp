#include "app/faces/terminal/TerminalPage.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "agenda/MonthPage.h"
#include "agenda/Sentences.h"
#include "app/faces/terminal/TerminalText.h"
#include "i18n/Translation.h"
#include "window/DayDetails.h"

namespace dinmala {

namespace {

using Look = TerminalLine::Look;

constexpr int kColumns = 7;
constexpr int kWideCell = 7;    // "[07*23~]" less the bracket that it shares with the next: both days and all marks
constexpr int kNarrowCell = 4;  // "[07]": the BS day with its mark
constexpr int kWidestCell = 9;
constexpr int kMargin = 2;
constexpr wchar_t kRule = L'─';

/// A mark beside a day's number, ' ' for none.
wchar_t holidayMark(const Cell& cell) { return cell.holiday == Holiday::national ? L'*' : L' '; }
wchar_t gradeMark(const Cell& cell) {
    return cell.grade <= Grade::sure ? L' ' : cell.grade == Grade::near ? L'~' : L'?';
}

std::wstring inTwoColumns(const std::string& number) {
    const std::wstring text = decodeForTerminal(number);
    return text.size() < 2 ? L' ' + text : text;
}

/// A day in a cell of `width` characters, each of one column.
std::wstring cellText(const Cell& cell, int width) {
    std::wstring text{cell.today ? L'[' : L' '};
    text += inTwoColumns(cell.bsDay);
    if (width >= kWideCell) {
        text += holidayMark(cell);
        text += inTwoColumns(cell.adDay);
        text += cell.today ? L']' : gradeMark(cell);
    } else {
        // One place for all: that it is today, else that people have the day off.
        const wchar_t mark = holidayMark(cell);
        text += cell.today ? L']' : mark != L' ' ? mark : gradeMark(cell);
    }
    text.resize(static_cast<std::size_t>(width), L' ');
    return text;
}

/// A text with blanks up to `width` columns, one at least.
std::wstring padded(std::wstring text, int width) {
    do text += L' ';
    while (columnsOf(text) < width);
    return text;
}

}  // namespace

TerminalPage::TerminalPage(Page page) : page_(std::move(page)) {}

void TerminalPage::update(const Edition& edition, std::chrono::sys_days today, PageLook look) {
    page_.setToday(today);
    page_.setEdition(edition);
    page_.setLook(look);
    if (view_ == View::upcoming) upcoming_ = upcomingRows(page_, filter_);
}

std::vector<TerminalLine> TerminalPage::lines(int width, int height) {
    if (width < 1 || height < 1) return {};
    // One column stays free, as in TerminalView.
    const int textWidth = std::max(1, width - 1);
    body_.clear();
    focusBegin_ = focusEnd_ = 0;
    if (view_ == View::month) layOutMonth(textWidth);
    if (view_ == View::day) layOutDay(textWidth);
    if (view_ == View::upcoming) layOutUpcoming(textWidth);

    std::vector<TerminalLine> out;
    for (std::wstring& line : wrapText(decodeForTerminal(title_), textWidth))
        out.push_back({std::move(line), Look::title});
    if (!message_.empty()) {
        for (std::wstring& line : wrapText(decodeForTerminal(message_), textWidth))
            out.push_back({std::move(line), Look::title});
    }
    std::vector<TerminalLine> foot = footFor(textWidth, height - static_cast<int>(out.size()));
    if (height - static_cast<int>(out.size()) < 3) {
        const int moved = static_cast<int>(out.size());
        body_.insert(body_.begin(), out.begin(), out.end());
        focusBegin_ += moved;
        focusEnd_ += moved;
        out.clear();
    }

    room_ = height - static_cast<int>(out.size() + foot.size());
    if (focusEnd_ > top_ + room_) top_ = focusEnd_ - room_;
    if (focusEnd_ > 0 && focusBegin_ < top_) top_ = focusBegin_;
    top_ = std::clamp(top_, 0, std::max(0, static_cast<int>(body_.size()) - room_));
    const int end = std::min(static_cast<int>(body_.size()), top_ + room_);
    out.insert(out.end(), body_.begin() + top_, body_.begin() + end);
    if (!foot.empty()) out.resize(static_cast<std::size_t>(height) - foot.size());
    out.insert(out.end(), foot.begin(), foot.end());
    return out;
}

/// The keys, told in as many words as there is room for.
std::vector<TerminalLine> TerminalPage::footFor(int width, int height) const {
    constexpr int kWeeksAndDay = static_cast<int>(Page::kWeeks) + 3;
    for (const std::string* hint : {&hint_, &shortHint_}) {
        std::vector<TerminalLine> foot;
        for (std::wstring& line : wrapText(decodeForTerminal(*hint), width))
            foot.push_back({std::move(line), Look::quiet});
        const int left = height - static_cast<int>(foot.size());
        if (left >= std::min(static_cast<int>(body_.size()), 2 * kWeeksAndDay) ||
            (hint == &shortHint_ && left >= kWeeksAndDay)) {
            return foot;
        }
    }
    return {};
}

void TerminalPage::addText(const std::string& text, int width, int indent, Look look) {
    const int margin = width - indent < 6 ? 0 : indent;
    for (const std::wstring& line : wrapText(decodeForTerminal(text), width - margin)) {
        body_.push_back({std::wstring(static_cast<std::size_t>(margin), L' ') + line, look});
    }
}

void TerminalPage::layOutMonth(int width) {
    title_ = page_.title();
    const std::string both = title_ + " (" + page_.adMonths() + ")";
    if (columnsOf(decodeForTerminal(both)) <= width) title_ = both;
    hint_ =
        tr("←→↑↓ day, week · PgUp PgDn month · < > year · Home today · Enter details · u upcoming · d digits · n names "
           "· Esc menu · q quit");
    shortHint_ = tr("Enter details · u upcoming · Esc menu");
    top_ = 0;
    addWeeks(width);
    body_.push_back({std::wstring(static_cast<std::size_t>(width), kRule), Look::quiet});
    const Cell& chosen = page_.cells()[page_.chosenCell()];
    addText(chosen.spoken, width, 0, Look::plain);
    for (const std::string& note : page_.notes()) addText(note, width, 0, Look::quiet);

    const auto tell = [&](wchar_t mark, wchar_t (*markOf)(const Cell&), const std::string& meaning) {
        const auto has = [&](const Cell& cell) { return !cell.otherMonth && markOf(cell) == mark; };
        if (std::any_of(page_.cells().begin(), page_.cells().end(), has)) {
            addText(static_cast<char>(mark) + (" " + meaning), width, 0, Look::quiet);
        }
    };
    tell(L'*', holidayMark, tr("public holiday"));
    tell(L'~', gradeMark, tr("close to being otherwise: the date or the tithi"));
    tell(L'?', gradeMark, tr("undecided until Nepal publishes the year: the date or the tithi"));
}

/// The headings and the weeks, where there are columns for them; the chosen week is what must be in view.
void TerminalPage::addWeeks(int width) {
    const int cell = std::min(width / kColumns, kWidestCell);
    if (cell < kNarrowCell) return;
    const PageLook look = page_.look();
    std::wstring head;
    for (unsigned weekDay = 1; weekDay <= kColumns; ++weekDay) {
        const bool wide = cell >= kWideCell;
        const auto name = wide ? weekDayShort(weekDay, look.language) : weekDayLetter(weekDay, look.language);
        head += L' ' + padded(decodeForTerminal(name), cell - 1);
    }
    body_.push_back({head, Look::quiet});
    const std::size_t weeks = monthPage(page_.edition().calendar, page_.month())->weeks();
    for (std::size_t week = 0; week < weeks; ++week) {
        TerminalLine line;
        for (std::size_t i = week * kColumns; i < (week + 1) * kColumns; ++i) {
            const Cell& day = page_.cells()[i];
            const std::size_t begin = line.text.size();
            line.text += day.otherMonth ? std::wstring(static_cast<std::size_t>(cell), L' ') : cellText(day, cell);
            const std::size_t shown = static_cast<std::size_t>(cell >= kWideCell ? kWideCell : kNarrowCell);
            if (day.chosen) {
                line.spans.push_back({begin, begin + shown, Look::selected});
                focusBegin_ = static_cast<int>(body_.size());
                focusEnd_ = focusBegin_ + 1;
            } else if (day.today) {
                line.spans.push_back({begin, begin + shown, Look::title});
            }
        }
        body_.push_back(std::move(line));
    }
}

void TerminalPage::layOutDay(int width) {
    const PageLook look = page_.look();
    title_ = dateWords(*page_.edition().calendar.toDate(page_.chosen()), look.language, look.digits);
    hint_ = shortHint_ = tr("←→ day before, after · ↑↓ scroll · Esc back · q quit");
    for (const DetailLine& line : dayDetails(page_)) {
        addText(line.label.empty() ? line.text : line.label + ": " + line.text, width, line.label.empty() ? kMargin : 0,
                Look::plain);
    }
}

void TerminalPage::layOutUpcoming(int width) {
    title_ = tr("Upcoming") + " · " +
             (filter_ == UpcomingFilter::holidays    ? tr("public holidays")
              : filter_ == UpcomingFilter::important ? tr("important days")
                                                     : tr("all days"));
    hint_ = shortHint_ = tr("↑↓ move · ←→ fewer, more · Enter goes there · Esc back · q quit");
    if (upcoming_.rows.empty()) addText(upcoming_.whyNone, width, 0, Look::plain);
    row_ = std::min(row_, upcoming_.rows.empty() ? 0 : upcoming_.rows.size() - 1);
    for (std::size_t i = 0; i < upcoming_.rows.size(); ++i) {
        const UpcomingRow& row = upcoming_.rows[i];
        const auto begin = static_cast<int>(body_.size());
        addText(row.name + " · " + row.date + " · " + row.left, width, kMargin,
                i == row_ ? Look::selected : Look::plain);
        if (i != row_) continue;
        focusBegin_ = begin;
        focusEnd_ = static_cast<int>(body_.size());
        if (body_[static_cast<std::size_t>(begin)].text.starts_with(L' '))
            body_[static_cast<std::size_t>(begin)].text[0] = L'>';
    }
}

bool TerminalPage::press(TerminalKey key) {
    const PageLook look = page_.look();
    message_.clear();
    switch (key) {
        case TerminalKey::calendar:
            return false;
        case TerminalKey::back:
            if (view_ == View::month) return false;
            show(View::month);
            break;
        case TerminalKey::upcoming:
            show(view_ == View::upcoming ? View::month : View::upcoming);
            break;
        case TerminalKey::digits:
            page_.setLook({look.language, look.digits == Digits::western ? Digits::devanagari : Digits::western});
            break;
        case TerminalKey::names:
            page_.setLook({look.language == Language::english ? Language::nepali : Language::english, look.digits});
            break;
        default:
            if (view_ == View::month)
                pressMonth(key);
            else if (view_ == View::day)
                pressDay(key);
            else
                pressUpcoming(key);
    }
    if (view_ == View::upcoming && page_.look() != look) upcoming_ = upcomingRows(page_, filter_);
    return true;
}

void TerminalPage::pressMonth(TerminalKey key) {
    switch (key) {
        case TerminalKey::left:
            page_.press(PageKey::dayBack);
            break;
        case TerminalKey::right:
            page_.press(PageKey::dayForward);
            break;
        case TerminalKey::up:
            page_.press(PageKey::weekBack);
            break;
        case TerminalKey::down:
            page_.press(PageKey::weekForward);
            break;
        case TerminalKey::pageUp:
            page_.press(PageKey::monthBack);
            break;
        case TerminalKey::pageDown:
            page_.press(PageKey::monthForward);
            break;
        case TerminalKey::yearBack:
            page_.press(PageKey::yearBack);
            break;
        case TerminalKey::yearForward:
            page_.press(PageKey::yearForward);
            break;
        case TerminalKey::home:
            page_.press(PageKey::today);
            break;
        case TerminalKey::choose:
            show(View::day);
            break;
        default:
            break;
    }
}

void TerminalPage::pressDay(TerminalKey key) {
    switch (key) {
        case TerminalKey::left:
        case TerminalKey::right:
            pressMonth(key);
            top_ = 0;
            break;
        case TerminalKey::up:
            --top_;
            break;
        case TerminalKey::down:
            ++top_;
            break;
        case TerminalKey::pageUp:
            top_ -= room_;
            break;
        case TerminalKey::pageDown:
            top_ += room_;
            break;
        case TerminalKey::home:
            top_ = 0;
            break;
        case TerminalKey::end:
            top_ = static_cast<int>(body_.size());
            break;
        case TerminalKey::choose:
            show(View::month);
            break;
        default:
            break;
    }
}

void TerminalPage::pressUpcoming(TerminalKey key) {
    const std::size_t last = upcoming_.rows.empty() ? 0 : upcoming_.rows.size() - 1;
    const auto page = static_cast<std::size_t>(std::max(1, room_ - 1));
    switch (key) {
        case TerminalKey::left:
            return filter(-1);
        case TerminalKey::right:
            return filter(1);
        case TerminalKey::up:
            row_ -= row_ > 0 ? 1 : 0;
            break;
        case TerminalKey::down:
            row_ = std::min(last, row_ + 1);
            break;
        case TerminalKey::pageUp:
            row_ -= std::min(row_, page);
            break;
        case TerminalKey::pageDown:
            row_ = std::min(last, row_ + page);
            break;
        case TerminalKey::home:
            row_ = 0;
            break;
        case TerminalKey::end:
            row_ = last;
            break;
        case TerminalKey::choose:
            if (upcoming_.rows.empty()) break;
            page_.goTo(upcoming_.rows[row_].day);
            show(View::month);
            break;
        default:
            break;
    }
}

/// The filter with fewer (-1) or more (1) days.
void TerminalPage::filter(int step) {
    const int wanted = std::clamp(static_cast<int>(filter_) + step, 0, static_cast<int>(UpcomingFilter::all));
    filter_ = static_cast<UpcomingFilter>(wanted);
    show(View::upcoming);
}

void TerminalPage::show(View view) {
    view_ = view;
    top_ = 0;
    row_ = 0;
    if (view == View::upcoming) upcoming_ = upcomingRows(page_, filter_);
}

}  // namespace dinmala
