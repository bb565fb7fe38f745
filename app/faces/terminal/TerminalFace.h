/// The face for a terminal: title, date, description and the menu's rows, drawn
/// with ncurses and operated by keys.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/Face.h"
#include "app/faces/terminal/LoopSource.h"
#include "app/faces/terminal/TerminalPage.h"
#include "app/faces/terminal/TerminalView.h"

namespace dinmala {

/// Takes the terminal over at its first drawing and gives it back, as it was,
/// when it is destroyed. Arrows or j and k move, space or enter choose, the
/// digits flip the toggles, c opens the calendar, q quits.
class TerminalFace : public Face {
public:
    /// What its calendar shows: looked up when it is opened, and whenever the shell refreshes.
    struct Shown {
        const Edition& edition;
        std::chrono::sys_days today;
        PageLook look;
    };
    struct Calendar {
        std::function<Shown()> shown;
        std::function<void(PageLook)> keep;  ///< a person has chosen another look
    };

    /// @param quit     called from the loop at q, at a signal that asks to end,
    ///                 and when the terminal has gone
    /// @throws std::runtime_error when standard input and output are no terminal,
    ///         or it is of a kind that cannot be drawn on
    explicit TerminalFace(std::function<void()> quit, Calendar calendar);
    ~TerminalFace() override;

    TerminalFace(const TerminalFace&) = delete;
    TerminalFace& operator=(const TerminalFace&) = delete;

    /// Opens the calendar at today, as the key does.
    void openPage();

    void setOutlets(const Outlets& outlets) override;
    [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double length) override;
    void whenShown(std::function<void()> callback) override;

private:
    class Curses;
    class ErrorOutput;

    void observe(const Menu& menu, const std::function<void()>& observer);
    void drawSoon();
    void draw();
    void open();
    void readKeys(GIOCondition condition);
    void press(int key);
    void pressOnPage(TerminalKey key);
    void refreshPage();
    [[nodiscard]] std::vector<TerminalLine> lines();
    void resize();

    std::function<void()> quit_;
    Calendar calendar_;
    std::function<void()> shown_;
    TerminalView view_;
    std::optional<TerminalPage> page_;  ///< while it is open, in place of the view
    Outlets outlets_;
    StatusItem* item_ = nullptr;
    bool drawn_ = false;
    bool isStale_ = false;  ///< the shell has refreshed since the page was

    std::unique_ptr<ErrorOutput> errors_;
    std::unique_ptr<Curses> curses_;

    LoopSource changed_;
    LoopSource shownLate_;
    LoopSource keys_;
    LoopSource continued_;
    LoopSource resized_;
    LoopSource signals_[3];
};

}  // namespace dinmala
