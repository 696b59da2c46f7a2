// Every scenario through Kovra.dll: the class, the login, the host's components, the documents and the database all by
// COM.
#include "tests/server/Reentry.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/support/com/HostedFixture.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// The current folder of a scenario's run, and the files that ADO's stand-in and the classes trace to.
class RunFolder {
public:
    explicit RunFolder(const fs::path& folder) : before_(fs::current_path()) {
        fs::current_path(folder);
        SetEnvironmentVariableW(L"KOVRA_ADO_TRACE", (folder / "trace.jsonl").c_str());
        SetEnvironmentVariableW(L"KOVRA_TRACE", (folder / L"记录.jsonl").c_str());
    }
    ~RunFolder() {
        SetEnvironmentVariableW(L"KOVRA_ADO_TRACE", nullptr);
        SetEnvironmentVariableW(L"KOVRA_TRACE", nullptr);
        fs::current_path(before_);
    }
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

private:
    fs::path before_;
};

using server::DispatchObject;
using server::VariantHolder;
using test::ExpectResult;

class Scenario : public test::HostedTest, public testing::WithParamInterface<fs::path> {
protected:
    /// What a run gave.
    struct Run {
        std::string result;
        /// Calls of the login, the components, connections and recordsets.
        int calls = 0;
    };

    /// Runs the scenario in an apartment of its own, since the helper of a thread that has one is not made again, and
    /// holds the rows and statements against what is expected. `inside` runs within each call that leaves the instance.
    Run RunWatched(const std::function<void(const DispatchObject& instance)>& inside);
};

Scenario::Run Scenario::RunWatched(const std::function<void(const DispatchObject& instance)>& inside) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    test::SetUp(account, folder);
    const RunFolder runFolder(account.folder());
    Run run;
    test::InNewApartment([&] {
        DispatchObject instance;
        test::Reentry reentry([&] {
            if (!instance.object())
                return;
            ++run.calls;
            inside(instance);
        });
        instance = DispatchObject::Create((L"Kovra." + folder.parent_path().filename().wstring()).c_str());
        const DispatchObject login = reentry.Wrap(test::Login(test::ReadText(test::LoginFile(folder))));
        run.result = server::ToText(instance
                                        .Call(L"Transact", VariantHolder(test::ReadText(folder / "request.xml")),
                                              VariantHolder(login.object().Get()))
                                        .Get());
        const DispatchObject last = std::exchange(instance, {});
    }).join();
    ExpectResult(folder, run.result);
    test::ExpectStatementsAndRows(folder, "trace.jsonl", account, test::Documents::msxml);
    return run;
}

} // namespace

TEST_P(Scenario, GivesResultAndStatements) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    test::SetUp(account, folder);
    const RunFolder runFolder(account.folder());

    const std::wstring progId = L"Kovra." + folder.parent_path().filename().wstring();
    const std::string result =
        test::Transact(progId.c_str(), server::VariantHolder(test::ReadText(folder / "request.xml")),
                       test::Login(test::ReadText(test::LoginFile(folder))));
    EXPECT_EQ(libraries().server.CanUnload(), S_OK);

    ExpectResult(folder, result);
    test::ExpectStatementsAndRows(folder, "trace.jsonl", account, test::Documents::msxml);
    EXPECT_EQ(test::ReadLines(L"记录.jsonl"),
              test::ReadLines(test::ExpectedFile(folder, ".trace", test::Documents::msxml)));
}

// An apartment takes other calls during each call that leaves it.
TEST_P(Scenario, GivesTheSameWhenItIsCalledFromInside) {
    const Run undisturbed = RunWatched([](const DispatchObject&) {});
    // The connection string is asked for, each statement is a call, and the helper makes the result; an empty result is
    // made without it.
    const auto statements = test::ReadLines(test::ExpectedFile(GetParam(), ".trace", test::Documents::msxml)).size();
    const std::size_t helped = test::ExpectsEmptyResult(GetParam(), test::Documents::msxml) ? 0 : 1;
    EXPECT_GE(static_cast<std::size_t>(undisturbed.calls), 1 + statements + helped);

    const Run run = RunWatched([](const DispatchObject& instance) {
        const DispatchObject otherLogin = test::Login("<login QxDbName=\"Provider=Nobody\" cIYear=\"1999\"/>");
        const VariantHolder inner =
            instance.Call(L"Transact", VariantHolder(std::string("<a/>")), VariantHolder(otherLogin.object().Get()));
        EXPECT_EQ(server::ToText(inner.Get()),
                  "<error code=\"3705\" dsc=\"Operation is not allowed when the object is open.\"/>");
    });
    EXPECT_EQ(run.calls, undisturbed.calls) << "the calls from inside add none, and leave out none, of the outer one's";
}

INSTANTIATE_TEST_SUITE_P(All, Scenario, testing::ValuesIn(test::ScenarioFolders()), test::ScenarioName);
