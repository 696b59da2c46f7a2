#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsOppSubjectST/StandardCostSetting.h"
#include "ModPub/SaveSetting.h"

namespace kovra {
namespace {

std::string MatchStatement(const StandardCostSetting& setting, const std::string& year) {
    std::string sql = ModPub::BeginStatement("Select AutoID From IA_OppHead Where ");
    for (std::size_t key = 0; key < standardCostKeys; ++key) {
        const StandardCostColumn& column = standardCostColumns[key];
        sql.append("isnull(").append(column.name).append(",N'') = N'").append(setting.*column.field).append("' And ");
    }
    sql.append("iyear = ").append(year);
    return sql;
}

std::string InsertStatement(const StandardCostSetting& setting, const std::string& year) {
    std::string sql = ModPub::BeginStatement(
        "INSERT INTO IA_OppHead (cRdCode,cInvcCode,cDepCode,cOppHead,cProcessHead,cMaterialHead,cOLaborStdCostCode,"
        "cOManuFixStdCostCode,\r\n"
        "cOManuVarStdCostCode,cOOmCostCode,cOiqtCode,cOPriceCode,fLaborCostEffRateDifCode,fLaborCostRateDifCode,"
        "fSemiLaborDifCode,\r\n"
        "fManuFixCostEffRateDifCode,fManuFixCostRateDifCode,fSemiManuFixDifCode,fManuVarCostEffRateDifCode,"
        "fManuVarCostRateDifCode,\r\n"
        "fSemiManuVarDifCode,fOmCostEDifCode,fSemiOmDifCode,cOTaxRefundCode,\r\n"
        "iYear) \r\n"
        " VALUES (");
    for (const StandardCostColumn& column : standardCostColumns) {
        ModPub::AppendSqlText(sql, setting.*column.field, "Null,", "', ");
    }
    sql.append(year).append(")");
    return sql;
}

std::string UpdateStatement(const StandardCostSetting& setting, const std::string& year, std::int32_t id) {
    std::string sql = ModPub::BeginStatement("Update IA_OppHead Set \r\n");
    for (const StandardCostColumn& column : standardCostColumns) {
        sql.append(" ").append(column.name);
        ModPub::AppendAssignment(sql, " = ", setting.*column.field, "Null,");
    }
    sql.append(" iYear = ").append(year).append("\r\nWhere AutoID = ").append(std::to_string(id));
    return sql;
}

} // namespace

void ClsOppSubjectST::SaveRow(const std::string& key, const StandardCostSetting& setting) {
    ModPub::SaveSetting(state_, key, setting, MatchStatement, InsertStatement, UpdateStatement);
}

} // namespace kovra
