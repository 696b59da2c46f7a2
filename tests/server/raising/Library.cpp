// A library that raises an error, catches it, and does nothing else: what it leaves behind when it is unloaded is the
// run-time's own.
#include "server/com/Platform.h"
#include "server/inproc/RunTime.h"

extern "C" {

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_DETACH && !processEnds)
        server::ReleaseRunTime();
    return TRUE;
}

__declspec(dllexport) int RaiseAndCatch() {
    try {
        throw 1;
    } catch (int raised) {
        return raised;
    }
}
}
