#pragma once

#include "host/Database.h"
#include "refhost/ado/Database.h"
#include "refhost/ado/RowsetXml.h"

#include <memory>
#include <optional>

namespace refhost {

/// ADO's manners of a recordset over any kind of account database. Every cursor reads its answer whole.
class Recordset : public host::Recordset {
public:
    void SetCursorLocation(host::CursorLocation location) override;
    host::CursorLocation GetCursorLocation() const override { return location_; }
    void Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
              host::LockType lockType, int options) override;
    void Close() override;
    bool IsOpen() const override { return result_.has_value(); }
    bool AtEOF() const override;
    bool AtBOF() const override;
    std::int64_t RecordCount() const override;
    void MoveNext() override;
    std::size_t FieldCount() const override;
    const host::Field& FieldAt(std::size_t index) const override;
    std::size_t FieldIndex(std::string_view name) const override;
    using host::Recordset::FieldValue;
    host::Value FieldValue(std::size_t index) const override;
    void Save(host::DOMDocument& document) const override;

private:
    const Fields& OpenFields() const;

    host::CursorLocation location_ = host::CursorLocation::server;
    /// Whether the cursor is a forward-only one on the server, which does not count its rows.
    bool forwardOnly_ = false;
    /// With columns; nothing while the recordset is closed.
    std::optional<ResultSet> result_;
    /// Of the connection that it was opened on.
    std::shared_ptr<RowsetShapes> shapes_;
    std::size_t row_ = 0;
};

} // namespace refhost
