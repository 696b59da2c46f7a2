// Imports killed at many points, and the same command again: every row is in the ledger once.

#include "tests/imports/ImportFixture.h"
#include "tests/support/Sanitized.h"

#include <cstdlib>

#include <sqlite3.h>
#include <unistd.h>

namespace test {
namespace {

using importing::RowState;

/// Operations of SQLite in this process, of the account and of the import log alike.
int operations = 0;
/// The one at which the process ends; 0 for none.
int last = 0;

int EndAtTheLast(unsigned /*kind*/, void* /*context*/, void* /*statement*/, void* /*text*/) {
    if (++operations == last) {
        _exit(99);
    }
    return 0;
}

/// Watches every database that is opened from now on: the beginning and the end of each statement.
int Watch(sqlite3* database, char** /*error*/, const void* /*api*/) {
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT | SQLITE_TRACE_PROFILE, EndAtTheLast, nullptr);
}

class KilledImport : public ImportFixture {
protected:
    /// Runs the import in a process of its own that ends at operation `at`; says whether it ended there.
    bool EndsAt(int at, const char* file, const char* className) const {
        const Ended ended = Process([&] {
                                sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
                                last = at;
                                ImportFile(file, {.commit = true}, className);
                                return 0;
                            }).Wait();
        EXPECT_TRUE(ended.status == 99 || ended.status == 0) << at;
        return ended.status == 99;
    }

    /// The operations of a whole import.
    int Operations(const char* file, const char* className) const {
        const std::string counted = Path("operations");
        Process([&] {
            sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
            ImportFile(file, {.commit = true}, className);
            WriteBytes(counted, std::to_string(operations));
            return 0;
        }).Wait();
        return std::atoi(ReadBytes(counted).c_str());
    }

    /// Kills at as many points as told, spread over the whole import, each followed by the import as a whole; the
    /// records are then those of one import.
    void KillAtMany(int kills, const char* className, const std::string& csv, const char* query) {

        WriteBytes(Path("a.csv"), csv);
        const TestAccount original(account());
        Restore(original);
        const int all = Operations("a.csv", className);
        ASSERT_GT(all, 100);
        const std::vector<std::string> expected = account().Rows(query);
        ASSERT_GE(expected.size(), 3U);
        int killed = 0;
        for (int kill = 0; kill < kills; ++kill) {
            Restore(original);
            // A little beyond the end, so that the end itself is among them.
            const int at = 1 + static_cast<int>(static_cast<long long>(all) * kill / kills);
            killed += EndsAt(at, "a.csv", className) ? 1 : 0;
            const importing::Outcome outcome = ImportFile("a.csv", {.commit = true}, className);
            for (const importing::RowOutcome& row : outcome.rows) {
                EXPECT_TRUE(row.state == RowState::imported || row.state == RowState::alreadyIn)
                    << "at operation " << at << " line " << row.row.line;
            }
            EXPECT_EQ(account().Rows(query), expected) << "at operation " << at;
            if (HasFailure()) {
                return;
            }
        }
        EXPECT_EQ(killed, kills);
    }

private:
    /// Puts the account back to what it was, and forgets the imports.
    void Restore(const TestAccount& original) const {
        namespace fs = std::filesystem;
        for (const char* const name : {"account.db", "QxSystem.db"}) {
            for (const char* const part : {"", "-wal", "-shm"}) {
                fs::remove(Path(std::string(name) + part));
                if (fs::exists(original.folder() / (std::string(name) + part))) {
                    fs::copy_file(original.folder() / (std::string(name) + part), Path(std::string(name) + part));
                }
            }
        }
        for (const char* const part : {"", "-wal", "-shm"}) {
            fs::remove(Path(std::string("kovra-imports.db") + part));
        }
    }
};

/// Kills in all; the variable KOVRA_KILLS sets another number.
int Kills(int share) {
    const char* const text = std::getenv("KOVRA_KILLS");
    const int usual = test::sanitized ? 20 : 200;
    return std::max(1, (text == nullptr ? usual : std::atoi(text)) * share / 100);
}

TEST_F(KilledImport, OfOpeningBalancesGoesOn) {
    // Two rows are alike but for their memo, two in everything but the batch.
    KillAtMany(Kills(50), "ClsKovra",
               openingHead + "01,1001,2,5000,10000,2023-12-31,,,,,,,\n02,2001,1,800.5,800.5,,,,,,,,\n"
                             "06,1007,100,0.5,50,,,,,,,,6' 管件\n01,1003,1,2,2,,B1,,,,,,\n01,1003,1,2,2,,B2,,,,,,\n"
                             "03,1004,3,1,80,,,,,,,,\n",
               "select cWhCode, cInvCode, iAInQuantity, iAInPrice, iDebitDifCost, cBatchIA, cMemo from Ia_subsidiary "
               "where cVouType = '34' order by cWhCode, cInvCode, cBatchIA");
}

TEST_F(KilledImport, OfSettingsGoesOn) {
    account().Run("delete from IA_HeadSet");
    KillAtMany(Kills(20), "ClsInvSubject",
               "仓库编码,存货编码,存货科目编码\n01,1001,140301\n02,2001,140501\n,1007,140303\n,1004,140303\n",
               "select cWhCode, cInvCode, cInvHead from IA_HeadSet order by cInvCode, cWhCode");
}

TEST_F(KilledImport, OfProvisionsGoesOn) {
    KillAtMany(Kills(15), "ClsKovraProof",
               "单据号,仓库编码,存货编码,跌价余额\nTD1,01,1001,1.25\nTD1,01,1007,2\nTD2,01,1001,3\n",
               "select H.cDecCode, B.cInvCode, B.iThisPrice from IA_DecReadys B inner join IA_DecReady H on H.ID = "
               "B.ID order by H.cDecCode, B.cInvCode");
}

TEST_F(KilledImport, OfPriceVouchersGoesOn) {
    KillAtMany(Kills(15), "ClsPriceJustVou",
               "单据号,制单日期,存货编码,调整后单价,备注\nTJ1,2024-01-15,1004,26,a\nTJ1,2024-01-15,4001,70,a\n"
               "TJ2,2024-01-16,4002,130,b\n",
               "select H.cMemo, B.cWhCode, B.cInvCode, B.iCJVACost from CostJustVouchs B inner join CostJustVouch H on "
               "H.ID = B.ID order by H.cMemo, B.cInvCode, B.cWhCode");
}

} // namespace
} // namespace test
