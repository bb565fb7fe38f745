#include "desktop/SessionBus.h"

#include <limits>

namespace dinmala {

namespace {

using ConnectionPtr = Glib::RefPtr<Gio::DBus::Connection>;

constexpr std::uint32_t kDoNotQueue = 4;
constexpr std::uint32_t kPrimaryOwner = 1;
constexpr std::uint32_t kAlreadyOwner = 4;

constexpr int kPatience = 2000;  // milliseconds
constexpr int kEndless = std::numeric_limits<int>::max();

/// Asks the bus itself.
/// @throws Glib::Error when it refuses or does not answer in time
template <typename Answer>
Answer askBus(const ConnectionPtr& connection, const char* method, const Glib::VariantContainerBase& parameters,
              int timeout) {
    const auto reply = connection->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters,
                                             "org.freedesktop.DBus", timeout);
    Glib::Variant<Answer> answer;
    reply.get_child(answer, 0);
    return answer.get();
}

/// As askBus(); the fallback when there is no answer.
template <typename Answer>
Answer ask(const ConnectionPtr& connection, const char* method, const Glib::VariantContainerBase& parameters,
           Answer fallback) {
    try {
        return askBus<Answer>(connection, method, parameters, kPatience);
    } catch (const Glib::Error&) {
        return fallback;
    }
}

Glib::VariantContainerBase arguments(const std::string& name) {
    return Glib::VariantContainerBase::create_tuple(Glib::Variant<Glib::ustring>::create(name));
}

Glib::VariantContainerBase nameRequest(const std::string& name) {
    return Glib::VariantContainerBase::create_tuple(
        {Glib::Variant<Glib::ustring>::create(name), Glib::Variant<guint32>::create(kDoNotQueue)});
}

bool isOurs(guint32 answer) { return answer == kPrimaryOwner || answer == kAlreadyOwner; }

}  // namespace

bool requestName(const ConnectionPtr& connection, const std::string& name) {
    return isOurs(ask<guint32>(connection, "RequestName", nameRequest(name), 0));
}

Claim claimInstance(const ConnectionPtr& connection, const std::string& name) {
    try {
        const bool ours = isOurs(askBus<guint32>(connection, "RequestName", nameRequest(name), kEndless));
        return {ours ? Claim::Result::ours : Claim::Result::another, {}};
    } catch (Glib::Error& error) {
        Gio::DBus::ErrorUtils::strip_remote_error(error);
        return {Claim::Result::refused, error.what()};
    }
}

void releaseName(const ConnectionPtr& connection, const std::string& name) {
    static_cast<void>(ask<guint32>(connection, "ReleaseName", arguments(name), 0));
}

bool watcherPresent(const ConnectionPtr& connection) {
    return ask<bool>(connection, "NameHasOwner", arguments(kWatcherName), false);
}

std::uint32_t processIdOf(const ConnectionPtr& connection, const std::string& name) {
    return ask<guint32>(connection, "GetConnectionUnixProcessID", arguments(name), 0);
}

}  // namespace dinmala
