#include "cli/ImportText.h"

#include "import/messages/Figures.h"
#include "import/outcome/Reasons.h"
#include "import/outcome/Totals.h"
#include "text/Json.h"

#include <array>
#include <string_view>

#include <fmt/ranges.h>

namespace cli {
namespace {

using importing::Outcome;
using importing::Reason;
using importing::RowOutcome;
using importing::RowState;
using importing::Sums;
using importing::Totals;

/// Places and reasons that are told; the rest is counted.
constexpr std::size_t mostPlaces = 5;
constexpr std::size_t mostReasons = 20;

class Teller {
public:
    Teller(const Outcome& outcome, Console& console)
        : outcome_(outcome), totals_(TotalsOf(outcome)), console_(console), texts_(console.messages().import) {}

    void Tell(const std::string& login) {
        for (const importing::Note& remark : outcome_.remarks) {
            console_.Say(Console::Tone::caution, {}, importing::Words(remark, console_.language()));
        }
        if (outcome_.refused) {
            console_.Say(Console::Tone::bad, {},
                         Fill(texts_.ledgerRefuses, outcome_.refused->code, outcome_.refused->message));
        }
        TellTaken();
        TellReasons(texts_.refused, totals_.refused, Console::Tone::bad,
                    ReasonsOfRefusals(outcome_, console_.language(), mostPlaces));
        const std::vector<Reason> warnings = ReasonsOfWarnings(outcome_, console_.language(), mostPlaces);
        if (!warnings.empty()) {
            console_.Say(Console::Tone::caution, texts_.warnings, {});
            ListReasons(warnings);
        }
        if (totals_.open.rows > 0) {
            console_.Say(Fill(texts_.open, Count(totals_.open.rows, console_.messages().row)));
        }
        TellNext(login);
    }

private:
    std::string WithSums(std::string line, const Sums& sums) const {
        if (outcome_.columns.Find("iPrice")) {
            line += Fill(texts_.sums, importing::Quantity(sums.quantity), importing::Amount(sums.amount));
        }
        return line;
    }

    void TellTaken() {
        const std::string rows = Count(totals_.taken.rows, console_.messages().row);
        console_.Say(totals_.refused.rows + totals_.open.rows == 0 ? Console::Tone::good : Console::Tone::plain,
                     WithSums(Fill(outcome_.committed ? texts_.imported : texts_.ready, rows), totals_.taken), {});
        if (totals_.corrected > 0) {
            console_.Say(Fill(texts_.corrected, Count(totals_.corrected, console_.messages().row)));
        }
        if (outcome_.hiddenRows > 0) {
            console_.Say(Fill(texts_.hidden, Count(outcome_.hiddenRows, console_.messages().row)));
        }
    }

    void TellReasons(std::string_view heading, const Sums& sums, Console::Tone tone,
                     const std::vector<Reason>& reasons) {
        if (sums.rows > 0) {
            console_.Say(tone, WithSums(Fill(heading, Count(sums.rows, console_.messages().row)), sums), {});
            ListReasons(reasons);
        }
    }

    void ListReasons(const std::vector<Reason>& reasons) {
        for (std::size_t index = 0; index < reasons.size() && index < mostReasons; ++index) {
            const Reason& reason = reasons[index];
            const std::string places = fmt::format("{}", fmt::join(reason.places, texts_.betweenPlaces)) +
                                       std::string(reason.count > reason.places.size() ? texts_.morePlaces : "");
            const std::string_view words =
                reason.words.empty() ? console_.messages().summary.noReason : std::string_view(reason.words);
            console_.Say(Fill(texts_.reason, Grouped(reason.count), words, places));
        }
        if (reasons.size() > mostReasons) {
            console_.Say(Fill(texts_.moreReasons, Grouped(reasons.size() - mostReasons)));
        }
    }

    void TellNext(const std::string& login) {
        if (outcome_.interrupted) {
            console_.Say(Console::Tone::caution, {}, outcome_.committed ? texts_.interrupted : texts_.interruptedTest);
        } else if (!outcome_.committed) {
            console_.Say(texts_.testRun);
        }
        if (outcome_.committed && outcome_.number > 0 && outcome_.classFields->document.empty() &&
            CountOf(outcome_, RowState::imported) > 0) {
            console_.Say(Fill(texts_.undoHint, outcome_.number, login));
        }
    }

    const Outcome& outcome_;
    Totals totals_;
    Console& console_;
    const ImportTexts& texts_;
};

std::string_view StateName(RowState state) {
    constexpr std::array<std::string_view, 7> names = {"notReached", "ready",   "refused",  "refused",
                                                       "imported",   "inDoubt", "alreadyIn"};
    return names[static_cast<std::size_t>(state)];
}

class OutcomeJson {
public:
    OutcomeJson(const Outcome& outcome, Language language) : outcome_(outcome), language_(language) {}

    std::string Write() {
        json_.Open('{')
            .Member("file", outcome_.file.path)
            .Member("hash", outcome_.file.hash)
            .Member("class", outcome_.classFields->className)
            .Member("time", outcome_.time)
            .Member("operator", outcome_.login.operatorName)
            .Member("run", outcome_.committed ? "commit" : "test")
            .Member("import", outcome_.number);
        WriteNotes("faults", outcome_.faults);
        WriteNotes("remarks", outcome_.remarks);
        if (const auto& refused = outcome_.refused) {
            json_.Name("refused")
                .Open('{')
                .Member("code", refused->code)
                .Member("message", refused->message)
                .Close('}');
        }
        WriteTotals();
        WriteRows();
        json_.Close('}');
        return text_ + "\n";
    }

private:
    void WriteNotes(std::string_view name, const std::vector<importing::Note>& notes) {
        json_.Name(name).Open('[');
        for (const importing::Note& note : notes) {
            json_.Text(Words(note, language_));
        }
        json_.Close(']');
    }
    void WriteSums(std::string_view name, const Sums& sums) {
        json_.Name(name).Open('{').Member("rows", sums.rows);
        json_.Name("quantity").Word(fmt::format("{}", sums.quantity));
        json_.Name("amount").Word(fmt::format("{:.2f}", sums.amount)).Close('}');
    }
    void WriteTotals() {
        const Totals totals = TotalsOf(outcome_);
        WriteSums("taken", totals.taken);
        json_.Member("alreadyIn", CountOf(outcome_, RowState::alreadyIn)).Member("corrected", totals.corrected);
        WriteSums("rejected", totals.refused);
        WriteSums("open", totals.open);
    }
    void WriteRows() {
        json_.Name("rows").Open('[');
        for (const RowOutcome& each : outcome_.rows) {
            const bool plain = IsTaken(each.state) && each.row.corrections.empty() && each.row.warnings.empty();
            if (!plain) {
                text_.append(text_.ends_with('[') ? "\n" : ",\n");
                WriteRow(each);
            }
        }
        json_.Close(']');
    }
    void WriteRow(const RowOutcome& each) {
        json_.Open('{').Member("line", each.row.line).Member("state", StateName(each.state));
        WriteFindings("reasons", each.row, each.row.refusals);
        WriteFindings("warnings", each.row, each.row.warnings);
        if (!each.row.corrections.empty()) {
            json_.Name("corrections").Open('[');
            for (const importing::Correction& correction : each.row.corrections) {
                json_.Open('{')
                    .Member("cell", importing::CellName(correction.column, each.row.line))
                    .Member("old", correction.old)
                    .Member("new", correction.now)
                    .Close('}');
            }
            json_.Close(']');
        }
        if (!each.messages.empty()) {
            json_.Name("messages").Open('[');
            for (const std::string& message : each.messages) {
                json_.Text(message);
            }
            json_.Close(']');
        }
        json_.Close('}');
    }
    void WriteFindings(std::string_view name, const importing::Row& row,
                       const std::vector<importing::Finding>& findings) {
        if (findings.empty()) {
            return;
        }
        json_.Name(name).Open('[');
        for (const importing::Finding& finding : findings) {
            json_.Open('{');
            if (finding.column) {
                json_.Member("cell", importing::CellName(*finding.column, row.line));
            }
            json_.Member("words", Words(finding.note, language_));
            if (!finding.proposal.empty()) {
                json_.Member("proposal", finding.proposal);
            }
            json_.Close('}');
        }
        json_.Close(']');
    }

    const Outcome& outcome_;
    Language language_;
    std::string text_;
    text::JsonWriter json_{text_};
};

} // namespace

void TellImport(const Outcome& outcome, const std::string& login, Console& console) {
    Teller(outcome, console).Tell(login);
}

void TellFaults(const Outcome& outcome, Console& console) {
    for (const importing::Note& fault : outcome.faults) {
        console.Say(Console::Tone::bad, "kovra: ", Words(fault, console.language()));
    }
    if (outcome.refused) {
        console.Say(Console::Tone::bad, {},
                    Fill(console.messages().import.ledgerRefuses, outcome.refused->code, outcome.refused->message));
    }
}

std::string ImportJson(const Outcome& outcome, Language language) { return OutcomeJson(outcome, language).Write(); }

} // namespace cli
