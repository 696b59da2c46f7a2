#pragma once

#include "ModPub/ImportObserver.h"
#include "ModPub/RequestFields.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// One outcome with the row that it is of.
struct LoggedOutcome {
    /// Counted from 1; 0 for an outcome of the request.
    std::size_t row = 0;
    std::string key;
    long code = 0;
    std::string description;
};

/// A refusal as people are told of it: of a row, or of an entry of a document. Long texts are cut.
struct Refusal {
    LoggedOutcome outcome;
    /// Counted from 1; 0 for the row itself.
    std::size_t entry = 0;
    /// Whether the row had been accepted before.
    bool afterAcceptance = false;
};

/// A child element that the class does not read.
struct UnknownField {
    std::size_t count = 0;
    std::size_t firstRow = 0;
    /// Empty when no field is like it.
    std::string nearest;
};

/// Keeps count of one import as it happens.
class ImportLog final : public ModPub::ImportObserver {
public:
    /// Refusals that are kept for telling; the others are counted.
    static constexpr std::size_t toldRefusals = 10;

    struct Listeners {
        /// Whether to stop before the next row. Never throws.
        std::function<bool()> wantsStop = {};
        /// Hears of each outcome; what it throws stops the import before the next row.
        std::function<void(const LoggedOutcome&)> outcome = {};
        /// Hears how many of the rows, or of the entries of a single document, have begun.
        std::function<void(std::size_t begun, std::size_t of, bool entries)> progress = {};
    };

    /// @param fields what the class reads; nothing for not looking at children
    /// @param keepOutcomes whether `outcomes` is filled
    ImportLog(std::optional<ModPub::RequestFields> fields, bool keepOutcomes, Listeners listeners);

    void RequestBegins(std::string_view docid, std::string_view proc) noexcept override;
    void RowsSelected(std::size_t count) noexcept override;
    bool RowBegins(std::size_t number, const host::DOMNode& row) noexcept override;
    void EntriesSelected(std::size_t count) noexcept override;
    bool EntryBegins(std::size_t number, const host::DOMNode& entry) noexcept override;
    void EntryRefused(std::string_view message) noexcept override;
    void OutcomeRecorded(std::string_view key, long code, std::string_view description) noexcept override;
    void RequestUndone() noexcept override { undone = true; }
    void RequestRefused(std::string_view code, std::string_view message) noexcept override;
    /// The connection to the database is lost; the first time counts.
    void ConnectionLost(std::string_view description) noexcept;

    /// Empty until the request is read.
    std::string docid;
    std::string proc;
    /// Nothing until the rows are selected.
    std::optional<std::size_t> rows;
    std::size_t begun = 0;
    /// Rows whose first outcome is code 0, and those whose first is another.
    std::size_t accepted = 0;
    std::size_t refused = 0;
    /// Whether an outcome is not code 0.
    bool anyRefused = false;
    /// Whether an error ended the loop over the rows: an outcome without key, code 999, of the last row begun.
    bool stoppedByError = false;
    /// Whether the import stopped because a listener asked for it.
    bool stopped = false;
    bool undone = false;
    std::vector<Refusal> refusals;
    /// Refusals, of entries too, that `refusals` does not hold.
    std::size_t untoldRefusals = 0;
    /// What stands in the result, when it is kept.
    std::vector<LoggedOutcome> outcomes;
    struct Error {
        std::string code;
        std::string message;
    };
    /// The error result, when there is one.
    std::optional<Error> error;
    /// Where the connection to the database was lost.
    struct Loss {
        /// The row at hand; 0 for none.
        std::size_t row = 0;
        std::string description;
    };
    std::optional<Loss> loss;
    std::map<std::string, UnknownField, std::less<>> unknownFields;
    /// What a listener threw.
    std::string failure;

private:
    bool GoesOn() noexcept;
    void Notify(const LoggedOutcome& outcome) noexcept;
    void AddRefusal(std::size_t entry, std::string_view key, long code, std::string_view description) noexcept;
    void LookAtChildren(const host::DOMNode& parent, const std::vector<std::string>& known);

    std::optional<ModPub::RequestFields> fields_;
    bool keepOutcomes_;
    Listeners listeners_;
    std::size_t entries_ = 0;
    std::size_t entry_ = 0;
    std::size_t outcomesOfRow_ = 0;
    bool entriesRefused_ = false;
    bool rowAccepted_ = false;
    bool failed_ = false;
};

} // namespace cli
