#pragma once

#include "refhost/ado/Connection.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

#include <functional>
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
std::string NameOf(Place place);
inline std::string PlaceName(const testing::TestParamInfo<Place>& place) { return NameOf(place.param); }
/// The connection string of a place's database; `file` is the embedded one's behind a driver.
std::string ConnectionTextAt(Place place, const std::string& file);

/// An empty database at a place. What a case made on a server goes again. Where a case's answer says that the embedded
/// database does not do it, the server is not asked: it does.
class DatabaseAt {
public:
    explicit DatabaseAt(Place place);
    ~DatabaseAt();
    DatabaseAt(const DatabaseAt&) = delete;
    DatabaseAt& operator=(const DatabaseAt&) = delete;

    refhost::Database& Db() { return connection_.database(); }
    /// Holds what a statement answers against what it must answer, both as `Answer` shows them.
    void Check(const Case& each);
    /// The same for a whole batch, as `Batch` shows it.
    void CheckBatch(const Case& each);

private:
    void Expect(const Case& each, const std::string& expected, const std::function<std::string()>& answer);
    /// What is heard of a batch's answers: behind an error that is the first of them nothing, on a server, since the
    /// driver manager asks for no more then.
    std::string Heard(const std::string& answers) const;
    /// The statement with the name of the database at hand, where it names one: that of the cases is `account`.
    std::string Here(const std::string& sql);
    /// The text without what differs from one database to the next: its name, and the numbers in names of constraints.
    std::string Comparable(const std::string& text);
    /// The name of the database at hand.
    std::string Name();
    /// "TABLE name" or "VIEW name" of each object of the database.
    std::set<std::string> Objects();

    Place place_;
    test::TemporaryFolder folder_;
    refhost::Connection connection_;
    std::set<std::string> before_;
};

/// Cases on an empty database, at each place.
class AtEachPlace : public testing::TestWithParam<Place> {
protected:
    AtEachPlace() : database_(GetParam()) {}

    refhost::Database& Db() { return database_.Db(); }
    /// Runs a statement that answers nothing.
    void Run(const char* sql) { EXPECT_EQ(Answer(Db(), sql), "") << sql; }
    template <class Cases> void Check(const Cases& cases) {
        for (const Case& each : cases) {
            database_.Check(each);
        }
    }

private:
    DatabaseAt database_;
};

} // namespace test_sql
