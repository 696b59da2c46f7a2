#pragma once

#include "refhost/ado/Database.h"
#include "refhost/sql/store/TouchedTables.h"
#include "refhost/sql/syntax/Literals.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace refhost::sql {

/// How often the tables of the account may have changed.
class TableChanges {
public:
    /// The count of a table, which lives as long as this.
    std::uint64_t& Of(const std::string& table) { return counts_[table]; }
    /// Counts a change of every table.
    void ChangeAll();

private:
    std::unordered_map<std::string, std::uint64_t> counts_;
};

/// What one look-up has answered lately: an import asks for the same few warehouses, accounts and options again and
/// again. An answer is kept from the second time on, since most are asked for once, and holds until one of the tables
/// changes that it was read from.
class RepeatedAnswers {
public:
    /// @param read the tables that the look-up reads
    RepeatedAnswers(TableChanges& changes, const std::vector<std::string>& read);

    /// What the look-up answered for these literals; nullptr where it may answer something else now.
    const ResultSet* Find(const std::vector<Literal>& literals);
    /// Keeps the answer to what `Find` was asked for last, unless it is long or was not asked for just before.
    void Note(const std::vector<Literal>& literals, const ResultSet& answer);

private:
    struct Known {
        /// Of the values that were asked for last.
        std::size_t hash = 0;
        std::vector<std::string> values;
        /// The changes that the answer contains; 0 for none.
        std::uint64_t changes = 0;
        ResultSet answer;
    };

    /// Grows with every change of a table that is read.
    std::uint64_t Changes() const;

    static constexpr std::size_t places = 64;
    static constexpr std::size_t mostCells = 32;

    std::vector<const std::uint64_t*> read_;
    /// The places, once the first answer is asked for; values share one with others.
    std::vector<Known> known_;
    /// Of the values that `Find` was asked for last.
    std::size_t hash_ = 0;
};

} // namespace refhost::sql
