/// The programs that start at login, however the desktop keeps them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dinmala {

/// One entry of the login-items list, as LoginItems::snapshot() gave it.
struct LoginItemRef {
    std::string id;
};

/// The programs that the desktop starts at login, in order.
class LoginItems {
public:
    virtual ~LoginItems() = default;

    /// The entries in list order; nothing when the list cannot be opened.
    [[nodiscard]] virtual std::optional<std::vector<LoginItemRef>> snapshot() = 0;
    /// The absolute path of the program that an entry starts; nothing when it
    /// has none.
    [[nodiscard]] virtual std::optional<std::string> resolve(const LoginItemRef& entry) = 0;
    /// Adds an entry for a program at the end of the list, whether or not it has
    /// one. False when it could not be kept; the user has then been told.
    virtual bool append(const std::string& path) = 0;
    /// As append(), for taking an entry away.
    virtual bool remove(const LoginItemRef& entry) = 0;
};

}  // namespace dinmala
