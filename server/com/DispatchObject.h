#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"
#include "server/com/VariantHolder.h"

#include <utility>

namespace server {

/// An automation object whose members are reached by name. Every call throws `host::Error`: 91 on no object, 438 for a
/// member that it lacks, else what the object raises.
class DispatchObject {
public:
    DispatchObject() noexcept = default;
    explicit DispatchObject(ComPtr<IDispatch> object) noexcept : object_(std::move(object)) {}

    /// Creates an object of the class `progId`. Throws error 429 when that cannot be done.
    static DispatchObject Create(const wchar_t* progId);

    const ComPtr<IDispatch>& object() const noexcept { return object_; }

    /// The value of a property.
    VariantHolder Get(const wchar_t* name) const {
        return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, nullptr, 0);
    }
    /// Sets a property.
    void Put(const wchar_t* name, const VariantHolder& value) const;

    /// Calls a method with `arguments`, `VariantHolder`s in the order of its parameters. @return its result
    template <class... Argument> VariantHolder Call(const wchar_t* name, const Argument&... arguments) const {
        // Automation takes the last argument first.
        VARIANT reversed[sizeof...(arguments) + 1];
        std::size_t at = sizeof...(arguments);
        ((reversed[--at] = arguments.Get()), ...);
        return Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, reversed, sizeof...(arguments));
    }

private:
    VariantHolder Invoke(const wchar_t* name, WORD flags, VARIANT* reversed, std::size_t count) const;
    DISPID Id(const wchar_t* name) const;

    ComPtr<IDispatch> object_;
};

} // namespace server
