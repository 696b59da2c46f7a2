#include "ModPub/ImportState.h"
#include "ModPub/Text.h"
#include "cli/Registered.h"
#include "host/Error.h"
#include "refhost/xml/Document.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace cli {
namespace {

/// The root of a text; nothing for one that is not well-formed.
host::DOMNodePtr RootOf(host::DOMDocument& document, const std::string& xml) {
    return document.LoadXML(xml) ? document.DocumentElement() : host::DOMNodePtr();
}

std::string Attribute(const host::DOMNode& node, std::string_view name) { return node.GetAttribute(name).value_or(""); }

/// How many rows a request has: the elements that its roottag names. 0 for a path that only MSXML understands.
std::size_t RowCount(const std::string& request) {
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    const host::DOMNodePtr root = RootOf(*document, request);
    const std::string tag = root ? Attribute(*root, "roottag") : "";
    try {
        return tag.empty() ? 0 : root->SelectNodes(tag).size();
    } catch (const host::Error&) {
        return 0;
    }
}

/// Which outcomes are a row's first. A setting that is refused while it is written has two, the refusal and then an
/// accepted one of the same key. So have two rows of one key where the second corrects the first: as many pairs are one
/// row's as there are more outcomes than rows. An error that stopped the loop leaves rows without an outcome; then
/// every pair is one row's.
std::vector<bool> FirstOfRow(const std::vector<LoggedOutcome>& outcomes, std::size_t rows) {
    const bool stopped = !outcomes.empty() && outcomes.back().code == ModPub::outcome::stopped;
    std::size_t seconds = stopped ? outcomes.size() : outcomes.size() - std::min(rows, outcomes.size());
    std::vector<bool> first(outcomes.size(), true);
    for (std::size_t index = 1; index < outcomes.size() && seconds > 0; ++index) {
        const LoggedOutcome& before = outcomes[index - 1];
        const LoggedOutcome& outcome = outcomes[index];
        if (first[index - 1] && before.code == ModPub::outcome::refused && outcome.code == ModPub::outcome::accepted &&
            outcome.key == before.key) {
            first[index] = false;
            --seconds;
        }
    }
    return first;
}

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
    std::vector<LoggedOutcome> outcomes;
    const host::DOMNodeList items = document->SelectNodes("/*/item");
    for (const host::DOMNodePtr& item : items) {
        outcomes.push_back({.row = 0,
                            .key = Attribute(*item, "key"),
                            .code = std::strtol(Attribute(*item, "code").c_str(), nullptr, 10),
                            .description = Attribute(*item, "dsc")});
    }
    const std::size_t rows = RowCount(request);
    const std::vector<bool> first = FirstOfRow(outcomes, rows);
    const auto told = static_cast<std::size_t>(std::ranges::count(first, true));
    log.RowsSelected(std::max(rows, told));
    std::size_t row = 0;
    for (std::size_t index = 0; index < outcomes.size(); ++index) {
        if (first[index]) {
            log.RowBegins(++row, *items[index]);
        }
        log.OutcomeRecorded(outcomes[index].key, outcomes[index].code, outcomes[index].description);
    }
}

} // namespace cli
