// Files of earlier formats: tests/refhost/sql/files/formatN holds an account database as the program of that time left
// it, and beside it the statements that made it.

#include "refhost/sql/engine/Storage.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <array>
#include <filesystem>

namespace test_sql {
namespace {

using refhost::sql::Base;
using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;
using refhost::sql::Schema;
using refhost::sql::Type;

class Format : public testing::Test {
protected:
    Format() { Take("format0"); }

    /// Puts the files of a format in place.
    void Take(const char* format) const {
        for (const char* name : {"account.db", "QxSystem.db"}) {
            std::filesystem::copy_file(test::SourceFolder() / "tests/refhost/sql/files" / format / name,
                                       folder_.path() / name, std::filesystem::copy_options::overwrite_existing);
        }
    }

    std::string File(const char* name) const { return (folder_.path() / name).string(); }
    std::string Connection() const { return "Provider=KovraAccount;Data Source=" + File("account.db"); }
    /// Runs SQLite's own SQL on the account's file, with the order of texts that format 0 had.
    void RunRaw(const char* sql) const {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(File("account.db").c_str(), &db), SQLITE_OK);
        const refhost::sql::DatabaseHandle handle(db);
        for (const char* name : {"KOVRA_TEXT", "KOVRA_EXACT"}) {
            sqlite3_create_collation_v2(
                db, name, SQLITE_UTF8, nullptr,
                [](void*, int leftSize, const void* left, int rightSize, const void* right) {
                    return std::string_view(static_cast<const char*>(left), static_cast<std::size_t>(leftSize))
                        .compare({static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
                },
                nullptr);
        }
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, &message), SQLITE_OK) << sql << ": " << message;
        sqlite3_free(message);
    }
    /// Opens the files, which then have this program's format.
    auto OpenUpToDate() const {
        auto db = OpenEmbedded(Connection(), Mode::open);
        EXPECT_EQ(refhost::sql::FileFormat(db->Handle(), Schema::account), 2);
        EXPECT_EQ(refhost::sql::FileFormat(db->Handle(), Schema::system), 2);
        return db;
    }
    std::string OpenError() const {
        return test::ErrorOf([&] { OpenEmbedded(Connection(), Mode::open); }).description();
    }

    test::TemporaryFolder folder_;
};

TEST_F(Format, NewFilesAreStamped) {
    const auto db = OpenEmbedded("Provider=KovraAccount;Data Source=" + File("new.db"), Mode::create);
    EXPECT_EQ(refhost::sql::FileFormat(db->Handle(), Schema::account), refhost::sql::formatVersion);
    EXPECT_EQ(refhost::sql::FileFormat(db->Handle(), Schema::system), refhost::sql::formatVersion);
}

TEST_F(Format, FilesOfFormat0AreBroughtUpToDate) {
    for (int opened = 0; opened < 2; ++opened) {
        const auto db = OpenUpToDate();
        // Each condition finds its row by an index of texts.
        RunCases(*db,
                 std::array{
                     Case{"select cInvName from Inventory where cInvCode = N'１００１'", "'中性笔'"},
                     Case{"select cInvCode from Inventory where cInvName = N'(另计)'", "'乙'"},
                     Case{"select cInvCode from Inventory order by cInvCode", "'1001' | 'a-1' | 'A2' | '甲' | '乙'"},
                     Case{"select cInvName from Inventory where cInvName > N'' order by cInvName",
                          "'（另计）' | '阿司匹林' | '包装箱' | '中性笔'"},
                     Case{"select AutoID, cInvName, iMoney, cDay, cText from LedgerValue order by AutoID",
                          "1 '中性笔' 3.75000000m '2024-01-31' 'first!' | 2 '包装箱' 9.00000000m '2024-02-29' "
                          "'摘要!'"},
                     Case{"select AutoID from LargeLedger", "2"},
                     Case{"select iId from QxSystem..UA_Period where cAcc_Id = N'００１'", "1"},
                     Case{"insert into Inventory (cInvCode) values (N'１００１')",
                          "-2147217873: Violation of PRIMARY KEY constraint 'PK_Inventory'. Cannot insert "
                          "duplicate key in object 'dbo.Inventory'. The duplicate key value is (１００１)."},
                 });
    }
    const auto db = OpenEmbedded(Connection(), Mode::open);
    RunCases(*db, std::array{
                      Case{"insert into Ledger (cInvCode, iQuantity, cMemo) values (N'甲', 0, 'x')",
                           "-2147217873: The INSERT statement conflicted with the CHECK constraint \"CK_Ledger\". The "
                           "conflict occurred in database \"account\", table \"dbo.Ledger\"."},
                      Case{"set identity_insert Ledger on", ""},
                      Case{"insert into Ledger (AutoID, cInvCode, iQuantity) values (2147483647, N'甲', 1)", ""},
                      Case{"set identity_insert Ledger off", ""},
                      Case{"insert into Ledger (cInvCode, iQuantity) values (N'乙', 1)",
                           "-2147217833: Arithmetic overflow error converting IDENTITY to data type int."},
                  });
    refhost::sql::Command check(db->Handle(), "PRAGMA integrity_check");
    EXPECT_TRUE(check.Step());
    EXPECT_EQ(check.Text(0), "ok");
}

TEST_F(Format, FilesOfFormat1AreBroughtUpToDate) {
    Take("format1");
    for (int opened = 0; opened < 2; ++opened) {
        const auto db = OpenUpToDate();
        // Each condition finds its row by an index of texts.
        RunCases(*db,
                 std::array{
                     Case{"select iCredit from Customer where cCusCode = N'WEISS'", "10.0000m"},
                     Case{"select cCusCode from Customer where cCusName = N'strasse 1'", "'Weiß'"},
                     Case{"select cCusCode from Customer where cCusName = N'aegir'", "'Zoe'"},
                     Case{"select cCusCode from Customer order by cCusCode", "'Weiß' | 'Wels' | 'Zoe' | '甲'"},
                     Case{"select AutoID, cCusName, iTwice from EntryName order by AutoID",
                          "5 'Straße 1' 3.00m | 6 Null 4.00m"},
                     Case{"insert into Customer (cCusCode) values (N'weiss')",
                          "-2147217873: Violation of PRIMARY KEY constraint 'PK_Customer'. Cannot insert duplicate "
                          "key in object 'dbo.Customer'. The duplicate key value is (weiss)."},
                     Case{"select iId from QxSystem..UA_Period", "1"},
                 });
    }
    const auto db = OpenEmbedded(Connection(), Mode::open);
    RunCases(*db,
             std::array{
                 Case{"alter table Entry add iHalf as iMoney / 2", ""},
                 Case{"alter table Entry add constraint FK_Entry foreign key (cCusCode) references Customer", ""},
                 Case{"insert into Entry (cCusCode, iMoney) output inserted.AutoID, inserted.iHalf values (N'WEISS', "
                      "3)",
                      "7 1.500000m"},
                 Case{"insert into Entry (cCusCode, iMoney) values (N'x', 3)",
                      "-2147217873: The INSERT statement conflicted with the FOREIGN KEY constraint \"FK_Entry\". "
                      "The conflict occurred in database \"account\", table \"dbo.Customer\", column "
                      "'cCusCode'."},
                 Case{"insert into Entry (cCusCode, iMoney) values (N'x', 0)",
                      "-2147217873: The INSERT statement conflicted with the CHECK constraint \"CK_Entry\". The "
                      "conflict occurred in database \"account\", table \"dbo.Entry\", column 'iMoney'."},
             });
    refhost::sql::Command check(db->Handle(), "PRAGMA integrity_check");
    EXPECT_TRUE(check.Step());
    EXPECT_EQ(check.Text(0), "ok");
}

TEST_F(Format, ANewerFileIsRefusedAndKept) {
    RunRaw("PRAGMA user_version = 99");
    EXPECT_EQ(OpenError(), "The account database \"" + File("account.db") +
                               "\" has format 99, and this program knows formats up to 2. Use a newer program.");
}

TEST_F(Format, KeysThatBecameOneAreToldAndNothingIsChanged) {
    RunRaw("INSERT INTO Inventory (cInvCode) VALUES ('１００１')");
    const std::string refusal =
        "The account database \"" + File("account.db") +
        "\" cannot be brought up to date: two rows of table 'Inventory' have the same key 'PK_Inventory' now that "
        "full-width and half-width forms are alike. Change one of them with the program that wrote the file.";
    EXPECT_EQ(OpenError(), refusal);
    EXPECT_EQ(OpenError(), refusal);
    RunRaw("DELETE FROM Inventory WHERE cInvCode = '１００１'");
    EXPECT_EQ(OpenError(), "");
}

TEST_F(Format, LettersThatBecameTwoAreToldLikewise) {
    Take("format1");
    RunRaw("INSERT INTO Customer (cCusCode) VALUES ('weiss')");
    EXPECT_EQ(
        OpenError(),
        "The account database \"" + File("account.db") +
            "\" cannot be brought up to date: two rows of table 'Customer' have the same key 'PK_Customer' now that "
            "one letter and the two it stands for are alike. Change one of them with the program that wrote the "
            "file.");
}

TEST_F(Format, AViewThatCannotBeTranslatedStaysAsItWas) {
    RunRaw("DROP TABLE Inventory; DELETE FROM \"sys:objects\" WHERE name = 'Inventory'");
    const auto db = OpenEmbedded(Connection(), Mode::open);
    RunCases(*db, std::array{
                      Case{"select iMoney from LedgerValue", "-2147217865: Invalid object name 'Inventory'."},
                      Case{"create table Inventory (cInvCode nvarchar(60), cInvName nvarchar(9), iInvRCost money)", ""},
                      Case{"insert into Inventory values (N'A2', N'箱', 1)", ""},
                      Case{"select cInvName, iMoney from LedgerValue", "'箱' 3.00000000m"},
                  });
}

// The codes stand in files: a type may get a new one, never another's.
TEST(TypeCodes, StayWhatTheyAre) {
    const std::array codes = {
        Base::null,     Base::binary,           Base::varbinary, Base::character, Base::varchar, Base::nchar,
        Base::nvarchar, Base::uniqueidentifier, Base::timestamp, Base::image,     Base::text,    Base::ntext,
        Base::bit,      Base::tinyint,          Base::smallint,  Base::integer,   Base::bigint,  Base::smallmoney,
        Base::money,    Base::decimal,          Base::real,      Base::floating,  Base::date,    Base::smalldatetime,
        Base::datetime, Base::datetime2};
    for (std::size_t code = 0; code < codes.size(); ++code) {
        const Type type{codes[code], 0, 0, 0};
        EXPECT_EQ(refhost::sql::Pack(type) & 0xff, static_cast<std::int64_t>(code));
        EXPECT_EQ(refhost::sql::Unpack(refhost::sql::Pack(type)).base, codes[code]);
    }
}

} // namespace
} // namespace test_sql
