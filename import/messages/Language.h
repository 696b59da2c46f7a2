#pragma once

#include <string_view>

namespace importing {

/// The languages in which people are spoken to.
enum class Language { chinese, english };

/// Something to say in one language.
using Phrase = std::string_view;

/// Says things in one language: of a text that stands in both, `say(chinese, english)` is that of the language.
struct Speech {
    Language language;

    constexpr Phrase operator()(std::string_view chinese, std::string_view english) const noexcept {
        return language == Language::chinese ? chinese : english;
    }
};

} // namespace importing
