#include "app/platform/linux/SessionBus.h"

#include <map>
#include <vector>

namespace dinmala {

namespace {

using ConnectionPtr = Glib::RefPtr<Gio::DBus::Connection>;

constexpr std::uint32_t kDoNotQueue = 4;
constexpr std::uint32_t kPrimaryOwner = 1;
constexpr std::uint32_t kAlreadyOwner = 4;

/// Asks the bus itself; the fallback when it does not answer.
template <typename Answer>
Answer ask(const ConnectionPtr& connection, const char* method, const Glib::VariantContainerBase& parameters,
           Answer fallback) {
    try {
        const auto reply = connection->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters,
                                                 "org.freedesktop.DBus", 2000);
        Glib::Variant<Answer> answer;
        reply.get_child(answer, 0);
        return answer.get();
    } catch (const Glib::Error&) {
        return fallback;
    }
}

Glib::VariantContainerBase arguments(const std::string& name) {
    return Glib::VariantContainerBase::create_tuple(Glib::Variant<Glib::ustring>::create(name));
}

}  // namespace

bool requestName(const ConnectionPtr& connection, const std::string& name) {
    const auto parameters = Glib::VariantContainerBase::create_tuple(
        {Glib::Variant<Glib::ustring>::create(name), Glib::Variant<guint32>::create(kDoNotQueue)});
    const auto answer = ask<guint32>(connection, "RequestName", parameters, 0);
    return answer == kPrimaryOwner || answer == kAlreadyOwner;
}

bool claimInstance(const ConnectionPtr& connection) { return requestName(connection, "org.dinmala.Dinmala"); }

bool watcherPresent(const ConnectionPtr& connection) {
    return ask<bool>(connection, "NameHasOwner", arguments(kWatcherName), false);
}

std::uint32_t processIdOf(const ConnectionPtr& connection, const std::string& name) {
    return ask<guint32>(connection, "GetConnectionUnixProcessID", arguments(name), 0);
}

void notifyUser(const ConnectionPtr& connection, const std::string& text) {
    using Glib::Variant;
    const auto parameters = Glib::VariantContainerBase::create_tuple(
        {Variant<Glib::ustring>::create("Dinmala"), Variant<guint32>::create(0), Variant<Glib::ustring>::create(""),
         Variant<Glib::ustring>::create("Dinmala"), Variant<Glib::ustring>::create(Glib::Markup::escape_text(text)),
         Variant<std::vector<Glib::ustring>>::create({}),
         Variant<std::map<Glib::ustring, Glib::VariantBase>>::create({}), Variant<gint32>::create(-1)});
    // No answer is asked for: without such a service nothing happens.
    const auto message = Gio::DBus::Message::create_method_call(
        "org.freedesktop.Notifications", "/org/freedesktop/Notifications", "org.freedesktop.Notifications", "Notify");
    message->set_body(parameters);
    message->set_flags(Gio::DBus::MessageFlags::NO_REPLY_EXPECTED);
    try {
        connection->send_message(message);
    } catch (const Glib::Error&) {
        // The bus has gone; the program is about to end.
    }
}

}  // namespace dinmala
