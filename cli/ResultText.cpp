#include "cli/ResultText.h"

#include "cli/Journal.h"
#include "cli/Summary.h"
#include "cli/Table.h"

namespace cli {

std::string ResultTable(const ImportLog& log, const Messages& messages, std::size_t width) {
    const SummaryTexts& texts = messages.summary;
    Table table({{texts.rowHeading, Table::Alignment::right},
                 texts.outcomeHeading,
                 {texts.codeHeading, Table::Alignment::right},
                 texts.keyHeading,
                 texts.messageHeading});
    for (const LoggedOutcome& outcome : log.outcomes) {
        table.AddRow({outcome.row == 0 ? std::string() : std::to_string(outcome.row),
                      std::string(outcome.code == 0 ? texts.acceptedCell : texts.refusedCell),
                      std::to_string(outcome.code), std::string(TrimmedKey(outcome.key)),
                      std::string(TrimmedMessage(outcome.description))});
    }
    return table.RowCount() == 0 ? std::string() : table.Text(width);
}

std::string ResultJson(const ImportLog& log, const ImportClass& importClass) {
    std::string text;
    text::JsonWriter json(text);
    json.Open('{').Member("class", importClass.name).Member("docid", log.docid).Member("proc", log.proc);
    if (log.error) {
        json.Name("error").Open('{').Member("code", log.error->code).Member("dsc", log.error->message).Close('}');
    } else {
        json.Member("rows", log.rows.value_or(0))
            .Member("accepted", log.accepted)
            .Member("refused", log.refused)
            .Member("undone", log.undone);
        json.Name("outcomes").Open('[');
        for (const LoggedOutcome& outcome : log.outcomes) {
            WriteMembers(json.NextLine().Open('{'), outcome);
            json.Close('}');
        }
        json.Close(']');
    }
    json.Close('}');
    return text + "\n";
}

} // namespace cli
