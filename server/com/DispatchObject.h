#pragma once

#include "server/com/ComPtr.h"
#include "server/com/MemberIds.h"
#include "server/com/Platform.h"
#include "server/com/VariantHolder.h"

#include <memory>
#include <span>
#include <utility>

namespace server {

/// An argument that goes along by reference. `DispatchObject::Call` takes back what stands there after the call,
/// whether the call succeeded or raised an error: it is the caller's variable that the called one writes to.
class Reference {
public:
    Reference() = default;
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;

    /// The argument: a VARIANT of a type with VT_BYREF.
    virtual const VARIANT& Get() const noexcept = 0;
    /// Gives the variable what stands in the reference now. Throws error 13 when that is of another type.
    virtual void TakeBack() = 0;

protected:
    ~Reference() = default;
};

/// An automation object whose members are reached by name; the number behind a name is looked up once. Every call
/// throws `host::Error`: 91 on no object, 438 for a member that it lacks, else what the object raises.
class DispatchObject {
public:
    DispatchObject() noexcept = default;
    explicit DispatchObject(ComPtr<IDispatch> object) noexcept : object_(std::move(object)) {}
    /// @param members the numbers of its type's members, shared with other objects of the type
    DispatchObject(ComPtr<IDispatch> object, std::shared_ptr<MemberIds> members) noexcept
        : object_(std::move(object)), members_(std::move(members)) {}

    /// Creates an object of the class `progId`. Throws error 429 when that cannot be done.
    static DispatchObject Create(const wchar_t* progId);

    const ComPtr<IDispatch>& object() const noexcept { return object_; }

    /// The value of a property.
    VariantHolder Get(const wchar_t* name) const {
        return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, nullptr, 0);
    }
    /// Sets a property.
    void Put(const wchar_t* name, const VariantHolder& value) const;

    /// Whether the object has a member of this name.
    bool Offers(const wchar_t* member) const noexcept;

    /// Calls a method with `arguments`, `VariantHolder`s and `Reference`s in the order of its parameters. @return its
    /// result
    template <class... Argument> VariantHolder Call(const wchar_t* name, Argument&&... arguments) const {
        // Automation takes the last argument first.
        VARIANT reversed[sizeof...(arguments) + 1];
        std::size_t at = sizeof...(arguments);
        ((reversed[--at] = arguments.Get()), ...);
        Reference* references[sizeof...(arguments) + 1];
        Reference** end = references;
        (Note(arguments, end), ...);
        return CallWith(name, reversed, sizeof...(arguments), {references, end});
    }

private:
    static void Note(const VariantHolder&, Reference**&) noexcept {}
    static void Note(Reference& reference, Reference**& end) noexcept { *end++ = &reference; }
    VariantHolder CallWith(const wchar_t* name, VARIANT* reversed, std::size_t count,
                           std::span<Reference* const> references) const;
    VariantHolder Invoke(const wchar_t* name, WORD flags, VARIANT* reversed, std::size_t count) const;
    DISPID Id(const wchar_t* name) const;

    ComPtr<IDispatch> object_;
    /// The object's own where its type's are not given.
    mutable std::shared_ptr<MemberIds> members_;
};

} // namespace server
