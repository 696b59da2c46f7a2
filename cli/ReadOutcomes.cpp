#include "ModPub/Text.h"
#include "cli/Registered.h"
#include "refhost/xml/Document.h"

#include <cstdlib>

namespace cli {
namespace {

/// The root of a text; nothing for one that is not well-formed.
host::DOMNodePtr RootOf(host::DOMDocument& document, const std::string& xml) {
    return document.LoadXML(xml) ? document.DocumentElement() : host::DOMNodePtr();
}

std::string Attribute(const host::DOMNode& node, std::string_view name) { return node.GetAttribute(name).value_or(""); }

} // namespace

void ReadOutcomes(const std::string& request, const std::string& result, ImportLog& log) {
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    if (result.empty()) {
        // Operation EMPTY is done; nothing but the request names it.
        if (const host::DOMNodePtr root = RootOf(*document, request)) {
            log.RequestBegins(Attribute(*root, "docid"), ModPub::UpperCase(Attribute(*root, "proc")));
        }
        return;
    }
    const host::DOMNodePtr root = RootOf(*document, result);
    if (!root || root->NodeName() == "error") {
        log.RequestRefused(root ? Attribute(*root, "code") : "", root ? Attribute(*root, "dsc") : result);
        return;
    }
    log.RequestBegins(Attribute(*root, "docid"), Attribute(*root, "proc"));
    const host::DOMNodeList items = document->SelectNodes("/*/item");
    log.RowsSelected(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) {
        const host::DOMNode& item = *items[index];
        log.RowBegins(index + 1, item);
        log.OutcomeRecorded(Attribute(item, "key"), std::strtol(Attribute(item, "code").c_str(), nullptr, 10),
                            Attribute(item, "dsc"));
    }
}

} // namespace cli
