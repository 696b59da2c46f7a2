#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"

namespace server {

/// A class that this library offers.
struct ClassEntry {
    const CLSID* classId;
    /// For example L"Kovra.ClsKovra".
    const wchar_t* progId;
    /// Makes an instance. Throws what keeps it from being made.
    ComPtr<IDispatch> (*create)();
    /// Its dual interface in the embedded type library, which OLE Automation marshals between apartments by its
    /// description there; null for none.
    const IID* interfaceId = nullptr;
};

/// An instance of `Object`, as `ClassEntry::create` makes it.
template <class Object> ComPtr<IDispatch> CreateObject() { return ComPtr<IDispatch>::Adopt(new Object); }

/// Hands out a class factory for `entry`: the heart of `DllGetClassObject`.
HRESULT GetClassFactory(const ClassEntry& entry, REFIID interfaceId, void** factory) noexcept;

} // namespace server
