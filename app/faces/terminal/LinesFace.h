/// The face for pipes: the status title as one line of text at every refresh.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <unistd.h>

#include "app/Face.h"
#include "app/faces/terminal/LineForm.h"
#include "app/faces/terminal/LoopSource.h"

namespace dinmala {

/// Writes to a descriptor, for a panel's module or a script to read.
///
/// Every refresh gives one line, also when the title is the same as before. The
/// title is written byte for byte, its leading blank included; the flag is "🇳🇵".
/// In the other forms the line is an object that has the title and the day.
/// It never blocks: while the reader is slow only the newest line is kept.
class LinesFace : public Face {
public:
    /// @param quit   called from the loop when the reader has gone, the
    ///               descriptor cannot be written, or a signal asks to end
    /// @param output stays open; -1 when there is nothing to write to
    /// @param today  tells the day that the title shows; asked at each line of the other forms than plain
    explicit LinesFace(std::function<void()> quit, int output = STDOUT_FILENO, LineForm form = LineForm::plain,
                       std::function<DaySummary()> today = nullptr);
    ~LinesFace() override;

    LinesFace(const LinesFace&) = delete;
    LinesFace& operator=(const LinesFace&) = delete;

    void setOutlets(const Outlets&) override {}
    [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double length) override;
    void whenShown(std::function<void()> callback) override;

private:
    void print();
    void writeSome();
    void end();

    std::function<void()> quit_;
    std::function<void()> shown_;
    int output_;
    LineForm form_;
    std::function<DaySummary()> today_;
    bool printed_ = false;
    void (*brokenPipe_)(int);  ///< what SIGPIPE did before

    StatusItem* item_ = nullptr;
    std::string rest_;  ///< of the line being written
    std::string next_;  ///< the newest line, when it has to wait

    LoopSource changed_;
    LoopSource writable_;
    LoopSource gone_;
    LoopSource ending_;
    LoopSource shownLate_;
    LoopSource signals_[3];
};

}  // namespace dinmala
