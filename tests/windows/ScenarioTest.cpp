// Every scenario through Kovra.dll: the class, the login, the host's components, the documents and the database all by
// COM.
#include "server/adapters/XmlDocument.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/windows/HostedTest.h"
#include "tests/windows/Reentry.h"

#include <algorithm>
#include <filesystem>
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

class Scenario : public test::HostedTest, public testing::WithParamInterface<fs::path> {};

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

    if (test::ExpectsEmptyResult(folder))
        EXPECT_EQ(result, "");
    else
        EXPECT_EQ(Comparable(result), Comparable(test::ReadText(folder / "expected.xml")));
    test::ExpectStatementsAndRows(folder, "trace.jsonl", account);
}

// An apartment takes other calls during each call that leaves it.
TEST_P(Scenario, GivesTheSameWhenItIsCalledFromInside) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    account.Run(test::ReadText(folder / "setup.sql"));
    const RunFolder runFolder(account.folder());
    std::string result;
    int calls = 0;
    // In an apartment of its own, since the helper of a thread that has one is not made again.
    test::InNewApartment([&] {
        const DispatchObject otherLogin = test::Login("<login QxDbName=\"Provider=Nobody\" cIYear=\"1999\"/>");
        DispatchObject instance;
        test::Reentry reentry([&] {
            if (!instance.object())
                return;
            ++calls;
            const VariantHolder inner = instance.Call(L"Transact", VariantHolder(std::string("<a/>")),
                                                      VariantHolder(otherLogin.object().Get()));
            EXPECT_EQ(server::ToText(inner.Get()),
                      "<error code=\"3705\" dsc=\"Operation is not allowed when the object is open.\"/>");
        });
        instance = DispatchObject::Create((L"Kovra." + folder.parent_path().filename().wstring()).c_str());
        const DispatchObject login = reentry.Wrap(test::Login(test::ReadText(folder / "login.xml")));
        result = server::ToText(instance
                                    .Call(L"Transact", VariantHolder(test::ReadText(folder / "request.xml")),
                                          VariantHolder(login.object().Get()))
                                    .Get());
        const DispatchObject last = std::exchange(instance, {});
    }).join();
    EXPECT_GE(calls, 3) << "the login, the connection and the helper at least";
    if (test::ExpectsEmptyResult(folder))
        EXPECT_EQ(result, "");
    else
        EXPECT_EQ(Comparable(result), Comparable(test::ReadText(folder / "expected.xml")));
    test::ExpectStatementsAndRows(folder, "trace.jsonl", account);
}

INSTANTIATE_TEST_SUITE_P(All, Scenario, testing::ValuesIn(test::ScenarioFolders()), test::ScenarioName);
