#include "ClsOppSubject/OppositeSetting.h"

#include "ClsOppSubject/ClsOppSubject.h"
#include "ModPub/RequestFields.h"
#include "ModPub/RowKey.h"

namespace kovra {

namespace {

using Field = ModPub::RowField<OppositeSetting>;

constexpr std::array fields = {
    Field{"cRdCode", &OppositeSetting::cRdCode},         Field{"cInvcCode", &OppositeSetting::cInvcCode},
    Field{"cInvCode", &OppositeSetting::cInvCode},       Field{"cDepCode", &OppositeSetting::cDepCode},
    Field{"citem_class", &OppositeSetting::citem_class}, Field{"citemcode", &OppositeSetting::citemcode},
    Field{"cItem_class", &OppositeSetting::cItem_class}, Field{"cItemCode", &OppositeSetting::cItemCode},
    Field{"cItemCName", &OppositeSetting::cItemCName},   Field{"cName", &OppositeSetting::cName},
    Field{"cOppHead", &OppositeSetting::cOppHead},       Field{"cEstHead", &OppositeSetting::cEstHead},
};

} // namespace

OppositeSetting OppositeSetting::Read(const host::DOMNode& row) { return ModPub::ReadFields(row, fields); }

std::string OppositeSetting::Key() const {
    std::string key;
    ModPub::AppendKeyPart(key, "收发类别编码：", cRdCode);
    ModPub::AppendKeyPart(key, "存货分类编码：", cInvcCode);
    ModPub::AppendKeyPart(key, "存货编码：", cInvCode);
    ModPub::AppendKeyPart(key, "部门编码：", cDepCode);
    return key;
}

ModPub::RequestFields ClsOppSubject::Fields() { return {.row = ModPub::Names(fields)}; }

} // namespace kovra
