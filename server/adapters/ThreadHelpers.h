#pragma once

#include "host/EaiHelper.h"
#include "host/VoucherComponents.h"
#include "server/com/UnknownObject.h"

#include <memory>

namespace server {

/// The host's helpers of one thread, given back when the thread leaves COM: they must not be called later, not even by
/// a thread that enters COM again.
class ThreadHelpers final : public UnknownObject<IInitializeSpy> {
public:
    /// The calling thread's.
    static ThreadHelpers& OfThisThread();

    /// Created when first needed.
    std::unique_ptr<host::EaiHelper> eaiHelper;
    std::unique_ptr<host::RsXmlHelper> rsXmlHelper;

    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD initializations) override;
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) override { return S_OK; }

private:
    ThreadHelpers() = default;

    /// Whether the thread holds a reference of its own.
    bool inUse_ = false;
};

} // namespace server
