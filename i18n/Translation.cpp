#include "i18n/Translation.h"

#include <libintl.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace dinmala {
namespace {

constexpr const char* kDomain = "dinmala";

/// A locale that is not installed leaves the program in "C", where gettext knows English only. Its name tells the
/// language all the same.
void followTheLocalesName() {
    if (std::string_view{std::setlocale(LC_MESSAGES, nullptr)} != "C") return;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* name = std::getenv(variable);
        if (name == nullptr || *name == '\0') continue;
        const bool plain = std::string_view{name} == "C" || std::string_view{name} == "POSIX";
        const char* list = std::getenv("LANGUAGE");
        const bool asked = list != nullptr && *list != '\0';
        if (!plain && std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr) setenv("LANGUAGE", name, asked ? 0 : 1);
        return;
    }
}

}  // namespace

void openTranslations() {
    followTheLocalesName();
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    std::filesystem::path found = folder / "../share/locale";
    for (const char* place : {"locale", "../../share/locale"}) {  // in the build tree, of a helper in libexec/dinmala
        if (std::filesystem::is_directory(folder / place, error)) found = folder / place;
    }
    useTranslationsIn(found.c_str());
}

void useTranslationsIn(const char* folder) {
    bindtextdomain(kDomain, folder);
    bind_textdomain_codeset(kDomain, "UTF-8");
}

std::string messageLanguage() {
    // A catalogue's own lines are the translation of nothing.
    const std::string_view head = dgettext(kDomain, "");
    constexpr std::string_view kKey = "\nLanguage: ";
    const std::size_t at = head.find(kKey);
    if (at == std::string_view::npos) return {};
    const std::string_view rest = head.substr(at + kKey.size());
    return std::string{rest.substr(0, rest.find('\n'))};
}

std::string tr(const char* message, std::initializer_list<std::string_view> values) {
    const std::string_view text = dgettext(kDomain, message);
    std::string told;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool place = i + 2 < text.size() && text[i] == '{' && text[i + 2] == '}';
        const std::size_t number = place ? static_cast<std::size_t>(static_cast<unsigned char>(text[i + 1])) - '1' : 9;
        if (number < values.size()) {
            told += values.begin()[number];
            i += 2;
        } else {
            told += text[i];
        }
    }
    return told;
}

}  // namespace dinmala
