#include "window/gtk/MonthWindow.h"

#include <glib-unix.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <iostream>
#include <utility>

#include "agenda/EditionChoice.h"
#include "agenda/Today.h"
#include "base/Clock.h"
#include "i18n/Translation.h"
#include "window/DayDetails.h"
#include "window/gtk/Sheet.h"

namespace dinmala {

namespace {

constexpr int kYearColumns = 10;

std::chrono::sys_seconds now() { return std::chrono::floor<std::chrono::seconds>(systemNow()); }

/// A row of a menu; `group` makes it one of several that exclude each other.
template <typename Chosen>
GtkWidget* addRow(GtkWidget* menu, GtkWidget* item, MonthWindow* window, Chosen chosen) {
    g_signal_connect_swapped(item, "activate", G_CALLBACK(+chosen), window);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
    return item;
}

/// The letter of a key, small; where another script is being written, the Latin one that the keyboard has there too.
guint latinKey(const GdkEventKey& event) {
    constexpr guint kLastAscii = 0x7E, kFirstFunction = 0xFD00;  // functions: arrows, Enter, F1
    if (event.keyval <= kLastAscii || (event.keyval >= kFirstFunction && event.keyval <= 0xFFFF)) {
        return gdk_keyval_to_lower(event.keyval);
    }
    GdkKeymap* const keys = gdk_keymap_get_for_display(gdk_window_get_display(event.window));
    GdkKeymapKey* places = nullptr;
    guint* found = nullptr;
    int count = 0;
    guint latin = event.keyval;
    if (gdk_keymap_get_entries_for_keycode(keys, event.hardware_keycode, &places, &found, &count) != FALSE) {
        for (int i = count - 1; i >= 0; --i) {
            if (places[i].level == 0 && found[i] >= GDK_KEY_a && found[i] <= GDK_KEY_z) latin = found[i];
        }
    }
    g_free(places);
    g_free(found);
    return latin;
}

}  // namespace

MonthWindow::MonthWindow(GtkApplication* application, const Asked& asked, std::function<void(Closed)> closed)
    : application_(application),
      closed_(std::move(closed)),
      preferences_(KeyFilePreferences::defaultPath(),
                   [](const std::string& message) { std::cerr << "dinmala-window: " << message << std::endl; }),
      askedEdition_(asked.edition),
      page_(editions_.get(editionId()), nepalDay(now()), {}) {
    build();
    readPreferences();
    watchFiles();
    clock_ = timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK);
    followClock();
}

MonthWindow::~MonthWindow() {
    forgetFiles();
    for (GtkWidget* const above : {menu_, shortcuts_}) {
        if (above != nullptr) gtk_widget_destroy(above);
    }
    if (ending_ != 0) g_source_remove(ending_);
    if (clockSource_ != 0) g_source_remove(clockSource_);
    if (clock_ >= 0) ::close(clock_);
    g_signal_handlers_disconnect_by_data(gtk_widget_get_screen(window_), this);
    g_signal_handlers_disconnect_by_data(window_, this);
    gtk_widget_destroy(window_);
}

void MonthWindow::forgetFiles() {
    for (GFileMonitor* const monitor : monitors_) {
        g_signal_handlers_disconnect_by_data(monitor, this);
        g_object_unref(monitor);
    }
    monitors_.clear();
}

void MonthWindow::watchFiles() {
    forgetFiles();
    std::vector<std::string> wanted = yearFolders();
    wanted.push_back(KeyFilePreferences::defaultPath());
    for (std::filesystem::path path : wanted) {
        // Where the folder is missing, its coming: GLib would look for it every four seconds.
        std::error_code ignored;
        while (path.has_relative_path() && !std::filesystem::exists(path.parent_path(), ignored)) {
            path = path.parent_path();
        }
        GFile* const file = g_file_new_for_path(path.c_str());
        if (GFileMonitor* const monitor = g_file_monitor(file, G_FILE_MONITOR_NONE, nullptr, nullptr)) {
            g_signal_connect_swapped(monitor, "changed", G_CALLBACK(+[](MonthWindow* self) {
                                         self->watchFiles();
                                         self->preferences_.reload();
                                         self->readPreferences();
                                     }),
                                     this);
            monitors_.push_back(monitor);
        }
        g_object_unref(file);
    }
}

EditionId MonthWindow::editionId() const { return chosenEdition(askedEdition_, preferences_.textForKey(kEditionKey)); }

void MonthWindow::readPreferences() {
    page_.setLook(keptLook(preferences_.textForKey(kLanguageKey), preferences_.textForKey(kDigitsKey)));
    page_.setEdition(editions_.get(editionId()));
    for (const std::string& problem : editions_.takeProblems()) {
        std::cerr << "dinmala-window: " << tr("a year's file is not taken, the built-in year stays: {1}", {problem})
                  << std::endl;
    }
    update(false);
}

// --- The clock ------------------------------------------------------------------------------------

void MonthWindow::followClock() {
    if (clock_ < 0) return;
    // The next day in Nepal; the timer also tells when the clock is set.
    const auto today = nepalDay(now());
    const auto next = std::chrono::sys_seconds{today + std::chrono::days{1}} - kathmandu().offsetAt(Moment{});
    itimerspec timer{};
    timer.it_value.tv_sec = std::chrono::floor<std::chrono::seconds>(next).time_since_epoch().count();
    timerfd_settime(clock_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &timer, nullptr);
    if (clockSource_ != 0) return;
    clockSource_ = g_unix_fd_add(
        clock_, G_IO_IN,
        [](gint, GIOCondition, gpointer data) -> gboolean {
            auto* const self = static_cast<MonthWindow*>(data);
            std::uint64_t times = 0;
            [[maybe_unused]] const ssize_t got = read(self->clock_, &times, sizeof times);
            self->page_.setToday(nepalDay(now()));
            self->update(false);
            self->followClock();
            return G_SOURCE_CONTINUE;
        },
        this);
}

// --- What it is made of ---------------------------------------------------------------------------

GtkWidget* MonthWindow::button(GtkWidget* box, const char* text, const std::string& name,
                               void (*clicked)(MonthWindow*)) {
    GtkWidget* const made = gtk_button_new_with_label(text);
    gtk_widget_set_focus_on_click(made, FALSE);
    atk_object_set_name(gtk_widget_get_accessible(made), name.c_str());
    if (name != text) gtk_widget_set_tooltip_text(made, name.c_str());
    g_signal_connect_swapped(made, "clicked", G_CALLBACK(clicked), this);
    gtk_box_pack_start(GTK_BOX(box), made, FALSE, FALSE, 0);
    return made;
}

GtkWidget* MonthWindow::buildHeader() {
    GtkWidget* const frame = gtk_event_box_new();
    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 2);
    button(box, "«", tr("Year back"), [](MonthWindow* self) { self->press(PageKey::yearBack); });
    button(box, "‹", tr("Month back"), [](MonthWindow* self) { self->press(PageKey::monthBack); });
    monthButton_ = button(box, "", tr("Month"), [](MonthWindow* self) { self->showMonths(self->monthButton_); });
    yearButton_ = button(box, "", tr("Year"), [](MonthWindow* self) { self->showYears(self->yearButton_); });
    button(box, "›", tr("Month forward"), [](MonthWindow* self) { self->press(PageKey::monthForward); });
    button(box, "»", tr("Year forward"), [](MonthWindow* self) { self->press(PageKey::yearForward); });
    adMonths_ = gtk_label_new(nullptr);
    gtk_box_pack_start(GTK_BOX(box), adMonths_, TRUE, TRUE, 8);
    const std::string today = tr("Today");
    button(box, today.c_str(), today, [](MonthWindow* self) { self->press(PageKey::today); });
    menuButton_ = button(box, "…", tr("More"), [](MonthWindow* self) { self->showMenu(self->menuButton_); });
    gtk_container_add(GTK_CONTAINER(frame), box);
    // Without a title bar the window is moved by its header.
    gtk_widget_add_events(frame, GDK_BUTTON_PRESS_MASK);
    g_signal_connect_swapped(
        frame, "button-press-event", G_CALLBACK(+[](MonthWindow* self, GdkEventButton* event) -> gboolean {
            if (event->button != GDK_BUTTON_PRIMARY || event->type != GDK_BUTTON_PRESS) return FALSE;
            gtk_window_begin_move_drag(GTK_WINDOW(self->window_), static_cast<gint>(event->button),
                                       static_cast<gint>(event->x_root), static_cast<gint>(event->y_root), event->time);
            return TRUE;
        }),
        this);
    return frame;
}

void MonthWindow::build() {
    window_ = gtk_application_window_new(application_);
    GtkWindow* const window = GTK_WINDOW(window_);
    gtk_window_set_title(window, tr("Calendar").c_str());
    gtk_window_set_decorated(window, FALSE);
    gtk_window_set_resizable(window, FALSE);
    gtk_window_set_skip_taskbar_hint(window, TRUE);
    gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_UTILITY);
    joinPanelsLayer(window);

    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_container_set_border_width(GTK_CONTAINER(box), 8);
    gtk_box_pack_start(GTK_BOX(box), buildHeader(), FALSE, FALSE, 0);
    grid_ = std::make_unique<DayGrid>(
        page_, [this](std::size_t cell) { goTo(page_.cells()[cell].day); }, [this] { pane_->show(Pane::Part::day); });
    gtk_box_pack_start(GTK_BOX(box), grid_->widget(), TRUE, TRUE, 0);
    notes_ = gtk_label_new(nullptr);
    gtk_label_set_line_wrap(GTK_LABEL(notes_), TRUE);
    gtk_label_set_max_width_chars(GTK_LABEL(notes_), 1);  // as wide as the month, and no wider
    gtk_label_set_xalign(GTK_LABEL(notes_), 0);
    gtk_widget_set_no_show_all(notes_, TRUE);
    gtk_box_pack_start(GTK_BOX(box), notes_, FALSE, FALSE, 0);
    pane_ = std::make_unique<Pane>(page_, [this](std::chrono::sys_days day) { goTo(day); });
    gtk_box_pack_start(GTK_BOX(box), pane_->widget(), FALSE, FALSE, 0);
    content_ = gtk_frame_new(nullptr);  // there is no other edge between it and a window below
    gtk_container_add(GTK_CONTAINER(content_), box);
    gtk_container_add(GTK_CONTAINER(window_), content_);
    gtk_widget_show_all(content_);

    g_signal_connect_swapped(
        window_, "key-press-event",
        G_CALLBACK(+[](MonthWindow* self, GdkEventKey* event) -> gboolean { return self->key(*event) ? TRUE : FALSE; }),
        this);
    g_signal_connect_swapped(window_, "notify::is-active", G_CALLBACK(+[](MonthWindow* self) { self->focusChanged(); }),
                             this);
    g_signal_connect_swapped(window_, "delete-event", G_CALLBACK(+[](MonthWindow* self) -> gboolean {
                                 self->close();
                                 return TRUE;
                             }),
                             this);
    g_signal_connect_swapped(gtk_widget_get_screen(window_), "monitors-changed",
                             G_CALLBACK(+[](MonthWindow* self) { self->place_.rescue(); }), this);
    g_signal_connect_swapped(window_, "size-allocate", G_CALLBACK(+[](MonthWindow* self, GtkAllocation* size) {
                                 if (!self->isPinned_) self->place_.keep(size->width, size->height);
                             }),
                             this);
}

// --- What it shows --------------------------------------------------------------------------------

void MonthWindow::show(const Asked& asked) {
    if (ending_ != 0) {
        // It was just closed, and is wanted again.
        g_source_remove(std::exchange(ending_, 0));
        wasActive_ = false;
    }
    if (asked.edition && asked.edition != askedEdition_) {
        askedEdition_ = asked.edition;
        readPreferences();
    }
    page_.setToday(nepalDay(now()));
    page_.press(PageKey::today);
    if (asked.day) page_.goTo(*asked.day);
    update();
    if (!asked.convert.empty()) pane_->convert(asked.convert);
    fitOnScreen();
    if (!isPinned_) place_.begin(GTK_WINDOW(window_));
    presentNow(GTK_WINDOW(window_));
}

void MonthWindow::fitOnScreen() {
    if (gtk_widget_get_parent(content_) != window_) return;
    const GdkRectangle room = roomAtPointer(GTK_WINDOW(window_));
    GtkRequisition wanted;
    gtk_widget_get_preferred_size(content_, nullptr, &wanted);
    if (wanted.width <= room.width && wanted.height <= room.height) return;
    // Large letters on a small screen: what has no room is scrolled to.
    GtkWidget* const scroller = gtk_scrolled_window_new(nullptr, nullptr);
    GtkScrolledWindow* const scrolled = GTK_SCROLLED_WINDOW(scroller);
    gtk_scrolled_window_set_propagate_natural_width(scrolled, TRUE);
    gtk_scrolled_window_set_propagate_natural_height(scrolled, TRUE);
    gtk_scrolled_window_set_max_content_width(scrolled, room.width);
    gtk_scrolled_window_set_max_content_height(scrolled, room.height);
    gtk_scrolled_window_set_overlay_scrolling(scrolled, FALSE);
    g_object_ref(content_);
    gtk_container_remove(GTK_CONTAINER(window_), content_);
    gtk_container_add(GTK_CONTAINER(scroller), content_);
    g_object_unref(content_);
    gtk_container_add(GTK_CONTAINER(window_), scroller);
    gtk_widget_show(scroller);
    // To a day it scrolls by itself, and to what is below the days by this.
    g_signal_connect_swapped(window_, "set-focus", G_CALLBACK(+[](MonthWindow* self, GtkWidget* focus) {
                                 if (focus == nullptr || !gtk_widget_is_ancestor(focus, self->pane_->widget())) return;
                                 GtkWidget* const inner = gtk_bin_get_child(GTK_BIN(self->window_));
                                 GtkAdjustment* const place =
                                     gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(inner));
                                 gtk_adjustment_set_value(place, gtk_adjustment_get_upper(place));
                             }),
                             this);
}

void MonthWindow::update(bool focus) {
    const std::string title = page_.title();
    const auto blank = title.rfind(' ');
    gtk_button_set_label(GTK_BUTTON(monthButton_), title.substr(0, blank).c_str());
    gtk_button_set_label(GTK_BUTTON(yearButton_), title.substr(blank + 1).c_str());
    gtk_label_set_text(GTK_LABEL(adMonths_), page_.adMonths().c_str());
    std::string notes;
    for (const std::string& note : page_.notes()) notes += (notes.empty() ? "" : "\n") + note;
    if (grid_->lacksDevanagari()) {
        if (!notes.empty()) notes += "\n";
        notes += tr("no font here has Devanagari letters; the package fonts-noto-core brings one");
    }
    gtk_label_set_text(GTK_LABEL(notes_), notes.c_str());
    gtk_widget_set_visible(notes_, notes.empty() ? FALSE : TRUE);
    grid_->update(focus);
    pane_->update();
}

void MonthWindow::press(PageKey key) {
    page_.press(key);
    update();
}

void MonthWindow::goTo(std::chrono::sys_days day) {
    page_.goTo(day);
    update();
}

void MonthWindow::close(Closed how) {
    if (ending_ != 0 || isPrinting_) return;
    how_ = how;
    gtk_widget_hide(window_);
    // After whatever signal this comes from.
    ending_ = g_idle_add(
        [](gpointer data) -> gboolean {
            auto* const self = static_cast<MonthWindow*>(data);
            self->ending_ = 0;
            const auto closed = self->closed_;  // outlives the window
            closed(self->how_);
            return G_SOURCE_REMOVE;
        },
        this);
}

void MonthWindow::focusChanged() {
    const bool isActive = gtk_window_is_active(GTK_WINDOW(window_)) != FALSE;
    if (isActive) mayLoseKeyboard(GTK_WINDOW(window_));
    if (isActive) wasActive_ = true;
    if (!isActive && wasActive_ && !isPinned_ && busy_ == 0) close(Closed::byFocus);
}

void MonthWindow::pin(bool pinned) {
    if (pinned == isPinned_) return;
    isPinned_ = pinned;
    // Only now is there a title bar to show it; reading a theme's icon takes 8 MB.
    gtk_window_set_icon_name(GTK_WINDOW(window_), "dinmala");
    gtk_window_set_decorated(GTK_WINDOW(window_), pinned ? TRUE : FALSE);
    gtk_window_set_skip_taskbar_hint(GTK_WINDOW(window_), pinned ? FALSE : TRUE);
    gtk_window_set_keep_above(GTK_WINDOW(window_), pinned ? TRUE : FALSE);
}

void MonthWindow::flipDigits() {
    prefer(kDigitsKey, keptWord(page_.look().digits == Digits::devanagari ? Digits::western : Digits::devanagari));
}

void MonthWindow::flipLanguage() {
    prefer(kLanguageKey, keptWord(page_.look().language == Language::nepali ? Language::english : Language::nepali));
}

void MonthWindow::choose(EditionId edition) {
    if (page_.edition().id == edition) return;
    askedEdition_.reset();
    prefer(kEditionKey, editionName(edition));
}

void MonthWindow::prefer(std::string_view key, std::string_view value) {
    preferences_.setTextForKey(value, key);
    preferences_.synchronize();
    readPreferences();
}

void MonthWindow::copy() {
    GtkClipboard* const clipboard = gtk_clipboard_get(GDK_SELECTION_CLIPBOARD);
    const std::string text = copyText(dayDetails(page_));
    gtk_clipboard_set_text(clipboard, text.c_str(), static_cast<gint>(text.size()));
    gtk_clipboard_set_can_store(clipboard, nullptr, 0);  // it stays when the window is closed
}

void MonthWindow::dialog(bool isOpen) {
    busy_ += isOpen ? 1 : -1;
    letAbove(GTK_WINDOW(window_), busy_ > 0);
}

void MonthWindow::print(bool year) {
    if (isPrinting_) return;
    isPrinting_ = true;  // what else happens meanwhile must not close the window under the printer's dialog
    dialog(true);
    printSheet(GTK_WINDOW(window_), page_, year ? Sheet::year : Sheet::month);
    dialog(false);
    isPrinting_ = false;
}

// --- Keys -----------------------------------------------------------------------------------------

bool MonthWindow::key(GdkEventKey& event) {
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(window_));
    const bool typing = focus != nullptr && GTK_IS_ENTRY(focus) != FALSE;
    const bool inList = focus != nullptr && GTK_IS_TREE_VIEW(focus) != FALSE;
    const bool onButton = focus != nullptr && GTK_IS_BUTTON(focus) != FALSE;
    const guint modifiers = event.state & static_cast<guint>(gtk_accelerator_get_default_mod_mask());
    const bool shift = (modifiers & GDK_SHIFT_MASK) != 0;
    if ((modifiers & GDK_CONTROL_MASK) != 0) {
        switch (latinKey(event)) {
            case GDK_KEY_p:
                return print(shift), true;
            case GDK_KEY_c:
                return !typing && (copy(), true);
            case GDK_KEY_question:
            case GDK_KEY_F1:
                return showShortcuts(), true;
            case GDK_KEY_q:
            case GDK_KEY_w:
                return close(), true;
            default:
                return false;
        }
    }
    if (modifiers != 0 && modifiers != GDK_SHIFT_MASK) return false;
    if (event.keyval == GDK_KEY_Escape) return close(), true;
    if (event.keyval == GDK_KEY_F1) return showShortcuts(), true;
    if (typing) return false;
    struct Move {
        guint key, numberPad;
        PageKey plain, shifted;
        bool isArrow;
    };
    static constexpr std::array<Move, 7> kMoves = {{
        {GDK_KEY_Left, GDK_KEY_KP_Left, PageKey::dayBack, PageKey::dayBack, true},
        {GDK_KEY_Right, GDK_KEY_KP_Right, PageKey::dayForward, PageKey::dayForward, true},
        {GDK_KEY_Up, GDK_KEY_KP_Up, PageKey::weekBack, PageKey::weekBack, true},
        {GDK_KEY_Down, GDK_KEY_KP_Down, PageKey::weekForward, PageKey::weekForward, true},
        {GDK_KEY_Page_Up, GDK_KEY_KP_Page_Up, PageKey::monthBack, PageKey::yearBack, false},
        {GDK_KEY_Page_Down, GDK_KEY_KP_Page_Down, PageKey::monthForward, PageKey::yearForward, false},
        {GDK_KEY_Home, GDK_KEY_KP_Home, PageKey::today, PageKey::today, false},
    }};
    for (const Move& move : kMoves) {
        if (event.keyval != move.key && event.keyval != move.numberPad) continue;
        if (inList || (onButton && move.isArrow)) return false;
        return press(shift ? move.shifted : move.plain), true;
    }
    if (event.keyval == GDK_KEY_Return || event.keyval == GDK_KEY_KP_Enter) {
        if (inList || onButton) return false;
        return pane_->show(Pane::Part::day), true;
    }
    return letter(latinKey(event));
}

bool MonthWindow::letter(guint key) {
    switch (key) {
        case GDK_KEY_c:
            return pane_->show(Pane::Part::converter), true;
        case GDK_KEY_u:
            return pane_->show(Pane::Part::upcoming), true;
        case GDK_KEY_d:
            return flipDigits(), true;
        case GDK_KEY_p:
            return pin(!isPinned_), true;
        default:
            return false;
    }
}

// --- Menus ----------------------------------------------------------------------------------------

void MonthWindow::popUp(GtkWidget* button, GtkWidget* menu) {
    ++busy_;
    menu_ = menu;
    g_signal_connect(menu, "destroy", G_CALLBACK(gtk_widget_destroyed), &menu_);
    gtk_menu_attach_to_widget(GTK_MENU(menu), button, nullptr);
    gtk_widget_show_all(menu);
    g_signal_connect_swapped(menu, "deactivate", G_CALLBACK(+[](MonthWindow* self) { --self->busy_; }), this);
    // The row's action comes after this signal.
    g_signal_connect(menu, "selection-done", G_CALLBACK(gtk_widget_destroy), nullptr);
    gtk_menu_popup_at_widget(GTK_MENU(menu), button, GDK_GRAVITY_SOUTH_WEST, GDK_GRAVITY_NORTH_WEST, nullptr);
}

void MonthWindow::showMonths(GtkWidget* button) {
    GtkWidget* const menu = gtk_menu_new();
    for (unsigned month = 1; month <= 12; ++month) {
        const std::string name{bsMonthName(BsMonth{month}, page_.look().language)};
        GtkWidget* const item = gtk_menu_item_new_with_label(name.c_str());
        g_object_set_data(G_OBJECT(item), "month", GUINT_TO_POINTER(month));
        g_signal_connect(item, "activate", G_CALLBACK(+[](GtkWidget* chosen, MonthWindow* self) {
                             const auto wanted = GPOINTER_TO_UINT(g_object_get_data(G_OBJECT(chosen), "month"));
                             self->page_.goTo(BsYearMonth{self->page_.month().year, BsMonth{wanted}});
                             self->update();
                         }),
                         this);
        gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
    }
    popUp(button, menu);
}

void MonthWindow::showYears(GtkWidget* button) {
    GtkWidget* const menu = gtk_menu_new();
    const auto months = page_.edition().calendar.months();
    const int first = int{months.front().name.year}, last = int{months.back().name.year};
    for (int year = first; year <= last; ++year) {
        const std::string text = numberText(static_cast<std::uint64_t>(year), page_.look().digits);
        GtkWidget* const item = gtk_menu_item_new_with_label(text.c_str());
        g_object_set_data(G_OBJECT(item), "year", GINT_TO_POINTER(year));
        g_signal_connect(item, "activate", G_CALLBACK(+[](GtkWidget* chosen, MonthWindow* self) {
                             const int wanted = GPOINTER_TO_INT(g_object_get_data(G_OBJECT(chosen), "year"));
                             self->page_.goTo(BsYearMonth{BsYear{wanted}, self->page_.month().month});
                             self->update();
                         }),
                         this);
        const auto row = static_cast<guint>(year / kYearColumns - first / kYearColumns);
        const auto column = static_cast<guint>(year % kYearColumns);
        gtk_menu_attach(GTK_MENU(menu), item, column, column + 1, row, row + 1);
    }
    popUp(button, menu);
}

void MonthWindow::showMenu(GtkWidget* button) {
    GtkWidget* const menu = gtk_menu_new();
    const auto add = [menu, this](const std::string& text, void (*chosen)(MonthWindow*)) {
        addRow(menu, gtk_menu_item_new_with_label(text.c_str()), this, chosen);
    };
    const auto addMark = [menu, this](const std::string& text, bool on, bool radio, void (*chosen)(MonthWindow*)) {
        GtkWidget* const item = gtk_check_menu_item_new_with_label(text.c_str());
        gtk_check_menu_item_set_draw_as_radio(GTK_CHECK_MENU_ITEM(item), radio ? TRUE : FALSE);
        gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), on ? TRUE : FALSE);
        addRow(menu, item, this, chosen);
    };
    const auto line = [menu] { gtk_menu_shell_append(GTK_MENU_SHELL(menu), gtk_separator_menu_item_new()); };
    addMark(tr("Devanagari digits"), page_.look().digits == Digits::devanagari, false,
            [](MonthWindow* self) { self->flipDigits(); });
    addMark(tr("English names"), page_.look().language == Language::english, false,
            [](MonthWindow* self) { self->flipLanguage(); });
    addMark(tr("Keep open, above other windows"), isPinned_, false,
            [](MonthWindow* self) { self->pin(!self->isPinned_); });
    line();
    addMark(tr("As Nepal publishes it today"), page_.edition().id == EditionId::current, true,
            [](MonthWindow* self) { self->choose(EditionId::current); });
    addMark(tr("As first made in 2015"), page_.edition().id == EditionId::first, true,
            [](MonthWindow* self) { self->choose(EditionId::first); });
    line();
    add(tr("Copy the day"), [](MonthWindow* self) { self->copy(); });
    add(tr("Print the month…"), [](MonthWindow* self) { self->print(false); });
    add(tr("Print the year…"), [](MonthWindow* self) { self->print(true); });
    line();
    add(tr("Keys"), [](MonthWindow* self) { self->showShortcuts(); });
    add(tr("Close"), [](MonthWindow* self) { self->close(); });
    popUp(button, menu);
}

void MonthWindow::showShortcuts() {
    struct Shortcut {
        const char* keys;
        std::string what;
    };
    const std::array<std::pair<std::string, std::vector<Shortcut>>, 2> groups = {{
        {tr("Days"),
         {{"Left Right", tr("Day back, day forward")},
          {"Up Down", tr("Week back, week forward")},
          {"Page_Up Page_Down", tr("Month back, month forward")},
          {"<shift>Page_Up <shift>Page_Down", tr("Year back, year forward")},
          {"Home", tr("Today")},
          {"Return", tr("Details of the day")},
          {"<ctrl>C", tr("Copy the day")}}},
        {tr("Window"),
         {{"C", tr("Converter")},
          {"U", tr("Upcoming")},
          {"D", tr("Devanagari digits")},
          {"P", tr("Keep open, above other windows")},
          {"<ctrl>P", tr("Print the month…")},
          {"<ctrl><shift>P", tr("Print the year…")},
          {"F1", tr("Keys")},
          {"Escape", tr("Close")}}},
    }};
    const auto made = [](GType type, const char* property, const char* value, const char* more,
                         const std::string& text) {
        return GTK_WIDGET(g_object_new(type, "visible", TRUE, property, value, more, text.c_str(), nullptr));
    };
    GtkWidget* const window = GTK_WIDGET(g_object_new(GTK_TYPE_SHORTCUTS_WINDOW, "modal", TRUE, nullptr));
    GtkWidget* const section =
        GTK_WIDGET(g_object_new(GTK_TYPE_SHORTCUTS_SECTION, "visible", TRUE, "section-name", "keys", nullptr));
    for (const auto& [title, shortcuts] : groups) {
        GtkWidget* const group =
            GTK_WIDGET(g_object_new(GTK_TYPE_SHORTCUTS_GROUP, "visible", TRUE, "title", title.c_str(), nullptr));
        for (const Shortcut& shortcut : shortcuts) {
            gtk_container_add(GTK_CONTAINER(group),
                              made(GTK_TYPE_SHORTCUTS_SHORTCUT, "accelerator", shortcut.keys, "title", shortcut.what));
        }
        gtk_container_add(GTK_CONTAINER(section), group);
    }
    gtk_container_add(GTK_CONTAINER(window), section);
    gtk_window_set_transient_for(GTK_WINDOW(window), GTK_WINDOW(window_));
    gtk_window_set_destroy_with_parent(GTK_WINDOW(window), TRUE);
    dialog(true);
    shortcuts_ = window;
    g_signal_connect_swapped(window, "destroy", G_CALLBACK(+[](MonthWindow* self) {
                                 self->shortcuts_ = nullptr;
                                 self->dialog(false);
                             }),
                             this);
    gtk_widget_show(window);
}

}  // namespace dinmala
