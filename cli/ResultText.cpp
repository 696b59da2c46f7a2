#include "cli/ResultText.h"

#include "cli/Journal.h"
#include "cli/Summary.h"
#include "cli/Table.h"
#include "text/Json.h"

namespace cli {

std::string ResultTable(const ImportLog& log, const Messages& messages, std::size_t width) {
    const SummaryTexts& texts = messages.summary;
    Table table({{std::string(texts.rowHeading), Table::Alignment::right},
                 {std::string(texts.outcomeHeading)},
                 {std::string(texts.codeHeading), Table::Alignment::right},
                 {std::string(texts.keyHeading)},
                 {std::string(texts.messageHeading)}});
    for (const LoggedOutcome& outcome : log.outcomes) {
        table.AddRow({outcome.row == 0 ? std::string() : std::to_string(outcome.row),
                      std::string(outcome.code == 0 ? texts.acceptedCell : texts.refusedCell),
                      std::to_string(outcome.code), std::string(TrimmedKey(outcome.key)),
                      std::string(TrimmedMessage(outcome.description))});
    }
    return table.RowCount() == 0 ? std::string() : table.Text(width);
}

std::string ResultJson(const ImportLog& log, const ImportClass& importClass) {
    const auto text = [](std::string_view value) {
        std::string json;
        text::AppendJsonString(json, value);
        return json;
    };
    std::string json =
        "{\"class\":" + text(importClass.name) + ",\"docid\":" + text(log.docid) + ",\"proc\":" + text(log.proc);
    if (log.error) {
        return json + ",\"error\":{\"code\":" + text(log.error->code) + ",\"dsc\":" + text(log.error->message) + "}}\n";
    }
    json += ",\"rows\":" + std::to_string(log.rows.value_or(0)) + ",\"accepted\":" + std::to_string(log.accepted) +
            ",\"refused\":" + std::to_string(log.refused) + ",\"undone\":" + (log.undone ? "true" : "false") +
            ",\"outcomes\":[";
    for (const LoggedOutcome& outcome : log.outcomes) {
        json.append(json.ends_with('[') ? "{" : ",\n{").append(JsonMembers(outcome)).append("}");
    }
    return json + "]}\n";
}

} // namespace cli
