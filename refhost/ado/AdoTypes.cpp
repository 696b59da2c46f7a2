#include "refhost/ado/AdoTypes.h"

#include "host/Error.h"

#include <algorithm>
#include <array>

namespace refhost {
namespace {

using host::FieldType;

constexpr std::array<AdoType, 23> types = {{
    {FieldType::smallInt, "i2", nullptr, 2, 5},
    {FieldType::integer, "int", nullptr, 4, 10},
    {FieldType::single, "r4", nullptr, 4, 7},
    {FieldType::doubleFloat, "float", nullptr, 8, 15},
    {FieldType::currency, "number", "currency", 8, 19},
    {FieldType::date, "dateTime", "variantdate", 16, 0},
    {FieldType::boolean, "boolean", nullptr, 2, 0},
    {FieldType::unsignedTinyInt, "ui1", nullptr, 1, 3},
    {FieldType::bigInt, "i8", nullptr, 8, 19},
    {FieldType::guid, "uuid", nullptr, 16, 0},
    {FieldType::binary, "bin.hex", nullptr, 0, 0},
    {FieldType::character, "string", "str", 0, 0},
    {FieldType::wideCharacter, "string", nullptr, 0, 0},
    {FieldType::numeric, "number", "numeric", 19, 0},
    {FieldType::dbDate, "date", nullptr, 6, 10},
    {FieldType::dbTime, "time", nullptr, 6, 8},
    {FieldType::dbTimeStamp, "dateTime", "timestamp", 16, 23},
    {FieldType::varChar, "string", "str", 0, 0, false, false},
    {FieldType::longVarChar, "string", "str", 0, 0, true, false},
    {FieldType::varWideChar, "string", nullptr, 0, 0, false, false},
    {FieldType::longVarWideChar, "string", nullptr, 0, 0, true, false},
    {FieldType::varBinary, "bin.hex", nullptr, 0, 0, false, false},
    {FieldType::longVarBinary, "bin.hex", nullptr, 0, 0, true, false},
}};

} // namespace

const AdoType& DescribeType(host::FieldType type) {
    const auto* const found = std::ranges::find(types, type, &AdoType::type);
    if (found != types.end()) {
        return *found;
    }
    throw host::Error(host::error_number::unspecified, "A column of an unknown type cannot be described.");
}

} // namespace refhost
