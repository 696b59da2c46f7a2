#include "refhost/ado/Recordset.h"

#include "host/Forwarding.h"
#include "refhost/ado/AdoErrors.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/RowsetXml.h"
#include "text/SameName.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace refhost {

inline const Fields& Recordset::OpenFields() const {
    if (!result_) {
        RaiseObjectClosed();
    }
    return *result_->fields;
}

void Recordset::SetCursorLocation(host::CursorLocation location) {
    if (IsOpen()) {
        RaiseObjectOpen();
    }
    location_ = location;
}

void Recordset::Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
                     host::LockType /*lockType*/, int /*options*/) {
    if (IsOpen()) {
        RaiseObjectOpen();
    }
    host::Connection& undecorated = host::Undecorated(connection);
    // The usual kind without a search through its bases.
    auto& own = typeid(undecorated) == typeid(Connection) ? static_cast<Connection&>(undecorated)
                                                          : dynamic_cast<Connection&>(undecorated);
    ResultSet result = own.database().Query(source);
    if (result.fields) {
        result_ = std::move(result);
    }
    if (shapes_ != own.shapes()) {
        shapes_ = own.shapes();
    }
    row_ = 0;
    forwardOnly_ = cursorType == host::CursorType::forwardOnly && location_ == host::CursorLocation::server;
}

void Recordset::Close() {
    OpenFields();
    result_.reset();
}

bool Recordset::AtEOF() const {
    OpenFields();
    return row_ == result_->rowCount;
}

bool Recordset::AtBOF() const {
    OpenFields();
    return result_->rowCount == 0;
}

std::int64_t Recordset::RecordCount() const {
    OpenFields();
    return forwardOnly_ ? -1 : static_cast<std::int64_t>(result_->rowCount);
}

void Recordset::MoveNext() {
    if (AtEOF()) {
        RaiseNoCurrentRecord();
    }
    ++row_;
}

std::size_t Recordset::FieldCount() const { return OpenFields().size(); }

const host::Field& Recordset::FieldAt(std::size_t index) const {
    const Fields& fields = OpenFields();
    if (index >= fields.size()) {
        RaiseItemNotFound();
    }
    return fields[index];
}

std::size_t Recordset::FieldIndex(std::string_view name) const {
    const Fields& fields = OpenFields();
    const auto found =
        std::ranges::find_if(fields, [&](const host::Field& field) { return text::SameName(field.name, name); });
    if (found == fields.end()) {
        RaiseItemNotFound();
    }
    return static_cast<std::size_t>(found - fields.begin());
}

host::Value Recordset::FieldValue(std::size_t index) const {
    const std::size_t width = OpenFields().size();
    if (index >= width) {
        RaiseItemNotFound();
    }
    if (row_ == result_->rowCount) {
        RaiseNoCurrentRecord();
    }
    return result_->cells[row_ * width + index];
}

void Recordset::Save(host::DOMDocument& document) const {
    OpenFields();
    WriteRowset(*result_, *shapes_, document);
}

} // namespace refhost
