// Start at login: the state is the desktop's login-items list and nothing else.
#include "app/AppDelegate.h"

namespace dinmala {

std::optional<LoginItemRef> AppDelegate::itemRefInLoginItems() {
    std::optional<LoginItemRef> found;
    const auto entries = platform_.loginItems->snapshot();
    if (!entries) return found;
    for (const LoginItemRef& entry : *entries) {
        if (platform_.loginItems->resolve(entry) == platform_.bundle.bundlePath) found = entry;  // the last one counts
    }
    return found;
}

bool AppDelegate::isLoginItem() { return itemRefInLoginItems().has_value(); }

void AppDelegate::addAsLoginItem() { platform_.loginItems->append(platform_.bundle.bundlePath); }

void AppDelegate::removeAsLoginItem() {
    if (const auto entry = itemRefInLoginItems()) platform_.loginItems->remove(*entry);
}

void AppDelegate::changeAppStartup(Sender) {
    MenuItem* item = outlets_.startupMenuItem;
    const bool add = item != nullptr ? item->state() == kOffState : !isLoginItem();
    mark(item, add);
    if (add) {
        addAsLoginItem();
    } else {
        removeAsLoginItem();
    }
}

void AppDelegate::applyStartupState() { mark(outlets_.startupMenuItem, isLoginItem()); }

}  // namespace dinmala
