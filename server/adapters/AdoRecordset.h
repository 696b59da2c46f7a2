#pragma once

#include "host/Database.h"
#include "server/adapters/ProgIds.h"
#include "server/com/AutomationClass.h"

#include <deque>
#include <memory>
#include <optional>

namespace server {

/// ADO's class of recordsets, with what is known of the types of objects that its recordsets hand out.
struct AdoRecordsetClass {
    AutomationClass recordsets{progid::recordset};
    std::shared_ptr<MemberIds> fields = std::make_shared<MemberIds>();
    std::shared_ptr<MemberIds> field = std::make_shared<MemberIds>();
};

/// An ADO recordset. It asks for no more than what is wanted: a value by its column's name or position takes its field
/// and the value, a description of a column that column alone.
class AdoRecordset final : public host::Recordset {
public:
    /// A new recordset. Throws error 429 without ADO.
    explicit AdoRecordset(AdoRecordsetClass& type)
        : recordset_(type.recordsets.Create()), fieldsMembers_(type.fields), fieldMembers_(type.field) {}
    AdoRecordset() : AdoRecordset(*std::make_unique<AdoRecordsetClass>()) {}
    /// A recordset that somebody else has made, most likely of this class.
    AdoRecordset(ComPtr<IDispatch> recordset, const AdoRecordsetClass& type)
        : recordset_(type.recordsets.Known(std::move(recordset))), fieldsMembers_(type.fields),
          fieldMembers_(type.field) {}
    /// A recordset that exists already.
    explicit AdoRecordset(DispatchObject recordset) : recordset_(std::move(recordset)) {}

    const DispatchObject& recordset() const noexcept { return recordset_; }
    /// Puts another recordset behind this handle, or none, or the same one after a component may have opened it anew.
    void Hold(DispatchObject recordset) noexcept {
        recordset_ = std::move(recordset);
        Forget();
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
    host::Value FieldValue(std::string_view name) const override;
    void Save(host::DOMDocument& document) const override;

private:
    /// One column, as far as it was asked for.
    struct Column {
        DispatchObject object;
        std::optional<host::Field> field;
    };
    const DispatchObject& Fields() const;
    DispatchObject Item(const VariantHolder& nameOrPosition) const;
    /// Throws ADO's error 3265 where there is none.
    Column& ColumnAt(std::size_t index) const;
    /// What is known of the columns, when they may be others.
    void Forget() noexcept;

    DispatchObject recordset_;
    std::shared_ptr<MemberIds> fieldsMembers_ = std::make_shared<MemberIds>();
    std::shared_ptr<MemberIds> fieldMembers_ = std::make_shared<MemberIds>();
    mutable std::optional<DispatchObject> fields_;
    /// By position; one that was not asked for has no object. Descriptions stay where they are.
    mutable std::deque<Column> columns_;
};

/// The COM object behind `recordset`. Throws error 13 for a recordset that is not ADO's.
const DispatchObject& ComRecordset(host::Recordset& recordset);

} // namespace server
