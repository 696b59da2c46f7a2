#pragma once

#include "host/Environment.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// A folder of its own under the system's temporary one; removed at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// What an account holds beside the host's tables: nothing, or the demonstration company.
enum class AccountContent { empty, demo };

/// An account database in a folder of its own.
class TestAccount {
public:
    explicit TestAccount(AccountContent content = AccountContent::empty);
    /// A copy of an account that nobody has open.
    TestAccount(const TestAccount& original);
    TestAccount& operator=(const TestAccount&) = delete;

    const std::filesystem::path& folder() const { return folder_.path(); }
    std::filesystem::path file() const { return folder() / "account.db"; }
    std::string connectionString() const;
    /// A login of account "001" as XML text, in January 2023, with the demonstration company in January 2024; `more`
    /// are further attributes.
    std::string LoginXml(std::string_view more = {}) const;

    /// Runs T-SQL batches (separated by lines that hold GO alone).
    void Run(std::string_view batches) const;
    /// The rows of a query, one JSON object a line.
    std::vector<std::string> Rows(std::string_view sql) const;

private:
    TemporaryFolder folder_;
    AccountContent content_;
};

/// A file's bytes. Throws std::runtime_error when it cannot be read.
std::string ReadText(const std::filesystem::path& path);

/// The lines of a text file. Throws likewise.
std::vector<std::string> ReadLines(const std::filesystem::path& path);

/// The lines of the trace at `path` that no host component caused.
std::vector<std::string> OwnLines(const std::filesystem::path& path);

} // namespace test
