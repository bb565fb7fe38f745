/// Which face the program shows, decided from what is around it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dinmala {

enum class FaceKind { panel, terminal, lines };

struct Surroundings {
    std::optional<std::string> asked;  ///< $DINMALA_FACE
    bool hasSessionBus = false;
    bool hasWatcher = false;  ///< a status notifier watcher is on the session bus
    bool onTerminal = false;  ///< standard input and output are a terminal
};

struct FaceChoice {
    FaceKind kind;
    /// One line for the person where the choice may surprise; else empty.
    std::string why;
};

/// The face that was asked for; else the panel when there is one, the terminal
/// when the program was started from one, the panel that may come late when
/// there is a session, and lines.
/// @return nothing when a face was asked for that does not exist; "" asks for none
[[nodiscard]] std::optional<FaceChoice> chooseFace(const Surroundings& around);

}  // namespace dinmala
