#pragma once

#include "host/Environment.h"
#include "server/com/DispatchObject.h"

#include <memory>
#include <string>
#include <string_view>

namespace server {

// How the host's objects go along as arguments. By value they are handed over; by reference the called one may put
// another object behind the handle, or none, and the adapters have no other way to pass an object by reference.

/// The object behind a handle, to be passed by value. Throws error 13 for a handle that is not COM's.
VariantHolder ByValue(const host::DOMDocument& document);
VariantHolder ByValue(const host::DOMNode* node);
VariantHolder ByValue(host::Connection& connection);
VariantHolder ByValue(host::Recordset& recordset);
VariantHolder ByValue(const host::HostLogin& login);

// What stands behind a handle, null for none; and how another object, or none, gets there. `Replace` throws error 13,
// with the handle left as it was, for an object of another type.
IDispatch* Standing(const host::DOMDocument& document);
void Replace(host::DOMDocument& document, ComPtr<IDispatch> now);
/// Of a node by reference the type is that of elements. A node that is null stands for Nothing, and stays.
IDispatch* Standing(const host::DOMNode* node);
void Replace(host::DOMNode* node, ComPtr<IDispatch> now);
IDispatch* Standing(host::Connection& connection);
void Replace(host::Connection& connection, ComPtr<IDispatch> now);
IDispatch* Standing(host::Recordset& recordset);
void Replace(host::Recordset& recordset, ComPtr<IDispatch> now);
/// Without a recordset Nothing goes along; with Nothing no recordset comes back.
IDispatch* Standing(const std::unique_ptr<host::Recordset>& recordset);
void Replace(std::unique_ptr<host::Recordset>& recordset, ComPtr<IDispatch> now);
IDispatch* Standing(const std::shared_ptr<host::VoucherContext>& context);
void Replace(std::shared_ptr<host::VoucherContext>& context, ComPtr<IDispatch> now);
IDispatch* Standing(const host::RsXmlHelper::VouchData& data);
void Replace(host::RsXmlHelper::VouchData& data, ComPtr<IDispatch> now);

/// An object by reference: what stands in the reference after the call stands behind the handle.
template <class Handle> class ObjectReference final : public Reference {
public:
    explicit ObjectReference(Handle& handle) : handle_(handle), held_(Standing(handle)) {}

    const VARIANT& Get() const noexcept override { return reference_.Get(); }
    void TakeBack() override { Replace(handle_, ToObject(held_.Get())); }

private:
    Handle& handle_;
    VariantHolder held_;
    VariantHolder reference_ = VariantHolder::ByReference(held_);
};

/// A text by reference.
class TextReference final : public Reference {
public:
    explicit TextReference(std::string& text) : text_(text), held_(text) {}

    const VARIANT& Get() const noexcept override { return reference_.Get(); }
    void TakeBack() override { text_ = ToText(held_.Get()); }

private:
    std::string& text_;
    VariantHolder held_;
    VariantHolder reference_ = VariantHolder::ByReference(held_);
};

/// A value that goes along by reference though nothing is read there afterwards.
class UnreadReference final : public Reference {
public:
    explicit UnreadReference(std::string_view text) : held_(text) {}
    explicit UnreadReference(int number) : held_(number) {}

    const VARIANT& Get() const noexcept override { return reference_.Get(); }
    void TakeBack() override {}

private:
    VariantHolder held_;
    VariantHolder reference_ = VariantHolder::ByReference(held_);
};

} // namespace server
