#pragma once

#include <string>
#include <string_view>

namespace ModPub {

/// Extends a row's key text by a labelled value. The separator "， " depends on the key so far alone, so an empty
/// value behind a non-empty key still leaves its separator: callers know the keys in this form.
void AppendKeyPart(std::string& key, std::string_view label, std::string_view value);

} // namespace ModPub
