#include "app/faces/terminal/TerminalView.h"

#include <algorithm>

#include "app/faces/terminal/TerminalText.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

using Look = TerminalLine::Look;

// Left of every row: the mark of the selected one, or that there is more.
constexpr int kMargin = 2;
constexpr wchar_t kSelectedMark = L'>';
constexpr wchar_t kMoreAbove = L'↑';
constexpr wchar_t kMoreBelow = L'↓';
constexpr wchar_t kRule = L'─';

std::string statusTitle(const StatusItem* item, const Outlets& outlets) {
    if (!item) return {};
    if (item->title()) return *item->title();
    if (!item->image()) return {};
    // Many terminals have no picture for the flag: its word beside it.
    return outlets.iconMenuItem ? "🇳🇵 " + outlets.iconMenuItem->title() : "🇳🇵";
}

TerminalLine rule(int width) {
    const int margin = std::min(kMargin, width);
    return {std::wstring(static_cast<std::size_t>(margin), L' ') +
                std::wstring(static_cast<std::size_t>(width - margin), kRule),
            Look::quiet};
}

}  // namespace

TerminalView::TerminalView() : hint_(decodeForTerminal(tr("↑↓ move · Space choose · c calendar · q quit"))) {}

std::vector<TerminalLine> TerminalView::lines(const StatusItem* item, int width, int height) {
    const std::size_t before = selectedRow();
    const bool wasVisible = before != kNone && isVisible(before);
    item_ = item;
    if (width < 1 || height < 1) return {};
    if (std::exchange(width_, width) != width || std::exchange(height_, height) != height) top_ = 0;

    // One column stays free: a terminal that disagrees about the width of a sign
    // must not break the line by itself.
    const int textWidth = std::max(1, width - 1);
    layOutBody(textWidth);

    std::vector<TerminalLine> out;
    for (std::wstring& line : wrapText(decodeForTerminal(statusTitle(item, outlets_)), textWidth))
        out.push_back({std::move(line), Look::title});
    std::vector<TerminalLine> foot;
    const bool hasRoom = height >= 12;
    if (hasRoom) {
        out.push_back(rule(textWidth));
        foot.push_back(rule(textWidth));
    }
    if (!message_.empty())
        for (std::wstring& line : wrapText(decodeForTerminal(message_), textWidth))
            foot.push_back({std::move(line), Look::title});
    if (hasRoom)
        for (std::wstring& line : wrapText(hint_, textWidth)) foot.push_back({std::move(line), Look::quiet});

    int room = height - static_cast<int>(out.size() + foot.size());
    if (room < 3) {
        // Too little to stand still: all of it scrolls.
        const int moved = static_cast<int>(out.size());
        body_.insert(body_.begin(), out.begin(), out.end());
        body_.insert(body_.end(), foot.begin(), foot.end());
        for (Row& row : rows_) {
            row.firstLine += moved;
            row.endLine += moved;
        }
        out.clear();
        foot.clear();
        room = height;
    }

    page_ = room;
    scrollTo(top_);
    const std::size_t now = selectedRow();
    if (wasVisible && now != kNone && !isVisible(now)) show(now);

    const int end = std::min(static_cast<int>(body_.size()), top_ + page_);
    for (int i = top_; i < end; ++i) {
        TerminalLine line = body_[static_cast<std::size_t>(i)];
        const std::size_t blank = line.look == Look::title ? std::wstring::npos : line.text.find(L' ');
        const bool markable = blank < kMargin;
        if (markable && i == top_ && top_ > 0) line.text[blank] = kMoreAbove;
        if (markable && i == end - 1 && end < static_cast<int>(body_.size())) line.text[blank] = kMoreBelow;
        out.push_back(std::move(line));
    }
    // The foot stays at the bottom.
    if (!foot.empty()) out.resize(static_cast<std::size_t>(height) - foot.size());
    out.insert(out.end(), foot.begin(), foot.end());
    return out;
}

void TerminalView::layOutBody(int width) {
    body_.clear();
    rows_.clear();
    for (const MenuItem* line : {outlets_.dateMenuItem, outlets_.descriptionMenuItem})
        if (line) addText(decodeForTerminal(line->title()), width, kMargin, Look::plain);
    if (outlets_.statusMenu) addRows(*outlets_.statusMenu, 0);
    if (!rows_.empty() && !body_.empty()) body_.push_back(rule(width));

    if (selectedRow() == kNone) {
        // There was none yet, or its row has gone: the nearest that can be chosen.
        selected_ = nullptr;
        for (std::size_t i = 0; i < rows_.size(); ++i)
            if (rows_[i].selectable && (!selected_ || i <= lastSelected_)) selected_ = rows_[i].item;
    }

    int number = 0;
    for (Row& row : rows_) {
        const bool isToggle = row.item->kind() == MenuItem::Kind::toggle;
        if (isToggle && row.selectable && number < 9) row.number = ++number;
        row.firstLine = static_cast<int>(body_.size());
        if (row.item->kind() == MenuItem::Kind::separator)
            body_.push_back(rule(width));
        else
            addText(textOf(row), width, kMargin + 2 * row.depth,
                    row.item == selected_ ? Look::selected
                    : row.selectable      ? Look::plain
                                          : Look::quiet);
        row.endLine = static_cast<int>(body_.size());
    }
}

void TerminalView::addRows(const Menu& menu, int depth) {
    for (const auto& item : menu.items()) {
        if (item->isHidden() || item.get() == outlets_.dateMenuItem || item.get() == outlets_.descriptionMenuItem)
            continue;
        const bool isSeparator = item->kind() == MenuItem::Kind::separator;
        if (isSeparator && (rows_.empty() || rows_.back().item->kind() == MenuItem::Kind::separator)) continue;
        if (!isSeparator && titleOf(*item).empty()) continue;
        rows_.push_back({item.get(), depth, 0, !isSeparator && item->isEnabled()});
        if (item->submenu() && open_.contains(item.get())) addRows(*item->submenu(), depth + 1);
    }
}

void TerminalView::addText(std::wstring_view text, int width, int indent, Look look) {
    // Where there is hardly room for words there is none for margins.
    const int margin = width - indent < 6 ? 0 : indent;
    wchar_t mark = look == Look::selected ? kSelectedMark : L' ';
    for (const std::wstring& line : wrapText(text, width - margin)) {
        std::wstring full(static_cast<std::size_t>(margin), L' ');
        if (margin > 0) full[0] = std::exchange(mark, L' ');
        body_.push_back({full + line, look});
    }
}

std::string TerminalView::titleOf(const MenuItem& item) const {
    // The row of the logo has a picture and no words.
    if (item.title().empty() && item.image() && item_) return item_->toolTip();
    return item.title();
}

std::wstring TerminalView::textOf(const Row& row) const {
    std::string text = titleOf(*row.item);
    if (row.item->submenu()) text = (open_.contains(row.item) ? "▾ " : "▸ ") + text;
    if (row.item->kind() == MenuItem::Kind::toggle) text = (row.item->state() == kOffState ? "[ ] " : "[x] ") + text;
    if (row.number > 0) text = std::to_string(row.number) + ' ' + text;
    return decodeForTerminal(text);
}

std::size_t TerminalView::selectedRow() const {
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [&](const Row& row) { return row.item == selected_ && row.selectable; });
    return found == rows_.end() ? kNone : static_cast<std::size_t>(found - rows_.begin());
}

bool TerminalView::isVisible(std::size_t row) const {
    return rows_[row].endLine > top_ && rows_[row].firstLine < top_ + page_;
}

void TerminalView::scrollTo(int top) { top_ = std::clamp(top, 0, std::max(0, static_cast<int>(body_.size()) - page_)); }

/// Scrolls as little as brings the row into view, its first line above all.
void TerminalView::show(std::size_t row) {
    if (rows_[row].endLine > top_ + page_) scrollTo(rows_[row].endLine - page_);
    if (rows_[row].firstLine < top_) scrollTo(rows_[row].firstLine);
}

void TerminalView::select(std::size_t row) {
    selected_ = rows_[row].item;
    lastSelected_ = row;
    show(row);
}

/// One row down (1) or up (-1). Lines that only inform lie between the rows, so
/// where no row is in reach the view moves by a line instead.
void TerminalView::move(int step) {
    const std::size_t current = selectedRow();
    if (current == kNone) return scrollTo(top_ + step);

    const int edge = step > 0 ? rows_[current].endLine - page_ - top_ : top_ - rows_[current].firstLine;
    if (edge > 0) return scrollTo(top_ + step);

    const bool wasVisible = isVisible(current);
    const int size = static_cast<int>(rows_.size());
    for (int i = static_cast<int>(current) + step; i >= 0 && i < size; i += step) {
        const auto row = static_cast<std::size_t>(i);
        if (!rows_[row].selectable || (!wasVisible && !isVisible(row))) continue;
        return select(row);
    }
    scrollTo(top_ + step);
}

/// Closes the selected submenu, or the one that the selected row is in.
void TerminalView::close() {
    std::size_t row = selectedRow();
    if (row == kNone) return;
    if (open_.erase(rows_[row].item) > 0) return;
    const int depth = rows_[row].depth;
    while (row > 0 && rows_[row].depth >= depth && depth > 0) --row;
    if (open_.erase(rows_[row].item) > 0) select(row);
}

const MenuItem* TerminalView::press(TerminalKey key) {
    const std::size_t row = selectedRow();
    switch (key) {
        case TerminalKey::up:
            move(-1);
            break;
        case TerminalKey::down:
            move(1);
            break;
        case TerminalKey::pageUp:
            scrollTo(top_ - page_);
            break;
        case TerminalKey::pageDown:
            scrollTo(top_ + page_);
            break;
        case TerminalKey::home:
            for (std::size_t i = rows_.size(); i-- > 0;)
                if (rows_[i].selectable) select(i);
            scrollTo(0);
            break;
        case TerminalKey::end:
            for (std::size_t i = 0; i < rows_.size(); ++i)
                if (rows_[i].selectable) select(i);
            scrollTo(static_cast<int>(body_.size()));
            break;
        case TerminalKey::left:
            close();
            break;
        case TerminalKey::right:
        case TerminalKey::choose:
            if (row == kNone) break;
            if (!isVisible(row)) {
                show(row);  // never choose what cannot be seen
            } else if (rows_[row].item->submenu()) {
                if (!open_.insert(rows_[row].item).second && key == TerminalKey::choose) open_.erase(rows_[row].item);
            } else if (key == TerminalKey::choose) {
                return rows_[row].item;
            }
            break;
        default:
            break;
    }
    return nullptr;
}

const MenuItem* TerminalView::toggleNumber(int number) const {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return number > 0 && row.number == number; });
    return found == rows_.end() ? nullptr : found->item;
}

}  // namespace dinmala
