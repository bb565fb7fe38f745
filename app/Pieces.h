/// What the display can say of a day, piece by piece.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/AppDelegate.h"

namespace dinmala {

/// The day that the display is about.
struct Today {
    const DataStore& store;
    /// What the edition's almanac has of it; nothing where the store's own lists tell.
    const AlmanacDay* almanac = nullptr;
};

/// A piece of the display: a row of the table in Pieces.cpp, and a row with its toggle in
/// resources/MainMenu.json. Nothing else knows which pieces there are.
struct Piece {
    /// The piece's key in the preferences. In the interface definition its toggle is the outlet
    /// `<key>MenuItem` with the action `set<Key>:`, its label `txt<Key>`.
    std::string_view key;
    /// What it says of the day; a dash, or a sentence, on a day outside the table.
    std::string (*text)(const Today& today);
    /// Where it has members of its own in Outlets; the others' stand in Outlets::toggles and
    /// Outlets::labels under their keys.
    MenuItem* Outlets::*toggle = nullptr;
    Label* Outlets::*label = nullptr;
};

/// All pieces, in the order of the title.
[[nodiscard]] std::span<const Piece> pieces();

/// The key of the flag, which stands in place of all pieces.
inline constexpr std::string_view kFlagKey = "icon";

/// The toggle and the label that an interface definition has for a piece; null for none.
[[nodiscard]] MenuItem* toggleOf(const Piece& piece, const Outlets& outlets);
[[nodiscard]] Label* labelOf(const Piece& piece, const Outlets& outlets);

}  // namespace dinmala
