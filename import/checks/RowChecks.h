#pragma once

#include "import/outcome/Outcome.h"

#include <string>
#include <string_view>
#include <vector>

namespace importing {

/// A row's values by their elements, and its refusals.
class CheckedRow {
public:
    CheckedRow(const Outcome& outcome, RowOutcome& row) : outcome_(outcome), row_(row) {}

    /// Empty where the file has no such column.
    const std::string& operator[](std::string_view element) const { return ValueOf(outcome_, row_.row, element); }

    /// Refuses the row for the cell of `element`, or as a whole where the file has no such column. A cell that could
    /// not be read is refused already, and nothing is added.
    void Refuse(std::string_view element, Message message, std::vector<std::string> arguments = {});
    void Refuse(Message message, std::vector<std::string> arguments = {});

    /// Whether the cell of `element` was read: empty or with a value, and not refused.
    bool WasRead(std::string_view element) const;

    RowOutcome& row() noexcept { return row_; }

private:
    const Outcome& outcome_;
    RowOutcome& row_;
};

} // namespace importing
