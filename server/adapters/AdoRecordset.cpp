#include "server/adapters/AdoRecordset.h"

#include "ModPub/Text.h"
#include "host/Forwarding.h"
#include "server/adapters/AdoConnection.h"
#include "server/adapters/XmlDocument.h"

#include <algorithm>
#include <iterator>

namespace server {

namespace {

constexpr int stateOpen = 1;
constexpr int persistXml = 1;
/// FieldAttributeEnum: adFldIsNullable and adFldMayBeNull.
constexpr int nullableAttributes = 0x20 | 0x40;

/// Whether a column of this type has a size of its own: ADO gives the others their type's bytes.
bool HasDefinedSize(host::FieldType type) {
    using enum host::FieldType;
    constexpr host::FieldType sized[] = {binary,      character,       wideCharacter, varChar,      longVarChar,
                                         varWideChar, longVarWideChar, varBinary,     longVarBinary};
    return std::ranges::find(sized, type) != std::end(sized);
}

host::Field DescribeField(const DispatchObject& object) {
    host::Field field;
    field.name = ToText(object.Get(L"Name").Get());
    field.type = static_cast<host::FieldType>(ToInt(object.Get(L"Type").Get()));
    if (HasDefinedSize(field.type))
        field.definedSize = ToInt(object.Get(L"DefinedSize").Get());
    if (field.type == host::FieldType::numeric) {
        field.precision = ToInt(object.Get(L"Precision").Get());
        field.scale = ToInt(object.Get(L"NumericScale").Get());
    }
    field.nullable = (ToInt(object.Get(L"Attributes").Get()) & nullableAttributes) != 0;
    return field;
}

[[noreturn]] void RaiseItemNotFound() {
    throw host::Error(host::error_number::itemNotFound,
                      "Item cannot be found in the collection corresponding to the requested name or ordinal.");
}

} // namespace

void AdoRecordset::SetCursorLocation(host::CursorLocation location) {
    recordset_.Put(L"CursorLocation", VariantHolder(static_cast<int>(location)));
}

host::CursorLocation AdoRecordset::GetCursorLocation() const {
    return static_cast<host::CursorLocation>(ToInt(recordset_.Get(L"CursorLocation").Get()));
}

void AdoRecordset::Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
                        host::LockType lockType, int options) {
    Forget();
    recordset_.Call(L"Open", VariantHolder(source), VariantHolder(ComConnection(connection).object().Get()),
                    VariantHolder(static_cast<int>(cursorType)), VariantHolder(static_cast<int>(lockType)),
                    VariantHolder(options));
}

void AdoRecordset::Close() {
    Forget();
    recordset_.Call(L"Close");
}

bool AdoRecordset::IsOpen() const { return (ToInt(recordset_.Get(L"State").Get()) & stateOpen) != 0; }
bool AdoRecordset::AtEOF() const { return ToBoolean(recordset_.Get(L"EOF").Get()); }
bool AdoRecordset::AtBOF() const { return ToBoolean(recordset_.Get(L"BOF").Get()); }

std::int64_t AdoRecordset::RecordCount() const {
    const host::Value count = ToValue(recordset_.Get(L"RecordCount").Get());
    const auto* number = count.As<std::int64_t>();
    return number ? *number : -1;
}

void AdoRecordset::MoveNext() { recordset_.Call(L"MoveNext"); }

std::size_t AdoRecordset::FieldCount() const { return static_cast<std::size_t>(ToInt(Fields().Get(L"Count").Get())); }

const host::Field& AdoRecordset::FieldAt(std::size_t index) const {
    Column& column = ColumnAt(index);
    if (!column.field)
        column.field = DescribeField(column.object);
    return *column.field;
}

std::size_t AdoRecordset::FieldIndex(std::string_view name) const {
    const std::string wanted = ModPub::UpperCase(name);
    const std::size_t count = FieldCount();
    for (std::size_t i = 0; i < count; ++i) {
        if (ModPub::UpperCase(ToText(ColumnAt(i).object.Get(L"Name").Get())) == wanted)
            return i;
    }
    RaiseItemNotFound();
}

host::Value AdoRecordset::FieldValue(std::size_t index) const {
    return ToValue(ColumnAt(index).object.Get(L"Value").Get());
}

host::Value AdoRecordset::FieldValue(std::string_view name) const {
    return ToValue(Item(VariantHolder(name)).Get(L"Value").Get());
}

void AdoRecordset::Save(host::DOMDocument& document) const {
    recordset_.Call(L"Save", VariantHolder(static_cast<IDispatch*>(ComDocument(document).Get())),
                    VariantHolder(persistXml));
}

const DispatchObject& AdoRecordset::Fields() const {
    if (!fields_)
        fields_.emplace(ToObject(recordset_.Get(L"Fields").Get()), fieldsMembers_);
    return *fields_;
}

DispatchObject AdoRecordset::Item(const VariantHolder& nameOrPosition) const {
    return {ToObject(Fields().Call(L"Item", nameOrPosition).Get()), fieldMembers_};
}

AdoRecordset::Column& AdoRecordset::ColumnAt(std::size_t index) const {
    if (index >= columns_.size() || !columns_[index].object.object()) {
        DispatchObject object = Item(VariantHolder(static_cast<int>(index)));
        if (index >= columns_.size())
            columns_.resize(index + 1);
        columns_[index].object = std::move(object);
    }
    return columns_[index];
}

void AdoRecordset::Forget() noexcept {
    fields_.reset();
    columns_.clear();
}

const DispatchObject& ComRecordset(host::Recordset& recordset) {
    const auto* own = dynamic_cast<const AdoRecordset*>(&host::Undecorated(recordset));
    if (!own)
        RaiseTypeMismatch();
    return own->recordset();
}

} // namespace server
