#include "ClsOppSubjectST/StandardCostCheck.h"

namespace kovra {
namespace {

bool FindsRow(ModPub::ImportState& state, std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = state.environment.CreateRecordset();
    recordset->Open(sql, *state.connection, host::CursorType::openStatic, host::LockType::readOnly,
                    host::command_option::unspecified);
    const bool found = !recordset->AtEOF();
    recordset->Close();
    return found;
}

} // namespace

std::optional<ModPub::RequestError> StandardCostCheck(ModPub::ImportState& state) {
    if (FindsRow(state, "select cValue from AccInformation where cSysID ='ca' and cName ='dCAFirstDate' and "
                        "isnull(cValue,N'') <> N''") &&
        FindsRow(state, "select cValue  from AccInformation where cSysID ='ca' and cName ='bRLOrST' and "
                        "isnull(cValue,N'0') = N'1'")) {
        return std::nullopt;
    }
    return ModPub::RequestError{"102", "标准成本才支持此对方科目导入。"};
}

} // namespace kovra
