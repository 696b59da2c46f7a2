#pragma once

#include "ModPub/TransactFrame.h"

#include <functional>
#include <string_view>
#include <vector>

namespace ModPub {

/// The operations of a settings class: "ADD" and "EDIT" pass each row to `importRow`; "EMPTY" executes
/// `emptyStatement`.
std::vector<Operation> SettingsOperations(ImportState& state, std::string_view emptyStatement,
                                          const std::function<void(const host::DOMNode& row)>& importRow);

} // namespace ModPub
