#include "refhost/xml/Path.h"

#include "host/Error.h"
#include "refhost/xml/Declarations.h"
#include "text/Utf8.h"

#include <algorithm>

#include <libxml/tree.h>

namespace refhost::xml {
namespace {

/// Steps are followed by recursion; a longer path is left to the engine, which has bounds of its own.
constexpr std::size_t maxSteps = 64;

bool IsStep(std::string_view text) {
    if (IsPlainQualifiedName(text))
        return true;
    const std::string terminated(text);
    return text.find('\0') == std::string_view::npos && text::IsUtf8(text) &&
           xmlValidateQName(reinterpret_cast<const xmlChar*>(terminated.c_str()), 0) == 0;
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

} // namespace

void Path::NotePrefix(std::string_view name) {
    const std::string_view prefix = PrefixOf(name);
    const bool known = prefix.empty() || prefix == "xml" || prefix == "xmlns" ||
                       std::find(recordsetPrefixes.begin(), recordsetPrefixes.end(), prefix) != recordsetPrefixes.end();
    if (!known)
        prefixes_.emplace_back(prefix);
}

void Path::CheckPrefixes(const Tree& tree) const {
    for (const std::string& prefix : prefixes_) {
        if (!tree.HasPrefix(prefix))
            throw host::Error(host::error_number::unspecified,
                              "Reference to undeclared namespace prefix: '" + prefix + "'.");
    }
}

std::optional<Path> Path::Compile(std::string_view text, Tree& tree) {
    Path path;
    if (TakePrefix(text, ".//")) {
        path.anywhere_ = true;
    } else if (TakePrefix(text, "//")) {
        path.fromRoot_ = true;
        path.anywhere_ = true;
    } else if (TakePrefix(text, "/")) {
        path.fromRoot_ = true;
    }
    while (true) {
        const std::size_t slash = text.find('/');
        const std::string_view step = text.substr(0, slash);
        const bool isLast = slash == std::string_view::npos;
        if (isLast && step.starts_with('@') && IsStep(step.substr(1))) {
            path.NotePrefix(step.substr(1));
            path.attribute_ = tree.Name(step.substr(1));
        } else if (step == "*") {
            path.steps_.push_back(nullptr);
        } else if (IsStep(step)) {
            path.NotePrefix(step);
            path.steps_.push_back(tree.Name(step));
        } else {
            return std::nullopt;
        }
        if (isLast)
            break;
        text.remove_prefix(slash + 1);
    }
    // "//@name" also takes the attributes of the start itself.
    const bool attributesAnywhere = path.anywhere_ && path.steps_.empty();
    if (attributesAnywhere || path.steps_.size() > maxSteps)
        return std::nullopt;
    return path;
}

bool Path::EndsChain(const Node& node, const Node& start) const {
    const Node* at = &node;
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step, at = at->parent) {
        if (at == &start || !Matches(*at, *step))
            return false;
    }
    return true;
}

} // namespace refhost::xml
