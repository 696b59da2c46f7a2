#include "ClsOppSubject/OppositeSetting.h"

#include "ModPub/GetNodeText.h"
#include "ModPub/RowKey.h"

namespace kovra {

using ModPub::GetNodeText;

OppositeSetting OppositeSetting::Read(const host::DOMNode& row) {
    return {
        .cRdCode = GetNodeText(row, "cRdCode"),
        .cInvcCode = GetNodeText(row, "cInvcCode"),
        .cInvCode = GetNodeText(row, "cInvCode"),
        .cDepCode = GetNodeText(row, "cDepCode"),
        .citem_class = GetNodeText(row, "citem_class"),
        .citemcode = GetNodeText(row, "citemcode"),
        .cItem_class = GetNodeText(row, "cItem_class"),
        .cItemCode = GetNodeText(row, "cItemCode"),
        .cItemCName = GetNodeText(row, "cItemCName"),
        .cName = GetNodeText(row, "cName"),
        .cOppHead = GetNodeText(row, "cOppHead"),
        .cEstHead = GetNodeText(row, "cEstHead"),
    };
}

std::string OppositeSetting::Key() const {
    std::string key;
    ModPub::AppendKeyPart(key, "收发类别编码：", cRdCode);
    ModPub::AppendKeyPart(key, "存货分类编码：", cInvcCode);
    ModPub::AppendKeyPart(key, "存货编码：", cInvCode);
    ModPub::AppendKeyPart(key, "部门编码：", cDepCode);
    return key;
}

} // namespace kovra
