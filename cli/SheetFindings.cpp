#include "cli/SheetFindings.h"

#include "import/reading/Cell.h"
#include "import/rows/Places.h"
#include "text/Json.h"

#include <algorithm>
#include <optional>
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

class SheetJson {
public:
    SheetJson(const Sheet& sheet, Language language) : sheet_(sheet), language_(language) {}

    std::string Members() {
        json_ = "\"faults\":[";
        for (const importing::Note& note : sheet_.faults) {
            Separate();
            Text(Words(note, language_));
        }
        json_.append("],\"corrections\":[");
        for (const Row& row : sheet_.rows) {
            for (const importing::Correction& correction : row.corrections) {
                BeginPlace(row, correction.column);
                Member("old", correction.old);
                Member("new", correction.now);
                json_.push_back('}');
            }
        }
        json_.append("],\"refusals\":[");
        AddFindings(&Row::refusals);
        json_.append("],\"warnings\":[");
        AddFindings(&Row::warnings);
        return json_.append("]");
    }

private:
    void Separate() { json_.append(json_.ends_with('[') ? "" : ",\n"); }
    void Text(std::string_view text) { text::AppendJsonString(json_, text); }
    void Member(std::string_view name, std::string_view value) {
        json_.append(",\"").append(name).append("\":");
        Text(value);
    }

    void BeginPlace(const Row& row, std::optional<std::size_t> column) {
        Separate();
        json_.append("{\"line\":").append(std::to_string(row.line));
        if (column) {
            Member("cell", importing::CellName(*column, row.line));
            const std::vector<std::string>& headings = sheet_.columns.headings;
            Member("heading", *column < headings.size() ? std::string_view(headings[*column]) : std::string_view());
        }
    }

    void AddFindings(const std::vector<Finding> Row::*findings) {
        for (const Row& row : sheet_.rows) {
            for (const Finding& finding : row.*findings) {
                BeginPlace(row, finding.column);
                Member("reason", Words(finding.note, language_));
                if (!finding.proposal.empty()) {
                    Member("proposal", finding.proposal);
                }
                json_.push_back('}');
            }
        }
    }

    const Sheet& sheet_;
    Language language_;
    std::string json_;
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

std::string FindingsJson(const Sheet& sheet, Language language) { return SheetJson(sheet, language).Members(); }

std::size_t CountTaken(const Sheet& sheet) {
    return static_cast<std::size_t>(
        std::ranges::count_if(sheet.rows, [](const Row& row) { return row.refusals.empty(); }));
}

} // namespace cli
