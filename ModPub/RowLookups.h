#pragma once

#include "ModPub/ImportState.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ModPub {

/// The look-ups of one row. They share a recordset, which the first of them creates and each opens and closes, and the
/// room for their texts. An error in a look-up may leave the recordset open: it ends the look-ups of the row.
/// Every member throws the database's error.
class RowLookups {
public:
    /// @param state outlives the look-ups; its connection is open when the first is asked for
    explicit RowLookups(ImportState& state) : state_(state) {}

    /// Whether the look-up, given in pieces that follow each other, finds a row.
    bool Find(std::initializer_list<std::string_view> sql);

    /// The first `Count` values of the first row that the look-up finds, or nothing when it finds none.
    template <std::size_t Count>
    std::optional<std::array<host::Value, Count>> FirstRow(std::initializer_list<std::string_view> sql) {
        host::Recordset& recordset = Open(sql);
        std::optional<std::array<host::Value, Count>> row;
        if (!recordset.AtEOF()) {
            row.emplace();
            for (std::size_t index = 0; index < Count; ++index) {
                (*row)[index] = recordset.FieldValue(index);
            }
        }
        recordset.Close();
        return row;
    }

    /// The recordset, open on the look-up; the caller closes it before the next one.
    host::Recordset& Open(std::initializer_list<std::string_view> sql);

private:
    ImportState& state_;
    std::unique_ptr<host::Recordset> recordset_;
    /// The latest look-up's text.
    std::string sql_;
};

} // namespace ModPub
