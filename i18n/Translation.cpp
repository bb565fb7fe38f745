#include "i18n/Translation.h"

#include <libintl.h>

#include <filesystem>

namespace dinmala {
namespace {

constexpr const char* kDomain = "dinmala";

}  // namespace

void openTranslations() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const std::filesystem::path beside = folder / "locale";
    const std::filesystem::path installed = folder / "../share/locale";
    bindtextdomain(kDomain, (std::filesystem::is_directory(beside, error) ? beside : installed).c_str());
    bind_textdomain_codeset(kDomain, "UTF-8");
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
