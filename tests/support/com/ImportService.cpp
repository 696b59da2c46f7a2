#include "tests/support/com/ImportService.h"

#include "server/com/ComError.h"
#include "server/com/DispatchObject.h"
#include "tests/support/TestAccount.h"
#include "tests/support/com/HostedFixture.h"

#include <fstream>
#include <string>
#include <thread>

namespace test {
namespace {

using server::DispatchObject;
using server::VariantHolder;

std::filesystem::path folder;

/// The class with an instance in `place`.
DispatchObject Instance(DWORD place) {
    CLSID classId{};
    server::ThrowIfFailed(CLSIDFromProgID(L"Kovra.ClsInvSubject", &classId));
    server::ComPtr<IDispatch> object;
    server::ThrowIfFailed(CoCreateInstance(classId, nullptr, place, IID_IDispatch, object.PutVoid()));
    return DispatchObject(std::move(object));
}

std::string Import(DWORD place) {
    try {
        const DispatchObject login = Login(ReadText(folder / serviceLogin));
        return server::ToText(Instance(place)
                                  .Call(L"Transact", VariantHolder(ReadText(folder / serviceRequest)),
                                        VariantHolder(login.object().Get()))
                                  .Get());
    } catch (const std::exception& error) {
        return error.what();
    }
}

void WriteResult(const wchar_t* name, DWORD place) {
    const std::string result = Import(place);
    std::ofstream(folder / name, std::ios::binary) << result;
}

/// On a thread of their own, as docs/en/clients.md has services make one.
void ImportInBothPlaces() {
    std::thread([] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        WriteResult(resultInProcess, CLSCTX_INPROC_SERVER);
        WriteResult(resultOfSurrogate, CLSCTX_LOCAL_SERVER);
        CoUninitialize();
    }).join();
}

DWORD WINAPI Control(DWORD, DWORD, void*, void*) { return NO_ERROR; }

void WINAPI Serve(DWORD, wchar_t**) {
    const SERVICE_STATUS_HANDLE handle = RegisterServiceCtrlHandlerExW(L"", Control, nullptr);
    SERVICE_STATUS status{};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = SERVICE_RUNNING;
    SetServiceStatus(handle, &status);
    ImportInBothPlaces();
    status.dwCurrentState = SERVICE_STOPPED;
    SetServiceStatus(handle, &status);
}

} // namespace

int RunImportService(const std::filesystem::path& theFolder) {
    folder = theFolder;
    // A service that is alone in its process has any name here.
    wchar_t name[] = L"";
    const SERVICE_TABLE_ENTRYW table[] = {{name, Serve}, {nullptr, nullptr}};
    return StartServiceCtrlDispatcherW(table) ? 0 : 1;
}

} // namespace test
