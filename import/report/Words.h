#pragma once

#include "import/messages/Language.h"

#include <string_view>

namespace importing::report {

/// What the report says, in one language.
struct Words {
    /// The value of the attribute `lang`.
    std::string_view languageTag;
    std::string_view testRun;
    std::string_view import;

    // What happened, and what follows. {0} rows, {1} rows refused.
    std::string_view wouldTake;
    std::string_view nothingChanged;
    std::string_view imported;
    std::string_view unusable;
    /// {0} the code, {1} the message.
    std::string_view ledgerRefuses;
    /// {0} rows.
    std::string_view interrupted;
    std::string_view inDoubt;
    std::string_view alreadyIn;
    /// Of rows that are hidden; {0} rows.
    std::string_view hidden;

    std::string_view facts;
    std::string_view file;
    std::string_view hash;
    /// {0} the size in bytes.
    std::string_view bytes;
    std::string_view when;
    std::string_view who;
    std::string_view account;
    std::string_view year;
    std::string_view className;
    std::string_view number;

    std::string_view totals;
    std::string_view taken;
    std::string_view ready;
    std::string_view corrected;
    std::string_view refused;
    std::string_view open;
    std::string_view rows;
    std::string_view quantity;
    std::string_view amount;
    std::string_view byWarehouse;
    std::string_view warehouse;
    std::string_view byAccount;
    std::string_view stockAccount;
    std::string_view noAccount;
    std::string_view name;
    std::string_view sum;

    std::string_view refusals;
    std::string_view reason;
    std::string_view count;
    std::string_view places;
    /// {0} the number.
    std::string_view line;
    std::string_view byClass;
    std::string_view warnings;
    std::string_view remarks;

    std::string_view corrections;
    std::string_view cell;
    std::string_view heading;
    std::string_view old;
    std::string_view now;
    /// {0} how many are not listed.
    std::string_view more;
    std::string_view none;

    std::string_view maker;
    std::string_view checker;
    std::string_view date;
};

const Words& WordsIn(Language language) noexcept;

} // namespace importing::report
