#include "cli/AccountQuestions.h"

#include "ModPub/Conversions.h"

namespace cli {

std::vector<std::string> AccountQuestions::Column(std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = environment_.CreateRecordset();
    recordset->Open(sql, connection_, host::CursorType::openStatic, host::LockType::readOnly,
                    host::command_option::text);
    std::vector<std::string> values;
    for (; !recordset->AtEOF(); recordset->MoveNext()) {
        const host::Value value = recordset->FieldValue(0);
        values.push_back(value.IsNull() ? std::string() : ModPub::ToText(value));
    }
    recordset->Close();
    return values;
}

std::string AccountQuestions::First(std::string_view sql) {
    const std::vector<std::string> values = Column(sql);
    return values.empty() ? std::string() : values.front();
}

} // namespace cli
