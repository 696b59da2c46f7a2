#pragma once

#include "ModPub/RowLookups.h"

#include <span>
#include <string>
#include <string_view>

namespace ModPub {

/// A look-up of a code in the host's master data: the statement is `before` + code + `after`, followed by the login's
/// year where `byYear`.
struct CodeQuery {
    std::string_view before;
    std::string_view after;
    bool byYear = false;
};

/// An item that is no service, no discount and no PTO model.
inline constexpr CodeQuery itemQuery{"Select cValuetype From inventory "
                                     " Where cInvCode='",
                                     "' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 "};

/// An inventory class of any level, as the opposite account settings ask for it.
inline constexpr CodeQuery itemClassQuery{"Select cInvcCode From inventoryclass "
                                          " Where cInvcCode='",
                                          "'"};

/// A leaf account of the login's year.
inline constexpr CodeQuery accountQuery{"select ccode from code where ccode = '", "' and  bend =1 and iyear =", true};

/// Whether `query` finds `code`. Throws the database's error, and the login's for its year.
bool CodeExists(ImportState& state, RowLookups& lookups, const CodeQuery& query, std::string_view code);

/// A check of one field of `Row`: the message refuses a code that the query does not find.
template <class Row> struct CodeCheck {
    std::string Row::*field;
    CodeQuery query;
    std::string_view message;
};

/// Runs the checks in order, each only when its field is not empty, up to the first that fails: its message, or the
/// empty text. Throws as `CodeExists`.
template <class Row>
std::string_view FirstFailure(ImportState& state, RowLookups& lookups, const Row& row,
                              std::span<const CodeCheck<Row>> checks) {
    for (const CodeCheck<Row>& check : checks) {
        const std::string& code = row.*check.field;
        if (!code.empty() && !CodeExists(state, lookups, check.query, code)) {
            return check.message;
        }
    }
    return {};
}

} // namespace ModPub
