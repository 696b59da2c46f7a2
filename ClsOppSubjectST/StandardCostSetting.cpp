#include "ClsOppSubjectST/StandardCostSetting.h"

#include "ModPub/GetNodeText.h"
#include "ModPub/RowKey.h"

namespace kovra {

StandardCostSetting StandardCostSetting::Read(const host::DOMNode& row) {
    StandardCostSetting setting;
    for (const StandardCostColumn& column : standardCostColumns) {
        setting.*column.field = ModPub::GetNodeText(row, column.name);
    }
    return setting;
}

std::string StandardCostSetting::Key() const {
    std::string key;
    ModPub::AppendKeyPart(key, "收发类别编码：", cRdCode);
    ModPub::AppendKeyPart(key, "存货分类编码：", cInvcCode);
    ModPub::AppendKeyPart(key, "部门编码：", cDepCode);
    return key;
}

} // namespace kovra
