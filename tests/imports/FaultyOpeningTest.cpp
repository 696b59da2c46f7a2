// 5,000 opening balances with every kind of fault, through the program as a user runs it: the ledger has no wrong
// figure, and once the file of refused rows is corrected, everything is in, once.

#include "examples/opening-5000/FaultyOpening.h"

#include "tests/support/Paths.h"
#include "tests/support/Program.h"
#include "tests/support/TestAccount.h"

#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class FaultyOpening : public testing::Test {
protected:
    FaultyOpening() {
        fs::copy(test::SourceFolder() / "examples/login.xml", folder_.path() / "login.xml");
        opening::WriteWorkbook((folder_.path() / "期初-5000.xlsx").string(), rows_);
        test::WriteBytes(folder_.path() / "account.sql", opening::AccountSql());
        EXPECT_EQ(Kovra({"account", "create"}).status, 0);
        EXPECT_EQ(Kovra({"sql", "account.sql"}).status, 0);
    }

    test::Ended Kovra(std::vector<std::string> arguments) const {
        for (const char* const more : {"--login", "login.xml", "--lang", "zh"}) {
            arguments.emplace_back(more);
        }
        return test::Program(folder_.path(), arguments).Wait();
    }

    /// The opening balances in the ledger, a line each.
    std::multiset<std::string> Ledger() const {
        const test::Ended run = Kovra({"sql", "--format", "csv", "-e",
                                       "select cWhCode, cInvCode, iAInQuantity, iAInPrice, dVouDate, cMemo "
                                       "from Ia_subsidiary where cVouType = '34'"});
        std::multiset<std::string> lines;
        std::istringstream text(run.output);
        std::string line;
        std::getline(text, line);
        while (std::getline(text, line)) {
            lines.insert(line.substr(0, line.find('\r')));
        }
        return lines;
    }

    /// What the ledger should hold of the rows with a fault, or without.
    std::multiset<std::string> Meant(bool faulty) const {
        std::multiset<std::string> lines;
        for (const opening::Row& row : rows_) {
            if (row.fault.has_value() == faulty) {
                using enum opening::Column;
                const auto& meant = row.meant;
                lines.insert(meant[warehouse] + "," + meant[item] + "," + meant[quantity] + "," + meant[amount] + "," +
                             meant[date] + "," + meant[memo]);
            }
        }
        return lines;
    }

    const std::vector<opening::Row> rows_ = opening::Rows();
    test::TemporaryFolder folder_;
};

TEST_F(FaultyOpening, IsInOnceWithoutAWrongFigureOnceItsRefusedRowsAreCorrected) {
    EXPECT_EQ(Kovra({"import", "期初-5000.xlsx"}).status, 1);
    EXPECT_TRUE(Ledger().empty());
    const fs::path refused = folder_.path() / "期初-5000.拒绝.xlsx";
    const std::string ofTheTestRun = test::ReadBytes(refused);
    EXPECT_FALSE(ofTheTestRun.empty());

    const test::Ended run = Kovra({"import", "期初-5000.xlsx", "--commit"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.error.find("拒绝 246 行") != std::string::npos) << run.error;
    std::multiset<std::string> meant = Meant(false);
    EXPECT_EQ(meant.size(), 4754U);
    EXPECT_EQ(Ledger(), meant);
    // The test run found the same, so there is one file of refused rows.
    EXPECT_EQ(test::ReadBytes(refused), ofTheTestRun);
    EXPECT_FALSE(fs::exists(folder_.path() / "期初-5000.拒绝-2.xlsx"));

    opening::CorrectRefused(refused.string(), rows_, (folder_.path() / "更正.xlsx").string());
    const test::Ended rest = Kovra({"import", "更正.xlsx", "--commit"});
    EXPECT_EQ(rest.status, 0) << rest.error;
    meant.merge(Meant(true));
    EXPECT_EQ(Ledger(), meant);

    EXPECT_EQ(Kovra({"import", "更正.xlsx", "--commit"}).status, 0);
    EXPECT_EQ(Kovra({"import", "期初-5000.xlsx", "--commit"}).status, 1);
    EXPECT_EQ(Ledger(), meant);
}

} // namespace
