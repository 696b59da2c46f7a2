#include "ClsPriceJustVou/PriceVoucher.h"

#include "ModPub/GetNodeText.h"
#include "ModPub/Required.h"

namespace kovra {

using ModPub::GetNodeText;

PriceHeader PriceHeader::Read(const host::DOMNode& document) {
    const host::DOMNodePtr found = document.SelectSingleNode("header");
    const host::DOMNode& header = ModPub::Required(found);
    return {
        .ID = GetNodeText(header, "ID"),
        .cMaker = GetNodeText(header, "cMaker"),
        .cAccounter = GetNodeText(header, "cAccounter"),
        .dCJVDate = GetNodeText(header, "dCJVDate"),
        .cMemo = GetNodeText(header, "cMemo"),
    };
}

PriceEntry PriceEntry::Read(const host::DOMNode& entry) {
    PriceEntry read{
        .cInvCode = GetNodeText(entry, "cInvCode"),
        .cWhCode = GetNodeText(entry, "cWhCode"),
        .iCJVACost = GetNodeText(entry, "iCJVACost"),
        .cFree = {},
        .cfree = {},
    };
    for (std::size_t i = 0; i < freeItems; ++i) {
        const std::string number = std::to_string(i + 1);
        read.cFree[i] = GetNodeText(entry, "cFree" + number);
        read.cfree[i] = GetNodeText(entry, "cfree" + number);
    }
    return read;
}

} // namespace kovra
