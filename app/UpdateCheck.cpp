// The update check and the vendor's pages.
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

#include "app/AppDelegate.h"

namespace dinmala {

namespace {

/// The information property list's key for the host of the vendor's site, with
/// a port where it has one.
constexpr std::string_view kHostKey = "DinmalaSiteHost";
/// A name that can never be a real site (RFC 2606): nothing is fetched from it.
constexpr std::string_view kReservedDomain = ".invalid";

}  // namespace

bool announcesUpdate(std::string_view body) {
    const nlohmann::json answer = nlohmann::json::parse(body, nullptr, false);
    if (!answer.is_object()) return false;
    const auto update = answer.find("update");
    if (update == answer.end()) return false;
    if (update->is_boolean()) return update->get<bool>();
    if (update->is_number()) return update->get<double>() == 1.0;
    return update->is_string() && update->get_ref<const std::string&>() == "1";
}

bool AppDelegate::checkUpdate() {
    const std::string build = infoText("CFBundleVersion");
    const std::string version = infoText("CFBundleShortVersionString");
    Button* button = outlets_.btnNotification;
    if (button != nullptr) button->setHidden(true);
    if (!hasSite()) return false;
    const auto body = platform_.httpGet(siteUrl("/apps/mac/request/vcheck/v/" + version + "/b/" + build));
    if (!body || !announcesUpdate(*body)) return false;
    if (button != nullptr) button->setHidden(false);
    return true;
}

bool AppDelegate::hasSite() const {
    const std::string host = infoText(kHostKey);
    return !host.empty() && !host.ends_with(kReservedDomain);
}

void AppDelegate::goToWeb(Sender) { platform_.openUrl(siteUrl("/?ref=mac")); }

void AppDelegate::goToUpdateURL(Sender) { platform_.openUrl(siteUrl("/apps/mac/")); }

std::string AppDelegate::siteUrl(std::string_view path) const {
    return "http://" + infoText(kHostKey) + std::string{path};
}

std::string AppDelegate::infoText(std::string_view key) const {
    const auto entry = platform_.bundle.info.find(key);
    if (entry == platform_.bundle.info.end()) return {};
    if (const auto* text = std::get_if<std::string>(&entry->second)) return *text;
    if (const auto* number = std::get_if<std::int64_t>(&entry->second)) return std::to_string(*number);
    if (const auto* truth = std::get_if<bool>(&entry->second)) return *truth ? "1" : "0";
    // The shortest text that reads as the same number: 1.5, not 1.500000.
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), std::get<double>(entry->second)).ptr;
    return {text.data(), end};
}

}  // namespace dinmala
