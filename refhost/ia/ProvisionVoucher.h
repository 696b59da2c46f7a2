#pragma once

#include "host/Environment.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refhost {

class SavedRecords;

/// A provision to be saved into `IA_DecReady` and `IA_DecReadys`: its records come in ADO's XML persistence layout,
/// whose schema names the columns.
class ProvisionVoucher {
public:
    /// All arguments outlive the voucher.
    ProvisionVoucher(host::Environment& environment, host::Connection& connection, const host::DOMDocument& head,
                     const host::DOMDocument& body)
        : environment_(environment), connection_(connection), head_(head), body_(body) {}

    /// Checks the rows and saves the voucher under the next number of the table.
    ///
    /// Before anything is written, `result` lists under `zeroout` the rows with more `iQuantity` than `CurrentStock`
    /// has of the item (in the row's warehouse, or in all when the row names none; an item without a row there is not
    /// checked), and under `itemcheck` those whose `iThisPrice` is above the `ItemBudget` of their project. Each row
    /// listed is a `z:row` with the attribute `cinvcode`. Nothing is written when a row is listed.
    ///
    /// A column of numbers takes what `ModPub::ParseNumber` reads; an empty attribute is stored as Null.
    /// @return why it cannot be saved, or the empty text. Throws the database's error.
    std::string Save(host::DOMDocument& result);

private:
    bool ListRows(const SavedRecords& body, host::DOMDocument& result);
    std::optional<double> LookUpNumber(const std::string& sql);

    host::Environment& environment_;
    host::Connection& connection_;
    const host::DOMDocument& head_;
    const host::DOMDocument& body_;
};

} // namespace refhost
