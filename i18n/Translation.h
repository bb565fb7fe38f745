/// The messages in the user's language: English in the code, others in i18n/*.po.
///
/// Titles of menu rows are not among them; they are in app/resources/MainMenu.json.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace dinmala {

/// Finds the translations of the running program: in `locale` beside it (the build tree), else
/// in `../share/locale`. Without them, and until setlocale(LC_MESSAGES, ...) was
/// called, messages stay English.
void openTranslations();

/// A message in the user's language. `{1}` to `{9}` in it stand for the values.
[[nodiscard]] std::string tr(const char* message, std::initializer_list<std::string_view> values = {});

}  // namespace dinmala
