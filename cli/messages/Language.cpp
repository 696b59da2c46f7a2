#include "cli/messages/Language.h"

#include "cli/Platform.h"

#include <cstdlib>

namespace cli {

std::optional<Language> LanguageNamed(std::string_view name) noexcept {
    if (name == "zh") {
        return Language::chinese;
    }
    return name == "en" ? std::optional(Language::english) : std::nullopt;
}

Language LanguageOfLocale(std::string_view locale) noexcept {
    const std::string_view language = locale.substr(0, locale.find_first_of("_.@"));
    return LanguageNamed(language).value_or(Language::english);
}

Language LanguageOfEnvironment() noexcept {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return LanguageOfLocale(value);
        }
    }
    return LanguageOfLocale(platform::SystemLanguage());
}

} // namespace cli
