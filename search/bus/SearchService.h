/// The search on the session bus, as GNOME's overview and Plasma's KRunner ask it.
#pragma once

#include <giomm.h>

#include <chrono>
#include <functional>
#include <string>

#include "almanac/Edition.h"
#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala {

/// What answers depend on, asked for at every call.
struct SearchSurroundings {
    const Edition& edition;
    std::chrono::sys_days today;
    Language language;
    Digits digits;
};

/// Answers `org.gnome.Shell.SearchProvider2` and `org.kde.krunner1` on one object. Nothing is kept between calls: a
/// hit's id holds all of it.
class SearchService {
public:
    static constexpr const char* kName = "org.dinmala.Dinmala.Search";
    static constexpr const char* kPath = "/org/dinmala/Dinmala/Search";

    struct Doors {
        std::function<SearchSurroundings()> surroundings;
        /// Opens the window at a day; empty where there is no window. The token lets it come to the front; may be
        /// empty.
        std::function<void(std::chrono::sys_days day, const std::string& token)> open;
        std::function<void()> called;  ///< at every call
    };

    SearchService(Glib::RefPtr<Gio::DBus::Connection> connection, Doors doors);
    ~SearchService();
    SearchService(const SearchService&) = delete;
    SearchService& operator=(const SearchService&) = delete;

private:
    using Invocation = Glib::RefPtr<Gio::DBus::MethodInvocation>;
    void called(const Glib::ustring& method, const Glib::VariantContainerBase& arguments, const Invocation& invocation);
    [[nodiscard]] GVariant* answer(const std::string& method, GVariant* arguments);
    [[nodiscard]] GVariant* metas(GVariant* ids) const;
    [[nodiscard]] GVariant* matches(const std::string& query) const;
    void choose(const std::string& id, const std::string& token) const;
    void launch(const std::string& query, const std::string& token) const;
    /// Into the clipboard that Plasma keeps; without one nothing happens.
    void copy(const std::string& id) const;

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    Doors doors_;
    Gio::DBus::InterfaceVTable handlers_;
    guint shell_ = 0, krunner_ = 0;
};

}  // namespace dinmala
