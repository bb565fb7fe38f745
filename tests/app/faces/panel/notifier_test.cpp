// Notices at a service of notifications that has more or less, refuses, goes, or is not there.
#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "desktop/Notifications.h"
#include "tests/support/Loop.h"
#include "tests/support/TestBus.h"

namespace dinmala {
namespace {

using Glib::Variant;
using Strings = std::vector<Glib::ustring>;

constexpr const char* kName = "org.freedesktop.Notifications";

class Service {
public:
    enum class Manner { takes, refuses, goes };

    Service(const TestBus& bus, Strings can, Manner manner = Manner::takes)
        : connection_(bus.another()), handlers_([this, can = std::move(can), manner](auto&&... call) {
              answer(std::get<4>(std::tie(call...)), std::get<5>(std::tie(call...)), std::get<6>(std::tie(call...)),
                     can, manner);
          }) {
        const auto node = Gio::DBus::NodeInfo::create_for_xml(
            R"(<node><interface name="org.freedesktop.Notifications">
               <method name="GetCapabilities"><arg type="as" direction="out"/></method>
               <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/>
               <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
               <arg type="as" direction="in"/><arg type="a{sv}" direction="in"/><arg type="i" direction="in"/>
               <arg type="u" direction="out"/></method></interface></node>)");
        connection_->register_object("/org/freedesktop/Notifications", node->lookup_interface(), handlers_);
        TestBus::own(connection_, kName);
    }
    ~Service() {
        if (!connection_->is_closed()) connection_->close_sync();
    }
    void tell(const char* signal, unsigned id, const char* word) {
        connection_->emit_signal("/org/freedesktop/Notifications", kName, signal, {},
                                 Glib::VariantContainerBase::create_tuple(
                                     {Variant<guint32>::create(id), Variant<Glib::ustring>::create(word)}));
    }

    std::string text;  ///< of the last notice, as it came
    Strings actions;

private:
    void answer(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation, const Strings& can, Manner manner) {
        if (method == "GetCapabilities") {
            return invocation->return_value(Glib::VariantContainerBase::create_tuple(Variant<Strings>::create(can)));
        }
        if (manner == Manner::refuses) return invocation->return_dbus_error("org.example.Full", "too many");
        if (manner == Manner::goes) return connection_->close_sync();
        Variant<Glib::ustring> body;
        Variant<Strings> buttons;
        arguments.get_child(body, 4);
        arguments.get_child(buttons, 5);
        text = body.get();
        actions = buttons.get();
        invocation->return_value(Glib::VariantContainerBase::create_tuple(Variant<guint32>::create(7)));
    }

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    Gio::DBus::InterfaceVTable handlers_;
};

class NotifierTest : public testing::Test {
protected:
    std::optional<bool> show() {
        std::optional<bool> taken;
        notifier_.show(
            {"Today", "राम & <सीता>", {{"default", "Show"}, {"leave", "Not again"}}},
            [&](bool isTaken) { taken = isTaken; },
            [this](const std::string& key, const std::string& token) { chosen_.push_back(key + " " + token); });
        runUntil([&] { return taken.has_value(); });
        return taken;
    }

    TestBus bus_;
    DesktopNotifier notifier_{TestBus::shared()};
    std::vector<std::string> chosen_;
};

TEST_F(NotifierTest, TellsWhatIsDoneWithANoticeUntilItIsClosed) {
    Service service(bus_, {"actions", "body-markup"});
    ASSERT_EQ(show(), true);
    EXPECT_EQ(service.text, "राम &amp; &lt;सीता&gt;");
    EXPECT_EQ(service.actions, (Strings{"default", "Show", "leave", "Not again"}));
    runFor(50);
    service.tell("ActionInvoked", 8, "leave");  // another program's
    service.tell("ActivationToken", 7, "token");
    service.tell("ActionInvoked", 7, "default");
    service.tell("ActionInvoked", 7, "leave");
    service.tell("NotificationClosed", 7, "");
    service.tell("ActionInvoked", 7, "leave");
    runFor(100);
    EXPECT_EQ(chosen_, (std::vector<std::string>{"default token", "leave "}));
}

TEST_F(NotifierTest, AsksForWhatTheServiceHas) {
    Service service(bus_, {"body"});
    ASSERT_EQ(show(), true);
    EXPECT_EQ(service.text, "राम & <सीता>");
    EXPECT_TRUE(service.actions.empty());
}

// A refused notice is kept for later; one that may have been seen is not shown twice.
TEST_F(NotifierTest, WaitsForSomebodyWhoTakesNotices) {
    EXPECT_EQ(show(), false);
    runFor(50);
    EXPECT_FALSE(notifier_.ready());
    {
        Service service(bus_, {}, Service::Manner::refuses);
        EXPECT_TRUE(runUntil([this] { return notifier_.ready(); }));
        EXPECT_EQ(show(), false);
        EXPECT_FALSE(notifier_.ready());
        EXPECT_TRUE(runUntil([this] { return notifier_.ready(); }));
    }
    Service service(bus_, {}, Service::Manner::goes);
    EXPECT_EQ(show(), true);
    EXPECT_TRUE(notifier_.ready());
}

}  // namespace
}  // namespace dinmala
