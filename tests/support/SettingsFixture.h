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
    /// @param checks what is asked after the connection and before the year-end: trace lines
    explicit SettingsFixture(const std::string& setup, std::vector<std::string> checks = {})
        : checks_(std::move(checks)) {
        account.Run(setup);
        checks_.push_back(
            LookedUpAtClient("SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12 AND bflag_IA=1"));
    }

    ImportRun Import(std::string_view proc, std::string_view rows, Faults faults = {}) const {
        return ImportAs(account.LoginXml(), proc, rows, std::move(faults));
    }
    ImportRun ImportAs(const std::string& login, std::string_view proc, std::string_view rows,
                       Faults faults = {}) const {
        return test::Import<Class>(account, Request(proc, rows), login, std::move(faults));
    }

    /// What is asked before the rows.
    std::vector<std::string> Before(const std::string& connection) const {
        std::vector<std::string> lines = checks_;
        lines.insert(lines.begin(), Connected(connection));
        return lines;
    }
    std::vector<std::string> Before() const { return Before(account.connectionString()); }

    /// What is asked for the rows themselves.
    std::vector<std::string> RowLines(const ImportRun& run) const {
        return {run.trace.begin() + std::min(std::ssize(checks_) + 1, std::ssize(run.trace)), run.trace.end()};
    }

    /// The last two things asked: what saves the row.
    static std::vector<std::string> SaveLines(const ImportRun& run) {
        return {run.trace.end() - std::min<std::ptrdiff_t>(2, std::ssize(run.trace)), run.trace.end()};
    }

    TestAccount account;

private:
    std::vector<std::string> checks_;
};

} // namespace test
