#pragma once

#include <span>
#include <string_view>

namespace importing {

/// A column by which a record is matched with a unit.
struct MatchColumn {
    enum class Kind {
        /// Compared as the account does: without regard to ASCII letter case and blanks at the end.
        text,
        /// Zero is stored as Null.
        number,
        date,
    };

    std::string_view column;
    /// The request's element that is written into it.
    std::string_view element;
    Kind kind = Kind::text;
};

/// Where a class's records are.
struct LedgerTable {
    std::string_view className;
    std::string_view table;
    std::string_view id;
    /// Which records are of the class, with "{0}" for the year; empty for all.
    std::string_view condition;
    std::span<const MatchColumn> columns;
    /// Whether single records can be taken back.
    bool canUndo = true;
};

/// The table of a class of `AllClassFields`.
const LedgerTable& LedgerTableOf(std::string_view className);

} // namespace importing
