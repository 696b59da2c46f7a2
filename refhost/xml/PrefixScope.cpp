#include "refhost/xml/PrefixScope.h"

#include <algorithm>
#include <optional>

namespace refhost::xml {
namespace {

constexpr std::string_view namespacePrefix = "xmlns";
constexpr std::string_view xmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view declarationUri = "http://www.w3.org/2000/xmlns/";

/// The prefix of a qualified name, empty for a name without one, or nothing when it is no qualified name.
std::optional<std::string_view> Prefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        return std::string_view();
    const std::string_view local = name.substr(colon + 1);
    // The parser has checked the name's characters; what may not start a name may not start a local name either.
    const bool startsBadly =
        local.empty() || local.front() == '-' || local.front() == '.' || (local.front() >= '0' && local.front() <= '9');
    if (colon == 0 || startsBadly || local.find(':') != std::string_view::npos)
        return std::nullopt;
    return name.substr(0, colon);
}

std::string NotQualified(std::string_view name) { return "'" + std::string(name) + "' is not a qualified name."; }

std::string Undeclared(std::string_view prefix) {
    return "Reference to undeclared namespace prefix: '" + std::string(prefix) + "'.";
}

} // namespace

std::string PrefixScope::Enter(std::string_view element, const char* const* attributes) {
    ++depth_;
    if (attributes != nullptr) {
        for (const char* const* at = attributes; *at != nullptr; at += 2) {
            const std::string_view name = at[0];
            if (!name.starts_with("xmlns:"))
                continue;
            if (std::string reason = Declare(name.substr(namespacePrefix.size() + 1), at[1]); !reason.empty())
                return reason;
        }
        if (std::string reason = CheckAttributes(attributes); !reason.empty())
            return reason;
    }
    const auto prefix = Prefix(element);
    if (!prefix)
        return NotQualified(element);
    if (!prefix->empty() && (*prefix == namespacePrefix || Find(*prefix) == nullptr))
        return Undeclared(*prefix);
    return {};
}

void PrefixScope::Leave() {
    while (!order_.empty() && order_.back().first == depth_) {
        order_.back().second->second.pop_back();
        order_.pop_back();
    }
    --depth_;
}

std::string PrefixScope::Declare(std::string_view prefix, std::string_view uri) {
    const bool isXml = prefix == "xml";
    const bool allowed = prefix != namespacePrefix && !uri.empty() && uri != declarationUri && (uri == xmlUri) == isXml;
    const bool isName = !prefix.empty() && Prefix("xmlns:" + std::string(prefix)).has_value();
    if (!allowed || !isName)
        return "The namespace prefix '" + std::string(prefix) + "' cannot be declared as '" + std::string(uri) + "'.";
    const auto entry = declared_.try_emplace(std::string(prefix)).first;
    entry->second.emplace_back(uri);
    order_.emplace_back(depth_, &*entry);
    return {};
}

std::string PrefixScope::CheckAttributes(const char* const* attributes) {
    std::vector<std::pair<std::string_view, std::string_view>> expanded;
    for (const char* const* at = attributes; *at != nullptr; at += 2) {
        const std::string_view name = at[0];
        const auto prefix = Prefix(name);
        if (!prefix)
            return NotQualified(name);
        if (prefix->empty() || *prefix == namespacePrefix)
            continue;
        if (*prefix == "xml") {
            expanded.emplace_back(xmlUri, name.substr(prefix->size() + 1));
            continue;
        }
        const std::string* uri = Find(*prefix);
        if (uri == nullptr)
            return Undeclared(*prefix);
        expanded.emplace_back(*uri, name.substr(prefix->size() + 1));
    }
    std::sort(expanded.begin(), expanded.end());
    const auto twice = std::adjacent_find(expanded.begin(), expanded.end());
    return twice == expanded.end() ? std::string() : "Duplicate attribute '" + std::string(twice->second) + "'.";
}

const std::string* PrefixScope::Find(std::string_view prefix) const {
    static const std::string xml(xmlUri);
    if (prefix == "xml")
        return &xml;
    const auto entry = declared_.find(prefix);
    return entry == declared_.end() || entry->second.empty() ? nullptr : &entry->second.back();
}

} // namespace refhost::xml
