#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace refhost::xml {

/// The namespace prefixes in scope while a text is read: what a parser that knows namespaces asks of names.
class PrefixScope {
public:
    /// Enters an element and takes its declarations.
    /// @param attributes names and values, nullptr behind the last; or nullptr for none
    /// @return nothing, or the reason why the names are not well-formed
    std::string Enter(std::string_view element, const char* const* attributes);
    /// Leaves the element entered last.
    void Leave();

private:
    std::string Declare(std::string_view prefix, std::string_view uri);
    std::string CheckAttributes(const char* const* attributes);
    const std::string* Find(std::string_view prefix) const;

    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Declared = std::unordered_map<std::string, std::vector<std::string>, TextHash, std::equal_to<>>;

    Declared declared_;
    std::size_t depth_ = 0;
    /// Declarations in order, each with the depth of its element.
    std::vector<std::pair<std::size_t, Declared::value_type*>> order_;
};

} // namespace refhost::xml
