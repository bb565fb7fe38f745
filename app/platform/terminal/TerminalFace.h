/// The face for a terminal: title, date, description and the menu's rows, drawn
/// with ncurses and operated by keys.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/Face.h"
#include "app/platform/terminal/LoopSource.h"
#include "app/platform/terminal/TerminalView.h"

namespace dinmala {

/// Takes the terminal over at its first drawing and gives it back, as it was,
/// when it is destroyed. Arrows or j and k move, space or enter choose, the
/// digits flip the toggles, q quits.
class TerminalFace : public Face {
public:
    /// @param quit     called from the loop at q, at a signal that asks to end,
    ///                 and when the terminal has gone
    /// @param language "ne" or "en", for the line that tells the keys
    /// @throws std::runtime_error when standard input and output are no terminal,
    ///         or it is of a kind that cannot be drawn on
    explicit TerminalFace(std::function<void()> quit, std::string_view language = "en");
    ~TerminalFace() override;

    TerminalFace(const TerminalFace&) = delete;
    TerminalFace& operator=(const TerminalFace&) = delete;

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
    void resize();

    std::function<void()> quit_;
    std::function<void()> shown_;
    TerminalView view_;
    Outlets outlets_;
    StatusItem* item_ = nullptr;
    bool drawn_ = false;

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
