#include "app/faces/terminal/TerminalFace.h"

#include <fcntl.h>
#include <langinfo.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "i18n/Translation.h"

// After all others: it defines macros with plain names.
#define NCURSES_NOMACROS 1
#include <curses.h>
#include <term.h>
#undef lines

namespace dinmala {

namespace {

/// Told by the handler of SIGCONT; the loop watches it.
int continuedEvent = -1;

void onContinue(int) {
    const int error = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(continuedEvent, &one, sizeof one);
    errno = error;
}

attr_t attributesFor(TerminalLine::Look look) {
    switch (look) {
        case TerminalLine::Look::title:
            return A_BOLD;
        case TerminalLine::Look::quiet:
            return A_DIM;
        case TerminalLine::Look::selected:
            return A_REVERSE;
        case TerminalLine::Look::plain:
            break;
    }
    return A_NORMAL;
}

/// What a key of the keyboard is meant for; nothing for one without a meaning of its own.
std::optional<TerminalKey> keyFor(int key) {
    switch (key) {
        case KEY_UP:
        case 'k':
            return TerminalKey::up;
        case KEY_DOWN:
        case 'j':
            return TerminalKey::down;
        case KEY_LEFT:
        case 'h':
            return TerminalKey::left;
        case KEY_RIGHT:
        case 'l':
            return TerminalKey::right;
        case KEY_PPAGE:
            return TerminalKey::pageUp;
        case KEY_NPAGE:
            return TerminalKey::pageDown;
        case KEY_SPREVIOUS:
        case '<':
            return TerminalKey::yearBack;
        case KEY_SNEXT:
        case '>':
            return TerminalKey::yearForward;
        case KEY_HOME:
        case 'g':
            return TerminalKey::home;
        case KEY_END:
        case 'G':
            return TerminalKey::end;
        case ' ':
        case '\r':
        case '\n':
        case KEY_ENTER:
            return TerminalKey::choose;
        case '\x1B':
            return TerminalKey::back;
        case 'c':
            return TerminalKey::calendar;
        case 'u':
            return TerminalKey::upcoming;
        case 'd':
            return TerminalKey::digits;
        case 'n':
            return TerminalKey::names;
        default:
            return std::nullopt;
    }
}

void requireTerminal() {
    if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0)
        throw std::runtime_error(tr("the terminal face needs a terminal for its input and output"));
    int found = 0;
    const char* type = std::getenv("TERM");
    if (setupterm(nullptr, STDOUT_FILENO, &found) != OK || !tigetstr("cup"))
        throw std::runtime_error(
            tr("cannot draw on a terminal of type \"{1}\" (see the variable TERM)", {type ? type : ""}));
    del_curterm(cur_term);
}

}  // namespace

/// The screen while ncurses has it.
class TerminalFace::Curses {
public:
    Curses() : screen_(newterm(nullptr, stdout, stdin)) {
        if (!screen_) throw std::runtime_error(tr("cannot set up the terminal"));
        set_escdelay(25);
        cbreak();
        noecho();
        keepFlowing();
        keypad(stdscr, TRUE);
        nodelay(stdscr, TRUE);
        curs_set(0);
    }
    ~Curses() {
        endwin();
        delscreen(screen_);
    }
    Curses(const Curses&) = delete;
    Curses& operator=(const Curses&) = delete;

private:
    /// Without this Ctrl-S holds the program up inside a write, deaf to signals.
    static void keepFlowing() {
        termios mode{};
        if (tcgetattr(STDIN_FILENO, &mode) != 0) return;
        mode.c_iflag &= ~static_cast<tcflag_t>(IXON);
        tcsetattr(STDIN_FILENO, TCSANOW, &mode);
        def_prog_mode();
    }

    SCREEN* screen_;
};

/// Collects what is written to standard error while the screen is taken, where
/// it would be lost among the lines, and passes it on afterwards.
class TerminalFace::ErrorOutput {
public:
    explicit ErrorOutput(std::function<void(std::string)> lastLine) : lastLine_(std::move(lastLine)) {
        int ends[2];
        if (isatty(STDERR_FILENO) == 0 || pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
        read_ = ends[0];
        original_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        dup2(ends[1], STDERR_FILENO);
        close(ends[1]);
        source_ = LoopSource::descriptor(read_, G_IO_IN, [this](GIOCondition) { collect(); });
    }
    ~ErrorOutput() {
        if (read_ < 0) return;
        collect();
        dup2(original_, STDERR_FILENO);
        close(original_);
        close(read_);
        [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text_.data(), text_.size());
    }
    ErrorOutput(const ErrorOutput&) = delete;
    ErrorOutput& operator=(const ErrorOutput&) = delete;

private:
    void collect() {
        std::array<char, 1024> buffer;
        ssize_t count = 0;
        while ((count = read(read_, buffer.data(), buffer.size())) > 0)
            text_.append(buffer.data(), static_cast<std::size_t>(count));
        constexpr std::size_t kKept = 16384;
        if (text_.size() > kKept) text_.erase(0, text_.size() - kKept);

        const std::size_t end = text_.find_last_not_of('\n');
        if (end == std::string::npos) return;
        const std::size_t before = text_.rfind('\n', end);
        const std::size_t start = before == std::string::npos ? 0 : before + 1;
        lastLine_(text_.substr(start, end + 1 - start));
    }

    std::function<void(std::string)> lastLine_;
    std::string text_;
    int read_ = -1;
    int original_ = -1;
    LoopSource source_;
};

TerminalFace::TerminalFace(std::function<void()> quit, Calendar calendar)
    : quit_(std::move(quit)), calendar_(std::move(calendar)) {
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
    requireTerminal();
    // Before ncurses, which leaves alone what is handled already.
    const int numbers[] = {SIGHUP, SIGINT, SIGTERM};
    for (int i = 0; i < 3; ++i) signals_[i] = LoopSource::signal(numbers[i], [this] { quit_(); });
    resized_ = LoopSource::signal(SIGWINCH, [this] { resize(); });
}

TerminalFace::~TerminalFace() {
    if (outlets_.statusMenu) observe(*outlets_.statusMenu, nullptr);
    if (continuedEvent >= 0) {
        std::signal(SIGCONT, SIG_DFL);
        continued_.reset();
        close(std::exchange(continuedEvent, -1));
    }
}

void TerminalFace::setOutlets(const Outlets& outlets) {
    outlets_ = outlets;
    view_.setOutlets(outlets);
    if (outlets_.statusMenu) observe(*outlets_.statusMenu, [this] { drawSoon(); });
}

void TerminalFace::observe(const Menu& menu, const std::function<void()>& observer) {
    for (const auto& item : menu.items()) {
        item->setObserver(observer);
        if (item->submenu()) observe(*item->submenu(), observer);
    }
}

std::unique_ptr<StatusItem> TerminalFace::statusItemWithLength(double length) {
    auto item = std::make_unique<StatusItem>(length);
    item_ = item.get();
    item->setObserver([this] {
        isStale_ = true;
        drawSoon();
    });
    drawSoon();
    return item;
}

void TerminalFace::whenShown(std::function<void()> callback) {
    if (drawn_)
        shownLate_ = LoopSource::idle(std::move(callback));
    else
        shown_ = std::move(callback);
}

void TerminalFace::drawSoon() {
    if (!changed_.isPending()) changed_ = LoopSource::idle([this] { draw(); });
}

void TerminalFace::open() {
    errors_ = std::make_unique<ErrorOutput>([this](std::string line) {
        if (page_) page_->setMessage(line);
        view_.setMessage(std::move(line));
        drawSoon();
    });
    curses_ = std::make_unique<Curses>();
    keys_ = LoopSource::descriptor(STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
                                   [this](GIOCondition condition) { readKeys(condition); });

    // ncurses stops and goes on with the shell's job control. One who was stopped
    // otherwise finds the terminal changed by others.
    continuedEvent = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (continuedEvent >= 0) {
        struct sigaction action {};
        action.sa_handler = onContinue;
        action.sa_flags = SA_RESTART;
        sigaction(SIGCONT, &action, nullptr);
        continued_ = LoopSource::descriptor(continuedEvent, G_IO_IN, [this](GIOCondition) {
            std::uint64_t count = 0;
            [[maybe_unused]] const ssize_t got = read(continuedEvent, &count, sizeof count);
            reset_prog_mode();
            resize();
        });
    }
}

void TerminalFace::draw() {
    changed_.reset();
    if (!curses_) {
        try {
            open();
        } catch (const std::exception& error) {
            errors_.reset();
            std::fprintf(stderr, "dinmala: %s\n", error.what());
            quit_();
            return;
        }
    }
    werase(stdscr);
    int row = 0;
    if (page_ && std::exchange(isStale_, false)) refreshPage();
    for (const TerminalLine& line : lines()) {
        wmove(stdscr, row++, 0);
        std::size_t at = 0;
        const auto put = [&](std::size_t end, TerminalLine::Look look) {
            wattrset(stdscr, static_cast<int>(attributesFor(look)));
            waddnwstr(stdscr, line.text.data() + at, static_cast<int>(end - at));
            at = end;
        };
        for (const TerminalLine::Span& span : line.spans) {
            put(span.begin, line.look);
            put(span.end, span.look);
        }
        put(line.text.size(), line.look);
    }
    wattrset(stdscr, A_NORMAL);
    // Whole lines, from their left end: not every terminal agrees with wcwidth()
    // about Devanagari, and a line repaired in its middle would show it.
    redrawwin(stdscr);
    wrefresh(stdscr);

    if (!std::exchange(drawn_, true) && shown_) std::exchange(shown_, nullptr)();
}

void TerminalFace::resize() {
    winsize size{};
    if (!curses_ || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return;
    if (size.ws_row > 0 && size.ws_col > 0) resizeterm(size.ws_row, size.ws_col);
    clearok(curscr, TRUE);
    drawSoon();
}

void TerminalFace::readKeys(GIOCondition condition) {
    // Readable with nothing to read is the end of the input, as is a hangup.
    int waiting = 0;
    const bool ended =
        (condition & (G_IO_HUP | G_IO_ERR)) != 0 || ioctl(STDIN_FILENO, FIONREAD, &waiting) != 0 || waiting == 0;
    if (ended) {
        keys_.reset();
        quit_();
        return;
    }
    for (int key = wgetch(stdscr); key != ERR; key = wgetch(stdscr)) press(key);
    drawSoon();
}

void TerminalFace::press(int key) {
    if (key == 'q' || key == 'Q') return quit_();
    if (key == ('L' & 0x1F)) clearok(curscr, TRUE);  // Ctrl-L
    const auto meant = keyFor(key);
    if (page_) {
        if (meant) pressOnPage(*meant);
        return;
    }
    if (meant == TerminalKey::calendar) return openPage();
    const MenuItem* chosen = meant ? view_.press(*meant) : nullptr;
    if (key >= '1' && key <= '9') chosen = view_.toggleNumber(key - '0');
    if (!chosen) return;
    view_.setMessage({});
    chosen->choose();
    // The next key counts for the rows as they are now.
    static_cast<void>(lines());
}

void TerminalFace::pressOnPage(TerminalKey key) {
    const PageLook look = page_->page().look();
    if (!page_->press(key)) return page_.reset();
    if (page_->page().look() != look) calendar_.keep(page_->page().look());
    static_cast<void>(lines());
}

void TerminalFace::openPage() {
    const Shown shown = calendar_.shown();
    page_.emplace(Page{shown.edition, shown.today, shown.look});
}

void TerminalFace::refreshPage() {
    const Shown shown = calendar_.shown();
    page_->update(shown.edition, shown.today, shown.look);
}

std::vector<TerminalLine> TerminalFace::lines() {
    const int width = getmaxx(stdscr);
    const int height = getmaxy(stdscr);
    return page_ ? page_->lines(width, height) : view_.lines(item_, width, height);
}

}  // namespace dinmala
