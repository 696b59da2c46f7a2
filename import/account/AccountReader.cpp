#include "import/account/AccountReader.h"

#include "ModPub/Conversions.h"

#include <fmt/ranges.h>

namespace importing {

std::string TextOf(const host::Value& value) {
    if (const auto* const bytes = value.As<host::Bytes>()) {
        return fmt::format("{:02x}", fmt::join(bytes->data, ""));
    }
    return value.IsNull() || value.IsEmpty() ? std::string() : ModPub::ToText(value);
}

AccountReader::AccountReader(host::Environment& environment, host::HostLogin& login)
    : environment_(environment), login_(login), year_(std::to_string(ModPub::ToInt32(login.LoginYear()))),
      connection_(environment.CreateConnection()) {
    connection_->Open(login.ConnectionString(), "", "", host::command_option::unspecified);
}

void AccountReader::Rows(std::string_view sql, const std::function<void(const host::Recordset& row)>& take) {
    const std::unique_ptr<host::Recordset> records = environment_.CreateRecordset();
    records->Open(sql, *connection_, host::CursorType::openStatic, host::LockType::readOnly,
                  host::command_option::text);
    for (; !records->AtEOF(); records->MoveNext()) {
        for (std::size_t column = 0; column < records->FieldCount(); ++column) {
            Remember(TextOf(records->FieldValue(column)));
        }
        take(*records);
    }
    Remember(sql);
}

std::string AccountReader::First(std::string_view sql) {
    std::string first;
    bool isFirst = true;
    Rows(sql, [&](const host::Recordset& row) {
        if (isFirst) {
            first = TextOf(row.FieldValue(0));
        }
        isFirst = false;
    });
    return first;
}

void AccountReader::Remember(std::string_view text) {
    hash_.Add(text);
    hash_.Add(std::string_view("\0", 1));
}

} // namespace importing
