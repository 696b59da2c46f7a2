#include "ClsOppSubjectST/StandardCostSetting.h"

#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ModPub/RowKey.h"

namespace kovra {

StandardCostSetting StandardCostSetting::Read(const host::DOMNode& row) {
    return ModPub::ReadFields(row, standardCostColumns);
}

std::string StandardCostSetting::Key() const {
    std::string key;
    ModPub::AppendKeyPart(key, "收发类别编码：", cRdCode);
    ModPub::AppendKeyPart(key, "存货分类编码：", cInvcCode);
    ModPub::AppendKeyPart(key, "部门编码：", cDepCode);
    return key;
}

ModPub::RequestFields ClsOppSubjectST::Fields() { return {.row = ModPub::Names(standardCostColumns)}; }

} // namespace kovra
