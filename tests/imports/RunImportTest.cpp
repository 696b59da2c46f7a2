// An import from file to ledger: the test run, the import in earnest, and the same file again.

#include "import/outcome/Totals.h"
#include "tests/imports/ImportFixture.h"

namespace test {
namespace {

using importing::Message;
using importing::Outcome;
using importing::RowState;
using Messages = std::vector<Message>;
using States = std::vector<RowState>;
namespace message = importing::message;

class RunImport : public ImportFixture {};

TEST_F(RunImport, InEarnestWritesTheRowsAndTellsTheirSums) {
    const Outcome outcome = Import(threeRows, {.commit = true});
    EXPECT_EQ(StatesOf(outcome), States(3, RowState::imported));
    EXPECT_EQ(Opening(), (std::vector<std::string>{
                             R"({"cWhCode":"01","cInvCode":"1001","iAInQuantity":2,"iAInPrice":10000})",
                             R"({"cWhCode":"02","cInvCode":"2001","iAInQuantity":1,"iAInPrice":800.5})",
                             R"({"cWhCode":"06","cInvCode":"1007","iAInQuantity":100,"iAInPrice":50})",
                         }));
    EXPECT_EQ(account().Rows("select cMemo from Ia_subsidiary where cInvCode = '1007'"),
              (std::vector<std::string>{R"({"cMemo":"6' 管件"})"}));
    const importing::Totals totals = importing::TotalsOf(outcome);
    EXPECT_EQ(totals.taken.rows, 3U);
    EXPECT_EQ(totals.taken.quantity, 103);
    EXPECT_EQ(totals.taken.amount, 10850.5);
    EXPECT_EQ(outcome.login.operatorName, "王会计");
    EXPECT_EQ(outcome.rows[0].key, "仓库编码：01， 存货编码：1001");
    EXPECT_EQ(outcome.warehouseNames.at("01"), "原材料库");
}

TEST_F(RunImport, ATestRunTakesTheSameRowsAndChangesNothing) {
    const std::vector<std::string> before = Everything();
    const Outcome outcome = Import(threeRows, {});
    EXPECT_EQ(StatesOf(outcome), States(3, RowState::ready));
    EXPECT_EQ(Everything(), before);
}

TEST_F(RunImport, ATestRunOnAServerChangesNothing) {
    WriteServerLogin();
    const std::vector<std::string> before = Everything();
    const Outcome outcome = Import(threeRows, {.login = "server.xml"});
    EXPECT_EQ(StatesOf(outcome), States(3, RowState::ready));
    EXPECT_EQ(Everything(), before);
}

/// Each class's rows in a test run, on both kinds of account.
struct ClassFile {
    const char* className;
    const char* csv;
    std::size_t rows;
};

constexpr ClassFile classFiles[] = {
    {"ClsInvSubject", "仓库编码,存货编码,存货科目编码\n01,1001,140301\n,1007,140303\n", 2},
    {"ClsOppSubject", "收发类别编码,存货编码,对方科目编码\n201,1001,500101\n202,,6401\n", 2},
    {"ClsOppSubjectST", "收发类别编码,部门编码,直接材料对方科目\n102,0201,500101\n", 1},
    {"ClsKovraProof", "单据号,仓库编码,存货编码,跌价余额\nTD1,01,1001,1.25\nTD1,01,1007,2\nTD2,01,1001,3\n", 3},
    {"ClsPriceJustVou", "单据号,制单日期,存货编码,调整后单价\nTJ1,2024-01-15,1004,26\nTJ2,2024-01-16,4001,70\n", 2},
};

class EachClass : public ImportFixture, public ::testing::WithParamInterface<ClassFile> {};
INSTANTIATE_TEST_SUITE_P(Classes, EachClass, ::testing::ValuesIn(classFiles),
                         [](const auto& parameter) { return parameter.param.className; });

TEST_P(EachClass, IsTestedOnACopyOfAnEmbeddedAccount) {
    const std::vector<std::string> before = Everything();
    const Outcome outcome = Import(GetParam().csv, {}, "a.csv", GetParam().className);
    EXPECT_EQ(StatesOf(outcome), std::vector<RowState>(GetParam().rows, RowState::ready));
    EXPECT_EQ(Everything(), before);
}

TEST_P(EachClass, IsTestedInsideATransactionOnAServer) {
    WriteServerLogin();
    const std::vector<std::string> before = Everything();
    const Outcome outcome = Import(GetParam().csv, {.login = "server.xml"}, "a.csv", GetParam().className);
    EXPECT_EQ(StatesOf(outcome), std::vector<RowState>(GetParam().rows, RowState::ready));
    EXPECT_EQ(Everything(), before);
}

TEST_P(EachClass, ImportsItsRowsOnceHoweverOftenItIsAsked) {
    const auto written = [this] {
        std::vector<std::string> counts;
        for (const char* const table : {"IA_HeadSet", "IA_OppHead", "IA_DecReady", "IA_DecReadys", "CostJustVouch"}) {
            counts.push_back(account().Rows("select count(*) as n from " + std::string(table)).front());
        }
        return counts;
    };
    const std::vector<std::string> before = written();
    const Outcome first = Import(GetParam().csv, {.commit = true}, "a.csv", GetParam().className);
    EXPECT_EQ(StatesOf(first), std::vector<RowState>(GetParam().rows, RowState::imported));
    const std::vector<std::string> after = written();
    EXPECT_NE(after, before);
    const Outcome again = ImportFile("a.csv", {.commit = true}, GetParam().className);
    EXPECT_EQ(StatesOf(again), std::vector<RowState>(GetParam().rows, RowState::alreadyIn));
    EXPECT_EQ(written(), after);
    EXPECT_EQ(Remarks(again), Messages{message::rowsAlreadyIn});
    EXPECT_EQ(again.number, first.number);
}

TEST_F(RunImport, DocumentsAreNotWrittenIntoAServersAccount) {
    WriteServerLogin();
    for (const ClassFile& file : classFiles) {
        if (importing::FieldsOf(file.className)->document.empty()) {
            continue;
        }
        const std::vector<std::string> before = Everything();
        const Outcome outcome = Import(file.csv, {.commit = true, .login = "server.xml"}, "a.csv", file.className);
        ASSERT_EQ(outcome.faults.size(), 1U);
        EXPECT_EQ(outcome.faults[0].message, message::serverDocuments);
        EXPECT_EQ(Everything(), before);
    }
}

TEST_F(RunImport, OpeningBalancesAreWrittenIntoAServersAccount) {
    WriteServerLogin();
    EXPECT_EQ(StatesOf(Import(threeRows, {.commit = true, .login = "server.xml"})), States(3, RowState::imported));
    EXPECT_EQ(Opening().size(), 3U);
}

TEST_F(RunImport, RefusesWhatTheLedgerHasAlready) {
    Import(threeRows, {.commit = true});
    // Another file with one row that is in, one of the same stock with other figures, and a new one.
    const Outcome outcome = Import(openingHead + "01,1001,2,5000,10000,2023-12-31,,,,,,,\n"
                                                 "02,2001,7,1,7,,,,,,,,\n02,3001,1,9,9,,,,,,,,\n",
                                   {.commit = true}, "b.csv");
    EXPECT_EQ(StatesOf(outcome), (States{RowState::alreadyIn, RowState::refusedByChecks, RowState::imported}));
    EXPECT_EQ(Refusals(outcome.rows[1]), Messages{message::openingExists});
    EXPECT_EQ(Opening().size(), 4U);
}

TEST_F(RunImport, TakesRepeatedRowsWhereTheyAreWanted) {
    const std::string twice = openingHead + "01,1001,1,1,1,,,,,,,,\n01,1001,1,1,1,,,,,,,,\n";
    EXPECT_EQ(StatesOf(Import(twice, {.commit = true, .allowDuplicates = true})), States(2, RowState::imported));
    EXPECT_EQ(StatesOf(ImportFile("期初.csv", {.commit = true, .allowDuplicates = true})),
              States(2, RowState::alreadyIn));
    EXPECT_EQ(StatesOf(Import(twice + "\n", {.commit = true, .allowDuplicates = true}, "b.csv")),
              States(2, RowState::imported));
    EXPECT_EQ(Opening().size(), 4U);
}

TEST_F(RunImport, ARowThatWasDeletedInTheLedgerIsImportedAgain) {
    Import(threeRows, {.commit = true});
    account().Run("delete from Ia_subsidiary where cInvCode = '2001'");
    EXPECT_EQ(StatesOf(ImportFile("期初.csv", {.commit = true})),
              (States{RowState::alreadyIn, RowState::imported, RowState::alreadyIn}));
    EXPECT_EQ(Opening().size(), 3U);
}

TEST_F(RunImport, CorrectedRowsOfAFileComeInAndTheOthersStay) {
    const Outcome first = Import(openingHead + "01,1001,1,1,1,,,,,,,,\n01,1007,x,1,1,,,,,,,,\n", {.commit = true});
    EXPECT_EQ(StatesOf(first), (States{RowState::imported, RowState::refusedByChecks}));
    const Outcome second = Import(openingHead + "01,1001,1,1,1,,,,,,,,\n01,1007,1,1,1,,,,,,,,\n", {.commit = true});
    EXPECT_EQ(StatesOf(second), (States{RowState::alreadyIn, RowState::imported}));
    EXPECT_EQ(Opening().size(), 2U);
}

TEST_F(RunImport, TellsWhenFileOrAccountChangedSinceTheTestRun) {
    Import(threeRows, {.time = "2024-01-15 10:00:00"});
    EXPECT_EQ(Remarks(Import(threeRows, {})), Messages{});
    account().Run("update Warehouse set cWhName = N'钢材库' where cWhCode = '01'");
    const Outcome outcome = Import(threeRows + "01,1006,1,1,1,,,,,,,,\n", {.commit = true});
    EXPECT_EQ(Remarks(outcome), (Messages{message::fileChanged, message::accountChanged}));
    EXPECT_EQ(outcome.remarks[0].arguments, std::vector<std::string>{"2024-01-15 10:00:00"});
}

TEST_F(RunImport, TellsWhenTheLedgerChangedSinceTheTestRun) {
    Import(threeRows, {});
    account().Run("insert into Ia_subsidiary (iYear, cVouType, bRdFlag, cWhCode, cInvCode, iAInQuantity) values "
                  "(2024, '34', 1, '01', '1006', 9)");
    EXPECT_EQ(Remarks(Import(threeRows, {.commit = true})), Messages{message::accountChanged});
}

TEST_F(RunImport, SaysNothingOfChangesWhereThereAreNone) {
    Import(threeRows, {});
    EXPECT_EQ(Remarks(Import(threeRows, {.commit = true})), Messages{});
}

TEST_F(RunImport, StrictTakesOnlyWhatIsPlain) {
    const std::string csv =
        openingHead + "01,1001,\"1,000\",1,1000,,,,,,,,\n01,1007,1,2,3,,,,,,,,\n02,1007,1,2,2,,,,,,,,\n";
    const Outcome outcome = Import(csv, {.strict = true});
    EXPECT_EQ(StatesOf(outcome), (States{RowState::refusedByChecks, RowState::refusedByChecks, RowState::ready}));
    EXPECT_EQ(Refusals(outcome.rows[0]), Messages{message::strictCorrection});
    EXPECT_EQ(Refusals(outcome.rows[1]), Messages{message::amountDiffers});
    EXPECT_EQ(StatesOf(Import(csv, {})), States(3, RowState::ready));
}

TEST_F(RunImport, ALedgerThatIsNotOpenRefusesEverything) {
    account().Run("insert into GL_mend (iyear, iperiod, bflag_IA) values (2024, 0, 1)");
    for (const bool commit : {false, true}) {
        const Outcome outcome = Import(threeRows, {.commit = commit});
        ASSERT_TRUE(outcome.refused);
        EXPECT_EQ(outcome.refused->code, "101");
        EXPECT_EQ(outcome.refused->message, "存货核算系统已经期初记账。");
        EXPECT_EQ(StatesOf(outcome), States(3, RowState::notReached));
    }
    EXPECT_TRUE(Opening().empty());
}

TEST_F(RunImport, FaultsOfTheTableLetNothingIn) {
    const Outcome outcome = Import(threeRows + "合计,,999,,1\n", {.commit = true});
    EXPECT_FALSE(outcome.faults.empty());
    EXPECT_TRUE(Opening().empty());
}

TEST_F(RunImport, StopsBeforeTheNextRowAndGoesOnLater) {
    int asked = 0;
    const Outcome stopped = Import(threeRows, {.commit = true, .wantsStop = [&] { return ++asked == 3; }});
    EXPECT_TRUE(stopped.interrupted);
    EXPECT_EQ(StatesOf(stopped), (States{RowState::imported, RowState::imported, RowState::notReached}));
    const Outcome again = ImportFile("期初.csv", {.commit = true});
    EXPECT_EQ(StatesOf(again), (States{RowState::alreadyIn, RowState::alreadyIn, RowState::imported}));
    EXPECT_EQ(Opening().size(), 3U);
}

TEST_F(RunImport, ARowThatEndsTheServersTransactionDoesNotEndTheTestRun) {
    // The column takes whole numbers: an error of conversion, with which a server ends the transaction.
    WriteServerLogin();
    const std::vector<std::string> before = Everything();
    const Outcome outcome =
        Import(openingHead + "01,1001,1,1,1,,,,,,,,\n01,1007,1,1,1,,,,,1.5,,,\n02,1007,1,1,1,,,,,,,,\n",
               {.login = "server.xml"});
    EXPECT_EQ(StatesOf(outcome), (States{RowState::ready, RowState::refusedByClass, RowState::ready}));
    EXPECT_EQ(Everything(), before);
}

TEST_F(RunImport, NotesTheLedgerAccountOfEachBalance) {
    account().Run(
        "delete from IA_HeadSet\nGO\ninsert into IA_HeadSet (cWhCode, cInvCCode, cInvCode, cInvHead, iYear) values "
        "('01', null, null, '1401', 2024), (null, '01', null, '140301', 2024), (null, null, '1007', '140303', 2024), "
        "('06', null, '1007', '1411', 2024), (null, null, '2001', '140501', 2023)");
    const Outcome outcome = Import(openingHead + "01,1001,1,1,1,,,,,,,,\n01,1007,1,1,1,,,,,,,,\n06,1007,1,1,1,,,,,,,,\n"
                                                 "02,2001,1,1,1,,,,,,,,\n01,2001,1,1,1,,,,,,,,\n",
                                   {});
    std::vector<std::string> accounts;
    for (const importing::RowOutcome& row : outcome.rows) {
        accounts.push_back(row.account);
    }
    // By the class above, the item, the item in the warehouse, nothing in this year, the warehouse.
    EXPECT_EQ(accounts, (std::vector<std::string>{"140301", "140303", "1411", "", "1401"}));
    EXPECT_EQ(outcome.accountNames.at("140303"), "外购件");
}

TEST_F(RunImport, OnlyOneImportIsAtWorkWithALog) {
    const importing::ImportLog held(Path("kovra-imports.db"));
    EXPECT_THROW(importing::ImportLog(Path("kovra-imports.db")), importing::LogBusy);
}

} // namespace
} // namespace test
