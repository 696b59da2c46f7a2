#pragma once

#include "ModPub/ImportState.h"
#include "ModPub/Lookup.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace ModPub {

/// The first `Count` values of the first row that the look-up `sql` finds, or nothing when it finds none.
/// Throws the database's error.
template <std::size_t Count>
std::optional<std::array<host::Value, Count>> FirstRow(ImportState& state, std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = OpenLookup(state.environment, *state.connection, sql);
    std::optional<std::array<host::Value, Count>> row;
    if (!recordset->AtEOF()) {
        row.emplace();
        for (std::size_t index = 0; index < Count; ++index) {
            (*row)[index] = recordset->FieldValue(index);
        }
    }
    recordset->Close();
    return row;
}

} // namespace ModPub
