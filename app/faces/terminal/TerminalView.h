/// What the terminal face shows, as lines of text, and what its keys do. It
/// knows no terminal: a size goes in, lines come out.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/AppDelegate.h"
#include "app/faces/terminal/TerminalLine.h"

namespace dinmala {

/// From top to bottom: the status title, the date line and the description line,
/// the menu's rows, a line that tells the keys. What does not fit scrolls below
/// the title; when there is little room the title scrolls too.
class TerminalView {
public:
    TerminalView();

    void setOutlets(const Outlets& outlets) { outlets_ = outlets; }
    /// A message for the person, shown until the next one; "" for none.
    void setMessage(std::string message) { message_ = std::move(message); }

    /// Lays everything out anew: at most `height` lines, each narrower than
    /// `width` columns (a title of one column may take it).
    /// @param item may be null
    [[nodiscard]] std::vector<TerminalLine> lines(const StatusItem* item, int width, int height);

    /// What a key does to the lines of the last layout; those of the calendar's page do nothing.
    /// @return the row to choose, or null
    [[nodiscard]] const MenuItem* press(TerminalKey key);
    /// The toggle with that number, 1 to 9, or null.
    [[nodiscard]] const MenuItem* toggleNumber(int number) const;

private:
    struct Row {
        const MenuItem* item = nullptr;
        int depth = 0;
        int number = 0;  ///< of a toggle, 0 for none
        bool selectable = false;
        int firstLine = 0;  ///< in body_
        int endLine = 0;
    };
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    void addRows(const Menu& menu, int depth);
    void addText(std::wstring_view text, int width, int indent, TerminalLine::Look look);
    void layOutBody(int width);
    [[nodiscard]] std::string titleOf(const MenuItem& item) const;
    [[nodiscard]] std::wstring textOf(const Row& row) const;
    [[nodiscard]] std::size_t selectedRow() const;
    [[nodiscard]] bool isVisible(std::size_t row) const;
    void select(std::size_t row);
    void show(std::size_t row);
    void scrollTo(int top);
    void move(int step);
    void close();

    std::wstring hint_;
    std::string message_;
    Outlets outlets_;
    const StatusItem* item_ = nullptr;

    std::vector<Row> rows_;
    std::vector<TerminalLine> body_;
    const MenuItem* selected_ = nullptr;
    std::size_t lastSelected_ = 0;  ///< where it stood, should the row go
    std::set<const MenuItem*> open_;
    int width_ = 0;
    int height_ = 0;
    int top_ = 0;   ///< the first body line in view
    int page_ = 0;  ///< how many body lines are in view
};

}  // namespace dinmala
