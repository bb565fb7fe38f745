/// The user's choices, wherever they are kept.
#pragma once

#include <string>
#include <string_view>

namespace dinmala {

/// Under which the name of the edition is kept.
inline constexpr std::string_view kEditionKey = "edition";

/// The user's choices: a persistent map from key to boolean or text.
class Preferences {
public:
    virtual ~Preferences() = default;

    /// False for a key that was never written, or when nothing can be read.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) const = 0;
    virtual void setBoolForKey(bool value, std::string_view key) = 0;
    /// The same for a choice among more than two; "" for a key that was never
    /// written. Where it is not kept, every text is "".
    [[nodiscard]] virtual std::string textForKey(std::string_view) const { return {}; }
    virtual void setTextForKey(std::string_view /*value*/, std::string_view /*key*/) {}
    /// Takes over what was changed elsewhere since it was last read or saved; what
    /// was set here and not saved yet stays. True when something was taken over.
    virtual bool reload() { return false; }
    /// Saves what was set. False when it could not be kept; the user has then
    /// been told, the old file is as it was, and the choices hold for this run.
    virtual bool synchronize() = 0;
};

}  // namespace dinmala
