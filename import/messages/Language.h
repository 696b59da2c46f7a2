#pragma once

namespace importing {

/// The languages in which people are spoken to.
enum class Language { chinese, english };

} // namespace importing
