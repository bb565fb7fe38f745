/// The month window.
#pragma once

#include <gtk/gtk.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "agenda/EditionSource.h"
#include "desktop/KeyFilePreferences.h"
#include "window/Page.h"
#include "window/gtk/DayGrid.h"
#include "window/gtk/Pane.h"
#include "window/gtk/Placing.h"

namespace dinmala {

/// What the window is to show when it opens, or comes to the front.
struct Asked {
    std::optional<std::chrono::sys_days> day;
    std::string convert;  ///< a text for the converter
    std::optional<EditionId> edition;
};

/// One window. Not pinned it belongs to the panel: it stands beside it and closes when the keyboard goes elsewhere.
class MonthWindow {
public:
    /// How it was closed.
    enum class Closed { byUser, byFocus };

    /// @param closed the window may be deleted in it
    MonthWindow(GtkApplication* application, const Asked& asked, std::function<void(Closed)> closed);
    ~MonthWindow();
    MonthWindow(const MonthWindow&) = delete;
    MonthWindow& operator=(const MonthWindow&) = delete;

    /// Shows what is asked for, today where nothing is, and comes to the front.
    void show(const Asked& asked);
    /// Not while it prints.
    void close(Closed how = Closed::byUser);

private:
    void build();
    GtkWidget* buildHeader();
    GtkWidget* button(GtkWidget* box, const char* text, const std::string& name, void (*clicked)(MonthWindow*));
    void press(PageKey key);
    void goTo(std::chrono::sys_days day);
    void fitOnScreen();
    void update(bool focus = true);
    bool key(GdkEventKey& event);
    bool letter(guint key);
    void popUp(GtkWidget* button, GtkWidget* menu);
    void showMonths(GtkWidget* button);
    void showYears(GtkWidget* button);
    void showMenu(GtkWidget* button);
    void showShortcuts();
    void pin(bool pinned);
    void flipDigits();
    void flipLanguage();
    void prefer(std::string_view key, std::string_view value);
    void choose(EditionId edition);
    void copy();
    void dialog(bool isOpen);
    void print(bool year);
    void focusChanged();
    void readPreferences();
    void watchFiles();
    void forgetFiles();
    void followClock();
    [[nodiscard]] EditionId editionId() const;

    GtkApplication* application_;
    std::function<void(Closed)> closed_;
    KeyFilePreferences preferences_;
    EditionSource editions_;
    std::optional<EditionId> askedEdition_;
    Page page_;

    GtkWidget* window_ = nullptr;
    GtkWidget* content_ = nullptr;
    GtkWidget* monthButton_ = nullptr;
    GtkWidget* yearButton_ = nullptr;
    GtkWidget* adMonths_ = nullptr;
    GtkWidget* notes_ = nullptr;
    GtkWidget* menuButton_ = nullptr;
    GtkWidget* menu_ = nullptr;  ///< the one that is open, as the next
    GtkWidget* shortcuts_ = nullptr;
    std::unique_ptr<DayGrid> grid_;
    std::unique_ptr<Pane> pane_;
    std::vector<GFileMonitor*> monitors_;
    PlaceBesidePanel place_;
    bool isPinned_ = false;
    bool wasActive_ = false;
    bool isPrinting_ = false;
    guint ending_ = 0;  ///< the source that ends it, once it is closed
    Closed how_ = Closed::byUser;
    int busy_ = 0;  ///< menus and dialogs of its own that are open
    int clock_ = -1;
    guint clockSource_ = 0;
};

}  // namespace dinmala
