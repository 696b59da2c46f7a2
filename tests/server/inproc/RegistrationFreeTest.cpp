#include "server/com/Utf16.h"
#include "server/com/VariantHolder.h"
#include "tests/support/com/RegisteredClasses.h"
#include "tests/support/com/ServerFixture.h"

#include <string>

namespace {

/// The folder of this program, where Kovra.dll and the manifests lie.
std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring file(path, length);
    return file.substr(0, file.find_last_of(L'\\'));
}

/// The manifest client.manifest, in force as long as the object lives.
class ClientManifest {
public:
    ClientManifest() : folder_(ProgramFolder()), file_(folder_ + L"\\client.manifest") {
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
        description.lpSource = file_.c_str();
        description.lpAssemblyDirectory = folder_.c_str();
        context_ = CreateActCtxW(&description);
        active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_);
    }
    ~ClientManifest() {
        if (active_)
            DeactivateActCtx(0, cookie_);
        if (context_ != INVALID_HANDLE_VALUE)
            ReleaseActCtx(context_);
    }
    ClientManifest(const ClientManifest&) = delete;
    ClientManifest& operator=(const ClientManifest&) = delete;

    bool Active() const { return active_; }

private:
    std::wstring folder_;
    std::wstring file_;
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

class RegistrationFreeTest : public test::ServerTest {
protected:
    void SetUp() override {
        ServerTest::SetUp();
        ASSERT_EQ(Install(false, nullptr), S_OK);
    }
};

} // namespace

TEST_F(RegistrationFreeTest, ClassesAreCreatedByTheClientsManifestAlone) {
    server::ComPtr<IDispatch> object;
    EXPECT_TRUE(FAILED(Create(L"Kovra.ClsInvSubject", object))) << "registered: this test shows nothing";
    const ClientManifest manifest;
    ASSERT_TRUE(manifest.Active()) << GetLastError();
    for (const auto& [name, classId] : test::kovraClasses) {
        server::ComPtr<IDispatch> instance;
        if (name == test::needsCompanion) {
            // The class itself is found.
            EXPECT_EQ(Create(name, instance), static_cast<HRESULT>(0x800A01AD));
            continue;
        }
        ASSERT_EQ(Create(name, instance), S_OK) << server::ToUtf8(name);
        DISPID transact = 0;
        std::wstring method = L"Transact";
        wchar_t* names[] = {method.data()};
        EXPECT_EQ(instance->GetIDsOfNames(IID_NULL, names, 1, 0, &transact), S_OK) << server::ToUtf8(name);
    }
}
