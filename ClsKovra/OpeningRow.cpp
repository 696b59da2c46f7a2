#include "ClsKovra/OpeningRow.h"

#include "ClsKovra/ClsKovra.h"
#include "ModPub/GetNodeText.h"
#include "ModPub/RowKey.h"

namespace kovra {

OpeningRow OpeningRow::Read(const host::DOMNode& element) {
    OpeningRow row{
        .element = element,
        .cWhCode = ModPub::GetNodeText(element, "cWhCode"),
        .cInvCode = ModPub::GetNodeText(element, "cInvCode"),
        .iPrice = ModPub::GetNodeText(element, "iPrice"),
        .cBatchCode = ModPub::GetNodeText(element, "cBatchCode"),
        .key = {},
    };
    ModPub::AppendKeyPart(row.key, "仓库编码：", row.cWhCode);
    ModPub::AppendKeyPart(row.key, "存货编码：", row.cInvCode);
    return row;
}

std::string OpeningRow::Field(std::string_view name) const { return ModPub::GetNodeText(element, name); }

ModPub::RequestFields ClsKovra::Fields() {
    ModPub::RequestFields fields{.row = {"cWhCode", "cInvCode", "cBatchCode", "iQuantity", "iCost", "iPrice",
                                         "dVouDate", "dMadeDate", "dVDate", "cItem_class", "cItemCode", "cItemCName",
                                         "cName", "cDefine4", "cDefine6", "cDefine36", "cDefine37"},
                                 .othersAreColumns = true};
    fields.row.insert(fields.row.end(), freeItemNames.begin(), freeItemNames.end());
    return fields;
}

} // namespace kovra
