#include "tests/support/ado/AdodbFields.h"

#include "refhost/ado/AdoErrors.h"
#include "refhost/ado/AdoTypes.h"

namespace test {

namespace {

using host::FieldType;
using server::Arguments;
using server::ComPtr;
using server::VariantHolder;

/// FieldAttributeEnum.
constexpr int fixed = 0x10;
constexpr int isNullable = 0x20;
constexpr int mayBeNull = 0x40;
constexpr int isLong = 0x80;

/// What ADO says of columns without a scale.
constexpr int noScale = 255;

VARTYPE VariantType(FieldType type) {
    switch (type) {
    case FieldType::smallInt:
        return VT_I2;
    case FieldType::integer:
        return VT_I4;
    case FieldType::single:
        return VT_R4;
    case FieldType::doubleFloat:
        return VT_R8;
    case FieldType::currency:
        return VT_CY;
    case FieldType::date:
    case FieldType::dbDate:
    case FieldType::dbTime:
    case FieldType::dbTimeStamp:
        return VT_DATE;
    case FieldType::boolean:
        return VT_BOOL;
    case FieldType::unsignedTinyInt:
        return VT_UI1;
    case FieldType::bigInt:
        return VT_I8;
    case FieldType::numeric:
        return VT_DECIMAL;
    case FieldType::binary:
    case FieldType::varBinary:
    case FieldType::longVarBinary:
        return VT_ARRAY | VT_UI1;
    case FieldType::guid:
    case FieldType::character:
    case FieldType::wideCharacter:
    case FieldType::varChar:
    case FieldType::longVarChar:
    case FieldType::varWideChar:
    case FieldType::longVarWideChar:
        return VT_BSTR;
    }
    return VT_EMPTY;
}

} // namespace

VariantHolder AdodbField::Name(const Arguments&) { return VariantHolder(field().name); }
VariantHolder AdodbField::Type(const Arguments&) { return VariantHolder(static_cast<int>(field().type)); }

VariantHolder AdodbField::DefinedSize(const Arguments&) {
    const refhost::AdoType& type = refhost::DescribeType(field().type);
    return VariantHolder(type.size != 0 ? type.size : field().definedSize);
}

VariantHolder AdodbField::Precision(const Arguments&) {
    const bool numeric = field().type == FieldType::numeric;
    return VariantHolder(numeric ? field().precision : refhost::DescribeType(field().type).precision);
}

VariantHolder AdodbField::NumericScale(const Arguments&) {
    return VariantHolder(field().type == FieldType::numeric ? field().scale : noScale);
}

VariantHolder AdodbField::Attributes(const Arguments&) {
    const refhost::AdoType& type = refhost::DescribeType(field().type);
    return VariantHolder((type.fixedLength ? fixed : 0) | (field().nullable ? isNullable | mayBeNull : 0) |
                         (type.isLong ? isLong : 0));
}

VariantHolder AdodbField::Value(const Arguments&) {
    const host::Value value = recordset_->recordset().FieldValue(index_);
    VariantHolder natural(value);
    const VARTYPE type = VariantType(field().type);
    if (value.IsNull() || V_VT(&natural.Get()) == type)
        return natural;
    VariantHolder changed;
    VARIANT source = natural.Get();
    server::ThrowIfFailed(VariantChangeType(changed.Put(), &source, 0, type));
    return changed;
}

VariantHolder AdodbFields::Count(const Arguments&) {
    const host::Recordset& recordset = recordset_->recordset();
    return VariantHolder(recordset.IsOpen() ? static_cast<int>(recordset.FieldCount()) : 0);
}

VariantHolder AdodbFields::Item(const Arguments& arguments) {
    const auto field = ComPtr<AdodbField>::Adopt(new AdodbField(recordset_, IndexOf(arguments[0])));
    return VariantHolder(static_cast<IDispatch*>(field.Get()));
}

std::size_t AdodbFields::IndexOf(const VARIANT& nameOrPosition) const {
    const host::Recordset& recordset = recordset_->recordset();
    if (!recordset.IsOpen())
        refhost::RaiseItemNotFound();
    const host::Value wanted = server::ToValue(nameOrPosition);
    if (const auto* name = wanted.As<std::string>())
        return recordset.FieldIndex(*name);
    const int position = server::ToInt(nameOrPosition);
    if (position < 0 || static_cast<std::size_t>(position) >= recordset.FieldCount())
        refhost::RaiseItemNotFound();
    return static_cast<std::size_t>(position);
}

} // namespace test
