#include "cal/EditionChoice.h"

#include <cstdlib>
#include <string_view>

#include "agenda/EditionChoice.h"
#include "base/ReadFile.h"
#include "base/Text.h"
#include "cal/Messages.h"
#include "i18n/Translation.h"

namespace dinmala::cal {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// The key `edition` of the group [display]; nothing without such a file or key.
std::optional<EditionId> preferred() {
    std::string folder = variable("XDG_CONFIG_HOME");
    if (!folder.starts_with('/')) folder = variable("HOME") + "/.config";
    constexpr std::size_t kLargest = 1 << 20;  // of a file that is none of ours
    const FileText file = readFile(folder + "/dinmala/preferences.ini", kLargest);
    std::optional<EditionId> found;
    bool inGroup = false;
    forEachPiece(file.text, '\n', [&](std::string_view line) {
        const std::string_view text = trimmed(line);
        if (text.starts_with('[')) inGroup = text == "[display]";
        const std::size_t equals = text.find('=');
        if (!inGroup || equals == std::string_view::npos || trimmed(text.substr(0, equals)) != "edition") return;
        found = editionNamed(trimmed(text.substr(equals + 1)));  // the last one counts
    });
    return found;
}

Result<EditionId> named(const std::string& word, const std::string& where) {
    if (const auto id = editionNamed(word)) return *id;
    return TextError{0, 0, tr("{1}: {2} is no edition; there are first and current", {where, shownText(word)})};
}

}  // namespace

Result<EditionId> chosenEdition(const std::optional<std::string>& option) {
    if (const auto word = askedEditionWord(option)) return named(*word, option ? "--edition" : kEditionVariable);
    return preferred().value_or(EditionId::current);
}

}  // namespace dinmala::cal
