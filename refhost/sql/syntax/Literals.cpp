#include "refhost/sql/syntax/Literals.h"

namespace refhost::sql {
namespace {

/// Length of the continuation of a line that begins at `position`: a backslash and the line's end; 0 for none.
std::size_t ContinuationAt(std::string_view text, std::size_t position) {
    if (text[position] != '\\') {
        return 0;
    }
    const std::string_view rest = text.substr(position + 1);
    return rest.starts_with('\n') ? 2U : rest.starts_with("\r\n") ? 3U : 0U;
}

} // namespace

bool HasContinuation(std::string_view body) {
    for (std::size_t at = body.find('\\'); at != std::string_view::npos; at = body.find('\\', at + 1)) {
        if (ContinuationAt(body, at) > 0) {
            return true;
        }
    }
    return false;
}

std::string TextOf(const Literal& literal) {
    if (!literal.doubled) {
        return std::string(literal.body);
    }
    std::string text;
    text.reserve(literal.body.size());
    for (std::size_t i = 0; i < literal.body.size(); ++i) {
        if (const std::size_t length = ContinuationAt(literal.body, i); length > 0) {
            i += length - 1;
            continue;
        }
        text += literal.body[i];
        i += literal.body[i] == '\'' ? 1U : 0U;
    }
    return text;
}

} // namespace refhost::sql
