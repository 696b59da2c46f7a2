#pragma once

#include "tests/support/rules/Play.h"

#include <functional>
#include <string>
#include <vector>

namespace test {

/// A look-up of a row's check.
struct CheckedCode {
    /// A piece of the statement.
    std::string sql;
    /// Whether the login's year is read for it.
    bool byYear = false;
    /// What refuses the row where the look-up finds nothing; empty where it finds.
    std::string refusal = {};
};

/// The look-up of a ledger account of 2023.
CheckedCode AccountCheck(const std::string& code);

/// A row of account settings, and what the rules make of it.
struct SettingRow {
    std::string key;
    /// What refuses the row before anything is asked.
    std::string missing = {};
    std::vector<CheckedCode> checks = {};
    /// A piece of the look-up of settings with the row's keys.
    std::string match = {};
    /// A piece of the statement that writes the row; empty where a setting that is there refuses it.
    std::string write = {};
    /// What the database says to that statement; empty where it takes it.
    std::string writeError = {};
    /// The row as it is stored, in place of the stored row of this name.
    std::string stored = {};
    std::string storedName = {};
};

/// Plays the rows of a request.
std::string PlaySettings(Play& play, const std::vector<SettingRow>& rows);

/// Plays a whole call of `ClsInvSubject` or `ClsOppSubject` whose operation is `run`, in a year that is not closed.
std::string PlaySettingsCall(Play& play, const std::function<std::string()>& run);
/// The same of `ClsOppSubjectST`, in an account that works with standard costs.
std::string PlayStandardCostCall(Play& play, const std::function<std::string()>& run);

/// Plays the operation "EMPTY" on a table.
std::string PlayEmpty(Play& play, const std::string& table);

} // namespace test
