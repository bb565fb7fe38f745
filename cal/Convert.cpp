#include "cal/Convert.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "cal/Json.h"
#include "cal/Messages.h"
#include "i18n/Translation.h"

namespace dinmala::cal {

namespace {

constexpr std::size_t kReadSize = 64 * 1024;
constexpr std::size_t kLongestLine = 4 * 1024;

bool writeAll(int to, std::string& text) {
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t written = ::write(to, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            complain(tr("cannot write: {1}", {std::strerror(errno)}));
            return false;
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    text.clear();
    return true;
}

std::string_view withoutBlanksAround(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Turns one line after the other into the text to write.
class LineConverter {
public:
    LineConverter(const BsCalendar& calendar, const Settings& settings) : calendar_(calendar), settings_(settings) {}

    void convert(std::string_view line, std::string& out) {
        begin(out);
        const std::string_view text = withoutBlanksAround(line);
        if (line.size() > kLongestLine) {
            refuse(tr("the line is longer than {1} bytes", {std::to_string(kLongestLine)}), out);
        } else if (const auto day = readDay(text, settings_.from, calendar_)) {
            appendConverted(out, *day, settings_);
        } else {
            refuse(text.empty() ? tr("the line is empty") : problemWith(text, settings_.from, calendar_), out);
        }
        if (!settings_.json) out += '\n';
    }

    void end(std::string& out) const {
        if (settings_.json) out += number_ == 0 ? "[]\n" : "\n]\n";
    }

    [[nodiscard]] bool failed() const { return failed_; }

private:
    void begin(std::string& out) {
        ++number_;
        if (settings_.json) out += number_ == 1 ? "[\n" : ",\n";
    }

    void refuse(const std::string& problem, std::string& out) {
        complain(tr("line {1}: {2}", {std::to_string(number_), problem}));
        if (settings_.json) out += Json{{"line", number_}, {"error", problem}}.dump();
        failed_ = true;
    }

    const BsCalendar& calendar_;
    const Settings& settings_;
    std::uint64_t number_ = 0;
    bool failed_ = false;
};

}  // namespace

void appendConverted(std::string& out, const FoundDay& day, const Settings& settings) {
    if (settings.json) {
        out += jsonOf(day.bs, day.day).dump();
    } else if (day.told == CalendarKind::ad) {
        appendDate(out, day.bs, settings.digits);
    } else {
        appendDate(out, std::chrono::year_month_day{day.day});
    }
}

int convertStream(const BsCalendar& calendar, const Settings& settings, int from, int to) {
    LineConverter lines{calendar, settings};
    std::string out;
    std::vector<char> buffer(kLongestLine + 1 + kReadSize);
    std::size_t kept = 0;  // of a line that has not ended yet
    bool tooLong = false;  // what is kept is the head of a line whose rest is left out
    bool readWell = true;
    while (true) {
        const ssize_t got = ::read(from, buffer.data() + kept, kReadSize);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            complain(tr("cannot read: {1}", {std::strerror(errno)}));
            readWell = false;
        }
        if (got <= 0) break;
        const char* at = buffer.data();
        const char* const end = buffer.data() + kept + got;
        const char* search = at + kept;
        while (const void* found = std::memchr(search, '\n', static_cast<std::size_t>(end - search))) {
            const char* const newline = static_cast<const char*>(found);
            const std::size_t length = tooLong ? kept : static_cast<std::size_t>(newline - at);
            lines.convert({at, length}, out);
            tooLong = false;
            kept = 0;
            at = search = newline + 1;
        }
        if (!tooLong) {
            kept = static_cast<std::size_t>(end - at);
            tooLong = kept > kLongestLine;
            if (tooLong) kept = kLongestLine + 1;  // enough to be refused by
            std::memmove(buffer.data(), at, kept);
        }
        if (!writeAll(to, out)) return 1;
    }
    if (kept > 0) lines.convert({buffer.data(), kept}, out);
    lines.end(out);
    if (!writeAll(to, out)) return 1;
    return readWell && !lines.failed() ? 0 : 1;
}

}  // namespace dinmala::cal
