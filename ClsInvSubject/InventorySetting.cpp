#include "ClsInvSubject/InventorySetting.h"

#include "ClsInvSubject/ClsInvSubject.h"
#include "ModPub/RequestFields.h"
#include "ModPub/RowKey.h"

namespace kovra {

namespace {

using Field = ModPub::RowField<InventorySetting>;

constexpr std::array fields = {
    Field{"cWhCode", &InventorySetting::cWhCode},         Field{"cInvCCode", &InventorySetting::cInvCCode},
    Field{"cInvCode", &InventorySetting::cInvCode},       Field{"cInvHead", &InventorySetting::cInvHead},
    Field{"cDifHead", &InventorySetting::cDifHead},       Field{"cOutHead", &InventorySetting::cOutHead},
    Field{"cEnDispHead", &InventorySetting::cEnDispHead}, Field{"czyHead", &InventorySetting::czyHead},
};

} // namespace

InventorySetting InventorySetting::Read(const host::DOMNode& row) { return ModPub::ReadFields(row, fields); }

std::string InventorySetting::Key() const {
    std::string key;
    ModPub::AppendKeyPart(key, "仓库编码：", cWhCode);
    ModPub::AppendKeyPart(key, "存货分类：", cInvCCode);
    ModPub::AppendKeyPart(key, "存货编码：", cInvCode);
    return key;
}

ModPub::RequestFields ClsInvSubject::Fields() { return {.row = ModPub::Names(fields)}; }

} // namespace kovra
