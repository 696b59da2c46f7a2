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

/// An account database in a folder of its own, with the host's tables and no rows.
class TestAccount {
public:
    TestAccount();

    const std::filesystem::path& folder() const { return folder_.path(); }
    std::string connectionString() const;
    /// A login of account "001", year 2023, as XML text; `more` are further attributes.
    std::string LoginXml(std::string_view more = {}) const;

    /// Runs T-SQL batches (separated by lines that hold GO alone).
    void Run(std::string_view batches) const;
    /// The rows of a query, one JSON object a line.
    std::vector<std::string> Rows(std::string_view sql) const;

private:
    TemporaryFolder folder_;
};

/// The lines of a text file.
std::vector<std::string> ReadLines(const std::filesystem::path& path);

} // namespace test
