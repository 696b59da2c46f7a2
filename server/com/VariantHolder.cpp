#include "server/com/VariantHolder.h"

#include "ModPub/Conversions.h"
#include "server/com/BString.h"
#include "server/com/Utf16.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace server {

namespace {

constexpr LCID invariantLocale = LOCALE_INVARIANT;

/// Digits behind the point.
std::size_t ScaleOf(std::string_view number) {
    const std::size_t point = number.find('.');
    return point == std::string_view::npos ? 0 : number.size() - point - 1;
}

/// The decimal's plain text, with every digit of its scale: OLE Automation leaves trailing zeros out.
host::Decimal ToDecimal(DECIMAL decimal) {
    BString text;
    ThrowIfFailed(VarBstrFromDec(&decimal, invariantLocale, LOCALE_NOUSEROVERRIDE, text.Put()));
    std::string number = ToUtf8(text.View());
    const std::size_t scale = ScaleOf(number);
    if (scale == 0 && decimal.scale != 0)
        number.push_back('.');
    if (scale < decimal.scale)
        number.append(decimal.scale - scale, '0');
    return {std::move(number)};
}

/// Gives `decimal` one more digit behind the point, a zero. @return false, with `decimal` unchanged, without room for
/// it
bool AddZero(DECIMAL& decimal) {
    constexpr BYTE greatestScale = 28;
    if (decimal.scale == greatestScale)
        return false;
    std::uint64_t parts[] = {decimal.Lo32, decimal.Mid32, decimal.Hi32};
    std::uint64_t carry = 0;
    for (std::uint64_t& part : parts) {
        carry += part * 10;
        part = carry & 0xFFFFFFFF;
        carry >>= 32;
    }
    if (carry != 0)
        return false;
    decimal.Lo32 = static_cast<ULONG>(parts[0]);
    decimal.Mid32 = static_cast<ULONG>(parts[1]);
    decimal.Hi32 = static_cast<ULONG>(parts[2]);
    ++decimal.scale;
    return true;
}

/// A copy of `variant`'s content, references followed.
VariantHolder ContentOf(VARIANT variant) {
    VariantHolder content;
    ThrowIfFailed(VariantCopyInd(content.Put(), &variant));
    return content;
}

/// The data of an array of bytes, locked as long as the object lives.
class ArrayData {
public:
    explicit ArrayData(SAFEARRAY* array) : array_(array) { ThrowIfFailed(SafeArrayAccessData(array, &data_)); }
    ~ArrayData() { SafeArrayUnaccessData(array_); }
    ArrayData(const ArrayData&) = delete;
    ArrayData& operator=(const ArrayData&) = delete;

    std::uint8_t* begin() const noexcept { return static_cast<std::uint8_t*>(data_); }

private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
};

host::Bytes ToBytes(SAFEARRAY* array) {
    host::Bytes bytes;
    if (!array)
        return bytes;
    const ArrayData data(array);
    long first = 0;
    long last = -1;
    SafeArrayGetLBound(array, 1, &first);
    SafeArrayGetUBound(array, 1, &last);
    bytes.data.assign(data.begin(), data.begin() + (last - first + 1));
    return bytes;
}

void Store(VARIANT& variant, host::Empty) noexcept { V_VT(&variant) = VT_EMPTY; }
void Store(VARIANT& variant, host::Null) noexcept { V_VT(&variant) = VT_NULL; }
void Store(VARIANT& variant, bool value) noexcept {
    V_VT(&variant) = VT_BOOL;
    V_BOOL(&variant) = value ? VARIANT_TRUE : VARIANT_FALSE;
}
void Store(VARIANT& variant, std::int64_t value) noexcept {
    // Scripts know 32 bits only; a number goes in more where it needs them.
    if (value == static_cast<std::int32_t>(value)) {
        V_VT(&variant) = VT_I4;
        V_I4(&variant) = static_cast<LONG>(value);
    } else {
        V_VT(&variant) = VT_I8;
        V_I8(&variant) = value;
    }
}
void Store(VARIANT& variant, float value) noexcept {
    V_VT(&variant) = VT_R4;
    V_R4(&variant) = value;
}
void Store(VARIANT& variant, double value) noexcept {
    V_VT(&variant) = VT_R8;
    V_R8(&variant) = value;
}
void Store(VARIANT& variant, const host::Decimal& value) {
    const BString text(ToUtf16(value.text));
    DECIMAL decimal{};
    ThrowIfFailed(VarDecFromStr(text.Get(), invariantLocale, LOCALE_NOUSEROVERRIDE, &decimal));
    const std::size_t scale = ScaleOf(value.text);
    while (decimal.scale < scale && AddZero(decimal)) {
    }
    // The type shares its place with the decimal's reserved word, so it is set last.
    V_DECIMAL(&variant) = decimal;
    V_VT(&variant) = VT_DECIMAL;
}
void Store(VARIANT& variant, std::string_view value) {
    V_BSTR(&variant) = BString(ToUtf16(value)).Detach();
    V_VT(&variant) = VT_BSTR;
}
void Store(VARIANT& variant, const std::string& value) { Store(variant, std::string_view(value)); }
void Store(VARIANT& variant, host::Date value) noexcept {
    V_VT(&variant) = VT_DATE;
    V_DATE(&variant) = value.days;
}
void Store(VARIANT& variant, const host::Bytes& value) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(value.data.size()));
    if (!array)
        throw std::bad_alloc();
    V_ARRAY(&variant) = array;
    V_VT(&variant) = VT_ARRAY | VT_UI1;
    std::ranges::copy(value.data, ArrayData(array).begin());
}

} // namespace

VariantHolder::VariantHolder(std::string_view text) : VariantHolder() { Store(variant_, text); }
VariantHolder::VariantHolder(bool value) noexcept : VariantHolder() { Store(variant_, value); }
VariantHolder::VariantHolder(int value) noexcept : VariantHolder() { Store(variant_, std::int64_t{value}); }

VariantHolder::VariantHolder(IDispatch* object) noexcept : VariantHolder() {
    V_VT(&variant_) = VT_DISPATCH;
    V_DISPATCH(&variant_) = ComPtr<IDispatch>(object).Detach();
}

VariantHolder::VariantHolder(IUnknown* object) noexcept : VariantHolder() {
    V_VT(&variant_) = VT_UNKNOWN;
    V_UNKNOWN(&variant_) = ComPtr<IUnknown>(object).Detach();
}

VariantHolder::VariantHolder(const host::Value& value) : VariantHolder() {
    std::visit([this](const auto& held) { Store(variant_, held); }, value.storage());
}

VariantHolder::VariantHolder(VariantHolder&& other) noexcept : variant_(other.variant_) {
    VariantInit(&other.variant_);
}

VariantHolder& VariantHolder::operator=(VariantHolder other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
}

VariantHolder VariantHolder::Missing() noexcept {
    VariantHolder missing;
    V_VT(&missing.variant_) = VT_ERROR;
    V_ERROR(&missing.variant_) = DISP_E_PARAMNOTFOUND;
    return missing;
}

VariantHolder VariantHolder::ByReference(VariantHolder& target) noexcept {
    VariantHolder reference;
    V_VT(&reference.variant_) = static_cast<VARTYPE>(VT_BYREF | V_VT(&target.variant_));
    // Every member of the union begins at one place, which the reference points to; a decimal takes the whole VARIANT.
    if (V_VT(&target.variant_) == VT_DECIMAL)
        V_DECIMALREF(&reference.variant_) = &V_DECIMAL(&target.variant_);
    else
        V_BYREF(&reference.variant_) = &V_I4(&target.variant_);
    return reference;
}

VariantHolder VariantHolder::VariantReference(VariantHolder& target) noexcept {
    VariantHolder reference;
    V_VT(&reference.variant_) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&reference.variant_) = &target.variant_;
    return reference;
}

void VariantHolder::DetachTo(VARIANT* destination) noexcept {
    *destination = variant_;
    VariantInit(&variant_);
}

namespace {

/// What an object stands for where a plain value is wanted: the value of its default property.
VariantHolder DefaultProperty(IDispatch* object) {
    if (!object)
        RaiseTypeMismatch();
    DISPPARAMS none{};
    EXCEPINFO exception{};
    VariantHolder value;
    const HRESULT status =
        object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none,
                       value.Put(), &exception, nullptr);
    if (status == DISP_E_EXCEPTION)
        ThrowException(exception);
    if (FAILED(status))
        RaiseTypeMismatch();
    return value;
}

/// The value of a VARIANT that is no reference. Throws error 13 for an object.
host::Value PlainValue(const VARIANT& content) {
    switch (V_VT(&content)) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return host::Null{};
    case VT_BOOL:
        return V_BOOL(&content) != VARIANT_FALSE;
    case VT_I1:
        return std::int64_t{V_I1(&content)};
    case VT_UI1:
        return std::int64_t{V_UI1(&content)};
    case VT_I2:
        return std::int64_t{V_I2(&content)};
    case VT_UI2:
        return std::int64_t{V_UI2(&content)};
    case VT_I4:
    case VT_INT:
        return std::int64_t{V_I4(&content)};
    case VT_UI4:
    case VT_UINT:
        return std::int64_t{V_UI4(&content)};
    case VT_I8:
        return std::int64_t{V_I8(&content)};
    case VT_R4:
        return V_R4(&content);
    case VT_R8:
        return V_R8(&content);
    case VT_DATE:
        return host::Date{V_DATE(&content)};
    case VT_BSTR:
        return ToUtf8({V_BSTR(&content) ? V_BSTR(&content) : L"", SysStringLen(V_BSTR(&content))});
    case VT_DECIMAL:
        return ToDecimal(V_DECIMAL(&content));
    case VT_CY: {
        DECIMAL decimal{};
        ThrowIfFailed(VarDecFromCy(V_CY(&content), &decimal));
        return ToDecimal(decimal);
    }
    case VT_ARRAY | VT_UI1:
        return ToBytes(V_ARRAY(&content));
    default:
        RaiseTypeMismatch();
    }
}

} // namespace

host::Value ToValue(const VARIANT& variant) {
    const VariantHolder content = ContentOf(variant);
    const VARTYPE type = V_VT(&content.Get());
    if (type == VT_DISPATCH || type == VT_UNKNOWN)
        return PlainValue(ContentOf(DefaultProperty(ToObject(content.Get()).Get()).Get()).Get());
    return PlainValue(content.Get());
}

std::string ToText(const VARIANT& variant) { return ModPub::ToText(ToValue(variant)); }
bool ToBoolean(const VARIANT& variant) { return ModPub::ToBoolean(ToValue(variant)); }
int ToInt(const VARIANT& variant) { return ModPub::ToInt32(ToValue(variant)); }

ComPtr<IDispatch> ToObject(const VARIANT& variant) {
    const VariantHolder copy = ContentOf(variant);
    const VARIANT& content = copy.Get();
    switch (V_VT(&content)) {
    case VT_EMPTY:
        return {};
    case VT_DISPATCH:
        return ComPtr<IDispatch>(V_DISPATCH(&content));
    case VT_UNKNOWN:
        return V_UNKNOWN(&content) ? ComPtr<IUnknown>(V_UNKNOWN(&content)).As<IDispatch>() : ComPtr<IDispatch>();
    default:
        RaiseTypeMismatch();
    }
}

} // namespace server
