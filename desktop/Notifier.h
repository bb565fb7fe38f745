/// Messages that the desktop shows beside whatever a person does.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace dinmala {

struct Notice {
    struct Action {
        std::string key;  ///< "default" is a click on the message itself
        std::string label;
    };
    std::string title, text;
    std::vector<Action> actions;
};

class Notifier {
public:
    virtual ~Notifier() = default;

    /// False from a notice that nobody took until there is somebody again who does.
    [[nodiscard]] virtual bool ready() const = 0;

    /// Shows a notice; returns at once.
    /// @param taken hears once, later, whether it was taken for showing; also true where that remains unknown
    /// @param chosen hears of each action that the person chooses, and gets the token with which a program that is
    ///               started for it may come to the front, "" for none
    virtual void show(const Notice& notice, std::function<void(bool)> taken,
                      std::function<void(const std::string& key, const std::string& token)> chosen) = 0;
};

}  // namespace dinmala
