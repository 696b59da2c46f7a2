// Taking an import back: all of it, or nothing.

#include "import/log/Undo.h"

#include "tests/imports/ImportFixture.h"

namespace test {
namespace {

using importing::RowState;
using importing::UndoOutcome;
using Result = UndoOutcome::Result;

class Undo : public ImportFixture {
protected:
    UndoOutcome Take(std::int64_t number) const {
        cli::ImportAccount account(Path("login.xml"));
        importing::ImportLog log(Path("kovra-imports.db"));
        return importing::UndoImport(log, account, number);
    }
};

TEST_F(Undo, DeletesJustTheRowsThatTheImportWrote) {
    account().Run("insert into Ia_subsidiary (iYear, cVouType, bRdFlag, cWhCode, cInvCode, iAInQuantity) values "
                  "(2024, '34', 1, '01', '1006', 9)");
    const std::vector<std::string> before = Opening();
    const importing::Outcome outcome = Import(threeRows, {.commit = true});
    const UndoOutcome undone = Take(outcome.number);
    EXPECT_EQ(undone.result, Result::undone);
    EXPECT_EQ(undone.rows, 3U);
    EXPECT_EQ(Opening(), before);
    EXPECT_EQ(Take(outcome.number).result, Result::nothingToUndo);
    // And they can come in again.
    EXPECT_EQ(StatesOf(ImportFile("期初.csv", {.commit = true})), std::vector<RowState>(3, RowState::imported));
}

TEST_F(Undo, OfSettingsDeletesThem) {
    const std::vector<std::string> before = account().Rows("select * from IA_HeadSet");
    const importing::Outcome outcome = Import("仓库编码,存货编码,存货科目编码\n05,1006,140303\n05,1007,140303\n",
                                              {.commit = true}, "a.csv", "ClsInvSubject");
    EXPECT_EQ(StatesOf(outcome), std::vector<RowState>(2, RowState::imported));
    EXPECT_EQ(Take(outcome.number).rows, 2U);
    EXPECT_EQ(account().Rows("select * from IA_HeadSet"), before);
}

TEST_F(Undo, DoesNothingWhenARowWasChanged) {
    const importing::Outcome outcome = Import(threeRows, {.commit = true});
    account().Run("update Ia_subsidiary set iAInPrice = 801 where cInvCode = '2001'");
    const UndoOutcome undone = Take(outcome.number);
    EXPECT_EQ(undone.result, Result::changed);
    EXPECT_EQ(undone.lines, std::vector<std::int64_t>{3});
    EXPECT_EQ(Opening().size(), 3U);
}

TEST_F(Undo, DoesNothingWhenARowWasDeleted) {
    const importing::Outcome outcome = Import(threeRows, {.commit = true});
    account().Run("delete from Ia_subsidiary where cInvCode = '1007'");
    const UndoOutcome undone = Take(outcome.number);
    EXPECT_EQ(undone.result, Result::changed);
    EXPECT_EQ(undone.lines, std::vector<std::int64_t>{4});
    EXPECT_EQ(Opening().size(), 2U);
}

TEST_F(Undo, DoesNothingOnceTheOpeningIsPosted) {
    const importing::Outcome outcome = Import(threeRows, {.commit = true});
    account().Run("insert into GL_mend (iyear, iperiod, bflag_IA) values (2024, 0, 1)");
    EXPECT_EQ(Take(outcome.number).result, Result::posted);
    EXPECT_EQ(Opening().size(), 3U);
}

TEST_F(Undo, LeavesDocumentsToTheErp) {
    const importing::Outcome outcome =
        Import("单据号,仓库编码,存货编码,跌价余额\nTD1,01,1001,1.25\n", {.commit = true}, "a.csv", "ClsKovraProof");
    EXPECT_EQ(Take(outcome.number).result, Result::notByClass);
    EXPECT_EQ(account().Rows("select cDecCode from IA_DecReady where cDecCode = 'TD1'").size(), 1U);
}

TEST_F(Undo, KnowsOnlyItsOwnImports) {
    const importing::Outcome test = Import(threeRows, {});
    EXPECT_EQ(Take(test.number).result, Result::nothingToUndo);
    EXPECT_EQ(Take(test.number + 1).result, Result::unknown);
}

TEST_F(Undo, OfAnImportThatWentOnTakesBothPartsBack) {
    int asked = 0;
    Import(threeRows, {.commit = true, .wantsStop = [&] { return ++asked == 2; }});
    const importing::Outcome second = ImportFile("期初.csv", {.commit = true});
    EXPECT_EQ(Take(second.number).rows, 2U);
    EXPECT_EQ(Opening().size(), 1U);
    EXPECT_EQ(Take(second.number - 1).rows, 1U);
    EXPECT_TRUE(Opening().empty());
}

} // namespace
} // namespace test
