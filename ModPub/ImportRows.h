#pragma once

#include "ModPub/ImportState.h"

#include <functional>

namespace ModPub {

/// The row loop of a class: passes each row to `importRow`, in order.
/// An error that `importRow` lets out stops the loop with one outcome: empty key, code 999, the error's description;
/// outcomes of the rows before stay.
/// An observer that asks to stop ends the loop, without an outcome.
void ImportRows(ImportState& state, const host::DOMNodeList& rows,
                const std::function<void(const host::DOMNode& row)>& importRow);

} // namespace ModPub
