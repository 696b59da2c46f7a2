#pragma once

#include "tests/support/rules/Play.h"

#include <string>
#include <vector>

namespace test {

/// A document of the request, and what the rules make of it.
struct ProvisionDoc {
    std::string number;
    /// What refuses the document: before its number is known, by its type, by the save.
    std::string noHeader = {};
    std::string badType = {};
    std::string saveRefusal = {};
    /// The item of the document that has its number already, empty where there is none.
    std::string storedItem = {};
    std::vector<std::string> items = {};
};

/// Plays a call of the provision import. The contents are the documents' numbers and the rows' items.
class ProvisionRules {
public:
    /// @param edit whether documents are replaced
    ProvisionRules(Play& play, bool edit) : play_(play), edit_(edit) {}

    std::string Transact(const std::vector<ProvisionDoc>& docs);

private:
    void Document(const ProvisionDoc& doc);
    std::string Save(const ProvisionDoc& doc, bool& inTransaction);

    Play& play_;
    bool edit_;
    /// The connection that the host's components share.
    int components_ = 2;
};

} // namespace test
