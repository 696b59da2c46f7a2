#include "text/ConnectionString.h"

#include "text/SameName.h"

#include <algorithm>
#include <cstddef>

namespace text {
namespace {

struct Part {
    std::string_view key;
    std::string_view value;
    /// Where the value stands in the whole text.
    std::size_t valueBegin = 0;
    std::size_t valueEnd = 0;
};

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// End of the value that begins at `begin`: the next ';' outside its braces or quotes.
std::size_t ValueEnd(std::string_view text, std::size_t begin) {
    const std::size_t first = text.find_first_not_of(" \t", begin);
    if (first != std::string_view::npos && (text[first] == '{' || text[first] == '"' || text[first] == '\'')) {
        const char close = text[first] == '{' ? '}' : text[first];
        std::size_t end = text.find(close, first + 1);
        // A doubled brace stands for one.
        while (close == '}' && end != std::string_view::npos && text.substr(end).starts_with("}}")) {
            end = text.find(close, end + 2);
        }
        if (end != std::string_view::npos) {
            begin = end;
        }
    }
    return std::min(text.find(';', begin), text.size());
}

template <class Visit> void ForEachPart(std::string_view text, const Visit& visit) {
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t equals = text.find_first_of("=;", position);
        if (equals == std::string_view::npos) {
            return;
        }
        if (text[equals] == ';') {
            position = equals + 1;
            continue;
        }
        const std::size_t end = ValueEnd(text, equals + 1);
        visit(Part{Trimmed(text.substr(position, equals - position)),
                   Trimmed(text.substr(equals + 1, end - equals - 1)), equals + 1, end});
        position = end + 1;
    }
}

} // namespace

std::optional<std::string> ConnectionStringValue(std::string_view connectionString, std::string_view key) {
    std::optional<std::string> found;
    ForEachPart(connectionString, [&](const Part& part) {
        if (found || !SameName(part.key, key)) {
            return;
        }
        std::string_view value = part.value;
        const bool enclosed =
            value.size() >= 2 && ((value.front() == '{' && value.back() == '}') ||
                                  (value.front() == value.back() && (value.front() == '"' || value.front() == '\'')));
        if (enclosed) {
            value = value.substr(1, value.size() - 2);
        }
        found = std::string(value);
    });
    return found;
}

std::string WithConnectionStringValue(std::string_view connectionString, std::string_view key, std::string_view value) {
    std::string changed(connectionString);
    bool found = false;
    ForEachPart(connectionString, [&](const Part& part) {
        if (!found && SameName(part.key, key)) {
            found = true;
            changed.replace(part.valueBegin, part.valueEnd - part.valueBegin, value);
        }
    });
    return changed;
}

std::string MaskPasswords(std::string_view connectionString) {
    std::string masked;
    std::size_t copied = 0;
    ForEachPart(connectionString, [&](const Part& part) {
        if (SameName(part.key, "pwd") || SameName(part.key, "password")) {
            masked.append(connectionString.substr(copied, part.valueBegin - copied)).append("***");
            copied = part.valueEnd;
        }
    });
    return masked.append(connectionString.substr(copied));
}

} // namespace text
