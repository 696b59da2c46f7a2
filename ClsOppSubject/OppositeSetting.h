#pragma once

#include "host/DOMDocument.h"

#include <string>

namespace kovra {

/// The fields of one request row, each the text of the child element of its name, empty when there is none.
/// The project comes under two spellings: `citem_class` and `citemcode` are stored without a check, `cItem_class` and
/// `cItemCode` are checked and not stored. Callers send the one, the other or both.
struct OppositeSetting {
    std::string cRdCode;
    std::string cInvcCode;
    std::string cInvCode;
    std::string cDepCode;
    std::string citem_class;
    std::string citemcode;
    std::string cItem_class;
    std::string cItemCode;
    /// Name of the project class.
    std::string cItemCName;
    /// Name of the project.
    std::string cName;
    std::string cOppHead;
    std::string cEstHead;

    static OppositeSetting Read(const host::DOMNode& row);

    /// The text that names the row in its outcomes, as far as it does not name the project.
    std::string Key() const;
};

} // namespace kovra
