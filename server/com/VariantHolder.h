#pragma once

#include "host/Value.h"
#include "server/com/ComPtr.h"
#include "server/com/Platform.h"

#include <string>
#include <string_view>

namespace server {

/// Holds one VARIANT and clears it.
class VariantHolder {
public:
    VariantHolder() noexcept { VariantInit(&variant_); }
    explicit VariantHolder(std::string_view text);
    explicit VariantHolder(const std::string& text) : VariantHolder(std::string_view(text)) {}
    VariantHolder(const char*) = delete;
    explicit VariantHolder(bool value) noexcept;
    explicit VariantHolder(int value) noexcept;
    /// An object, or Nothing.
    explicit VariantHolder(IDispatch* object) noexcept;
    explicit VariantHolder(IUnknown* object) noexcept;
    /// Throws error 13 for a decimal that a VARIANT cannot hold.
    explicit VariantHolder(const host::Value& value);
    VariantHolder(const VariantHolder&) = delete;
    VariantHolder(VariantHolder&& other) noexcept;
    VariantHolder& operator=(VariantHolder other) noexcept;
    ~VariantHolder() { VariantClear(&variant_); }

    /// The argument of an optional parameter that is left out.
    static VariantHolder Missing() noexcept;
    /// A reference to `target`'s content, which keeps its type: what Visual Basic passes for a variable of that type.
    static VariantHolder ByReference(VariantHolder& target) noexcept;
    /// A reference to `target` itself, which may receive any type: what is passed for a Variant.
    static VariantHolder VariantReference(VariantHolder& target) noexcept;

    const VARIANT& Get() const noexcept { return variant_; }
    /// Where a function stores the value that it hands out.
    VARIANT* Put() noexcept {
        VariantClear(&variant_);
        return &variant_;
    }
    /// Hands the content to `destination`, which is overwritten.
    void DetachTo(VARIANT* destination) noexcept;

private:
    VARIANT variant_;
};

/// The content of `variant`, references followed, of an object the value of its default property. Throws error 13 for
/// what no `host::Value` holds.
host::Value ToValue(const VARIANT& variant);
/// The content as text. Throws as `ModPub::ToText`.
std::string ToText(const VARIANT& variant);
/// The content as Boolean. Throws as `ModPub::ToBoolean`.
bool ToBoolean(const VARIANT& variant);
/// The content as 32-bit whole number. Throws as `ModPub::ToInt32`.
int ToInt(const VARIANT& variant);
/// The automation object in `variant`, references followed; null for Nothing. Throws error 13 for what is no object.
ComPtr<IDispatch> ToObject(const VARIANT& variant);

} // namespace server
