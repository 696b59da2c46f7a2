// Many calls, and several threads at once.
#include "server/adapters/ProgIds.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/ScriptedObject.h"
#include "tests/support/com/UsedBytes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <psapi.h>

namespace {

using server::DispatchObject;
using server::VariantHolder;

constexpr const wchar_t* importClass = L"Kovra.ClsInvSubject";

/// What this process holds: bytes of memory that are its own, and handles.
struct Holding {
    std::int64_t memory;
    std::int64_t handles;
};

/// The number of handles. Wine does not count them; there it is the number of the next free one.
std::int64_t CountHandles() {
    DWORD count = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &count) && count != 0)
        return count;
    const HANDLE next = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    CloseHandle(next);
    constexpr std::intptr_t step = 4;
    return reinterpret_cast<std::intptr_t>(next) / step;
}

Holding Measure() {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
    return {static_cast<std::int64_t>(counters.PagefileUsage), CountHandles()};
}

/// Takes up, as long as it lives, the pieces of the heap that others left free: what is left behind then shows as
/// memory of the process.
class FilledHeap {
public:
    FilledHeap() {
        constexpr std::int64_t beyondDoubt = 1 << 20;
        const std::int64_t before = Measure().memory;
        while (Measure().memory - before < beyondDoubt) {
            for (const std::size_t size : {16U, 40U, 80U, 160U, 400U, 1000U, 4000U})
                pieces_.push_back(std::make_unique<char[]>(size));
        }
    }

private:
    std::vector<std::unique_ptr<char[]>> pieces_;
};

/// A request of `rows` warehouses' settings, which are all there or all missing in the account.
std::string Settings(std::string_view proc, int rows) {
    std::string request = "<qxinterface roottag=\"row\" docid=\"D\" proc=\"" + std::string(proc) + "\">";
    for (int i = 0; i < rows; ++i)
        request += "<row><cWhCode>W" + std::to_string(i) + "</cWhCode><cInvHead>1401</cInvHead></row>";
    return request + "</qxinterface>";
}

template <class Action> DWORD WINAPI RunAction(void* action) {
    (*static_cast<Action*>(action))();
    return 0;
}

/// Runs `action` on a thread of the system's own making, which adds nothing to the heap by itself.
template <class Action> void OnSystemThread(Action& action) {
    const HANDLE thread = CreateThread(nullptr, 0, RunAction<Action>, &action, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

class Load : public test::HostedTest {
protected:
    Load() { Fill(account_); }

    static constexpr int warehouses = 5;

    /// Growth that is none: the system's own tables and the like.
    static constexpr std::int64_t freeMemory = 512 << 10;

    /// Fails the running test when `calls` calls leave more behind than a few did before them.
    template <class Call> static void ExpectNoGrowth(int calls, Call&& call) {
        const FilledHeap filled;
        for (int i = 0; i < calls / 10 && !HasFailure(); ++i)
            call();
        const Holding before = Measure();
        for (int i = 0; i < calls && !HasFailure(); ++i)
            call();
        const Holding after = Measure();
        EXPECT_LT(after.memory - before.memory, freeMemory);
        EXPECT_EQ(after.handles, before.handles);
    }

    static void Fill(const test::TestAccount& account) {
        std::string setup = "INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)";
        for (int i = 0; i < warehouses; ++i)
            setup += "\nGO\nINSERT INTO Warehouse (cWhCode) VALUES (N'W" + std::to_string(i) + "')";
        account.Run(setup);
    }

    test::TestAccount account_;
};

} // namespace

TEST_F(Load, MeasuringSeesWhatIsHeld) {
    // A little more than the calls below may leave behind, in as many pieces.
    const FilledHeap filled;
    const Holding before = Measure();
    std::vector<std::unique_ptr<char[]>> pieces;
    for (int i = 0; i < 10'000; ++i)
        pieces.push_back(std::make_unique<char[]>(80));
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const Holding after = Measure();
    CloseHandle(event);
    EXPECT_GT(after.memory - before.memory, freeMemory);
    EXPECT_EQ(after.handles, before.handles + 1);
    const std::int64_t used = test::UsedBytes();
    const auto piece = std::make_unique<char[]>(48);
    EXPECT_GE(test::UsedBytes() - used, 48);
}

TEST_F(Load, ManyCallsLeaveNothingBehind) {
    // An account in memory is opened ten times as fast as one in a file. It lacks the host's tables.
    const DispatchObject login =
        test::Login("<login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" cIYear=\"2023\"/>");
    const VariantHolder request(Settings("ADD", 1));
    ExpectNoGrowth(10'000, [&] {
        ASSERT_EQ(test::Transact(importClass, request, login),
                  "<error code=\"-2147217865\" dsc=\"Invalid object name 'GL_mend'.\"/>");
    });
}

TEST_F(Load, ManyImportsLeaveNothingBehind) {
    const DispatchObject login = test::Login(account_.LoginXml());
    const VariantHolder edit(Settings("EDIT", warehouses));
    test::Transact(importClass, VariantHolder(Settings("ADD", warehouses)), login);
    ASSERT_EQ(account_.Rows("SELECT cWhCode FROM IA_HeadSet").size(), static_cast<std::size_t>(warehouses));
    const std::string expected = test::Transact(importClass, edit, login);
    ExpectNoGrowth(1'000, [&] { ASSERT_EQ(test::Transact(importClass, edit, login), expected); });
}

TEST_F(Load, TwoApartmentsImportAtOnceEachWithItsOwnHelper) {
    constexpr int imports = 50;
    const auto importMany = [] {
        const test::TestAccount account;
        Fill(account);
        const DispatchObject login = test::Login(account.LoginXml());
        int helpers = 0;
        const test::ReplacedClass* replaced = nullptr;
        const test::ReplacedClass counted(server::progid::eaiHelper, [&] {
            ++helpers;
            return replaced->Original();
        });
        replaced = &counted;
        for (int i = 0; i < imports; ++i) {
            const std::string result =
                test::Transact(importClass, VariantHolder(Settings(i == 0 ? "ADD" : "EDIT", warehouses)), login);
            EXPECT_NE(result.find("dsc=\"ok\""), std::string::npos) << result;
        }
        EXPECT_EQ(helpers, 1);
        EXPECT_EQ(account.Rows("SELECT cWhCode FROM IA_HeadSet").size(), static_cast<std::size_t>(warehouses));
    };
    std::thread first = test::InNewApartment(importMany);
    std::thread second = test::InNewApartment(importMany);
    first.join();
    second.join();
    EXPECT_EQ(libraries().server.CanUnload(), S_OK);
}

TEST_F(Load, HelpersEndWithTheirApartmentAndAreMadeAnewInTheNext) {
    test::InNewApartment([this] {
        // The thread enters COM a second time, and leaves it for good in between.
        int made = 0;
        for (int i = 1; i <= 3; ++i) {
            std::weak_ptr<int> held;
            {
                const test::ReplacedClass counted(server::progid::eaiHelper, [&] {
                    ++made;
                    const auto life = std::make_shared<int>();
                    held = life;
                    return test::MakeObject({{L"MakeErrorResult", [life](const server::Arguments&) {
                                                  return VariantHolder(std::string("made by the helper"));
                                              }}});
                });
                for (int call = 0; call < 2; ++call)
                    EXPECT_EQ(test::Transact(importClass, VariantHolder(std::string("<a/>")), DispatchObject()),
                              "made by the helper");
            }
            EXPECT_EQ(made, i);
            EXPECT_FALSE(held.expired());
            CoUninitialize();
            EXPECT_TRUE(held.expired()) << "after leaving COM";
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        }
    }).join();
}

TEST_F(Load, ThreadsLeaveNothingBehind) {
    constexpr int threads = 20;
    const auto growth = [](auto action) {
        for (int i = 0; i < 3; ++i)
            OnSystemThread(action);
        const std::int64_t before = test::UsedBytes();
        for (int i = 0; i < threads; ++i)
            OnSystemThread(action);
        return test::UsedBytes() - before;
    };
    const auto inApartment = [](auto action) {
        return [action] {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
            action();
            CoUninitialize();
        };
    };
    EXPECT_EQ(growth(inApartment([] {})), 0) << "nothing but an apartment";
    EXPECT_EQ(growth(inApartment([] { DispatchObject::Create(importClass); })), 0) << "an instance";
    EXPECT_EQ(growth(inApartment([] {
                  const VariantHolder nothing(static_cast<IDispatch*>(nullptr));
                  const DispatchObject instance = DispatchObject::Create(importClass);
                  instance.Call(L"Transact", VariantHolder(std::string("<a/>")), nothing);
              })),
              0)
        << "a helper, and an error";
}
