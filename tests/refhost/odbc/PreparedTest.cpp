// Texts that are prepared before they run, as a client may send them instead: what that takes on the wire is why this
// system sends its texts directly.

#include "host/Error.h"
#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Handle.h"
#include "refhost/odbc/Statement.h"
#include "refhost/odbc/Utf16.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"
#include "tests/support/ValuesOf.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using refhost::odbc::Check;
using refhost::odbc::Utf16Text;

/// A client of ODBC, straight on the driver.
class Prepared : public testing::Test {
protected:
    Prepared() {
        SQLHANDLE handle = nullptr;
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle);
        environment_ = refhost::odbc::EnvironmentHandle(handle);
        SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, refhost::odbc::AttributeNumber(SQL_OV_ODBC3), 0);
        connection_ = refhost::odbc::Allocate<refhost::odbc::ConnectionHandle>(environment_);
        Utf16Text text = refhost::odbc::ToUtf16(server_.ConnectionString());
        Check(SQLDriverConnectW(connection_.get(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()), nullptr,
                                0, nullptr, SQL_DRIVER_NOPROMPT),
              SQL_HANDLE_DBC, connection_.get());
        statement_ = refhost::odbc::Allocate<refhost::odbc::StatementHandle>(connection_);
    }
    ~Prepared() override {
        statement_ = {};
        SQLDisconnect(connection_.get());
    }

    void Prepare(const std::string& sql) const {
        Utf16Text text = refhost::odbc::ToUtf16(sql);
        Check(SQLPrepareW(statement_.get(), text.data(), static_cast<SQLINTEGER>(text.size())), SQL_HANDLE_STMT,
              statement_.get());
    }
    /// Runs what was prepared, and reads its answers to their end.
    refhost::ResultSet Execute() const {
        Check(SQLExecute(statement_.get()), SQL_HANDLE_STMT, statement_.get());
        refhost::ResultSet rows = refhost::odbc::ReadRows(statement_);
        while (refhost::odbc::NextAnswer(statement_)) {
        }
        SQLFreeStmt(statement_.get(), SQL_CLOSE);
        return rows;
    }
    std::int64_t Count() const {
        Prepare("select count(*) from inventory");
        return std::get<std::int64_t>(Execute().cells[0].storage());
    }

    test::TestAccount account_;
    test::TdsServer server_{account_.connectionString(), {}};
    refhost::odbc::EnvironmentHandle environment_;
    refhost::odbc::ConnectionHandle connection_;
    refhost::odbc::StatementHandle statement_;
};

TEST_F(Prepared, TextsRunAsOthersDo) {
    Prepare("insert into inventory (cInvCode, cInvName) values ('1', N'钢板')");
    Execute();
    Prepare("select cInvCode, cInvName from inventory where cInvCode = '1'");
    const refhost::ResultSet rows = Execute();
    ASSERT_EQ(rows.rowCount, 1U);
    EXPECT_EQ(rows.fields->at(1).name, "cInvName");
    EXPECT_EQ(test::ValuesOf(rows), (std::vector<host::Value>{"1", "钢板"}));
    EXPECT_EQ(Count(), 1);
}

TEST_F(Prepared, TextRunsAgain) {
    Prepare("insert into inventory (cInvCode) select isnull(max(cInvCode), 0) + 1 from inventory");
    for (int time = 0; time < 3; ++time) {
        Execute();
    }
    EXPECT_EQ(Count(), 3);
}

TEST_F(Prepared, ErrorsAreTheServersOwn) {
    for (int time = 0; time < 2; ++time) {
        Prepare("select * from nowhere");
        try {
            Execute();
            ADD_FAILURE() << "not refused";
        } catch (const host::Error& error) {
            EXPECT_EQ(error.description(), "Invalid object name 'nowhere'.");
            EXPECT_EQ(error.native(), 208);
        }
        EXPECT_EQ(Count(), 0);
    }
}

/// What the preparing takes beside the run: the text goes with its first run, and is given back with a message of its
/// own when the handle takes another. One that is asked about before it runs goes ahead of its run.
TEST_F(Prepared, TextsTakeMoreMessagesThanTheirRuns) {
    const auto messages = [&](const auto& work) {
        const int requests = server_.Requests();
        const int calls = server_.Calls();
        work();
        EXPECT_EQ(server_.Calls() - calls, server_.Requests() - requests) << "all are procedure calls";
        return server_.Requests() - requests;
    };
    const auto once = [&] {
        Prepare("select cInvCode from inventory");
        Execute();
    };
    EXPECT_EQ(messages(once), 1) << "nothing to give back yet";
    EXPECT_EQ(messages(once), 2);
    EXPECT_EQ(messages([&] { Execute(); }), 1) << "a second run";
    EXPECT_EQ(messages([&] {
                  Prepare("select cInvName from inventory");
                  SQLSMALLINT columns = 0;
                  SQLNumResultCols(statement_.get(), &columns);
                  Execute();
              }),
              3);
}

TEST_F(Prepared, TextsWithParametersAreRefusedByTheTestsServer) {
    SQLINTEGER value = 5;
    Check(SQLBindParameter(statement_.get(), 1, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &value, 0, nullptr),
          SQL_HANDLE_STMT, statement_.get());
    Prepare("select cInvCode from inventory where 5 = ?");
    EXPECT_THROW(Execute(), host::Error);
    SQLFreeStmt(statement_.get(), SQL_RESET_PARAMS);
    EXPECT_EQ(Count(), 0) << "the connection serves on";
}

} // namespace
