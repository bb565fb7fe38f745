/// What stands below the month: the chosen day, what is upcoming, the converter.
#pragma once

#include <gtk/gtk.h>

#include <chrono>
#include <functional>
#include <string>

#include "window/Page.h"
#include "window/UpcomingRows.h"

namespace dinmala {

class Pane {
public:
    enum class Part { day, upcoming, converter };

    /// @param goTo hears a day that was chosen here
    Pane(const Page& page, std::function<void(std::chrono::sys_days)> goTo);
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    [[nodiscard]] GtkWidget* widget() const { return box_; }

    /// Shows a part, and gives it the keyboard.
    void show(Part part, bool focus = true);
    void convert(const std::string& text);
    /// The page has changed.
    void update();

private:
    void buildUpcoming();
    void buildConverter();
    void fillUpcoming();
    void answer();

    const Page& page_;
    std::function<void(std::chrono::sys_days)> goTo_;
    GtkWidget* box_;
    GtkWidget* stack_;
    GtkWidget* tabs_[3] = {};
    GtkWidget* parts_[3] = {};
    Part shown_ = Part::day;
    bool isSwitching_ = true;  ///< the tabs are set here and not by a click

    GtkWidget* details_;
    UpcomingRows filled_;  ///< what the list has
    GtkListStore* rows_ = nullptr;
    GtkWidget* list_ = nullptr;
    GtkWidget* whyNone_ = nullptr;
    UpcomingFilter filter_ = UpcomingFilter::important;
    GtkWidget* entry_ = nullptr;
    GtkWidget* answers_ = nullptr;
};

}  // namespace dinmala
