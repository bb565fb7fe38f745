/// The messages in the user's language: English in the code and in the titles of
/// app/resources/MainMenu.json, others in i18n/*.po.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace dinmala {

/// Finds the translations of the running program: in `locale` beside it (the build tree), else
/// in `../share/locale`, or a helper's `../../share/locale`. To be called after setlocale(LC_MESSAGES, ""), before any
/// thread: messages stay English before. A locale that is not installed still gives
/// its language.
void openTranslations();

/// For a part of another's process: the translations are those of a folder, and nothing of the process is set.
void useTranslationsIn(const char* folder);

/// The language that messages are in, "ne"; "" for English.
[[nodiscard]] std::string messageLanguage();

/// A message in the user's language. `{1}` to `{9}` in it stand for the values.
[[nodiscard]] std::string tr(const char* message, std::initializer_list<std::string_view> values = {});

}  // namespace dinmala
