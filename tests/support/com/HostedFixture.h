#pragma once

#include "server/com/DispatchObject.h"
#include "tests/support/TestAccount.h"
#include "tests/support/com/RegisteredLibrary.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include <gtest/gtest.h>

namespace test {

/// The libraries of a machine with the host and a database, registered as long as the object lives.
struct Libraries {
    RegisteredLibrary ado{L"KovraTestAdo.dll"};
    RegisteredLibrary host{L"KovraHost.dll"};
    RegisteredLibrary server{L"Kovra.dll"};
};

/// A test on such a machine.
class HostedTest : public testing::Test {
protected:
    static void SetUpTestSuite() { libraries_ = std::make_unique<Libraries>(); }
    static void TearDownTestSuite() { libraries_.reset(); }

    static const Libraries& libraries() { return *libraries_; }

private:
    static inline std::unique_ptr<Libraries> libraries_;
};

/// A login object filled from `<login …/>`.
server::DispatchObject Login(std::string_view xml);

/// The document as MSXML writes it, whatever wrote it before: Wine's MSXML adds line breaks and tabs to a text that has
/// none. So it does to the text of a result document that a message quotes, where a line break at its end stays too;
/// the line breaks behind a quoted document are therefore left out.
std::string Comparable(const std::string& xml);

/// Holds a result against what the scenario in `folder` expects of MSXML's documents.
void ExpectResult(const std::filesystem::path& folder, const std::string& result);

/// What `Transact` of a new instance of the class returns.
std::string Transact(const wchar_t* progId, const server::VariantHolder& request, const server::DispatchObject& login);

/// Runs `action` in an apartment of its own, which ends with it. What it throws fails the running test.
template <class Action> std::thread InNewApartment(Action action) {
    return std::thread([action = std::move(action)] {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        try {
            action();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
        CoUninitialize();
    });
}

} // namespace test
