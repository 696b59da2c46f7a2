#include "cli/Summary.h"

namespace cli {
namespace {

using Tone = Console::Tone;

class Summary {
public:
    Summary(const ImportLog& log, const SummaryContext& context, Console& console)
        : log_(log), context_(context), console_(console), texts_(console.messages().summary),
          noun_(context.importClass.importsDocuments ? console.messages().document : console.messages().row) {}

    void Tell() {
        TellOutcome();
        if (context_.listsRefusals) {
            for (const Refusal& refusal : log_.refusals) {
                console_.Say(RefusalLine(refusal));
            }
            if (log_.untoldRefusals > 0) {
                console_.Say(Fill(texts_.moreRefusals, Grouped(log_.untoldRefusals)));
            }
        }
        TellEnd();
        TellWarnings();
    }

private:
    void Say(Tone tone, std::string_view line) { console_.Say(tone, line, {}); }

    /// The first line: how many rows were accepted and refused.
    void TellOutcome() {
        if (log_.error) {
            Say(Tone::bad, Fill(texts_.requestRefused, log_.error->code, log_.error->message));
        }
        if (log_.undone) {
            Say(Tone::bad, texts_.undone);
            return;
        }
        const std::size_t accepted = log_.accepted;
        const std::size_t refused = log_.refused;
        if (accepted + refused == 0) {
            TellThatNoRowWasImported();
        } else if (refused == 0) {
            const bool whole = accepted > 1 && accepted == log_.rows;
            Say(Tone::good, Fill(whole ? texts_.allAccepted : texts_.accepted, Count(accepted, noun_)));
        } else if (accepted == 0) {
            Say(Tone::bad, Fill(texts_.allRefused, Count(refused, noun_)));
        } else {
            Say(Tone::caution, Fill(texts_.someRefused, Count(accepted, noun_), Count(refused, noun_)));
        }
    }

    void TellThatNoRowWasImported() {
        if (log_.error || log_.anyRefused) {
            Say(Tone::bad, texts_.nothingImported);
        } else if (log_.rows) {
            Say(Tone::caution, log_.stopped ? texts_.nothingImported : texts_.noRows);
        } else {
            Say(Tone::good, Fill(texts_.emptied, log_.proc));
        }
    }

    std::string Place(const Refusal& refusal) const {
        if (refusal.outcome.row == 0) {
            return std::string(texts_.request);
        }
        std::string place = Fill(noun_.place, Grouped(refusal.outcome.row));
        if (refusal.entry > 0) {
            place.append(texts_.betweenPlaces).append(Fill(console_.messages().entry.place, Grouped(refusal.entry)));
        }
        return place;
    }

    std::string RefusalLine(const Refusal& refusal) const {
        const std::string_view message = TrimmedMessage(refusal.outcome.description);
        const std::string_view reason = message.empty() ? texts_.noReason : message;
        const std::string_view key = TrimmedKey(refusal.outcome.key);
        if (refusal.afterAcceptance) {
            return Fill(texts_.afterAcceptance, Place(refusal), key, reason);
        }
        return key.empty() ? Fill(texts_.refusalWithoutKey, Place(refusal), reason)
                           : Fill(texts_.refusal, Place(refusal), key, reason);
    }

    /// Why the import ended before its last row, and what became of it.
    void TellEnd() {
        const std::size_t rows = log_.rows.value_or(0);
        if (log_.loss) {
            const std::string_view request = texts_.request;
            Say(Tone::bad, Fill(texts_.connectionLost,
                                log_.loss->row == 0 ? std::string(request) : Fill(noun_.place, Grouped(log_.loss->row)),
                                log_.loss->description));
        }
        if (log_.stoppedByError) {
            Say(Tone::bad,
                Fill(texts_.stoppedByError, Fill(noun_.place, Grouped(log_.begun)), Count(rows - log_.begun, noun_)));
        }
        if (!log_.failure.empty()) {
            Say(Tone::bad, Fill(texts_.stoppedByFailure, log_.failure));
        }
        if (context_.interrupted && log_.undone) {
            Say(Tone::caution, texts_.interruptedWhole);
        } else if (context_.interrupted && !log_.stopped) {
            Say(Tone::caution, texts_.interruptedAfter);
        } else if (context_.interrupted && log_.begun == 0) {
            Say(Tone::caution, texts_.interruptedBefore);
        } else if (context_.interrupted) {
            Say(Tone::caution,
                Fill(texts_.interrupted, Grouped(log_.begun), Count(rows, noun_), Count(log_.begun, noun_)));
        }
    }

    void Warn(std::string_view text) { console_.Say(Tone::caution, texts_.warning, text); }

    void TellWarnings() {
        if (context_.emptyInput) {
            Warn(texts_.emptyInput);
        }
        if (log_.error && log_.error->code == "710") {
            Warn(Fill(texts_.unknownOperation, log_.proc, context_.importClass.name, context_.importClass.operations));
        }
        if (log_.rows == 0U) {
            Warn(texts_.rootTagNamesNothing);
        }
        for (const auto& [name, field] : log_.unknownFields) {
            std::string text =
                Fill(texts_.unknownField, name, context_.importClass.name, Fill(texts_.times, Grouped(field.count)),
                     Fill(noun_.place, Grouped(field.firstRow)));
            if (!field.nearest.empty()) {
                text.append(texts_.betweenClauses)
                    .append(Fill(console_.messages().usage.didYouMean, "<" + field.nearest + ">"));
            }
            Warn(text);
        }
    }

    const ImportLog& log_;
    const SummaryContext& context_;
    Console& console_;
    const SummaryTexts& texts_;
    const Noun& noun_;
};

} // namespace

std::string_view TrimmedKey(std::string_view key) noexcept {
    constexpr std::string_view comma = "，";
    while (key.ends_with(' ') || key.ends_with(comma)) {
        key.remove_suffix(key.ends_with(' ') ? 1 : comma.size());
    }
    return key;
}

std::string_view TrimmedMessage(std::string_view message) noexcept {
    while (message.ends_with('\n') || message.ends_with('\r')) {
        message.remove_suffix(1);
    }
    return message;
}

void Summarize(const ImportLog& log, const SummaryContext& context, Console& console) {
    Summary(log, context, console).Tell();
}

} // namespace cli
