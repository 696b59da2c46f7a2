#pragma once

#include "refhost/ado/Connection.h"
#include "tests/support/TestAccount.h"

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace test_sql {

/// Where the cases of the language run: on the embedded database, on the same behind an ODBC driver, and on the empty
/// database of a SQL Server that KOVRA_TEST_ODBC names (a connection string).
enum class Place { embedded, embeddedThroughOdbc, server };

/// The places that there are here.
std::vector<Place> Places();
std::string PlaceName(const testing::TestParamInfo<Place>& place);
/// The connection string of a place's database; `file` is the embedded one's behind a driver.
std::string ConnectionTextAt(Place place, const std::string& file);

/// An empty database at a place. What a case made on a server goes again.
class DatabaseAt {
public:
    explicit DatabaseAt(Place place);
    ~DatabaseAt();
    DatabaseAt(const DatabaseAt&) = delete;
    DatabaseAt& operator=(const DatabaseAt&) = delete;

    refhost::Database& Db() { return connection_.database(); }

private:
    /// "TABLE name" or "VIEW name" of each object of the database.
    std::set<std::string> Objects();

    Place place_;
    test::TemporaryFolder folder_;
    refhost::Connection connection_;
    std::set<std::string> before_;
};

} // namespace test_sql
