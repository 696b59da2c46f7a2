#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace refhost::xml {

/// What became of a text's parameter entities.
struct WrittenOut {
    /// The text with each reference replaced by what it stands for, or nothing where the text has no reference and
    /// stands as it is.
    std::optional<std::string> text;
    /// Why the text is refused; empty where it is not.
    std::string reason;
};

/// Writes out the references to parameter entities in the internal subset of a document type, so that nobody behind has
/// to follow one: libxml2 2.9 skips blanks without end when it is stopped inside of one.
///
/// Each entity must hold whole declarations, and none itself. A reference to an entity that lies outside or that nobody
/// declared is refused. The declarations themselves stay in the text, for the parser to judge; where the subset is
/// ill-formed outside of all entities, the rest stays as it is for the same reason. The work is linear in the text and
/// `budget`.
/// @param xml UTF-8
/// @param budget bytes that all references may be replaced by together
WrittenOut WriteOutParameterEntities(std::string_view xml, std::size_t budget);

} // namespace refhost::xml
