#pragma once

#include "tests/support/Import.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace test {

/// An account in 2023, and the imports of a class of account settings into it.
template <class Class> class SettingsFixture : public testing::Test {
protected:
    /// @param setup batches of T-SQL: the master data
    /// @param before what is asked before the rows: connection and pre-checks
    SettingsFixture(const std::string& setup, std::ptrdiff_t before) : before_(before) { account.Run(setup); }

    ImportRun Import(std::string_view proc, std::string_view rows, Faults faults = {}) const {
        return test::Import<Class>(account, Request(proc, rows), account.LoginXml(), std::move(faults));
    }

    /// What is asked for the rows themselves.
    std::vector<std::string> RowLines(const ImportRun& run) const {
        return {run.trace.begin() + std::min(before_, std::ssize(run.trace)), run.trace.end()};
    }

    /// The last two things asked: what saves the row.
    static std::vector<std::string> SaveLines(const ImportRun& run) {
        return {run.trace.end() - std::min<std::ptrdiff_t>(2, std::ssize(run.trace)), run.trace.end()};
    }

    TestAccount account;

private:
    std::ptrdiff_t before_;
};

} // namespace test
