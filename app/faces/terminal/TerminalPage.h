/// The calendar's page in a terminal: a month, a day's details, what is upcoming. As TerminalView it knows no terminal:
/// a size goes in, lines come out.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "app/faces/terminal/TerminalLine.h"
#include "window/Page.h"
#include "window/UpcomingRows.h"

namespace dinmala {

class TerminalPage {
public:
    /// Begins with today's month.
    explicit TerminalPage(Page page);

    /// The day, the edition and the look that count from now on.
    void update(const Edition& edition, std::chrono::sys_days today, PageLook look);

    /// A message for the person, shown until the next key.
    void setMessage(std::string message) { message_ = std::move(message); }

    /// Lays everything out anew: at most `height` lines, each narrower than `width` columns.
    [[nodiscard]] std::vector<TerminalLine> lines(int width, int height);

    /// What a key does to what was laid out last.
    /// @return false when the page is to be closed
    [[nodiscard]] bool press(TerminalKey key);

    [[nodiscard]] const Page& page() const { return page_; }
    /// Whether it is the month that is shown, not a day's details or the list of what is upcoming.
    [[nodiscard]] bool showsMonth() const { return view_ == View::month; }

private:
    enum class View { month, day, upcoming };

    void layOutMonth(int width);
    void layOutDay(int width);
    void layOutUpcoming(int width);
    void addWeeks(int width);
    [[nodiscard]] std::vector<TerminalLine> footFor(int width, int height) const;
    void addText(const std::string& text, int width, int indent, TerminalLine::Look look);
    void pressMonth(TerminalKey key);
    void pressDay(TerminalKey key);
    void pressUpcoming(TerminalKey key);
    void show(View view);
    void filter(int step);

    Page page_;
    View view_ = View::month;
    UpcomingFilter filter_ = UpcomingFilter::important;
    UpcomingRows upcoming_;
    std::string message_;
    std::size_t row_ = 0;  ///< the selected one of the upcoming

    // The last layout.
    std::string title_;
    std::string hint_;
    std::string shortHint_;
    std::vector<TerminalLine> body_;
    int focusBegin_ = 0;  ///< the lines of the body that must be in view
    int focusEnd_ = 0;
    int top_ = 0;   ///< the first line of the body in view
    int room_ = 1;  ///< how many are in view
};

}  // namespace dinmala
