#include "agenda/PageLook.h"

namespace dinmala {

std::string_view keptWord(Language language) { return language == Language::english ? "english" : "nepali"; }
std::string_view keptWord(Digits digits) { return digits == Digits::western ? "western" : "devanagari"; }

PageLook keptLook(std::string_view language, std::string_view digits) {
    return {language == keptWord(Language::english) ? Language::english : Language::nepali,
            digits == keptWord(Digits::western) ? Digits::western : Digits::devanagari};
}

}  // namespace dinmala
