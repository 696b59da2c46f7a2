#include "tests/support/com/ServerFixture.h"

namespace test {

HRESULT ServerTest::Create(const wchar_t* progId, server::ComPtr<IDispatch>& object) {
    CLSID classId{};
    const HRESULT found = CLSIDFromProgID(progId, &classId);
    return FAILED(found) ? found
                         : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.PutVoid());
}

std::wstring ClassesValue(HKEY root, const std::wstring& path, const wchar_t* name) {
    wchar_t value[512];
    DWORD size = sizeof value;
    const std::wstring key = L"Software\\Classes\\" + path;
    return RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, value, &size) == ERROR_SUCCESS ? value : L"";
}

} // namespace test
