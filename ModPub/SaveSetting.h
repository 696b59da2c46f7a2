#pragma once

#include "ModPub/FunctionRef.h"
#include "ModPub/ImportState.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ModPub {

/// The beginning of a statement of many pieces, with room for what nearly every one goes on with.
std::string BeginStatement(std::string_view beginning);

/// Appends a value as the settings' statements render it: `null` when it is empty, else the value between a quote and
/// `close` (the closing quote with its separator). Quotes inside are not doubled.
void AppendSqlText(std::string& sql, std::string_view value, std::string_view null, std::string_view close);

/// Appends one line of an update: `piece` (the column and its equals sign), the rendered value and a line break.
void AppendAssignment(std::string& sql, std::string_view piece, std::string_view value, std::string_view null);

/// The statements that save one setting in the login's year; the callables outlive it.
struct SettingStatements {
    /// Selects the ids of settings with the row's keys.
    FunctionRef<std::string(const std::string& year)> match;
    FunctionRef<std::string(const std::string& year)> insert;
    FunctionRef<std::string(const std::string& year, std::int32_t id)> update;
};

/// Saves one setting: inserts it where the match query finds none, updates the first match under "EDIT", refuses the
/// row otherwise. A refusal and an error are recorded here as outcomes of `key`; nothing is recorded for success.
/// Throws only what recording throws.
void SaveSetting(ImportState& state, std::string_view key, const SettingStatements& statements);

/// The same for the setting that `row` holds; the functions make its statements.
template <class Row>
void SaveSetting(ImportState& state, std::string_view key, const Row& row,
                 std::string (&match)(const Row& row, const std::string& year),
                 std::string (&insert)(const Row& row, const std::string& year),
                 std::string (&update)(const Row& row, const std::string& year, std::int32_t id)) {
    SaveSetting(state, key,
                {.match = [&](const std::string& year) { return match(row, year); },
                 .insert = [&](const std::string& year) { return insert(row, year); },
                 .update = [&](const std::string& year, std::int32_t id) { return update(row, year, id); }});
}

} // namespace ModPub
