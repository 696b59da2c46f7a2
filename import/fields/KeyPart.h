#pragma once

#include "ModPub/Text.h"

#include <string>
#include <string_view>

namespace importing {

/// Ends a part of what tells a record from the others; nothing that people type holds it.
inline constexpr char partEnd = '\x1F';

/// Appends a text and its end. The account compares texts without regard to letter case and to blanks at the end.
inline void AppendKeyPart(std::string& key, std::string_view text) {
    key.append(ModPub::UpperCase(text.substr(0, text.find_last_not_of(' ') + 1))).push_back(partEnd);
}

} // namespace importing
