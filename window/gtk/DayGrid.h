/// The month's 42 cells, drawn and told to screen readers.
#pragma once

#include <gtk/gtk.h>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>

#include "window/Page.h"
#include "window/gtk/TextCache.h"

namespace dinmala {

/// A widget a day, in boxes of weeks: so screen readers hear them in order. They live as long as the window; another
/// month only makes them say something else. The tab key comes to the chosen day and leaves from any.
class DayGrid {
public:
    /// @param chosen hears which cell was clicked
    /// @param opened hears the second click, by which time another day may stand there
    DayGrid(const Page& page, std::function<void(std::size_t cell)> chosen, std::function<void()> opened);
    ~DayGrid();
    DayGrid(const DayGrid&) = delete;
    DayGrid& operator=(const DayGrid&) = delete;

    [[nodiscard]] GtkWidget* widget() const { return frame_; }
    /// Whether the keyboard is at a day.
    [[nodiscard]] bool hasFocus() const;

    /// Whether there is no font for the names.
    [[nodiscard]] bool lacksDevanagari() { return texts_.lacksDevanagari(); }

    /// The page has changed. The keyboard goes along where it is at a day.
    /// @param focus whether it comes to the chosen day from elsewhere too, and a screen reader hears of that day anyway
    void update(bool focus);

private:
    struct Day {
        DayGrid* grid = nullptr;
        std::size_t place = 0;
        GtkWidget* widget = nullptr;
    };

    void measure();
    void readColours();
    void draw(std::size_t place, GtkWidget* widget, cairo_t* cairo);
    void drawText(cairo_t* cairo, TextCache::Style style, std::string_view text, double x, double y, double width,
                  bool right = false);
    void click(int times, double x, double y);

    const Page& page_;
    std::function<void(std::size_t)> chosen_;
    std::function<void()> opened_;
    GtkWidget* frame_;
    GtkGesture* presses_;
    std::array<GtkWidget*, 7> headings_{};
    std::array<Day, Page::kCells> days_{};
    TextCache texts_;

    GdkRGBA paper_{}, ink_{}, quiet_{}, red_{}, accent_{}, chosenPaper_{}, chosenInk_{}, line_{};
};

}  // namespace dinmala
