#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubject/OppositeSetting.h"
#include "ModPub/SaveSetting.h"

namespace kovra {
namespace {

using ModPub::AppendAssignment;

std::string MatchStatement(const OppositeSetting& setting, const std::string& year) {
    std::string sql = ModPub::BeginStatement("Select AutoID From IA_OppHead Where ");
    const auto addKey = [&sql](std::string_view opening, std::string_view emptyTest, const std::string& value) {
        if (value.empty()) {
            sql.append(emptyTest);
        } else {
            sql.append(opening).append(value).append("' And ");
        }
    };
    addKey("cRdCode = N'", "isnull(cRdCode,N'') = N'' And ", setting.cRdCode);
    addKey("cInvcCode = N'", "isnull(cInvcCode,N'') = N'' And ", setting.cInvcCode);
    addKey("cInvCode = N'", "isnull(cInvCode,N'') = N'' And ", setting.cInvCode);
    addKey("cDepCode = N'", "isnull(cDepCode,N'') = N'' And ", setting.cDepCode);
    addKey("citem_class = N'", "isnull(citem_class,N'') = N'' And ", setting.citem_class);
    addKey("citemcode = N'", "isnull(citemcode,N'') = N'' And ", setting.citemcode);
    sql.append("iyear = ").append(year);
    return sql;
}

std::string InsertStatement(const OppositeSetting& setting, const std::string& year) {
    std::string sql =
        ModPub::BeginStatement("INSERT INTO IA_OppHead "
                               "(cRdCode,cInvcCode,cInvCode ,cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear) "
                               "\r\n VALUES (");
    for (const std::string* value : {&setting.cRdCode, &setting.cInvcCode, &setting.cInvCode, &setting.cDepCode,
                                     &setting.citem_class, &setting.citemcode, &setting.cOppHead}) {
        ModPub::AppendSqlText(sql, *value, "Null,", "', ");
    }
    ModPub::AppendSqlText(sql, setting.cEstHead, "Null", "'");
    sql.append(",").append(year).append(")");
    return sql;
}

std::string UpdateStatement(const OppositeSetting& setting, const std::string& year, std::int32_t id) {
    std::string sql = ModPub::BeginStatement("Update IA_OppHead Set \r\n");
    AppendAssignment(sql, " cRdCode = ", setting.cRdCode, "Null,");
    AppendAssignment(sql, " cInvcCode = ", setting.cInvcCode, "Null,");
    AppendAssignment(sql, " cInvCode  = ", setting.cInvCode, "Null,");
    AppendAssignment(sql, " cDepCode = ", setting.cDepCode, "Null,");
    AppendAssignment(sql, " citem_class = ", setting.citem_class, "Null,");
    AppendAssignment(sql, " citemcode = ", setting.citemcode, "Null,");
    AppendAssignment(sql, " cOppHead = ", setting.cOppHead, "Null,");
    AppendAssignment(sql, " cEstHead = ", setting.cEstHead, "Null, ");
    sql.append(" iYear = ").append(year).append("\r\nWhere AutoID = ").append(std::to_string(id));
    return sql;
}

} // namespace

void ClsOppSubject::SaveRow(const std::string& key, const OppositeSetting& setting) {
    ModPub::SaveSetting(state_, key, setting, MatchStatement, InsertStatement, UpdateStatement);
}

} // namespace kovra
