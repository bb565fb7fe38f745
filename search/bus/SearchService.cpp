#include "search/bus/SearchService.h"

#include <gio/gio.h>

#include <algorithm>
#include <utility>

#include "i18n/Translation.h"
#include "search/Search.h"

namespace dinmala {

namespace {

constexpr const char* kIntrospection = R"xml(<node><interface name="org.gnome.Shell.SearchProvider2">
  <method name="GetInitialResultSet"><arg type="as" direction="in"/><arg type="as" direction="out"/></method>
  <method name="GetSubsearchResultSet"><arg type="as" direction="in"/><arg type="as" direction="in"/>
    <arg type="as" direction="out"/></method>
  <method name="GetResultMetas"><arg type="as" direction="in"/><arg type="aa{sv}" direction="out"/></method>
  <method name="ActivateResult"><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="u" direction="in"/></method>
  <method name="LaunchSearch"><arg type="as" direction="in"/><arg type="u" direction="in"/></method>
</interface><interface name="org.kde.krunner1">
  <method name="Actions"><arg type="a(sss)" direction="out"/></method>
  <method name="Match"><arg type="s" direction="in"/><arg type="a(sssida{sv})" direction="out"/></method>
  <method name="Run"><arg type="s" direction="in"/><arg type="s" direction="in"/></method>
  <method name="Teardown"/>
</interface></node>)xml";

constexpr const char* kIcon = "dinmala";
constexpr const char* kCopy = "copy";

/// More is asked for by no desktop. What follows is left out.
constexpr std::size_t kMostIds = 16;
constexpr std::size_t kLongestText = 1024;

/// Whatever is one text in the arguments.
std::string textAt(GVariant* arguments, gsize place) {
    const char* text = nullptr;
    g_variant_get_child(arguments, place, "&s", &text);
    return text;
}

/// The words of a list as one text, or as much of them as is of use.
std::string joinedTexts(GVariant* list) {
    std::string text;
    GVariantIter iterator;
    g_variant_iter_init(&iterator, list);
    const char* word = nullptr;
    while (text.size() < kLongestText && g_variant_iter_next(&iterator, "&s", &word) != FALSE) {
        text.append(text.empty() ? "" : " ").append(word);
    }
    return text;
}

std::string joinedTextsAt(GVariant* arguments, gsize place) {
    GVariant* const list = g_variant_get_child_value(arguments, place);
    std::string text = joinedTexts(list);
    g_variant_unref(list);
    return text;
}

/// The token that a window made at a person's click needs, as X11's desktops write the click's time.
std::string tokenOf(GVariant* arguments, gsize place) {
    guint32 time = 0;
    g_variant_get_child(arguments, place, "u", &time);
    return time == 0 ? std::string{} : "dinmala-search_TIME" + std::to_string(time);
}

void put(GVariantBuilder& builder, const char* key, GVariant* value) {
    g_variant_builder_add(&builder, "{sv}", key, value);
}

}  // namespace

SearchService::SearchService(Glib::RefPtr<Gio::DBus::Connection> connection, Doors doors)
    : connection_(std::move(connection)),
      doors_(std::move(doors)),
      handlers_([this](const auto&, const auto&, const auto&, const auto&, const Glib::ustring& method,
                       const auto& arguments, const auto& invocation) { called(method, arguments, invocation); }) {
    const auto node = Gio::DBus::NodeInfo::create_for_xml(kIntrospection);
    shell_ = connection_->register_object(kPath, node->lookup_interface("org.gnome.Shell.SearchProvider2"), handlers_);
    krunner_ = connection_->register_object(kPath, node->lookup_interface("org.kde.krunner1"), handlers_);
}

SearchService::~SearchService() {
    connection_->unregister_object(shell_);
    connection_->unregister_object(krunner_);
}

void SearchService::called(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                           const Invocation& invocation) {
    doors_.called();
    // GLib has held the arguments to the types above; it answers calls of other ones itself.
    GVariant* const result = answer(method, const_cast<GVariant*>(arguments.gobj()));
    invocation->return_value(Glib::VariantContainerBase{g_variant_ref_sink(result)});
}

GVariant* SearchService::answer(const std::string& method, GVariant* arguments) {
    if (method == "Match") return matches(textAt(arguments, 0));
    if (method == "Actions") {
        GVariantBuilder builder;
        g_variant_builder_init(&builder, G_VARIANT_TYPE("a(sss)"));
        g_variant_builder_add(&builder, "(sss)", kCopy, tr("Copy").c_str(), "edit-copy");
        return g_variant_new("(a(sss))", &builder);
    }
    if (method == "GetInitialResultSet" || method == "GetSubsearchResultSet") {
        // A longer text may be another festival's: what was found before does not narrow it.
        const std::string query = joinedTextsAt(arguments, method == "GetInitialResultSet" ? 0 : 1);
        const SearchSurroundings now = doors_.surroundings();
        GVariantBuilder builder;
        g_variant_builder_init(&builder, G_VARIANT_TYPE("as"));
        for (const SearchHit& hit : search(query, now.edition, now.today)) {
            g_variant_builder_add(&builder, "s", hitId(hit).c_str());
        }
        return g_variant_new("(as)", &builder);
    }
    if (method == "GetResultMetas") {
        GVariant* const ids = g_variant_get_child_value(arguments, 0);
        GVariant* const result = metas(ids);
        g_variant_unref(ids);
        return result;
    }
    if (method == "ActivateResult") choose(textAt(arguments, 0), tokenOf(arguments, 2));
    if (method == "LaunchSearch") launch(joinedTextsAt(arguments, 0), tokenOf(arguments, 1));
    if (method == "Run") {
        const std::string id = textAt(arguments, 0);
        if (textAt(arguments, 1) == kCopy || !doors_.open) {
            copy(id);
        } else {
            choose(id, {});
        }
    }
    return g_variant_new("()");
}

GVariant* SearchService::metas(GVariant* ids) const {
    const SearchSurroundings now = doors_.surroundings();
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("aa{sv}"));
    GVariantIter iterator;
    g_variant_iter_init(&iterator, ids);
    const char* id = nullptr;
    for (std::size_t i = 0; i < kMostIds && g_variant_iter_next(&iterator, "&s", &id) != FALSE; ++i) {
        const auto hit = hitOf(id, now.edition);
        if (!hit) continue;
        const HitWords words = hitWords(*hit, now.edition, now.today, now.language, now.digits);
        GVariantBuilder meta;
        g_variant_builder_init(&meta, G_VARIANT_TYPE("a{sv}"));
        put(meta, "id", g_variant_new_string(id));
        put(meta, "name", g_variant_new_string(words.name.c_str()));
        put(meta, "description", g_variant_new_string(words.description.c_str()));
        put(meta, "icon", g_variant_new("(sv)", "themed", g_variant_new_strv(&kIcon, 1)));
        // The shell replaces the clipboard by it whenever the hit is chosen: only where that is all it does.
        if (!doors_.open) put(meta, "clipboardText", g_variant_new_string(words.copy.c_str()));
        g_variant_builder_add_value(&list, g_variant_builder_end(&meta));
    }
    return g_variant_new("(aa{sv})", &list);
}

GVariant* SearchService::matches(const std::string& query) const {
    constexpr int kExactMatch = 100;  // as KRunner counts the kinds of matches
    constexpr double kStep = 0.05;
    const SearchSurroundings now = doors_.surroundings();
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(sssida{sv})"));
    double relevance = 1;
    for (const SearchHit& hit : search(query, now.edition, now.today)) {
        const HitWords words = hitWords(hit, now.edition, now.today, now.language, now.digits);
        GVariantBuilder properties;
        g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
        put(properties, "subtext", g_variant_new_string(words.description.c_str()));
        put(properties, "actions", g_variant_new_strv(&kCopy, 1));
        g_variant_builder_add(&list, "(sssida{sv})", hitId(hit).c_str(), words.name.c_str(), kIcon, kExactMatch,
                              relevance, &properties);
        relevance -= kStep;
    }
    return g_variant_new("(a(sssida{sv}))", &list);
}

void SearchService::choose(const std::string& id, const std::string& token) const {
    if (!doors_.open) return;
    if (const auto hit = hitOf(id, doors_.surroundings().edition)) doors_.open(hit->day, token);
}

void SearchService::launch(const std::string& query, const std::string& token) const {
    if (!doors_.open) return;
    const SearchSurroundings now = doors_.surroundings();
    const auto hits = search(query, now.edition, now.today);
    doors_.open(hits.empty() ? now.today : hits.front().day, token);
}

void SearchService::copy(const std::string& id) const {
    const SearchSurroundings now = doors_.surroundings();
    const auto hit = hitOf(id, now.edition);
    if (!hit) return;
    const std::string text = hitWords(*hit, now.edition, now.today, now.language, now.digits).copy;
    g_dbus_connection_call(connection_->gobj(), "org.kde.klipper", "/klipper", "org.kde.klipper.klipper",
                           "setClipboardContents", g_variant_new("(s)", text.c_str()), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
}

}  // namespace dinmala
