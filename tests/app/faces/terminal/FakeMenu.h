/// A small menu as the interface definition would make it.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/AppDelegate.h"

namespace dinmala {

struct FakeMenu {
    Menu menu;
    Outlets outlets;

    FakeMenu() {
        outlets.statusMenu = &menu;
        outlets.dateMenuItem = &add("२०७० बैशाख ७ शनिवार ०६:३०");
        outlets.descriptionMenuItem = &add("दशमी, सीता जयन्ती");
    }

    MenuItem& add(std::string title, MenuItem::Kind kind = MenuItem::Kind::plain) {
        return addTo(menu, std::move(title), kind);
    }

    static MenuItem& addTo(Menu& to, std::string title, MenuItem::Kind kind = MenuItem::Kind::plain) {
        MenuItem& item = to.add(std::make_unique<MenuItem>(kind));
        item.setTitle(std::move(title));
        return item;
    }

    /// A toggle that flips itself.
    MenuItem& addToggle(std::string title) {
        MenuItem& item = add(std::move(title), MenuItem::Kind::toggle);
        item.setAction([&item] { item.setState(item.state() == kOffState ? kOnState : kOffState); });
        return item;
    }
};

}  // namespace dinmala
