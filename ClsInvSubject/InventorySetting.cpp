#include "ClsInvSubject/InventorySetting.h"

#include "ModPub/GetNodeText.h"
#include "ModPub/RowKey.h"

namespace kovra {

using ModPub::GetNodeText;

InventorySetting InventorySetting::Read(const host::DOMNode& row) {
    return {
        .cWhCode = GetNodeText(row, "cWhCode"),
        .cInvCCode = GetNodeText(row, "cInvCCode"),
        .cInvCode = GetNodeText(row, "cInvCode"),
        .cInvHead = GetNodeText(row, "cInvHead"),
        .cDifHead = GetNodeText(row, "cDifHead"),
        .cOutHead = GetNodeText(row, "cOutHead"),
        .cEnDispHead = GetNodeText(row, "cEnDispHead"),
        .czyHead = GetNodeText(row, "czyHead"),
    };
}

std::string InventorySetting::Key() const {
    std::string key;
    ModPub::AppendKeyPart(key, "仓库编码：", cWhCode);
    ModPub::AppendKeyPart(key, "存货分类：", cInvCCode);
    ModPub::AppendKeyPart(key, "存货编码：", cInvCode);
    return key;
}

} // namespace kovra
