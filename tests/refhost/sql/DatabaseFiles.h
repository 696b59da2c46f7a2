#pragma once

#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "tests/support/TestAccount.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace test_sql {

/// Account databases in a folder of the test's own.
class DatabaseFiles : public testing::Test {
protected:
    std::string File(const std::string& name) const { return (folder_.path() / name).string(); }
    /// @param more further keys, each with a semicolon before it
    std::string Connection(const std::string& name, const std::string& more = {}) const {
        return "Provider=KovraAccount;Data Source=" + File(name) + more;
    }
    /// The database of a file, which is made where there is none.
    std::unique_ptr<refhost::sql::EmbeddedDatabase> Create(const std::string& name) const {
        return refhost::sql::OpenEmbedded(Connection(name), refhost::sql::Mode::create);
    }

    test::TemporaryFolder folder_;
};

} // namespace test_sql
