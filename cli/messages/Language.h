#pragma once

#include "import/messages/Language.h"

#include <optional>
#include <string_view>

namespace cli {

/// The languages in which the program speaks to people, and how it speaks them.
using importing::Language;
using importing::Phrase;
using importing::Speech;

/// "en" or "zh"; nothing for any other text.
std::optional<Language> LanguageNamed(std::string_view name) noexcept;

/// The language of a locale's name: Chinese for "zh", "zh_CN.UTF-8" and the like, English for every other.
Language LanguageOfLocale(std::string_view locale) noexcept;

/// The language that the environment asks for: the first of LC_ALL, LC_MESSAGES and LANG that is not empty decides,
/// else the system's own.
Language LanguageOfEnvironment() noexcept;

} // namespace cli
