#include "desktop/Notifications.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace dinmala {

namespace {

using ConnectionPtr = Glib::RefPtr<Gio::DBus::Connection>;
using MessagePtr = Glib::RefPtr<Gio::DBus::Message>;
using Glib::Variant;

constexpr const char* kService = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr int kUsualPatience = -1;

MessagePtr callOf(const char* method) {
    return Gio::DBus::Message::create_method_call(kService, kPath, kService, method);
}

MessagePtr notifyCall(const std::string& title, const Glib::ustring& text, const std::vector<Glib::ustring>& actions) {
    std::map<Glib::ustring, Glib::VariantBase> hints;
    hints["desktop-entry"] = Variant<Glib::ustring>::create("dinmala");
    auto message = callOf("Notify");
    message->set_body(Glib::VariantContainerBase::create_tuple(
        {Variant<Glib::ustring>::create("Dinmala"), Variant<guint32>::create(0),
         Variant<Glib::ustring>::create("dinmala"), Variant<Glib::ustring>::create(title),
         Variant<Glib::ustring>::create(text), Variant<std::vector<Glib::ustring>>::create(actions),
         Variant<std::map<Glib::ustring, Glib::VariantBase>>::create(hints), Variant<gint32>::create(-1)}));
    return message;
}

/// The first value of a message; nothing when it has another type.
template <typename Value>
std::optional<Value> firstOf(const Glib::VariantBase& body) {
    if (!body || !body.is_container()) return std::nullopt;
    const auto values = Glib::VariantBase::cast_dynamic<Glib::VariantContainerBase>(body);
    if (values.get_n_children() == 0) return std::nullopt;
    Glib::VariantBase first;
    values.get_child(first, 0);
    if (!first.is_of_type(Variant<Value>::variant_type())) return std::nullopt;
    return Glib::VariantBase::cast_dynamic<Variant<Value>>(first).get();
}

}  // namespace

void notifyUser(const ConnectionPtr& connection, const std::string& text) {
    // No answer is asked for: without such a service nothing happens.
    const auto message = notifyCall("Dinmala", Glib::Markup::escape_text(text), {});
    message->set_flags(Gio::DBus::MessageFlags::NO_REPLY_EXPECTED);
    try {
        connection->send_message(message);
    } catch (const Glib::Error&) {
        // The bus has gone; the program is about to end.
    }
}

struct DesktopNotifier::State : std::enable_shared_from_this<State> {
    explicit State(ConnectionPtr bus) : connection(std::move(bus)) {}

    /// A notice that was taken, until it is closed or its service goes.
    struct Shown {
        guint32 id;
        Glib::ustring sender;
        guint subscription, watch;
        std::function<void(const std::string&, const std::string&)> chosen;
        std::string token;
    };

    /// Of a call: its answer, or null and whether it may have come through all the same.
    using Answered = std::function<void(State&, const MessagePtr& answer, bool isUnknown)>;

    /// Sends a call; `answered` is not called when all is over by then.
    void call(const MessagePtr& message, Answered answered) {
        struct Waiting {
            std::weak_ptr<State> state;
            Answered answered;
        };
        // By GLib's own function: giomm's writes into the message after it was sent, and GLib complains.
        g_dbus_connection_send_message_with_reply(
            connection->gobj(), message->gobj(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, kUsualPatience, nullptr, nullptr,
            [](GObject* source, GAsyncResult* result, void* data) {
                const std::unique_ptr<Waiting> waiting(static_cast<Waiting*>(data));
                GError* error = nullptr;
                MessagePtr answer = Glib::wrap(
                    g_dbus_connection_send_message_with_reply_finish(G_DBUS_CONNECTION(source), result, &error));
                if (answer && g_dbus_message_to_gerror(answer->gobj(), &error) != FALSE) answer.reset();
                const bool isUnknown = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) != FALSE ||
                                       g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY) != FALSE;
                g_clear_error(&error);
                if (const auto state = waiting->state.lock()) waiting->answered(*state, answer, isUnknown);
            },
            new Waiting{weak_from_this(), std::move(answered)});
    }

    /// Nobody took a notice: waits until somebody has the name, without starting anybody.
    void await() {
        if (watch != 0) return;
        isReady = false;
        watch = Gio::DBus::watch_name(connection, kService,
                                      [self = weak_from_this()](const ConnectionPtr&, const Glib::ustring&, auto&&...) {
                                          const auto state = self.lock();
                                          if (!state) return;
                                          state->isReady = true;
                                          Gio::DBus::unwatch_name(std::exchange(state->watch, 0));
                                      });
    }

    /// @param sender the service's own name on the bus: another service, later, counts its notices anew
    void listen(guint32 id, const Glib::ustring& sender,
                std::function<void(const std::string&, const std::string&)> chosen) {
        const guint subscription = connection->signal_subscribe(
            [self = weak_from_this(), id](const ConnectionPtr&, const Glib::ustring&, const Glib::ustring&,
                                          const Glib::ustring&, const Glib::ustring& signal,
                                          const Glib::VariantContainerBase& parameters) {
                const auto state = self.lock();
                if (state && firstOf<guint32>(parameters) == id) state->heard(id, signal, parameters);
            },
            sender, kService, {}, kPath);
        const guint life = Gio::DBus::watch_name(
            connection, sender, [](auto&&...) {},
            [self = weak_from_this()](const ConnectionPtr&, const Glib::ustring& gone) {
                if (const auto state = self.lock())
                    state->forget([&](const Shown& one) { return one.sender.raw() == gone.raw(); });
            });
        shown.push_back({id, sender, subscription, life, std::move(chosen), {}});
    }

    /// Listens no more to those that it is asked of.
    template <typename Is>
    void forget(Is&& is) {
        std::erase_if(shown, [&](const Shown& one) {
            if (!is(one)) return false;
            connection->signal_unsubscribe(one.subscription);
            Gio::DBus::unwatch_name(one.watch);
            return true;
        });
    }

    void heard(guint32 id, const Glib::ustring& signal, const Glib::VariantContainerBase& parameters) {
        const auto one = std::find_if(shown.begin(), shown.end(), [id](const Shown& other) { return other.id == id; });
        if (one == shown.end()) return;
        if (signal == "NotificationClosed") {
            forget([id](const Shown& other) { return other.id == id; });
            return;
        }
        Glib::VariantBase word;
        if (parameters.get_n_children() < 2) return;
        parameters.get_child(word, 1);
        if (!word.is_of_type(Glib::VARIANT_TYPE_STRING)) return;
        const std::string text = Glib::VariantBase::cast_dynamic<Variant<Glib::ustring>>(word).get();
        if (signal == "ActivationToken") one->token = text;
        if (signal != "ActionInvoked") return;
        const auto chosen = one->chosen;  // what it does may close the notice
        chosen(text, std::exchange(one->token, {}));
    }

    ConnectionPtr connection;
    bool isReady = true;
    guint watch = 0;
    std::vector<Shown> shown;
};

DesktopNotifier::DesktopNotifier(const ConnectionPtr& connection) : state_(std::make_shared<State>(connection)) {}

DesktopNotifier::~DesktopNotifier() {
    if (state_->watch != 0) Gio::DBus::unwatch_name(state_->watch);
    state_->forget([](const State::Shown&) { return true; });
}

bool DesktopNotifier::ready() const { return state_->isReady; }

void DesktopNotifier::show(const Notice& notice, std::function<void(bool)> taken,
                           std::function<void(const std::string& key, const std::string& token)> chosen) {
    const auto begin = [notice, taken = std::move(taken), chosen = std::move(chosen)](
                           State& state, const MessagePtr& capabilities, bool) {
        if (!capabilities) {
            state.await();
            taken(false);
            return;
        }
        Glib::VariantBase body;
        capabilities->get_body(body);
        const auto can = firstOf<std::vector<Glib::ustring>>(body).value_or(std::vector<Glib::ustring>{});
        const auto has = [&can](const char* what) { return std::find(can.begin(), can.end(), what) != can.end(); };
        std::vector<Glib::ustring> actions;
        for (const Notice::Action& action : notice.actions) {
            if (has("actions")) actions.insert(actions.end(), {action.key, action.label});
        }
        const Glib::ustring text =
            has("body-markup") ? Glib::Markup::escape_text(notice.text) : Glib::ustring(notice.text);
        state.call(notifyCall(notice.title, text, actions),
                   [taken, chosen](State& later, const MessagePtr& answer, bool isUnknown) {
                       if (!answer) {
                           if (!isUnknown) later.await();
                           taken(isUnknown);
                           return;
                       }
                       Glib::VariantBase number;
                       answer->get_body(number);
                       if (const auto id = firstOf<guint32>(number)) later.listen(*id, answer->get_sender(), chosen);
                       taken(true);
                   });
    };
    state_->call(callOf("GetCapabilities"), begin);
}

}  // namespace dinmala
