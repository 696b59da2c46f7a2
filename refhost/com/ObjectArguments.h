#pragma once

#include "server/adapters/AdoConnection.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/ComLogin.h"
#include "server/adapters/XmlDocument.h"
#include "server/adapters/XmlNode.h"
#include "server/inproc/Automation.h"

#include <memory>
#include <string>

namespace refhost::com {

// The objects that a caller hands in, as the components see them. A document or node that is Nothing throws 91, one of
// another kind 13; of the other objects the first use tells.

server::XmlDocument DocumentOf(const VARIANT& argument);
/// The node, or nullptr for Nothing.
host::DOMNodePtr NodeOf(const VARIANT& argument);
server::AdoConnection ConnectionOf(const VARIANT& argument);
server::AdoRecordset RecordsetOf(const VARIANT& argument);
server::ComLogin LoginOf(const VARIANT& argument);

/// A text that an operation may change: read from an argument, and stored there again after the operation.
class ChangedText {
public:
    ChangedText(const server::Arguments& arguments, std::size_t index)
        : arguments_(arguments), index_(index), text_(server::ToText(arguments[index])) {}

    std::string& text() noexcept { return text_; }
    void Store() const { arguments_.Return(index_, server::VariantHolder(text_)); }

private:
    const server::Arguments& arguments_;
    std::size_t index_;
    std::string text_;
};

} // namespace refhost::com
