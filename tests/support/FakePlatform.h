/// A platform in memory: the clock stands until it is moved, preferences are a
/// map, login items a list, the run loop keeps its callbacks for the test to call.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/AppDelegate.h"
#include "tests/support/Moments.h"

namespace dinmala::test {

/// The eight toggles, in the order of the title.
inline constexpr const char* kKeys[] = {"icon", "year", "month", "day", "dow", "time", "tithi", "event"};

class FakePreferences : public Preferences {
public:
    [[nodiscard]] bool boolForKey(std::string_view key) const override {
        const auto found = values.find(key);
        return found != values.end() && found->second;
    }
    void setBoolForKey(bool value, std::string_view key) override { values.insert_or_assign(std::string{key}, value); }
    bool reload() override {
        if (!elsewhere && elsewhereTexts.empty()) return false;
        if (elsewhere) values = *std::exchange(elsewhere, std::nullopt);
        for (const auto& [key, text] : std::exchange(elsewhereTexts, {})) texts[key] = text;
        return true;
    }
    [[nodiscard]] std::string textForKey(std::string_view key) const override {
        const auto found = texts.find(key);
        return found != texts.end() ? found->second : std::string{};
    }
    void setTextForKey(std::string_view value, std::string_view key) override {
        texts.insert_or_assign(std::string{key}, std::string{value});
    }
    bool synchronize() override {
        saved = values;
        return true;
    }

    /// The keys that are on, in the order of the title.
    [[nodiscard]] std::string on() const {
        std::string result;
        for (const char* key : kKeys) {
            if (boolForKey(key)) result += (result.empty() ? "" : " ") + std::string{key};
        }
        return result;
    }

    std::map<std::string, bool, std::less<>> values;
    std::map<std::string, bool, std::less<>> saved;
    std::map<std::string, std::string, std::less<>> texts;
    std::optional<std::map<std::string, bool, std::less<>>> elsewhere;  ///< chosen by another program
    std::map<std::string, std::string> elsewhereTexts;
};

class FakeLoginItems : public LoginItems {
public:
    /// An entry with no path does not resolve.
    struct Entry {
        std::string id;
        std::optional<std::string> path;
    };

    [[nodiscard]] std::optional<std::vector<LoginItemRef>> snapshot() override {
        if (!opens) return std::nullopt;
        std::vector<LoginItemRef> refs;
        for (const Entry& entry : entries) refs.push_back({entry.id});
        return refs;
    }
    [[nodiscard]] std::optional<std::string> resolve(const LoginItemRef& ref) override {
        for (const Entry& entry : entries) {
            if (entry.id == ref.id) return entry.path;
        }
        return std::nullopt;
    }
    bool append(const std::string& path) override {
        if (opens) entries.push_back({"new" + std::to_string(entries.size()), path});
        return opens;
    }
    bool remove(const LoginItemRef& ref) override {
        return std::erase_if(entries, [&](const Entry& entry) { return entry.id == ref.id; }) > 0;
    }
    [[nodiscard]] std::string ids() const {
        std::string result;
        for (const Entry& entry : entries) result += (result.empty() ? "" : " ") + entry.id;
        return result;
    }

    bool opens = true;
    std::vector<Entry> entries;
};

class FakeRunLoop : public RunLoop {
public:
    void everySecond(std::function<void()> callback) override { tick = std::move(callback); }
    void onSystemClockChange(std::function<void()> callback) override { clockChanged = std::move(callback); }
    void onWake(std::function<void()> callback) override { woke = std::move(callback); }

    std::function<void()> tick, clockChanged, woke;
};

/// The shell on a fake platform, with every outlet connected.
class Shell {
public:
    explicit Shell(Moment moment = nepal(2024, 10, 18, 14, 5)) : now(moment) { restart(); }

    /// What happens when the program is started again on the same machine.
    void restart() { delegate = std::make_unique<AppDelegate>(platform(), outlets()); }

    [[nodiscard]] Platform platform() {
        Platform p;
        p.clock = [this] { return std::exchange(now, now + perReading); };
        p.bundle.bundlePath = "/opt/dinmala/bin/dinmala";
        p.bundle.pathForResource = [this](std::string_view name, std::string_view type) -> std::optional<std::string> {
            const std::string file = std::string{name} + "." + std::string{type};
            if (missingResources.find(file) != std::string::npos) return std::nullopt;
            return "/res/" + file;
        };
        p.bundle.info = info;
        p.preferences = &preferences;
        p.loginItems = &loginItems;
        p.runLoop = &runLoop;
        p.statusItemWithLength = [this](double length) {
            auto item = std::make_unique<StatusItem>(length);
            item->setObserver([this, raw = item.get()] {
                const std::string shown = raw->image() ? "[image]" : raw->title() ? "'" + *raw->title() + "'" : "-";
                if (log.empty() || log.back() != shown) log.push_back(shown);
            });
            return item;
        };
        p.loadImage = [this](const std::string& path) {
            loaded.push_back(path);
            return std::make_shared<Image>(Image{path, 1, 1, {0, 0, 0, 0}});
        };
        p.readPropertyList = [this](const std::string&) { return settings; };
        p.httpGet = [this](const std::string& url) {
            fetched.push_back(url);
            return answer;
        };
        p.openUrl = [this](const std::string& url) { opened.push_back(url); };
        return p;
    }

    [[nodiscard]] Outlets outlets() {
        Outlets o;
        o.statusMenu = &menu;
        o.dateMenuItem = &date;
        o.descriptionMenuItem = &description;
        o.startupMenuItem = &startup;
        o.logoMenuItem = &logo;
        o.iconMenuItem = &toggles[0];
        o.yearMenuItem = &toggles[1];
        o.monthMenuItem = &toggles[2];
        o.dayMenuItem = &toggles[3];
        o.dowMenuItem = &toggles[4];
        o.timeMenuItem = &toggles[5];
        o.tithiMenuItem = &toggles[6];
        o.eventMenuItem = &toggles[7];
        o.btnNotification = &update;
        o.txtYear = &labels[0];
        o.txtMonth = &labels[1];
        o.txtDay = &labels[2];
        o.txtDow = &labels[3];
        o.txtTime = &labels[4];
        o.txtTithi = &labels[5];
        o.txtEvent = &labels[6];
        return o;
    }

    [[nodiscard]] std::optional<std::string> title() const { return delegate->statusItem()->title(); }

    /// Everything that a person can see.
    [[nodiscard]] std::string everything() const {
        const StatusItem& item = *delegate->statusItem();
        std::string text = item.title().value_or("no title");
        for (const ImagePtr& image : {item.image(), item.alternateImage(), logo.image()}) {
            text += " | " + (image ? image->path : "no image");
        }
        text += " | " + item.toolTip() + " | " + date.title() + " | " + description.title();
        for (const Label& label : labels) text += " | " + label.stringValue();
        return text + " | " + marks();
    }

    /// The keys whose toggles are marked.
    [[nodiscard]] std::string marks() const {
        std::string result;
        for (std::size_t i = 0; i < std::size(kKeys); ++i) {
            if (toggles[i].state() == kOnState) result += (result.empty() ? "" : " ") + std::string{kKeys[i]};
        }
        return result;
    }

    Moment now;
    std::chrono::seconds perReading{0};  ///< how far the clock goes on each time it is read
    FakePreferences preferences;
    FakeLoginItems loginItems;
    FakeRunLoop runLoop;
    PropertyList info{{"CFBundleVersion", std::string{"7"}},
                      {"CFBundleShortVersionString", std::string{"2.0"}},
                      {"DinmalaSiteHost", std::string{"site.example"}}};
    std::optional<PropertyList> settings;
    std::optional<std::string> answer;
    std::string missingResources;
    std::vector<std::string> loaded, fetched, opened;
    std::vector<std::string> log;  ///< what the status item showed, in order

    Menu menu;
    MenuItem date, description, startup, logo;
    MenuItem toggles[8];
    Button update;
    Label labels[7];
    std::unique_ptr<AppDelegate> delegate;
};

}  // namespace dinmala::test
