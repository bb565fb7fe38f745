#include "window/gtk/Pane.h"

#include <array>
#include <memory>
#include <utility>

#include "i18n/Translation.h"
#include "window/Conversion.h"
#include "window/DayDetails.h"

namespace dinmala {

namespace {

constexpr int kHeight = 120;  // of the pane, whatever it shows: the window keeps its size

using Text = std::unique_ptr<char, decltype(&g_free)>;

GtkWidget* scrolled(GtkWidget* child) {
    GtkWidget* const window = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(window), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    gtk_container_add(GTK_CONTAINER(window), child);
    return window;
}

/// A label of lines that wrap, whose text can be selected.
GtkWidget* textLabel() {
    GtkWidget* const label = gtk_label_new(nullptr);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_yalign(GTK_LABEL(label), 0);
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_selectable(GTK_LABEL(label), TRUE);
    gtk_label_set_track_visited_links(GTK_LABEL(label), FALSE);
    return label;
}

enum Column { kDay, kDate, kLeft, kName, kColumns };

}  // namespace

Pane::Pane(const Page& page, std::function<void(std::chrono::sys_days)> goTo)
    : page_(page), goTo_(std::move(goTo)), box_(gtk_box_new(GTK_ORIENTATION_VERTICAL, 4)), stack_(gtk_stack_new()) {
    GtkWidget* const tabs = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_style_context_add_class(gtk_widget_get_style_context(tabs), "linked");
    const std::array<std::string, 3> names = {tr("The day"), tr("Upcoming"), tr("Converter")};
    // No radio buttons: to measure their marks a theme's icons are read, which takes 8 MB.
    for (std::size_t place = 0; place < names.size(); ++place) {
        GtkWidget* const tab = gtk_toggle_button_new_with_label(names[place].c_str());
        gtk_widget_set_focus_on_click(tab, FALSE);
        g_object_set_data(G_OBJECT(tab), "part", GINT_TO_POINTER(static_cast<int>(place)));
        g_signal_connect(tab, "toggled", G_CALLBACK(+[](GtkToggleButton* button, Pane* self) {
                             if (self->isSwitching_) return;
                             const auto part = GPOINTER_TO_INT(g_object_get_data(G_OBJECT(button), "part"));
                             self->show(static_cast<Part>(part));
                         }),
                         this);
        gtk_box_pack_start(GTK_BOX(tabs), tab, FALSE, FALSE, 0);
        tabs_[place] = tab;
    }
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(tabs_[0]), TRUE);
    isSwitching_ = false;
    gtk_box_pack_start(GTK_BOX(box_), tabs, FALSE, FALSE, 0);
    details_ = textLabel();
    atk_object_set_name(gtk_widget_get_accessible(details_), tr("Details of the day").c_str());
    parts_[0] = scrolled(details_);
    gtk_container_add(GTK_CONTAINER(stack_), parts_[0]);
    gtk_widget_set_size_request(stack_, -1, kHeight);
    gtk_stack_set_homogeneous(GTK_STACK(stack_), FALSE);
    gtk_box_pack_start(GTK_BOX(box_), stack_, TRUE, TRUE, 0);
}

void Pane::show(Part part, bool focus) {
    const auto place = static_cast<std::size_t>(part);
    const bool isNew = part != shown_;
    shown_ = part;
    if (parts_[place] == nullptr) {
        if (part == Part::upcoming) buildUpcoming();
        if (part == Part::converter) buildConverter();
        gtk_container_add(GTK_CONTAINER(stack_), parts_[place]);
        gtk_widget_show_all(parts_[place]);
    }
    isSwitching_ = true;
    for (GtkWidget* const tab : tabs_) {
        gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(tab), tab == tabs_[place] ? TRUE : FALSE);
    }
    isSwitching_ = false;
    gtk_stack_set_visible_child(GTK_STACK(stack_), parts_[place]);
    if (isNew) update();
    if (!focus) return;
    gtk_widget_grab_focus(part == Part::day ? details_ : part == Part::upcoming ? list_ : entry_);
    if (part == Part::day) gtk_label_select_region(GTK_LABEL(details_), 0, 0);
}

void Pane::update() {
    if (shown_ == Part::upcoming) return fillUpcoming();
    if (shown_ == Part::converter) return answer();
    std::string markup;
    for (const DetailLine& line : dayDetails(page_)) {
        const Text label{g_markup_escape_text(line.label.c_str(), -1), g_free};
        const Text text{g_markup_escape_text(line.text.c_str(), -1), g_free};
        if (!markup.empty()) markup += "\n";
        if (!line.label.empty()) markup.append("<b>").append(label.get()).append("</b>  ");
        markup += text.get();
    }
    gtk_label_set_markup(GTK_LABEL(details_), markup.c_str());
}

void Pane::buildUpcoming() {
    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 4);
    GtkWidget* const filters = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8);
    const std::array<std::string, 3> names = {tr("Public holidays"), tr("Important days"), tr("All")};
    GtkWidget* first = nullptr;
    for (std::size_t place = 0; place < names.size(); ++place) {
        GtkWidget* const one =
            gtk_radio_button_new_with_label_from_widget(GTK_RADIO_BUTTON(first), names[place].c_str());
        if (first == nullptr) first = one;
        if (place == static_cast<std::size_t>(filter_)) gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(one), TRUE);
        g_object_set_data(G_OBJECT(one), "filter", GINT_TO_POINTER(static_cast<int>(place)));
        g_signal_connect(one, "toggled", G_CALLBACK(+[](GtkToggleButton* button, Pane* self) {
                             if (gtk_toggle_button_get_active(button) == FALSE) return;
                             const auto filter = GPOINTER_TO_INT(g_object_get_data(G_OBJECT(button), "filter"));
                             self->filter_ = static_cast<UpcomingFilter>(filter);
                             self->fillUpcoming();
                         }),
                         this);
        gtk_box_pack_start(GTK_BOX(filters), one, FALSE, FALSE, 0);
    }
    gtk_box_pack_start(GTK_BOX(box), filters, FALSE, FALSE, 0);
    whyNone_ = textLabel();
    gtk_widget_set_no_show_all(whyNone_, TRUE);
    gtk_box_pack_start(GTK_BOX(box), whyNone_, FALSE, FALSE, 0);

    rows_ = gtk_list_store_new(kColumns, G_TYPE_INT64, G_TYPE_STRING, G_TYPE_STRING, G_TYPE_STRING);
    list_ = gtk_tree_view_new_with_model(GTK_TREE_MODEL(rows_));
    g_object_unref(rows_);
    GtkTreeView* const view = GTK_TREE_VIEW(list_);
    gtk_tree_view_set_headers_visible(view, FALSE);
    gtk_tree_view_set_activate_on_single_click(view, TRUE);
    gtk_tree_view_set_enable_search(view, FALSE);  // letters are the window's keys
    atk_object_set_name(gtk_widget_get_accessible(list_), tr("Upcoming").c_str());
    for (const int column : {kDate, kLeft, kName}) {
        GtkCellRenderer* const text = gtk_cell_renderer_text_new();
        if (column == kName) g_object_set(text, "ellipsize", PANGO_ELLIPSIZE_END, nullptr);
        gtk_tree_view_insert_column_with_attributes(view, -1, nullptr, text, "text", column, nullptr);
    }
    g_signal_connect(list_, "row-activated",
                     G_CALLBACK(+[](GtkTreeView*, GtkTreePath* path, GtkTreeViewColumn*, Pane* self) {
                         GtkTreeIter row;
                         if (gtk_tree_model_get_iter(GTK_TREE_MODEL(self->rows_), &row, path) == FALSE) return;
                         gint64 day = 0;
                         gtk_tree_model_get(GTK_TREE_MODEL(self->rows_), &row, kDay, &day, -1);
                         self->goTo_(std::chrono::sys_days{std::chrono::days{day}});
                     }),
                     this);
    gtk_box_pack_start(GTK_BOX(box), scrolled(list_), TRUE, TRUE, 0);
    parts_[1] = box;
}

void Pane::fillUpcoming() {
    if (list_ == nullptr) return;
    UpcomingRows found = upcomingRows(page_, filter_);
    if (found == filled_) return;  // whoever stands at a row stays there
    filled_ = std::move(found);
    gtk_list_store_clear(rows_);
    for (const UpcomingRow& row : filled_.rows) {
        gtk_list_store_insert_with_values(rows_, nullptr, -1, kDay, gint64{row.day.time_since_epoch().count()}, kDate,
                                          row.date.c_str(), kLeft, row.left.c_str(), kName, row.name.c_str(), -1);
    }
    gtk_label_set_text(GTK_LABEL(whyNone_), filled_.whyNone.c_str());
    gtk_widget_set_visible(whyNone_, filled_.whyNone.empty() ? FALSE : TRUE);
}

void Pane::buildConverter() {
    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    entry_ = gtk_entry_new();
    gtk_entry_set_placeholder_text(GTK_ENTRY(entry_), tr("2083-08-07, 7 Mangsir 2083, 23 Nov 2026").c_str());
    atk_object_set_name(gtk_widget_get_accessible(entry_), tr("A date in either calendar").c_str());
    g_signal_connect_swapped(entry_, "changed", G_CALLBACK(+[](Pane* self) { self->answer(); }), this);
    g_signal_connect_swapped(entry_, "activate", G_CALLBACK(+[](Pane* self) {
                                 const auto found =
                                     dinmala::convert(gtk_entry_get_text(GTK_ENTRY(self->entry_)), self->page_);
                                 if (!found.answers.empty()) self->goTo_(found.answers.front().day.day);
                             }),
                             this);
    gtk_box_pack_start(GTK_BOX(box), entry_, FALSE, FALSE, 0);
    answers_ = textLabel();
    atk_object_set_role(gtk_widget_get_accessible(answers_), ATK_ROLE_STATUSBAR);  // told as it changes
    gtk_box_pack_start(GTK_BOX(box), scrolled(answers_), TRUE, TRUE, 0);
    parts_[2] = box;
}

void Pane::answer() {
    if (entry_ == nullptr) return;
    const Conversion found = dinmala::convert(gtk_entry_get_text(GTK_ENTRY(entry_)), page_);
    std::string text = found.problem;
    for (const Conversion::Answer& answer : found.answers) {
        if (!text.empty()) text += "\n";
        text += answer.text;
    }
    if (text == gtk_label_get_text(GTK_LABEL(answers_))) return;  // what is written there is told again
    gtk_label_set_text(GTK_LABEL(answers_), text.c_str());
}

void Pane::convert(const std::string& text) {
    show(Part::converter);
    gtk_entry_set_text(GTK_ENTRY(entry_), text.c_str());
    gtk_editable_set_position(GTK_EDITABLE(entry_), -1);
}

}  // namespace dinmala
