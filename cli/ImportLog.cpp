#include "cli/ImportLog.h"

#include "ModPub/ImportState.h"
#include "ModPub/Text.h"
#include "cli/Nearest.h"
#include "host/DOMDocument.h"
#include "text/Utf8.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace cli {

ImportLog::ImportLog(std::optional<ModPub::RequestFields> fields, bool keepOutcomes, Listeners listeners)
    : fields_(std::move(fields)), keepOutcomes_(keepOutcomes), listeners_(std::move(listeners)) {}

namespace {

/// Bytes of a key or message that are kept for telling.
constexpr std::size_t toldBytes = 600;

/// The text, or its beginning.
std::string Shortened(std::string_view text) {
    if (text.size() <= toldBytes) {
        return std::string(text);
    }
    return std::string(text::CutUtf8(text, toldBytes)) + "…";
}

/// Keeps the import apart from what goes wrong here: where memory runs out, less is told of it.
template <class Action> void Guard(Action action) noexcept {
    try {
        action();
    } catch (const std::exception&) {
        // The counts stay right; they need no memory.
    }
}

} // namespace

/// A listener that fails stops the import before the next row.
void ImportLog::Notify(const LoggedOutcome& outcome) noexcept {
    try {
        listeners_.outcome(outcome);
    } catch (const std::exception& thrown) {
        failed_ = true;
        Guard([&] { failure = thrown.what(); });
    }
}

bool ImportLog::GoesOn() noexcept {
    stopped = stopped || failed_ || (listeners_.wantsStop && listeners_.wantsStop());
    return !stopped;
}

void ImportLog::RequestBegins(std::string_view theDocid, std::string_view theProc) noexcept {
    Guard([&] {
        docid = theDocid;
        proc = theProc;
    });
}

void ImportLog::RowsSelected(std::size_t count) noexcept { rows = count; }

bool ImportLog::RowBegins(std::size_t number, const host::DOMNode& row) noexcept {
    if (!GoesOn()) {
        return false;
    }
    begun = number;
    entry_ = 0;
    entries_ = 0;
    outcomesOfRow_ = 0;
    entriesRefused_ = false;
    Guard([&] {
        if (listeners_.progress && rows.value_or(0) > 1) {
            listeners_.progress(number, *rows, false);
        }
        if (!fields_) {
            return;
        }
        if (!fields_->row.empty()) {
            LookAtChildren(row, fields_->row);
        } else if (const host::DOMNodePtr header = row.SelectSingleNode("header")) {
            LookAtChildren(*header, fields_->header);
        }
    });
    return true;
}

void ImportLog::EntriesSelected(std::size_t count) noexcept { entries_ = count; }

bool ImportLog::EntryBegins(std::size_t number, const host::DOMNode& entry) noexcept {
    if (!GoesOn()) {
        return false;
    }
    entry_ = number;
    Guard([&] {
        if (listeners_.progress && rows.value_or(0) == 1) {
            listeners_.progress(number, entries_, true);
        }
        if (fields_) {
            LookAtChildren(entry, fields_->entry);
        }
    });
    return true;
}

void ImportLog::EntryRefused(std::string_view message) noexcept {
    entriesRefused_ = true;
    AddRefusal(entry_, {}, ModPub::outcome::refused, message);
}

void ImportLog::ConnectionLost(std::string_view description) noexcept {
    if (!loss) {
        Guard([&] { loss = {begun, std::string(description)}; });
    }
}

void ImportLog::OutcomeRecorded(std::string_view key, long code, std::string_view description) noexcept {
    const bool isAccepted = code == ModPub::outcome::accepted;
    const bool isFirst = begun > 0 && outcomesOfRow_++ == 0;
    if (isFirst) {
        rowAccepted_ = isAccepted;
        ++(isAccepted ? accepted : refused);
    }
    anyRefused = anyRefused || !isAccepted;
    stoppedByError = code == ModPub::outcome::stopped && key.empty() && begun > 0 && begun < rows.value_or(0);
    // Entries have told why; a refusal that follows another says it again.
    const bool tells = isFirst || begun == 0 || (rowAccepted_ && outcomesOfRow_ == 2);
    if (!isAccepted && tells && !entriesRefused_) {
        AddRefusal(0, key, code, description);
    }
    if (!keepOutcomes_ && !listeners_.outcome) {
        return;
    }
    Guard([&] {
        LoggedOutcome outcome{begun, std::string(key), code, std::string(description)};
        if (listeners_.outcome) {
            Notify(outcome);
        }
        if (keepOutcomes_) {
            outcomes.push_back(std::move(outcome));
        }
    });
}

void ImportLog::RequestRefused(std::string_view code, std::string_view message) noexcept {
    Guard([&] {
        error.emplace();
        error->code = code;
        error->message = message;
        if (begun == 0) {
            // What was recorded before is not in an error result.
            outcomes.clear();
            refusals.clear();
        }
    });
}

void ImportLog::AddRefusal(std::size_t entry, std::string_view key, long code, std::string_view description) noexcept {
    if (refusals.size() == toldRefusals) {
        ++untoldRefusals;
        return;
    }
    Guard([&] {
        refusals.push_back({{begun, Shortened(key), code, Shortened(description)}, entry, outcomesOfRow_ > 1});
    });
}

void ImportLog::LookAtChildren(const host::DOMNode& parent, const std::vector<std::string>& known) {
    for (const host::DOMNodePtr& child : parent.ChildNodes()) {
        const std::string name = child->NodeName();
        if (!child->IsElement() || std::ranges::find(known, name) != known.end()) {
            continue;
        }
        if (const auto seen = unknownFields.find(name); seen != unknownFields.end()) {
            ++seen->second.count;
            continue;
        }
        std::string nearest = Nearest(name, known);
        if (!fields_->othersAreColumns || ModPub::UpperCase(nearest) == ModPub::UpperCase(name)) {
            unknownFields.emplace(name, UnknownField{1, begun, std::move(nearest)});
        }
    }
}

} // namespace cli
