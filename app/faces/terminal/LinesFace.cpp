#include "app/faces/terminal/LinesFace.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <utility>

namespace dinmala {

namespace {

constexpr const char* kFlag = "🇳🇵";

std::string titleOf(const StatusItem& item) { return item.title() ? *item.title() : item.image() ? kFlag : ""; }

}  // namespace

LinesFace::LinesFace(std::function<void()> quit, int output, LineForm form, std::function<DaySummary()> today)
    : quit_(std::move(quit)),
      output_(output),
      form_(form),
      today_(std::move(today)),
      brokenPipe_(std::signal(SIGPIPE, SIG_IGN)),
      rest_(lineHeader(form)) {
    // A closed descriptor makes the poll below report POLLNVAL at once.
    pollfd state{output_, 0, 0};
    if (output_ < 0 || (poll(&state, 1, 0) == 1 && (state.revents & POLLNVAL) != 0)) {
        output_ = -1;
        end();
    } else {
        gone_ = LoopSource::descriptor(output_, static_cast<GIOCondition>(G_IO_ERR | G_IO_HUP),
                                       [this](GIOCondition) { end(); });
    }
    const int numbers[] = {SIGHUP, SIGINT, SIGTERM};
    for (int i = 0; i < 3; ++i) signals_[i] = LoopSource::signal(numbers[i], [this] { end(); });
}

LinesFace::~LinesFace() { std::signal(SIGPIPE, brokenPipe_); }

std::unique_ptr<StatusItem> LinesFace::statusItemWithLength(double length) {
    auto item = std::make_unique<StatusItem>(length);
    item_ = item.get();
    // The shell clears the title before it sets it, and a refresh may leave it as
    // it was: what counts is that the item was written to, not what changed.
    item->setObserver([this] {
        if (!changed_.isPending()) changed_ = LoopSource::idle([this] { print(); });
    });
    return item;
}

void LinesFace::whenShown(std::function<void()> callback) {
    if (printed_)
        shownLate_ = LoopSource::idle(std::move(callback));
    else
        shown_ = std::move(callback);
}

void LinesFace::print() {
    changed_.reset();
    next_ = lineText(form_, titleOf(*item_), form_ != LineForm::plain && today_ ? today_() : DaySummary{});
    writeSome();
    if (!std::exchange(printed_, true) && shown_) std::exchange(shown_, nullptr)();
}

void LinesFace::writeSome() {
    while (output_ >= 0) {
        if (rest_.empty()) rest_ = std::exchange(next_, {});
        if (rest_.empty()) return writable_.reset();

        // As much as a pipe that says "writable" takes without blocking. The
        // descriptor is shared with others, so its flags are left alone.
        pollfd state{output_, POLLOUT, 0};
        if (poll(&state, 1, 0) == 0) break;
        const ssize_t written = write(output_, rest_.data(), std::min<std::size_t>(rest_.size(), PIPE_BUF));
        if (written >= 0) {
            rest_.erase(0, static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            break;
        } else if (errno != EINTR) {
            return end();
        }
    }
    if (output_ >= 0 && !writable_.isPending())
        writable_ = LoopSource::descriptor(output_, G_IO_OUT, [this](GIOCondition) { writeSome(); });
}

// Told from a source of its own: before the loop runs nobody could act on it.
void LinesFace::end() {
    output_ = -1;
    writable_.reset();
    gone_.reset();
    if (!ending_.isPending()) ending_ = LoopSource::idle([this] { quit_(); });
}

}  // namespace dinmala
