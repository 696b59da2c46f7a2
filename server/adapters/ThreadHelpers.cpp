#include "server/adapters/ThreadHelpers.h"

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
    // The thread's own reference is never given back: when a thread ends, nothing of COM may be called any more.
    thread_local ThreadHelpers* helpers = nullptr;
    if (!helpers) {
        helpers = new ThreadHelpers;
        KeepLibraryLoaded();
        ULARGE_INTEGER registration{};
        CoRegisterInitializeSpy(helpers, &registration);
    }
    return *helpers;
}

HRESULT STDMETHODCALLTYPE ThreadHelpers::PreUninitialize(DWORD initializations) {
    if (initializations == 1) {
        eaiHelper.reset();
        rsXmlHelper.reset();
    }
    return S_OK;
}

} // namespace server
