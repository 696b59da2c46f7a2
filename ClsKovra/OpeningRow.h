#pragma once

#include "host/DOMDocument.h"

#include <array>
#include <string>
#include <string_view>

namespace kovra {

/// The children that hold a row's free items, in order.
inline constexpr std::array<std::string_view, 10> freeItemNames = {"cFree1", "cFree2", "cFree3", "cFree4", "cFree5",
                                                                   "cFree6", "cFree7", "cFree8", "cFree9", "cFree10"};

/// One request row: the element, and the fields that several steps look at, each the text of the child of its name,
/// empty when there is none.
struct OpeningRow {
    const host::DOMNode& element;
    std::string cWhCode;
    std::string cInvCode;
    /// The row's amount, under the name of a price.
    std::string iPrice;
    std::string cBatchCode;
    /// The text that names the row in its outcome.
    std::string key;

    static OpeningRow Read(const host::DOMNode& element);

    /// The text of the child `name`, empty when there is none.
    std::string Field(std::string_view name) const;
};

} // namespace kovra
