#include "cli/SheetFindings.h"

#include "import/reading/Cell.h"
#include "import/rows/Places.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {
namespace {

using importing::Finding;
using importing::Row;
using importing::Sheet;

/// Lines of a list on a terminal, where who looks for more is better served by a file.
constexpr std::size_t mostLines = 20;

void TellList(std::string_view heading, Console::Tone tone, const std::vector<std::string>& lines, Console& console) {
    if (lines.empty()) {
        return;
    }
    console.Say(tone, heading, {});
    const std::size_t shown = console.IsTerminal() ? std::min(lines.size(), mostLines) : lines.size();
    for (std::size_t index = 0; index < shown; ++index) {
        console.Say("  " + lines[index]);
    }
    if (shown < lines.size()) {
        console.Say("  " + Fill(console.messages().sheet.moreLines, Grouped(lines.size() - shown)));
    }
}

/// Collects a line for each finding of each row.
std::vector<std::string> Lines(const Sheet& sheet, const std::vector<Finding> Row::*findings, const Console& console) {
    std::vector<std::string> lines;
    for (const Row& row : sheet.rows) {
        for (const Finding& finding : row.*findings) {
            lines.push_back(Fill(console.messages().sheet.finding,
                                 PlaceOf(sheet.columns, row.line, finding.column, console.language()),
                                 Words(finding.note, console.language())));
        }
    }
    return lines;
}

class FindingsWriter {
public:
    FindingsWriter(text::JsonWriter& json, const Sheet& sheet, Language language)
        : json_(json), sheet_(sheet), language_(language) {}

    void Write() {
        json_.Name("faults").Open('[');
        for (const importing::Note& note : sheet_.faults) {
            json_.NextLine().Text(Words(note, language_));
        }
        json_.Close(']').Name("corrections").Open('[');
        for (const Row& row : sheet_.rows) {
            for (const importing::Correction& correction : row.corrections) {
                BeginPlace(row, correction.column);
                json_.Member("old", correction.old).Member("new", correction.now).Close('}');
            }
        }
        json_.Close(']');
        WriteEach("refusals", &Row::refusals);
        WriteEach("warnings", &Row::warnings);
    }

private:
    void BeginPlace(const Row& row, std::optional<std::size_t> column) {
        json_.NextLine().Open('{').Member("line", row.line);
        if (column) {
            const std::vector<std::string>& headings = sheet_.columns.headings;
            json_.Member("cell", importing::CellName(*column, row.line))
                .Member("heading", *column < headings.size() ? headings[*column] : std::string());
        }
    }

    void WriteEach(std::string_view name, const std::vector<Finding> Row::*findings) {
        json_.Name(name).Open('[');
        for (const Row& row : sheet_.rows) {
            for (const Finding& finding : row.*findings) {
                BeginPlace(row, finding.column);
                json_.Member("reason", Words(finding.note, language_));
                if (!finding.proposal.empty()) {
                    json_.Member("proposal", finding.proposal);
                }
                json_.Close('}');
            }
        }
        json_.Close(']');
    }

    text::JsonWriter& json_;
    const Sheet& sheet_;
    Language language_;
};

} // namespace

void TellFindings(const Sheet& sheet, Console& console) {
    const SheetTexts& texts = console.messages().sheet;
    std::vector<std::string> corrections;
    for (const Row& row : sheet.rows) {
        for (const importing::Correction& correction : row.corrections) {
            corrections.push_back(Fill(texts.correction,
                                       PlaceOf(sheet.columns, row.line, correction.column, console.language()),
                                       correction.old, correction.now));
        }
    }
    TellList(Fill(texts.corrections, Count(corrections.size(), console.messages().cell)), Console::Tone::plain,
             corrections, console);
    const std::vector<std::string> warnings = Lines(sheet, &Row::warnings, console);
    TellList(Fill(texts.warnings, Count(warnings.size(), console.messages().cell)), Console::Tone::caution, warnings,
             console);
    const std::vector<std::string> refusals = Lines(sheet, &Row::refusals, console);
    TellList(Fill(texts.refusals, Count(sheet.rows.size() - CountTaken(sheet), console.messages().row)),
             Console::Tone::bad, refusals, console);
}

void TellFaults(const Sheet& sheet, Console& console) {
    for (const importing::Note& note : sheet.faults) {
        console.Say(Console::Tone::bad, "kovra: ", Words(note, console.language()));
    }
}

void WriteFindings(text::JsonWriter& json, const Sheet& sheet, Language language) {
    FindingsWriter(json, sheet, language).Write();
}

std::size_t CountTaken(const Sheet& sheet) {
    return static_cast<std::size_t>(
        std::ranges::count_if(sheet.rows, [](const Row& row) { return row.refusals.empty(); }));
}

} // namespace cli
