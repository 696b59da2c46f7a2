#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include <libxml/parser.h>

namespace refhost::xml {

/// The names of a document and of its copies: equal names are equal pointers, good as long as the table lives.
class NameTable {
public:
    /// An empty table, or that of a parser, whose names need no further check.
    NameTable();
    explicit NameTable(xmlDict* names);

    /// A name as it stands in the table. Throws `host::Error` for a text that is no (qualified) name.
    const char* Get(std::string_view name);
    /// The same for any text; nullptr where it is no plain name. One that nothing has yet is kept as well: what a row
    /// lacks is asked for again of the next.
    const char* GetPlain(std::string_view text);

    /// Whether there are more than documents need.
    bool HasMany() const noexcept;

private:
    struct DictDeleter {
        void operator()(xmlDict* dict) const noexcept;
    };
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    /// `Get` of a text that is known to be a name.
    const char* Keep(std::string_view name);
    const char* Checked(std::string_view name);

    std::unique_ptr<xmlDict, DictDeleter> dict_;
    /// The latest names asked for, each in the place that its characters give: records set the same few attributes.
    std::array<std::string_view, 64> latest_{};
    /// Likewise those that `GetPlain` gave.
    std::array<std::string_view, 64> latestPlain_{};
    /// Names that are not plain, which were asked for and found valid.
    std::unordered_map<std::string, const char*, TextHash, std::equal_to<>> checked_;
};

} // namespace refhost::xml
