#pragma once

#include <functional>
#include <string_view>

namespace importing {

/// Whether the account's code page has a character. The caller of the import gives it, since encodings are the
/// platform's.
using CodePage = std::function<bool(char32_t character)>;

} // namespace importing
