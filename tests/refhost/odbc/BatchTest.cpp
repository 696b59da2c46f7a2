// Whole batches on the real FreeTDS driver: every result, the server's messages, the counts, and errors among them.

#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"
#include "tests/support/ValuesOf.h"

#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

namespace {

class Batch : public testing::Test {
protected:
    /// The answers of a batch in order: "rows: VALUES", "written: N", "says: TEXT", "error: NATIVE".
    std::vector<std::string> Answers(std::string_view sql) {
        std::vector<std::string> answers;
        database_->RunBatch(sql, std::nullopt, [&](const refhost::BatchAnswer& answer) {
            if (const auto* const rows = std::get_if<refhost::ResultSet>(&answer)) {
                answers.emplace_back("rows:");
                for (const host::Value& value : test::ValuesOf(*rows)) {
                    answers.back() += " " + std::to_string(*value.As<std::int64_t>());
                }
            } else if (const auto* const written = std::get_if<refhost::RowsWritten>(&answer)) {
                answers.push_back("written: " + std::to_string(written->count));
            } else if (const auto* const message = std::get_if<refhost::ServerMessage>(&answer)) {
                answers.push_back("says: " + message->text);
            } else {
                answers.push_back("error: " + std::to_string(std::get<host::Error>(answer).native()));
            }
        });
        return answers;
    }

    using Expected = std::vector<std::string>;

    test::TestAccount account_;
    test::TdsServer server_{account_.connectionString(), {}};
    std::unique_ptr<refhost::Database> database_ = refhost::odbc::OpenOdbc(server_.ConnectionString());
};

TEST_F(Batch, GivesEveryResultInOrder) {
    EXPECT_EQ(Answers("select 1 as a select 2 as b, 3 as c"), (Expected{"rows: 1", "rows: 2 3"}));
}

TEST_F(Batch, GivesCountsAndMessages) {
    account_.Run("create table t (a int)");
    EXPECT_EQ(Answers("insert into t (a) values (1) print N'完成' select a from t"),
              (Expected{"written: 1", "says: 完成", "rows: 1"}));
}

TEST_F(Batch, GivesAnErrorBehindWhatCameBeforeIt) {
    account_.Run("create table t (a int not null primary key)");
    EXPECT_EQ(Answers("select 1 as a insert into t (a) values (null)"), (Expected{"rows: 1", "error: 515"}));
}

} // namespace
