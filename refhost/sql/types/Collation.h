#pragma once

#include <string>
#include <string_view>

namespace refhost::sql {

/// SQLite names of the two collations of account databases.
inline constexpr std::string_view textCollation = "KOVRA_TEXT";
inline constexpr std::string_view exactCollation = "KOVRA_EXACT";

/// Compares as SQL Server's collation Chinese_PRC_CI_AS does: blind to letter case, width, kind of kana and trailing
/// blanks; signs, digits, letters, then Chinese by pinyin; an accent counts where nothing else differs, and last of all
/// a hyphen or apostrophe. Bytes that are no UTF-8 count as one character each. Less than, equal to or greater than 0.
int CompareText(std::string_view left, std::string_view right);

/// Compares two plain decimal numbers by value: "1.0" equals "1".
int CompareExact(std::string_view left, std::string_view right);

/// The text as `CompareText` sees it, for keys of maps.
std::string FoldText(std::string_view text);

/// Whether two names are the same to the database.
inline bool EqualNames(std::string_view left, std::string_view right) { return CompareText(left, right) == 0; }

/// The code point at `position`, which moves behind it; a byte that starts no UTF-8 sequence gives itself + 0x110000.
char32_t NextCodePoint(std::string_view text, std::size_t& position);
/// Appends a code point in UTF-8 (lone surrogates in the same manner, strange bytes as they were).
void AppendCodePoint(std::string& text, char32_t codePoint);

/// Simple case mappings of the Latin, Greek, Cyrillic, Armenian and full-width letters and numerals.
char32_t ToLower(char32_t codePoint);
char32_t ToUpper(char32_t codePoint);

} // namespace refhost::sql
