// An import from a Windows service: this program, started by the service manager.
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/ImportService.h"
#include "tests/support/com/OnWine.h"
#include "tests/support/com/WinesSurrogate.h"

#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace {

namespace fs = std::filesystem;

struct CloseService {
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, CloseService>;

/// This program as a service that works in `folder`, as long as the object lives.
class Service {
public:
    explicit Service(const fs::path& folder) : manager_(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS)) {
        wchar_t program[MAX_PATH]{};
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        const std::wstring command =
            L"\"" + std::wstring(program) + L"\" " + test::serviceWord + L" \"" + folder.wstring() + L"\"";
        service_.reset(CreateServiceW(manager_.get(), L"KovraTestImport", L"KovraTestImport", SERVICE_ALL_ACCESS,
                                      SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                                      command.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
    }
    ~Service() { DeleteService(service_.get()); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    bool IsThere() const { return service_ != nullptr; }
    bool Start() const { return StartServiceW(service_.get(), 0, nullptr) != FALSE; }
    /// @return whether it has come to its end by itself
    bool AwaitEnd() const {
        constexpr int most = 6'000;
        for (int times = 0; times < most; ++times) {
            SERVICE_STATUS status{};
            if (!QueryServiceStatus(service_.get(), &status)) {
                return false;
            }
            if (status.dwCurrentState == SERVICE_STOPPED) {
                return true;
            }
            Sleep(10);
        }
        return false;
    }

private:
    ServiceHandle manager_;
    ServiceHandle service_;
};

using FromAService = test::HostedTest;

TEST_F(FromAService, ImportsInItsOwnProcessAndInTheSurrogate) {
    const test::TestAccount account;
    account.Run("insert into Warehouse (cWhCode, cWhName) values ('01', N'原料库')\nGO\n"
                "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)");
    std::ofstream(account.folder() / test::serviceLogin, std::ios::binary) << account.LoginXml();
    std::ofstream(account.folder() / test::serviceRequest, std::ios::binary)
        << "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode>"
           "<cInvHead>1405</cInvHead></row></qxinterface>";
    std::optional<test::WinesSurrogate> wines;
    if (test::OnWine()) {
        wines.emplace();
    }
    const Service service(account.folder());
    if (!service.IsThere()) {
        GTEST_SKIP() << "to make a service takes an administrator";
    }
    ASSERT_TRUE(service.Start());
    ASSERT_TRUE(service.AwaitEnd());
    const auto expect = [&](const wchar_t* name, const std::string& outcomes) {
        const std::string result = test::ReadText(account.folder() / name);
        ASSERT_TRUE(result.starts_with("<")) << result;
        EXPECT_EQ(test::Comparable(result),
                  test::Comparable("<qxinterface docid=\"D\" proc=\"ADD\">" + outcomes + "</qxinterface>"));
    };
    const std::string accepted = "<item key=\"仓库编码：01， ， \" code=\"0\" dsc=\"ok\"/>";
    expect(test::resultInProcess, accepted);
    EXPECT_EQ(account.Rows("select cWhCode from IA_HeadSet").size(), 1U);
    if (wines && !wines->IsOfThisSize()) {
        GTEST_SKIP() << "this Wine starts the other size's surrogate";
    }
    // It meets the first one's row: a setting that is refused while it is written has two outcomes.
    expect(test::resultOfSurrogate, "<item key=\"仓库编码：01， ， \" code=\"101\" "
                                    "dsc=\"对照关系已经存在，无法插入新记录。\"/>" +
                                        accepted);
    EXPECT_EQ(account.Rows("select cWhCode from IA_HeadSet").size(), 1U);
}

} // namespace
