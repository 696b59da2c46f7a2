#pragma once

// Files of statements and answers. Each is a suite of tests, and each of its sections a test at each place, on an empty
// database:
//
//     == NAME      A section; behind the name may stand ", embedded alone", ", not behind a driver" or ", not on a
//                  server".
//     -- TEXT      A remark.
//     STATEMENT
//     > ANSWER     What the statement must answer, as `Answer` shows it; without this line nothing.
//     BATCH
//     >> ANSWER    What the batch must answer, as `Batch` shows it; >> alone for nothing. Left out behind a driver of
//     the
//                  embedded database, which takes a statement at a time.
//
// Statements in front of the first section begin each of them. In statements and answers \n, \r, \t and \\ are the
// characters that they are in C++, and \s is a blank, for the end of a line.

#include "tests/refhost/sql/Places.h"

#include <cstddef>
#include <istream>
#include <set>
#include <string>
#include <vector>

namespace test_sql {

/// A statement or batch of a section.
struct Asked {
    /// Its line of the file, counted from 1.
    int line = 0;
    std::string sql;
    std::string answer;
    bool batch = false;
};

struct Section {
    std::string name;
    /// The line of its heading.
    int line = 0;
    /// The places where it does not run.
    std::set<Place> without;
    std::vector<Asked> asked;
    /// How many of these begin every section of the file.
    std::size_t beginning = 0;

    /// Whether all that it asks of its own is batches.
    bool BatchesAlone() const;
};

/// The sections of a file, each with what begins them all. Throws std::runtime_error, which tells the line, for what
/// would be asked of nothing or not at all: a file without sections, a section without statements or of a name that
/// another has, an answer without its statement or beside another, an unknown place or escape.
std::vector<Section> ReadSections(std::istream& file);

} // namespace test_sql
