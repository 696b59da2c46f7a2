#include "ClsPriceJustVou/PriceVoucher.h"

#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ModPub/RequestFields.h"
#include "ModPub/Required.h"

namespace kovra {

namespace {

using HeaderField = ModPub::RowField<PriceHeader>;
using EntryField = ModPub::RowField<PriceEntry>;

constexpr std::array headerFields = {
    HeaderField{"ID", &PriceHeader::ID},
    HeaderField{"cMaker", &PriceHeader::cMaker},
    HeaderField{"cAccounter", &PriceHeader::cAccounter},
    HeaderField{"dCJVDate", &PriceHeader::dCJVDate},
    HeaderField{"cMemo", &PriceHeader::cMemo},
};

constexpr std::array entryFields = {
    EntryField{"cInvCode", &PriceEntry::cInvCode},
    EntryField{"cWhCode", &PriceEntry::cWhCode},
    EntryField{"iCJVACost", &PriceEntry::iCJVACost},
};

} // namespace

PriceHeader PriceHeader::Read(const host::DOMNode& document) {
    const host::DOMNodePtr found = document.SelectSingleNode("header");
    return ModPub::ReadFields(ModPub::Required(found), headerFields);
}

PriceEntry PriceEntry::Read(const host::DOMNode& entry) {
    PriceEntry read = ModPub::ReadFields(entry, entryFields);
    for (std::size_t i = 0; i < freeItems; ++i) {
        const std::string number = std::to_string(i + 1);
        read.cFree[i] = ModPub::GetNodeText(entry, "cFree" + number);
        read.cfree[i] = ModPub::GetNodeText(entry, "cfree" + number);
    }
    return read;
}

ModPub::RequestFields ClsPriceJustVou::Fields() {
    ModPub::RequestFields fields{.header = ModPub::Names(headerFields), .entry = ModPub::Names(entryFields)};
    for (const char* prefix : {"cFree", "cfree"}) {
        for (std::size_t i = 0; i < freeItems; ++i) {
            fields.entry.push_back(prefix + std::to_string(i + 1));
        }
    }
    return fields;
}

} // namespace kovra
