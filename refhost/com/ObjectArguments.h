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

// The objects that a caller hands in, as the components see them. What is no object throws 13. Of a connection, a
// recordset or a login that is Nothing or of another kind the first use tells.

/// Throws 91 for Nothing, 13 for what is no document.
server::XmlDocument DocumentOf(const VARIANT& argument);
/// nullptr for Nothing. Throws 13 for what is no node.
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
