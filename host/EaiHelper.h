#pragma once

#include <string>
#include <string_view>

namespace host {

class DOMDocument;
class DOMNode;

/// The host's integration helper; one instance a thread. Every member may throw `Error`. For what "passed by reference"
/// means see `Environment.h`.
class EaiHelper {
public:
    virtual ~EaiHelper() = default;

    /// The text of an attribute; the reference host answers the empty text for a missing attribute or element.
    /// @param element the element, or nullptr for none; passed by reference
    virtual std::string GetAttr(DOMNode* element, std::string_view name) = 0;
    /// The text of the child element `name`; the reference host answers the empty text when there is none.
    /// @param node the parent, or nullptr for none
    virtual std::string GetChildText(const DOMNode* node, std::string_view name) = 0;
    /// The complete result text of a failed request.
    /// @param code decimal text
    /// @param detail always passed empty
    virtual std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) = 0;
    /// The initial XML text of a result document.
    virtual std::string MakeResultDoc(std::string_view docid, std::string_view proc) = 0;
    /// Appends one outcome to `resultDocument`; flag 0 and four empty further texts go along.
    /// @param resultDocument passed by reference
    /// @param key names the row; may be empty
    /// @param code 0, 101, 999 or an error number
    virtual void AddResultItem(DOMDocument& resultDocument, std::string_view key, long code,
                               std::string_view description) = 0;
};

} // namespace host
