// Every scenario through Kovra.dll: the class, the login, the host's components, the documents and the database all by
// COM.
#include "server/adapters/XmlDocument.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/windows/HostedTest.h"
#include "tests/windows/Reentry.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// The current folder, and the file that is traced to, of a scenario's run.
class RunFolder {
public:
    explicit RunFolder(const fs::path& folder) : before_(fs::current_path()) {
        fs::current_path(folder);
        SetEnvironmentVariableW(L"KOVRA_ADO_TRACE", (folder / "trace.jsonl").c_str());
    }
    ~RunFolder() {
        SetEnvironmentVariableW(L"KOVRA_ADO_TRACE", nullptr);
        fs::current_path(before_);
    }
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

private:
    fs::path before_;
};

using server::DispatchObject;
using server::VariantHolder;

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

/// The document as MSXML writes it, whatever wrote it before: Wine's MSXML adds line breaks and tabs to a text that has
/// none. So it does to the text of a result document that a message quotes, where a line break at its end stays too;
/// the line breaks behind a quoted document are therefore left out.
std::string Comparable(const std::string& xml) {
    server::XmlDocument document;
    EXPECT_TRUE(document.LoadXML(xml)) << xml;
    for (const host::DOMNodePtr& item : document.SelectNodes("/*/item")) {
        constexpr std::string_view open = "<qxinterface";
        constexpr std::string_view close = "</qxinterface>";
        const std::string message = item->GetAttribute("dsc").value_or("");
        const std::size_t begin = message.find(open);
        if (begin == std::string::npos)
            continue;
        const std::size_t end = message.rfind(close) + close.size();
        const std::size_t rest = std::min(message.find_first_not_of("\r\n", end), message.size());
        item->SetAttribute("dsc", message.substr(0, begin) + Comparable(message.substr(begin, end - begin)) +
                                      message.substr(rest));
    }
    return document.Xml();
}

void ExpectResult(const fs::path& folder, const std::string& result) {
    if (test::ExpectsEmptyResult(folder, test::Documents::msxml))
        EXPECT_EQ(result, "");
    else
        EXPECT_EQ(Comparable(result),
                  Comparable(test::ReadText(test::ExpectedFile(folder, ".xml", test::Documents::msxml))));
}

Scenario::Run Scenario::RunWatched(const std::function<void(const DispatchObject& instance)>& inside) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    account.Run(test::ReadText(folder / "setup.sql"));
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
        const DispatchObject login = reentry.Wrap(test::Login(test::ReadText(folder / "login.xml")));
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
    account.Run(test::ReadText(folder / "setup.sql"));
    const RunFolder runFolder(account.folder());

    const std::wstring progId = L"Kovra." + folder.parent_path().filename().wstring();
    const std::string result =
        test::Transact(progId.c_str(), server::VariantHolder(test::ReadText(folder / "request.xml")),
                       test::Login(test::ReadText(folder / "login.xml")));
    EXPECT_EQ(libraries().server.CanUnload(), S_OK);

    ExpectResult(folder, result);
    test::ExpectStatementsAndRows(folder, "trace.jsonl", account, test::Documents::msxml);
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
