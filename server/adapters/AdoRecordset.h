#pragma once

#include "host/Database.h"
#include "server/com/DispatchObject.h"

#include <vector>

namespace server {

/// An ADO recordset.
class AdoRecordset final : public host::Recordset {
public:
    /// A new recordset. Throws error 429 without ADO.
    AdoRecordset();
    /// A recordset that exists already.
    explicit AdoRecordset(DispatchObject recordset) noexcept : recordset_(std::move(recordset)) {}

    const DispatchObject& recordset() const noexcept { return recordset_; }
    /// Puts another recordset behind this handle, or none, or the same one after a component may have opened it anew.
    void Hold(DispatchObject recordset) noexcept {
        recordset_ = std::move(recordset);
        columns_.clear();
    }

    void SetCursorLocation(host::CursorLocation location) override;
    host::CursorLocation GetCursorLocation() const override;
    void Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
              host::LockType lockType, int options) override;
    void Close() override;
    bool IsOpen() const override;
    bool AtEOF() const override;
    bool AtBOF() const override;
    std::int64_t RecordCount() const override;
    void MoveNext() override;
    std::size_t FieldCount() const override;
    const host::Field& FieldAt(std::size_t index) const override;
    std::size_t FieldIndex(std::string_view name) const override;
    host::Value FieldValue(std::size_t index) const override;
    using host::Recordset::FieldValue;
    void Save(host::DOMDocument& document) const override;

private:
    struct Column {
        DispatchObject object;
        host::Field field;
    };
    const std::vector<Column>& Columns() const;
    const Column& ColumnAt(std::size_t index) const;

    DispatchObject recordset_;
    /// Read when first needed, until the recordset is closed.
    mutable std::vector<Column> columns_;
};

/// The COM object behind `recordset`. Throws error 13 for a recordset that is not ADO's.
const DispatchObject& ComRecordset(host::Recordset& recordset);

} // namespace server
