// Whatever keys are pressed in the terminal, in whatever size, as days pass and editions change: the screen fits, the
// calendar stands at a day of its table, and that day can be seen where there is room for days.
#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "app/faces/terminal/TerminalPage.h"
#include "app/faces/terminal/TerminalText.h"
#include "app/faces/terminal/TerminalView.h"
#include "fuzz/Require.h"
#include "tests/app/faces/terminal/FakeMenu.h"

namespace {

using namespace dinmala;

constexpr int kKeys = static_cast<int>(TerminalKey::names) + 1;
constexpr int kLeastForDays = 30;  // columns

void requireFits(const std::vector<TerminalLine>& lines, int width, int height) {
    require(lines.size() <= static_cast<std::size_t>(height), "the lines fit the height");
    for (const TerminalLine& line : lines) {
        require(columnsOf(line.text) <= std::max(1, width - 1), "each line fits the width");
        std::size_t at = 0;
        for (const TerminalLine::Span& span : line.spans) {
            require(at <= span.begin && span.begin < span.end && span.end <= line.text.size(), "parts are of the text");
            at = span.end;
        }
    }
}

void requireWhole(const Page& page) {
    require(page.edition().calendar.covers(page.chosen()), "the chosen day is of the table");
    require(page.cells()[page.chosenCell()].day == page.chosen(), "the chosen day is on the page");
    require(page.cells()[page.chosenCell()].chosen, "and is marked");
}

class Terminal {
public:
    Terminal() {
        menu_.addToggle("Year");
        FakeMenu::addTo(submenu(), "२०७०");
        menu_.add("Quit");
        view_.setOutlets(menu_.outlets);
        item_.setTitle(" बैशाख ७");
    }

    void press(TerminalKey key) {
        if (!page_) {
            (void)view_.press(key);
            if (key == TerminalKey::calendar) page_.emplace(Page{*edition_, today_, {}});
        } else if (!page_->press(key)) {
            page_.reset();
        }
    }
    void resize(int width, int height) {
        width_ = width;
        height_ = height;
    }
    void pass(int days) {
        today_ += std::chrono::days{days};
        update();
    }
    void choose(EditionId id) {
        edition_ = &builtInEdition(id);
        update();
    }

    void check() {
        const auto lines = page_ ? page_->lines(width_, height_) : view_.lines(&item_, width_, height_);
        requireFits(lines, width_, height_);
        if (!page_) return;
        requireWhole(page_->page());
        const bool marked = std::any_of(lines.begin(), lines.end(), [](const TerminalLine& line) {
            return std::any_of(line.spans.begin(), line.spans.end(),
                               [](const auto& span) { return span.look == TerminalLine::Look::selected; });
        });
        require(!page_->showsMonth() || width_ < kLeastForDays || marked, "the chosen day is in view");
    }

private:
    Menu& submenu() {
        MenuItem& today = menu_.add("Today");
        today.setSubmenu(std::make_shared<Menu>());
        return *today.submenu();
    }
    void update() {
        if (page_) page_->update(*edition_, today_, page_->page().look());
    }

    FakeMenu menu_;
    StatusItem item_{-1.0};
    TerminalView view_;
    std::optional<TerminalPage> page_;
    const Edition* edition_ = &currentEdition();
    std::chrono::sys_days today_{std::chrono::days{20780}};
    int width_ = 80;
    int height_ = 24;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    Terminal terminal;
    constexpr std::size_t kMost = 60;  // keys: a layout takes a while
    for (std::size_t i = 0; i < std::min(size, kMost); ++i) {
        const int byte = data[i];
        if (byte < 0x80) {
            terminal.press(static_cast<TerminalKey>(byte % kKeys));
        } else if (byte < 0xC0) {
            terminal.resize(1 + (byte & 7) * (byte & 7) * 2, 1 + (byte >> 3 & 7) * 3);
        } else if (byte < 0xE0) {
            terminal.pass((byte & 15) * (byte & 15) * (byte & 15) * ((byte & 16) != 0 ? -7 : 5));
        } else {
            terminal.choose(byte % 2 == 0 ? EditionId::first : EditionId::current);
        }
        terminal.check();
    }
    return 0;
}
