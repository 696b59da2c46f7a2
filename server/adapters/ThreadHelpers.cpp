#include "server/adapters/ThreadHelpers.h"

#include <utility>

namespace server {

namespace {

/// COM calls the spy when no object of this library is left, so the library must not be unloaded before the process
/// ends.
void KeepLibraryLoaded() noexcept {
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&KeepLibraryLoaded), &library);
}

} // namespace

ThreadHelpers& ThreadHelpers::OfThisThread() {
    // COM's own reference keeps it until the thread ends. The thread's keeps it as long as there may be helpers: when a
    // thread ends that has not left COM, nothing of COM may be called any more.
    thread_local ThreadHelpers* helpers = nullptr;
    if (!helpers) {
        helpers = new ThreadHelpers;
        KeepLibraryLoaded();
        ULARGE_INTEGER registration{};
        CoRegisterInitializeSpy(helpers, &registration);
    } else if (!helpers->inUse_) {
        helpers->AddRef();
    }
    helpers->inUse_ = true;
    return *helpers;
}

HRESULT STDMETHODCALLTYPE ThreadHelpers::PreUninitialize(DWORD initializations) {
    if (initializations == 1) {
        eaiHelper.reset();
        rsXmlHelper.reset();
        if (std::exchange(inUse_, false))
            Release();
    }
    return S_OK;
}

} // namespace server
