#include "app/faces/panel/PanelFace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/faces/panel/DayTile.h"
#include "desktop/ImageFile.h"
#include "desktop/Notifications.h"
#include "desktop/SessionBus.h"
#include "tests/app/faces/panel/FakePanel.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

using Strings = std::vector<std::string>;

constexpr const char* kClearIcon = RESOURCES "/transparent.png";
constexpr const char* kGnome = "org.gnome.Shell";

ImagePtr picture(int width, int height) {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    auto image = std::make_shared<Image>(Image{"/somewhere/picture.png", width, height, {}});
    for (std::size_t i = 0; i < count; ++i) image->pixels.insert(image->pixels.end(), {0xFF, 0, 0x20, 0xFF});
    return image;
}

/// A face with an item and a menu as the shell makes them, on a bus of its own.
class PanelFaceTest : public testing::Test {
protected:
    PanelFaceTest() {
        setenv("XDG_RUNTIME_DIR", runtime_.path().c_str(), 1);  // read once a process
        unsetenv("DINMALA_HOST");
        date_ = &add(MenuItem::Kind::plain, "२०७० बैशाख ७");
        description_ = &add(MenuItem::Kind::plain, "अष्टमी, राम & सीता <जयन्ती>");
        outlets_.statusMenu = &rows_;
        outlets_.dateMenuItem = date_;
        outlets_.descriptionMenuItem = description_;
        day_.setStringValue("७");
        outlets_.txtDay = &day_;
    }

    MenuItem& add(MenuItem::Kind kind, const std::string& title = {}) {
        MenuItem& item = rows_.add(std::make_unique<MenuItem>(kind));
        item.setTitle(title);
        return item;
    }

    void start(const std::function<void(PanelFace&)>& prepare = nullptr) {
        face_ = std::make_unique<PanelFace>(
            TestBus::shared(), PanelResources{kClearIcon, [] { return loadImage(RESOURCES "/digits.png"); }},
            [this] { ++closed_; });
        face_->setOutlets(outlets_);
        if (prepare) prepare(*face_);
        item_ = face_->statusItemWithLength(-1);
        item_->setMenu(&rows_);
        item_->setToolTip("Dinmala");
        refresh(" बैशाख ७");
    }

    /// Anew, on a panel that owns a further name or none.
    void startOnPanel(const std::string& alsoOwns = {}, const std::function<void(PanelFace&)>& prepare = nullptr) {
        leave();
        panel_ = std::make_unique<FakePanel>(bus_, alsoOwns);
        start(prepare);
        ASSERT_TRUE(panel_->waitForItem()) << alsoOwns;
    }
    void leave() {
        item_.reset();
        face_.reset();
        panel_.reset();
    }

    /// As the shell does it: all cleared, then set.
    void refresh(const std::optional<std::string>& title, const ImagePtr& image = nullptr) {
        item_->setImage(nullptr);
        item_->setTitle(std::nullopt);
        if (image) item_->setImage(image);
        if (title) item_->setTitle(title);
    }

    /// Until all that was changed has reached the panel: the face sends it when the loop is idle, and an answer
    /// of the item comes after the signals that it sent before.
    /// Twice, as what the first answer brought along may be a change too.
    void settle() {
        for (int round = 0; round < 2; ++round) {
            runDueSources();
            panel_->read("Status");
        }
    }

    /// The signals of what `change` does.
    Strings signalsOf(const std::function<void()>& change) {
        settle();
        panel_->signals.clear();
        change();
        settle();
        return std::exchange(panel_->signals, {});
    }

    std::string callMenu(const char* method, const std::string& arguments,
                         const std::function<void(GVariant*)>& use = nullptr) {
        return panel_->call("/MenuBar", "com.canonical.dbusmenu", method, arguments, use);
    }
    /// The number that the panel knows a row by.
    std::string numberOf(const std::string& label) {
        const std::string layout = callMenu("GetLayout", "(0, 1, ['label'])");  // "... <(3, {'label': <'Today'>}, ..."
        const std::size_t row = layout.rfind("<(", layout.find("{'label': <'" + label + "'>"));
        return layout.substr(row + 2, layout.find(',', row) - row - 2);
    }

    static TemporaryFolder runtime_;
    TestBus bus_;
    std::unique_ptr<FakePanel> panel_;
    Menu rows_;
    MenuItem* date_;
    MenuItem* description_;
    Label day_;
    Outlets outlets_;
    int closed_ = 0;
    std::unique_ptr<PanelFace> face_;
    std::unique_ptr<StatusItem> item_;
};

TemporaryFolder PanelFaceTest::runtime_;

TEST_F(PanelFaceTest, ShowsTheTitleAsTextWhereThePanelCan) {
    startOnPanel(kGnome);
    EXPECT_EQ(panel_->items.back(), TestBus::shared()->get_unique_name().raw());
    EXPECT_EQ(panel_->read("XAyatanaLabel"), "' बैशाख ७'");  // the first blank belongs to it
    EXPECT_EQ(panel_->read("IconName"), std::string("'") + kClearIcon + "'");
    EXPECT_EQ(panel_->read("Title"), "'बैशाख ७'");
    EXPECT_EQ(panel_->read("ToolTip"),
              "('', @a(iiay) [], 'Dinmala', '२०७० बैशाख ७\\nअष्टमी, राम &amp; सीता &lt;जयन्ती&gt;')");
    description_->setTitle(", ");  // neither tithi nor events
    settle();
    EXPECT_EQ(panel_->read("ToolTip"), "('', @a(iiay) [], 'Dinmala', '२०७० बैशाख ७')");
    EXPECT_EQ(panel_->read("ItemIsMenu"), "true");
    EXPECT_EQ(panel_->read("Menu"), "objectpath '/MenuBar'");
    EXPECT_EQ(panel_->read("Status"), "'Active'");
    // Printed with its type, so that an unsigned 0 would show.
    EXPECT_EQ(panel_->call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                           "('org.kde.StatusNotifierItem', 'WindowId')"),
              "(<0>,)");
    // All of it at once too, as panels read it; and no method that would keep a left click from the menu.
    EXPECT_NE(panel_
                  ->call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll",
                         "('org.kde.StatusNotifierItem',)")
                  .find("'XAyatanaOrderingIndex': <"),
              std::string::npos);
    EXPECT_EQ(panel_->call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", "(0, 0)"),
              "error: org.freedesktop.DBus.Error.UnknownMethod");
    // The environment goes before what the panel is.
    setenv("DINMALA_HOST", "label", 1);
    startOnPanel();
    EXPECT_EQ(panel_->read("XAyatanaLabel"), "' बैशाख ७'");
    unsetenv("DINMALA_HOST");
}

/// Sizes of a pixmap property, and of each: alpha of the corner, how many white pixels.
struct Drawn {
    Strings sizes;
    bool cornersAreClear = true;
    int white = 0;
};

Drawn drawnIn(FakePanel& panel) {
    Drawn drawn;
    const std::string text = panel.read("IconPixmap", [&](GVariant* reply) {
        GVariant* value = nullptr;
        g_variant_get(reply, "(v)", &value);
        GVariantIter iter;
        g_variant_iter_init(&iter, value);
        gint32 width = 0;
        gint32 height = 0;
        GVariant* bytes = nullptr;
        while (g_variant_iter_loop(&iter, "(ii@ay)", &width, &height, &bytes)) {
            gsize length = 0;
            const auto* argb = static_cast<const guint8*>(g_variant_get_fixed_array(bytes, &length, 1));
            drawn.sizes.push_back(std::to_string(width) + "x" + std::to_string(height));
            ASSERT_EQ(length, static_cast<gsize>(width * height * 4));
            if (argb[0] != 0) drawn.cornersAreClear = false;
            for (gsize at = 0; at < length; at += 4) {
                if (argb[at] > 200 && argb[at + 1] > 200 && argb[at + 2] > 200 && argb[at + 3] > 200) ++drawn.white;
            }
        }
        g_variant_unref(value);
    });
    EXPECT_EQ(text.rfind("error", 0), std::string::npos) << text;
    return drawn;
}

TEST_F(PanelFaceTest, ShowsADayTileWhereThePanelShowsNoText) {
    startOnPanel();
    EXPECT_EQ(panel_->read("XAyatanaLabel"), "''");
    EXPECT_EQ(panel_->read("IconName"), "''");
    EXPECT_EQ(panel_->read("Title"), "'बैशाख ७'");
    const Drawn seven = drawnIn(*panel_);
    EXPECT_EQ(seven.sizes, (Strings{"22x22", "24x24", "32x32", "48x48"}));
    EXPECT_TRUE(seven.cornersAreClear);
    EXPECT_GT(seven.white, 200);
    // The picture follows the day and not the minute.
    EXPECT_EQ(signalsOf([&] { refresh(" बैशाख ७ ०६:३०"); }), (Strings{"NewTitle"}));
    EXPECT_EQ(signalsOf([&] {
                  day_.setStringValue("२७");
                  refresh(" बैशाख २७");
              }),
              (Strings{"NewTitle", "NewIcon"}));
    EXPECT_NE(drawnIn(*panel_).white, seven.white);
}

TEST_F(PanelFaceTest, SendsOnceWhatARefreshHasChanged) {
    startOnPanel(kGnome);
    EXPECT_EQ(drawnIn(*panel_).white, 0);  // a clear icon beside the label
    // Nothing to read, as tithi alone on a day without: something to see and to click.
    for (const std::optional<std::string>& nothing : {std::optional<std::string>{" "}, {""}, {}}) {
        refresh(nothing);
        runFor(50);
        EXPECT_EQ(panel_->read("XAyatanaLabel"), "''");
        EXPECT_EQ(panel_->read("Title"), "'२०७० बैशाख ७'");
        EXPECT_GT(drawnIn(*panel_).white, 200);
    }
    refresh(" बैशाख ७");
    EXPECT_EQ(signalsOf([&] { refresh("२०७०"); }), (Strings{"NewTitle", "XAyatanaNewLabel('२०७०', '')"}));
    EXPECT_EQ(signalsOf([&] { refresh("२०७०"); }), Strings{});
    EXPECT_EQ(signalsOf([&] { date_->setTitle("२०७० बैशाख ८"); }), Strings{"NewToolTip"});
}

TEST_F(PanelFaceTest, ShowsTheImageInASquareOnEveryPanel) {
    for (const char* labelHost : {kGnome, ""}) {
        startOnPanel(labelHost);
        const bool hasLabel = *labelHost != '\0';
        refresh(std::nullopt, picture(20, 30));
        runFor(50);
        EXPECT_EQ(panel_->read("XAyatanaLabel"), "''");
        EXPECT_EQ(panel_->read("Title"), "'२०७० बैशाख ७'");
        const Drawn flag = drawnIn(*panel_);
        EXPECT_EQ(flag.sizes.size(), 4U);
        EXPECT_TRUE(flag.cornersAreClear);  // padded at the sides, not stretched
        const std::string name = panel_->read("IconName");
        ASSERT_EQ(name.size() > 2, hasLabel) << name;
        if (hasLabel) {
            const ImagePtr file = loadImage(name.substr(1, name.size() - 2));
            ASSERT_NE(file, nullptr) << name;
            EXPECT_EQ(std::pair(file->width, file->height), std::pair(30, 30));
        }
        // Loaded anew at each refresh, it is still the same picture.
        EXPECT_EQ(signalsOf([&] { refresh(std::nullopt, picture(20, 30)); }), Strings{});
        EXPECT_EQ(signalsOf([&] { refresh("७"); }).size(), hasLabel ? 3U : 2U);  // title, icon, the label
    }
}

/// A row a line: its mark, its title, what is special about it; children indented.
std::string outlineOf(GVariant* row, const std::string& indent = {}) {
    GVariant* properties = nullptr;
    GVariant* children = nullptr;
    g_variant_get(row, "(i@a{sv}@av)", nullptr, &properties, &children);
    const char* label = "";
    const char* type = "";
    gboolean visible = TRUE;
    gboolean enabled = TRUE;
    gint32 state = -1;
    g_variant_lookup(properties, "label", "&s", &label);
    g_variant_lookup(properties, "type", "&s", &type);
    g_variant_lookup(properties, "visible", "b", &visible);
    g_variant_lookup(properties, "enabled", "b", &enabled);
    std::string text = indent;
    if (g_variant_lookup(properties, "toggle-state", "i", &state)) text += state == 1 ? "[x] " : "[ ] ";
    text += std::string(type) + label;
    if (visible == FALSE) text += " hidden";
    if (enabled == FALSE) text += " disabled";
    if (GVariant* icon = g_variant_lookup_value(properties, "icon-data", G_VARIANT_TYPE_BYTESTRING)) {
        text += " icon";
        g_variant_unref(icon);
    }
    text += "\n";
    GVariantIter iter;
    g_variant_iter_init(&iter, children);
    GVariant* child = nullptr;
    while (g_variant_iter_loop(&iter, "v", &child)) text += outlineOf(child, indent + "  ");
    g_variant_unref(properties);
    g_variant_unref(children);
    return text;
}

TEST_F(PanelFaceTest, ExportsTheMenuAndRunsTheChoiceOfARow) {
    MenuItem& toggle = add(MenuItem::Kind::toggle, "Day_of_week");
    add(MenuItem::Kind::separator);
    MenuItem& parent = add(MenuItem::Kind::plain, "Today");
    auto submenu = std::make_shared<Menu>();
    submenu->add(std::make_unique<MenuItem>()).setTitle("Day: ७");
    parent.setSubmenu(submenu);
    MenuItem& update = add(MenuItem::Kind::plain, "Update");
    update.setHidden(true);
    MenuItem& logo = add(MenuItem::Kind::plain);
    logo.setImage(picture(64, 64));
    logo.setEnabled(false);
    int chosen = 0;
    toggle.setAction([&] {
        // The second choice changes nothing, like the last piece that stays on.
        if (++chosen == 1) toggle.setState(kOnState);
    });

    startOnPanel();
    std::string outline;
    const auto readLayout = [&] {
        callMenu("GetLayout", "(0, -1, @as [])", [&](GVariant* reply) {
            GVariant* root = g_variant_get_child_value(reply, 1);
            outline = outlineOf(root);
            g_variant_unref(root);
        });
        return outline;
    };
    EXPECT_EQ(readLayout(),
              "\n"
              "  २०७० बैशाख ७\n"
              "  अष्टमी, राम & सीता <जयन्ती>\n"
              "  [ ] Day__of__week\n"
              "  separator\n"
              "  Today\n"
              "    Day: ७\n"
              "  Update hidden\n"
              "   disabled icon\n");

    // The second time for panels that flip marks themselves.
    for (const int expected : {1, 2}) {
        panel_->menuSignals.clear();
        callMenu("Event", "(" + numberOf("Day__of__week") + ", 'clicked', <0>, uint32 0)");
        EXPECT_TRUE(runUntil([&] {
            return std::any_of(panel_->menuSignals.begin(), panel_->menuSignals.end(), [](const std::string& signal) {
                return signal.find("'toggle-state': <1>") != std::string::npos;
            });
        }));
        EXPECT_EQ(chosen, expected);
    }
    update.setHidden(false);
    settle();
    EXPECT_NE(readLayout().find("[x] Day__of__week"), std::string::npos);
    EXPECT_NE(outline.find("  Update\n"), std::string::npos);
}

// Some panels read a submenu too late otherwise, and others read the whole menu at each such signal: once for a panel.
TEST_F(PanelFaceTest, LetsANewPanelReadTheSubmenusAsTheMenuOpens) {
    auto submenu = std::make_shared<Menu>();
    submenu->add(std::make_unique<MenuItem>()).setTitle("Day: ७");
    add(MenuItem::Kind::plain, "Today").setSubmenu(submenu);
    add(MenuItem::Kind::plain, "Quit");
    start();
    for (int panels = 0; panels < 2; ++panels) {
        panel_.reset();
        panel_ = std::make_unique<FakePanel>(bus_);
        ASSERT_TRUE(panel_->waitForItem());
        settle();
        panel_->menuSignals.clear();
        const std::string today = numberOf("Today");
        for (int opened = 0; opened < 2; ++opened) callMenu("AboutToShow", "(0,)");
        settle();
        EXPECT_EQ(panel_->menuSignals, Strings{"LayoutUpdated(0, " + today + ")"});
    }
}

// A bus that does not pass the menu on must not be asked without pause.
TEST_F(PanelFaceTest, AsksForTheMenuWithPausesAndGivesUp) {
    MenuExport menu(rows_, [] {});
    const auto without = bus_.another();  // the menu is on the shared connection
    std::vector<bool> answers;
    const std::clock_t before = std::clock();
    menu.whenExported(without, [&](bool exported) { answers.push_back(exported); });
    EXPECT_TRUE(runUntil([&] { return !answers.empty(); }, 15000));
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC);
    EXPECT_EQ(answers, std::vector<bool>{false});
}

TEST_F(PanelFaceTest, RegistersWithAPanelThatComesLateOrRestartsOrRefusesAtFirst) {
    start();
    runFor(100);
    panel_ = std::make_unique<FakePanel>(bus_);
    ASSERT_TRUE(panel_->waitForItem());
    EXPECT_EQ(panel_->read("XAyatanaLabel"), "''");
    panel_.reset();
    refresh("२०७१");
    runFor(50);
    panel_ = std::make_unique<FakePanel>(bus_, kGnome);
    ASSERT_TRUE(panel_->waitForItem());
    EXPECT_EQ(panel_->read("XAyatanaLabel"), "'२०७१'");
    panel_.reset();
    panel_ = std::make_unique<FakePanel>(bus_);
    panel_->refuses = true;
    runFor(300);
    panel_->refuses = false;
    EXPECT_TRUE(panel_->waitForItem());
    runFor(1300);
    EXPECT_EQ(panel_->items.size(), 1U);  // taken once, it is not offered again
}

// What an older watcher says at last is not about the one that has taken the item meanwhile.
TEST_F(PanelFaceTest, ALateAnswerOfAnotherWatcherChangesNothing) {
    FakePanel old(bus_);
    old.isBusy = true;
    start();
    ASSERT_TRUE(runUntil([&] { return !old.held.empty(); }));
    old.giveUpName();
    panel_ = std::make_unique<FakePanel>(bus_);
    ASSERT_TRUE(panel_->waitForItem());
    settle();
    FakePanel::refuse(old.held.back());
    runFor(1300);  // as long as until a refusal is tried again
    EXPECT_EQ(panel_->items.size(), 1U);
}

// A panel may take its names in any order, and its second name comes from another connection.
TEST_F(PanelFaceTest, TurnsToTextWhenThePanelProvesToShowIt) {
    startOnPanel();
    const auto late = bus_.another();
    EXPECT_EQ(signalsOf([&] { TestBus::own(late, "org.mate.panel.applet.NotificationAreaAppletFactory"); }),
              (Strings{"NewIcon", "XAyatanaNewLabel(' बैशाख ७', '')"}));
    EXPECT_EQ(panel_->items.size(), 1U);
    // A panel that ends loses its names one by one, and is no other panel in between.
    EXPECT_EQ(signalsOf([&] {
                  late->close_sync();
                  runFor(100);
              }),
              Strings{});
    EXPECT_EQ(panel_->read("XAyatanaLabel"), "' बैशाख ७'");
}

TEST_F(PanelFaceTest, TellsOfClicksInPanelsWhereThatDoesGood) {
    struct Case {
        const char* alsoOwns;
        bool told;
    };
    for (const Case& one : {Case{"", true}, Case{"org.mate.panel.applet.NotificationAreaAppletFactory", true},
                            Case{kGnome, false}, Case{"org.kde.kded5", false}}) {
        int clicks = 0;
        startOnPanel(one.alsoOwns, [&](PanelFace& face) { face.whenClicked([&clicks] { ++clicks; }); });
        EXPECT_EQ(panel_->read("ItemIsMenu"), one.told ? "false" : "true") << one.alsoOwns;
        const auto click = [&] {
            return panel_->call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", "(0, 27)");
        };
        EXPECT_EQ(click(), one.told ? "()" : "error: org.freedesktop.DBus.Error.UnknownMethod") << one.alsoOwns;
        EXPECT_EQ(clicks, one.told ? 1 : 0) << one.alsoOwns;
        EXPECT_EQ(panel_->call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "ProvideXdgActivationToken",
                               "('a token',)"),
                  "()");
        EXPECT_EQ(face_->takeToken(), "a token");
        EXPECT_EQ(face_->takeToken(), "");
    }
}

TEST_F(PanelFaceTest, SaysOnceThatNoPanelHoldsTheItem) {
    int said = 0;
    const auto waitAndCount = [&] {
        start();
        face_->ifUnseen(1, [&] { ++said; });
        runFor(2300);
        item_.reset();
        face_.reset();
    };
    waitAndCount();
    EXPECT_EQ(said, 1);
    panel_ = std::make_unique<FakePanel>(bus_);
    waitAndCount();
    EXPECT_EQ(said, 1);
    panel_->refuses = true;
    waitAndCount();
    EXPECT_EQ(said, 2);
}

TEST_F(PanelFaceTest, IsShownOnceItWasReadAndDoesNotWaitInVain) {
    int shown = 0;
    start();
    face_->whenShown([&] { ++shown; });
    panel_ = std::make_unique<FakePanel>(bus_);
    ASSERT_TRUE(panel_->waitForItem());
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(panel_->read("Id"), "'dinmala'");
    EXPECT_TRUE(runUntil([&] { return shown == 1; }, 700));  // a fifth of a second, and not the time limit of one

    leave();
    start();  // no panel at all
    face_->whenShown([&] { ++shown; });
    EXPECT_TRUE(runUntil([&] { return shown == 2; }));
    runFor(100);
    EXPECT_EQ(shown, 2);
}

TEST_F(PanelFaceTest, SaysOnceThatTheBusHasGoneAndDoesNotSpin) {
    startOnPanel();
    bus_.stop();
    EXPECT_TRUE(runUntil([&] { return closed_ > 0; }));
    refresh("२०७१");
    EXPECT_NO_THROW(runFor(100));
    const std::clock_t before = std::clock();
    runFor(500);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
    EXPECT_EQ(closed_, 1);
}

TEST(SessionBus, OneInstanceRunsAtATime) {
    using Result = Claim::Result;
    const TestBus bus;
    const auto first = bus.another();
    EXPECT_EQ(claimInstance(first).result, Result::ours);
    EXPECT_EQ(claimInstance(bus.another()).result, Result::another);
    EXPECT_FALSE(watcherPresent(first));
    const FakePanel panel(bus);
    EXPECT_TRUE(watcherPresent(first));
    notifyUser(first, "nobody listens");

    // A bus that refuses is no other program, and one that is slow is waited for.
    const Claim refused = claimInstance(first, "no name");
    EXPECT_EQ(refused.result, Result::refused);
    EXPECT_NE(refused.why, "");
    const auto pid = static_cast<pid_t>(processIdOf(first, "org.freedesktop.DBus"));
    ASSERT_GT(pid, 0);
    ASSERT_EQ(kill(pid, SIGSTOP), 0);
    std::thread waker([pid] {
        std::this_thread::sleep_for(std::chrono::milliseconds(2300));
        kill(pid, SIGCONT);
    });
    EXPECT_EQ(claimInstance(first).result, Result::ours);
    waker.join();

    first->close_sync();
    EXPECT_EQ(claimInstance(bus.another()).result, Result::ours);
    EXPECT_EQ(claimInstance(first).result, Result::refused);  // closed: no answer, no throw
    notifyUser(first, "nobody listens");
}

TEST(DayTile, TakesWhateverTheDayIs) {
    const ImagePtr digits = loadImage(RESOURCES "/digits.png");
    ASSERT_NE(digits, nullptr);
    const auto ink = [&](std::string_view day) {
        const Image tile = dayTile(*digits, day);
        EXPECT_EQ(tile.width, tile.height);
        std::size_t white = 0;
        for (std::size_t at = 0; at < tile.pixels.size(); at += 4) white += tile.pixels[at + 1] > 200 ? 1U : 0U;
        return white;
    };
    EXPECT_EQ(ink("१२"), ink("१") + ink("२"));
    EXPECT_EQ(ink("-१"), ink("१"));
    EXPECT_EQ(ink("27"), 0U);
    EXPECT_EQ(ink("\xE0\xA5"), 0U);  // half a character
    EXPECT_GT(ink("१२३४५६७८९०"), ink("१२"));
    EXPECT_EQ(dayTile(Image{}, "७").width, 64);  // no digits: a bare square
}

}  // namespace
}  // namespace dinmala
