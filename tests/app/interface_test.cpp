#include "app/Interface.h"

#include <gtest/gtest.h>
#include <libintl.h>
#include <stdlib.h>

#include <clocale>
#include <utility>

#include "tests/support/FakePlatform.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

std::string shippedDefinition() { return contentOf(SOURCE_DIR "/app/resources/MainMenu.json"); }

std::string refusal(const std::string& definition) {
    try {
        const Interface interface { definition };
    } catch (const InterfaceError& error) {
        return error.what();
    }
    return "";
}

MenuItem* rowTitled(const Menu& menu, const std::string& title) {
    for (const auto& item : menu.items()) {
        if (item->title() == title) return item.get();
    }
    return nullptr;
}

// A row wired to the wrong action, or an outlet left out, shows here: the whole
// shell is worked through the shipped menu alone.
TEST(Interface, TheShippedMenuDrivesTheShell) {
    test::Shell shell;
    Interface interface { shippedDefinition() };
    const Outlets& o = interface.outlets();
    for (const MenuItem* item : {o.dateMenuItem, o.descriptionMenuItem, o.startupMenuItem, o.logoMenuItem}) {
        ASSERT_NE(item, nullptr);
    }
    AppDelegate delegate{shell.platform(), o};
    bool ended = false;
    interface.connect(delegate, [&] { ended = true; });
    delegate.awakeFromNib();

    struct Toggle {
        const char* key;
        MenuItem* item;
        const char* title;
    };
    for (const Toggle& toggle : {Toggle{"year", o.yearMenuItem, "Year"}, Toggle{"month", o.monthMenuItem, "Month"},
                                 Toggle{"day", o.dayMenuItem, "Day"}, Toggle{"dow", o.dowMenuItem, "Weekday"},
                                 Toggle{"time", o.timeMenuItem, "Time"}, Toggle{"tithi", o.tithiMenuItem, "Tithi"},
                                 Toggle{"event", o.eventMenuItem, "Events"}, Toggle{"icon", o.iconMenuItem, "Flag"}}) {
        ASSERT_NE(toggle.item, nullptr) << toggle.key;
        EXPECT_EQ(toggle.item->title(), toggle.title);
        EXPECT_EQ(toggle.item->kind(), MenuItem::Kind::toggle);
        const bool before = shell.preferences.boolForKey(toggle.key);
        toggle.item->choose();
        EXPECT_NE(shell.preferences.boolForKey(toggle.key), before) << toggle.key;
        EXPECT_EQ(toggle.item->state() == kOnState, !before) << toggle.key;
    }

    o.startupMenuItem->choose();
    EXPECT_EQ(shell.loginItems.entries.size(), 1u);
    EXPECT_TRUE(o.logoMenuItem->isEnabled());
    o.logoMenuItem->choose();
    EXPECT_EQ(shell.opened, (std::vector<std::string>{"http://site.example/?ref=mac"}));
    rowTitled(*o.statusMenu, "Quit")->choose();
    EXPECT_TRUE(ended);

    // The labels' rows show caption and text; the update row is there while the
    // button is.
    const Menu* today = rowTitled(*o.statusMenu, "Today")->submenu();
    ASSERT_EQ(today->items().size(), 7u);
    EXPECT_EQ(today->items()[1]->title(), "Month: कार्तिक");
    EXPECT_EQ(today->items()[6]->title(), "Events: –");
    MenuItem* update = rowTitled(*o.statusMenu, "A newer version is out…");
    EXPECT_TRUE(update->isHidden());
    o.btnNotification->setHidden(false);
    EXPECT_FALSE(update->isHidden());
    update->choose();
    EXPECT_EQ(shell.opened.back(), "http://site.example/apps/mac/");
}

TEST(Interface, OffersTheMonthWindowWhereThereIsOne) {
    for (const bool installed : {false, true}) {
        test::Shell shell;
        int opened = 0;
        Platform platform = shell.platform();
        if (installed) platform.openCalendar = [&opened] { ++opened; };
        Interface interface { shippedDefinition() };
        AppDelegate delegate{std::move(platform), interface.outlets()};
        interface.connect(delegate, [] {});
        delegate.awakeFromNib();
        const MenuItem& row = *interface.outlets().statusMenu->items().front();
        EXPECT_EQ(row.title(), "Calendar");
        EXPECT_EQ(row.isHidden(), !installed);
        row.choose();
        EXPECT_EQ(opened, installed ? 1 : 0);
    }
}

TEST(Interface, OffersNoLinkWithoutASite) {
    for (const char* host : {"", "dinmala.invalid"}) {
        test::Shell shell;
        shell.info["DinmalaSiteHost"] = std::string{host};
        Interface interface { shippedDefinition() };
        AppDelegate delegate{shell.platform(), interface.outlets()};
        interface.connect(delegate, [] {});
        EXPECT_FALSE(interface.outlets().logoMenuItem->isEnabled());
        EXPECT_FALSE(rowTitled(*interface.outlets().statusMenu, "A newer version is out…")->isEnabled());
        EXPECT_TRUE(rowTitled(*interface.outlets().statusMenu, "Quit")->isEnabled());
    }
}

TEST(Interface, SpeaksTheUsersLanguage) {
    bindtextdomain("dinmala", LOCALE);
    bind_textdomain_codeset("dinmala", "UTF-8");
    for (const auto& [language, quit] : {std::pair{"ne", "बन्द गर्ने"}, std::pair{"fr", "Quit"}}) {
        setenv("LANGUAGE", language, 1);
        std::setlocale(LC_MESSAGES, "C");
        std::setlocale(LC_MESSAGES, "C.UTF-8");  // a change, or an earlier language would be remembered
        const Interface interface { shippedDefinition() };
        EXPECT_NE(rowTitled(*interface.outlets().statusMenu, quit), nullptr) << language;
    }
    unsetenv("LANGUAGE");
    std::setlocale(LC_MESSAGES, "C");
}

TEST(Interface, SaysWhatIsWrongAndWhere) {
    EXPECT_TRUE(refusal("{\n\"rows\": [\n{,}]}").starts_with("parse error at line 3, column 2: "));
    EXPECT_EQ(refusal("{}"), "has no \"rows\"");
    EXPECT_EQ(refusal(R"({"rows":[]})"), "rows: is not a list of rows");
    EXPECT_EQ(refusal(R"({"rows":[7]})"), "rows[0]: a row is not an object");
    EXPECT_EQ(refusal(R"({"rows":[{"titel":{}}]})"), "rows[0]: unknown key \"titel\"");
    EXPECT_EQ(refusal(R"({"rows":[{"title":{"en":"x"}}]})"), "rows[0]: \"title\" is not a text");
    EXPECT_EQ(refusal(R"({"rows":[{"mark":1}]})"), "rows[0]: \"mark\" is not true or false");
    EXPECT_EQ(refusal(R"({"rows":[{"rows":[{"outlet":"iconMenu"}]}]})"),
              "rows[0].rows[0]: there is no outlet iconMenu of this kind");
    EXPECT_EQ(refusal(R"({"rows":[{"label":"iconMenuItem"}]})"),
              "rows[0]: there is no outlet iconMenuItem of this kind");
    EXPECT_EQ(refusal(R"({"rows":[{"label":"txtDay"},{"label":"txtDay"}]})"),
              "rows[1]: outlet txtDay is connected already");
    EXPECT_EQ(refusal(R"({"rows":[{"action":"setYear"}]})"), "rows[0]: there is no action setYear");
    std::string deep;
    for (int i = 0; i < 50000; ++i) deep += R"({"rows":[)";
    for (int i = 0; i < 50000; ++i) deep += "]}";
    EXPECT_EQ(refusal(deep), "rows[0].rows[0].rows[0].rows[0].rows[0].rows[0].rows[0].rows[0].rows: is too deep");
}

}  // namespace
}  // namespace dinmala
