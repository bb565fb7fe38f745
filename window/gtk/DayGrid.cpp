#include "window/gtk/DayGrid.h"

#include <algorithm>
#include <string>
#include <utility>

#include "window/Contrast.h"

namespace dinmala {

namespace {

constexpr int kPadding = 4;
constexpr int kMark = 7;  // pixels, of the marks of holidays and of further events

Colour colourOf(const GdkRGBA& colour) { return {colour.red, colour.green, colour.blue}; }
GdkRGBA rgba(const Colour& colour) { return {colour.red, colour.green, colour.blue, 1}; }

/// A colour by one of the names that themes give it, else another.
GdkRGBA themed(GtkStyleContext* style, const char* name, const GdkRGBA& otherwise) {
    GdkRGBA colour = otherwise;
    gtk_style_context_lookup_color(style, name, &colour);
    return colour;
}

void fill(cairo_t* cairo, const GdkRGBA& colour, double x, double y, double width, double height) {
    gdk_cairo_set_source_rgba(cairo, &colour);
    cairo_rectangle(cairo, x, y, width, height);
    cairo_fill(cairo);
}

/// What stands after the number of a day that is not sure.
std::string_view doubt(Grade grade) {
    if (grade == Grade::near) return "~";
    return grade == Grade::open ? "?" : "";
}

}  // namespace

DayGrid::DayGrid(const Page& page, std::function<void(std::size_t)> chosen, std::function<void()> opened)
    : page_(page),
      chosen_(std::move(chosen)),
      opened_(std::move(opened)),
      frame_(gtk_event_box_new()),
      presses_(gtk_gesture_multi_press_new(frame_)) {
    GtkWidget* const table = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    atk_object_set_role(gtk_widget_get_accessible(table), ATK_ROLE_TABLE);
    const auto newRow = [table](bool grows) {
        GtkWidget* const row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
        gtk_box_set_homogeneous(GTK_BOX(row), TRUE);
        atk_object_set_role(gtk_widget_get_accessible(row), ATK_ROLE_TABLE_ROW);
        gtk_box_pack_start(GTK_BOX(table), row, grows ? TRUE : FALSE, TRUE, 0);
        return row;
    };
    GtkWidget* row = newRow(false);
    for (GtkWidget*& heading : headings_) {
        heading = gtk_label_new(nullptr);
        atk_object_set_role(gtk_widget_get_accessible(heading), ATK_ROLE_TABLE_COLUMN_HEADER);
        gtk_box_pack_start(GTK_BOX(row), heading, TRUE, TRUE, 2);
    }
    for (std::size_t place = 0; place < days_.size(); ++place) {
        if (place % 7 == 0) row = newRow(true);
        Day& day = days_[place];
        day = {this, place, gtk_drawing_area_new()};
        gtk_widget_set_has_window(day.widget, FALSE);
        gtk_widget_set_can_focus(day.widget, TRUE);
        atk_object_set_role(gtk_widget_get_accessible(day.widget), ATK_ROLE_TABLE_CELL);
        g_signal_connect(day.widget, "draw", G_CALLBACK(+[](GtkWidget* widget, cairo_t* cairo, Day* drawn) -> gboolean {
                             drawn->grid->draw(drawn->place, widget, cairo);
                             return FALSE;
                         }),
                         &day);
        gtk_box_pack_start(GTK_BOX(row), day.widget, TRUE, TRUE, 0);
    }
    gtk_container_add(GTK_CONTAINER(frame_), table);
    gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(presses_), GDK_BUTTON_PRIMARY);
    g_signal_connect_swapped(
        presses_, "pressed",
        G_CALLBACK(+[](DayGrid* self, int times, double x, double y) { self->click(times, x, y); }), this);
    g_signal_connect_swapped(frame_, "focus", G_CALLBACK(+[](DayGrid* self, GtkDirectionType) -> gboolean {
                                 // Not from one of the 42 to the next, which arrows do.
                                 g_signal_stop_emission_by_name(self->frame_, "focus");
                                 if (self->hasFocus()) return FALSE;
                                 gtk_widget_grab_focus(self->days_[self->page_.chosenCell()].widget);
                                 return TRUE;
                             }),
                             this);
    g_signal_connect_swapped(frame_, "style-updated", G_CALLBACK(+[](DayGrid* self) {
                                 self->readColours();
                                 self->measure();
                             }),
                             this);
    readColours();
    measure();
}

DayGrid::~DayGrid() { g_object_unref(presses_); }

bool DayGrid::hasFocus() const {
    return std::any_of(days_.begin(), days_.end(),
                       [](const Day& day) { return gtk_widget_is_focus(day.widget) != FALSE; });
}

void DayGrid::measure() {
    texts_.follow(frame_);
    using Style = TextCache::Style;
    // Wide enough for a tithi's name and for some letters of an event's; signs for missing letters are far wider.
    const char* const widest = lacksDevanagari() ? "Shashthi/ Saptami" : "त्रयोदशी/ चतुर्दशी";
    int width = 0;
    pango_layout_get_pixel_size(texts_.layout(Style::small, widest, -1), &width, nullptr);
    const int height = texts_.height(Style::number) + 2 * texts_.height(Style::small) + 2 * kPadding;
    for (const Day& day : days_) gtk_widget_set_size_request(day.widget, width + 2 * kPadding, height);
}

void DayGrid::readColours() {
    GtkStyleContext* const style = gtk_widget_get_style_context(frame_);
    GdkRGBA text;
    gtk_style_context_get_color(style, GTK_STATE_FLAG_NORMAL, &text);
    const GdkRGBA against = luminance(colourOf(text)) > 0.4 ? GdkRGBA{0, 0, 0, 1} : GdkRGBA{1, 1, 1, 1};
    paper_ = themed(style, "theme_base_color", themed(style, "theme_bg_color", against));
    const Colour paper = colourOf(paper_);
    const Colour ink = readable(colourOf(themed(style, "theme_text_color", text)), paper);
    const Colour accent = colourOf(themed(style, "theme_selected_bg_color", rgba(ink)));
    ink_ = rgba(ink);
    quiet_ = rgba(readable(between(ink, paper, 0.45), paper));
    red_ = rgba(readable({0.75, 0.11, 0.16}, paper));
    accent_ = rgba(readable(accent, paper, 3));
    line_ = rgba(between(paper, ink, 0.18));
    const Colour chosenInk = colourOf(themed(style, "theme_selected_fg_color", rgba(paper)));
    chosenInk_ = rgba(chosenInk);
    chosenPaper_ = rgba(readable(accent, chosenInk));
}

void DayGrid::update(bool focus) {
    const auto shortNames = page_.weekDays(), names = page_.weekDaysWhole();
    for (std::size_t day = 0; day < headings_.size(); ++day) {
        const std::string text{shortNames[day]}, name{names[day]};
        if (text == gtk_label_get_text(GTK_LABEL(headings_[day]))) continue;
        gtk_label_set_text(GTK_LABEL(headings_[day]), text.c_str());
        atk_object_set_name(gtk_widget_get_accessible(headings_[day]), name.c_str());
    }
    for (const Day& day : days_) {
        const std::string& spoken = page_.cells()[day.place].spoken;
        AtkObject* const told = gtk_widget_get_accessible(day.widget);
        const char* const before = atk_object_get_name(told);
        if (before == nullptr || spoken != before) atk_object_set_name(told, spoken.c_str());
    }
    gtk_widget_queue_draw(frame_);
    GtkWidget* const chosen = days_[page_.chosenCell()].widget;
    if (gtk_widget_is_focus(chosen) == FALSE) {
        if (focus || hasFocus()) gtk_widget_grab_focus(chosen);
    } else if (focus) {
        // Another month's day in the same place: to one who hears it, the keyboard has moved all the same.
        atk_object_notify_state_change(gtk_widget_get_accessible(chosen), ATK_STATE_FOCUSED, TRUE);
    }
}

void DayGrid::click(int times, double x, double y) {
    if (times > 2) return;
    for (const Day& day : days_) {
        GtkAllocation box;
        gtk_widget_get_allocation(day.widget, &box);
        if (x < box.x || y < box.y || x >= box.x + box.width || y >= box.y + box.height) continue;
        return times == 1 ? chosen_(day.place) : opened_();
    }
}

void DayGrid::drawText(cairo_t* cairo, TextCache::Style style, std::string_view text, double x, double y, double width,
                       bool right) {
    if (text.empty() || width <= 0) return;
    PangoLayout* const layout = texts_.layout(style, text, static_cast<int>(width));
    if (right) {
        int wide = 0;
        pango_layout_get_pixel_size(layout, &wide, nullptr);
        x += width - wide;
    }
    cairo_move_to(cairo, x, y);
    pango_cairo_show_layout(cairo, layout);
}

void DayGrid::draw(std::size_t place, GtkWidget* widget, cairo_t* cairo) {
    using Style = TextCache::Style;
    const Cell& cell = page_.cells()[place];
    const double width = gtk_widget_get_allocated_width(widget), height = gtk_widget_get_allocated_height(widget);
    const bool off = cell.saturday || cell.holiday == Holiday::national;
    const GdkRGBA& ink = cell.chosen ? chosenInk_ : cell.otherMonth ? quiet_ : ink_;
    const GdkRGBA& number = !cell.chosen && off && !cell.otherMonth ? red_ : ink;

    fill(cairo, cell.chosen ? chosenPaper_ : paper_, 0, 0, width, height);
    fill(cairo, line_, 0, height - 1, width, 1);
    if (place % 7 != 6) fill(cairo, line_, width - 1, 0, 1, height);
    if (cell.today) {
        gdk_cairo_set_source_rgba(cairo, cell.chosen ? &chosenInk_ : &accent_);
        cairo_set_line_width(cairo, 2);
        cairo_rectangle(cairo, 2, 2, width - 5, height - 5);
        cairo_stroke(cairo);
    }
    if (cell.chosen && gtk_widget_has_visible_focus(widget) != FALSE) {
        gtk_render_focus(gtk_widget_get_style_context(widget), cairo, 1, 1, width - 3, height - 3);
    }

    const double left = kPadding + 2, inside = width - 2 * left;
    double y = kPadding;
    gdk_cairo_set_source_rgba(cairo, &number);
    const bool bold = cell.today || (cell.holiday == Holiday::national && !cell.otherMonth);
    drawText(cairo, bold ? Style::numberBold : Style::number, cell.bsDay + std::string{doubt(cell.grade)}, left, y,
             inside * 2 / 3);
    gdk_cairo_set_source_rgba(cairo, &ink);
    const double small = texts_.height(Style::small);
    drawText(cairo, Style::small, cell.adDay, left, y + 1, inside, true);

    // A full square is everybody's day off, one filled below the diagonal a group's, a ring stands for further events.
    double mark = width - left - kMark;
    const double markY = y + small + 3;
    if (cell.holiday == Holiday::national || cell.holiday == Holiday::group) {
        gdk_cairo_set_source_rgba(cairo, &number);
        cairo_set_line_width(cairo, 1);
        cairo_rectangle(cairo, mark + 0.5, markY + 0.5, kMark - 1, kMark - 1);
        cairo_stroke(cairo);
        cairo_move_to(cairo, mark, markY);
        if (cell.holiday == Holiday::national) cairo_line_to(cairo, mark + kMark, markY);
        cairo_line_to(cairo, mark + kMark, markY + kMark);
        cairo_line_to(cairo, mark, markY + kMark);
        cairo_fill(cairo);
        mark -= kMark + 3;
    }
    gdk_cairo_set_source_rgba(cairo, &ink);
    if (cell.moreEvents) {
        cairo_set_line_width(cairo, 1);
        cairo_new_sub_path(cairo);
        cairo_arc(cairo, mark + kMark / 2.0, markY + kMark / 2.0, kMark / 2.0 - 0.5, 0, 2 * G_PI);
        cairo_stroke(cairo);
    }
    y += texts_.height(Style::number);
    drawText(cairo, Style::small, cell.tithi, left, y, inside);
    gdk_cairo_set_source_rgba(cairo, &number);
    drawText(cairo, bold ? Style::smallBold : Style::small, cell.event, left, y + small, inside);
}

}  // namespace dinmala
