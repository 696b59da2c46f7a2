// The message of InvCodeIsTorF for an unknown item: in a box where somebody can see it, else on standard error.
#include "server/com/Utf16.h"
#include "tests/support/com/HostFixture.h"
#include "tests/support/com/ReplacedImport.h"

#include <filesystem>
#include <string>
#include <vector>

namespace {

/// What the system tells of the process's window station, and how it answers to a message box.
DWORD stationFlags = 0;
int boxAnswer = 0;
std::vector<std::wstring> boxes;

BOOL WINAPI TellStation(HANDLE, int what, void* flags, DWORD size, DWORD*) {
    EXPECT_EQ(what, UOI_FLAGS);
    EXPECT_EQ(size, sizeof(USEROBJECTFLAGS));
    *static_cast<USEROBJECTFLAGS*>(flags) = {FALSE, FALSE, stationFlags};
    return TRUE;
}

int WINAPI ShowBox(HWND, const wchar_t* text, const wchar_t* caption, UINT type) {
    EXPECT_EQ(type, UINT{MB_OK | MB_TASKMODAL});
    boxes.push_back(std::wstring(caption) + L": " + text);
    return boxAnswer;
}

/// Standard error goes into a file as long as the object lives.
class CaughtStandardError {
public:
    explicit CaughtStandardError(const std::filesystem::path& file)
        : before_(GetStdHandle(STD_ERROR_HANDLE)),
          file_(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr)) {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE);
        SetStdHandle(STD_ERROR_HANDLE, file_);
    }
    ~CaughtStandardError() {
        SetStdHandle(STD_ERROR_HANDLE, before_);
        CloseHandle(file_);
    }
    CaughtStandardError(const CaughtStandardError&) = delete;
    CaughtStandardError& operator=(const CaughtStandardError&) = delete;

private:
    HANDLE before_;
    HANDLE file_;
};

class MessageBoxes : public test::HostTest {
protected:
    /// Asks for an item that the account does not have. @return what came to standard error
    std::string AskForAnUnknownItem() {
        const std::filesystem::path file = account_.folder() / "stderr.txt";
        boxes.clear();
        {
            const test::ReplacedImport station(L"Kovra.dll", "GetUserObjectInformationW", TellStation);
            const test::ReplacedImport box(L"Kovra.dll", "MessageBoxW", ShowBox);
            const CaughtStandardError caught(file);
            const server::DispatchObject instance = Make(L"Kovra.ClsKovra");
            instance.Call(L"Transact", Text("no XML"), Holder(AccountLogin()));
            EXPECT_FALSE(server::ToBoolean(instance.Call(L"InvCodeIsTorF", Text("unknown"), Text("bInvBatch")).Get()));
        }
        return test::ReadText(file);
    }
};

} // namespace

TEST_F(MessageBoxes, BoxWhereTheProcessIsInteractive) {
    stationFlags = WSF_VISIBLE;
    boxAnswer = IDOK;
    EXPECT_EQ(AskForAnUnknownItem(), "");
    EXPECT_EQ(boxes, std::vector<std::wstring>{L"Kovra: 该存货没有找到！"});
}

TEST_F(MessageBoxes, StandardErrorInAService) {
    stationFlags = 0;
    EXPECT_EQ(AskForAnUnknownItem(), "该存货没有找到！\r\n");
    EXPECT_TRUE(boxes.empty());
}

TEST_F(MessageBoxes, StandardErrorWhenTheBoxCannotBeShown) {
    stationFlags = WSF_VISIBLE;
    boxAnswer = 0;
    EXPECT_EQ(AskForAnUnknownItem(), "该存货没有找到！\r\n");
    EXPECT_EQ(boxes.size(), 1U);
}
