#include "app/FaceChoice.h"

#include "i18n/Translation.h"

namespace dinmala {

std::optional<FaceChoice> chooseFace(const Surroundings& around) {
    if (around.asked && !around.asked->empty()) {
        if (*around.asked == "panel") return FaceChoice{FaceKind::panel, ""};
        if (*around.asked == "terminal") return FaceChoice{FaceKind::terminal, ""};
        if (*around.asked == "lines") return FaceChoice{FaceKind::lines, ""};
        return std::nullopt;
    }
    if (around.hasWatcher) return FaceChoice{FaceKind::panel, ""};
    if (around.onTerminal) {
        return FaceChoice{FaceKind::terminal, around.hasSessionBus
                                                  ? tr("no panel takes status items here, so this is the terminal face")
                                                  : tr("there is no session bus, so this is the terminal face")};
    }
    return FaceChoice{around.hasSessionBus ? FaceKind::panel : FaceKind::lines, ""};
}

}  // namespace dinmala
