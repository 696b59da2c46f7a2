#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// An empty account database with the host's tables, and its system database, in the files of a folder.
class FileAccount {
public:
    /// Makes both anew.
    explicit FileAccount(const std::filesystem::path& folder);

    const std::string& connectionString() const { return connectionString_; }
    /// Runs statements in one transaction.
    void Fill(const std::vector<std::string>& statements) const;

private:
    std::string connectionString_;
};

} // namespace bench
