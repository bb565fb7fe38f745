/// The month window, a program of its own that is started when it is asked for.
#pragma once

#include <giomm.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "almanac/Edition.h"
#include "desktop/Files.h"

namespace dinmala {

/// Asks the running month window over the session bus, or starts its program.
class CalendarProgram {
public:
    using AskedEdition = std::function<std::optional<EditionId>()>;

    /// @param program its path
    /// @param edition gives the edition that this program was asked for, which is handed on
    /// @param tell    hears when it cannot be started
    CalendarProgram(Glib::RefPtr<Gio::DBus::Connection> connection, std::string program, AskedEdition edition,
                    Tell tell);
    ~CalendarProgram();
    CalendarProgram(const CalendarProgram&) = delete;
    CalendarProgram& operator=(const CalendarProgram&) = delete;

    /// Opens the window at today, or closes it when it is open. A second click within a double click's time, or
    /// while the program is starting, counts for nothing.
    void click();
    /// Opens the window at today, or brings it to the front.
    /// @param token by which the desktop lets it come to the front; may be empty
    void open(const std::string& token);

private:
    void ask(const char* action, const std::string& token);
    void start(const std::string& token);

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    std::string program_;
    AskedEdition edition_;
    Tell tell_;
    Glib::RefPtr<Gio::Cancellable> cancellable_;
    std::int64_t lastClick_ = 0;  ///< monotonic microseconds; 0 before the first
    sigc::connection child_;      ///< connected while a program that was started here runs
};

}  // namespace dinmala
