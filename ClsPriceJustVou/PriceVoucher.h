#pragma once

#include "host/DOMDocument.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kovra {

/// The card and the type of price adjustment vouchers.
inline constexpr std::string_view cardNumber = "IA51";
inline constexpr std::string_view voucherType = "22";

/// Where a document's rows are staged, and where the companion puts the rows that it computes from them.
inline constexpr std::string_view workTable = "IA_tmpPriceJDATA";
inline constexpr std::string_view resultTable = "IA_tmpPriceJDATA_Result";

/// The fields of a document's header as the request gives them, empty where it does not.
struct PriceHeader {
    std::string ID;
    std::string cMaker;
    std::string cAccounter;
    std::string dCJVDate;
    std::string cMemo;

    /// Throws 91 when `document` has no header.
    static PriceHeader Read(const host::DOMNode& document);
};

inline constexpr std::size_t freeItems = 10;

/// The fields of a document's row as the request gives them, empty where it does not.
struct PriceEntry {
    std::string cInvCode;
    std::string cWhCode;
    std::string iCJVACost;
    /// `cFree1` to `cFree10`.
    std::array<std::string, freeItems> cFree;
    /// The elements named "cfree1" to "cfree10", which one check reads instead.
    std::array<std::string, freeItems> cfree;

    static PriceEntry Read(const host::DOMNode& entry);
};

} // namespace kovra
