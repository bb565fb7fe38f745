/// A face: one way to show the status item and its menu to a person.
#pragma once

#include <functional>
#include <memory>

#include "app/AppDelegate.h"

namespace dinmala {

/// Faces observe the status item and the menu's rows; they gather changes and
/// draw when the main loop is idle, so that clearing before setting never flickers.
class Face {
public:
    virtual ~Face() = default;

    /// What the face may show besides the status item. Called once, before
    /// statusItemWithLength(); the outlets outlive the face.
    virtual void setOutlets(const Outlets& outlets) = 0;

    /// The shell's new status item, observed by this face. The face outlives it.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> statusItemWithLength(double length) = 0;

    /// Calls back once, on the main loop, when the item is on show (or when
    /// waiting for that longer is of no use): launching has then finished.
    virtual void whenShown(std::function<void()> callback) = 0;
};

}  // namespace dinmala
