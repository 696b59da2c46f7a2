#include "tests/ClsKovra/OpeningFixture.h"

namespace {

using test::Failed;
using test::Inserted;
using test::Outcome;
using testing::ElementsAre;
using testing::StartsWith;

/// A row of item A1 in warehouse 01; its own numbers stand in the middle of its children.
std::string Row(std::string_view children) {
    std::string row = "<row><cWhCode>01</cWhCode><iQuantity>5</iQuantity><cInvCode>A1</cInvCode><iPrice>10</iPrice>";
    return row.append(children).append("<iCost>2</iCost></row>");
}

/// Its statement, with what the further children add.
std::string Statement(std::string_view columns, std::string_view values) {
    std::string sql = "Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, ";
    sql.append(columns).append("IAInQuantity, iInCost, IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ) "
                               "Values(2023,'34', 1,'01', 'A1', ");
    return Inserted(sql.append(values).append("5, 2, 10, Null, Null, 'EAI' )"));
}

class InsertOpeningRowTest : public test::OpeningTest {
protected:
    InsertOpeningRowTest() { account.Run("UPDATE inventory SET bInvBatch = 1, bInvQuality = 1 WHERE cInvCode = 'A1'"); }
    void ExpectStatement(std::string_view children, std::string_view columns, std::string_view values) {
        const Outcome outcome = ImportOne(Row(children));
        EXPECT_EQ(outcome.code, 0) << outcome.description;
        EXPECT_EQ(Lines().back(), Statement(columns, values));
    }
    void ExpectFailure(std::string_view children, std::string_view columns, std::string_view values,
                       host::ErrorNumber number, std::string_view message) {
        const Outcome outcome = ImportOne(Row(children));
        EXPECT_EQ(outcome.key, "仓库编码：01， 存货编码：A1");
        EXPECT_EQ(outcome.code, 101);
        EXPECT_THAT(outcome.description, StartsWith(std::string(message)));
        EXPECT_EQ(Lines().back(), Failed(Statement(columns, values), number));
    }
};

TEST_F(InsertOpeningRowTest, CopiesChildrenInOrderUnderTheirOwnNames) {
    ExpectStatement("<cMemo>期初</cMemo><cDepCode>0201</cDepCode>", "cMemo, cDepCode, ", "'期初', '0201', ");
}

TEST_F(InsertOpeningRowTest, AnEmptyChildIsNull) {
    ExpectStatement("<cFree2/><cMemo></cMemo><dMadeDate/><dVDate/><cBatchCode/>",
                    "cFree2, cMemo, dMadeDateia, dVDateia, cBatchIA, ", "Null, Null, Null, Null, Null, ");
}

TEST_F(InsertOpeningRowTest, SkipsItsOwnColumnsInEveryLetterCase) {
    ExpectStatement("<cVouType>99</cVouType><CVOUTYPE>99</CVOUTYPE><icost>7</icost><IQUANTITY>7</IQUANTITY>"
                    "<iprice>7</iprice>",
                    "", "");
}

TEST_F(InsertOpeningRowTest, MapsChildrenToTheLedgersColumns) {
    ExpectStatement("<cBatchCode>B1</cBatchCode><dMadeDate>2022-05-01</dMadeDate><iMassDate>12</iMassDate>"
                    "<dVDate>2023-05-01</dVDate>",
                    "cBatchIA, dMadeDateia, iMassDateia, dVDateia, ", "'B1', '2022-05-01', '12', '2023-05-01', ");
    EXPECT_THAT(
        account.Rows("SELECT cBatchIA, dMadeDateIA, iMassDateIA, dVDateIA FROM Ia_subsidiary"),
        ElementsAre(R"({"cBatchIA":"B1","dMadeDateIA":"2022-05-01","iMassDateIA":12,"dVDateIA":"2023-05-01"})"));
}

TEST_F(InsertOpeningRowTest, MapsTheOtherNameOfTheBatchNumber) {
    ExpectStatement("<cBatch>B2</cBatch>", "cBatchia, ", "'B2', ");
}

TEST_F(InsertOpeningRowTest, MapsNamesInAnyLetterCaseThoughTheChecksDoNotKnowThem) {
    account.Run("UPDATE inventory SET bInvBatch = 0, bInvQuality = 0 WHERE cInvCode = 'A1'");
    ExpectStatement("<CBATCHCODE>B3</CBATCHCODE><dmadedate>2022/5/1</dmadedate>", "cBatchIA, dMadeDateia, ",
                    "'B3', '2022-05-01', ");
}

TEST_F(InsertOpeningRowTest, ReformatsTheTwoShelfLifeDatesOnly) {
    ExpectStatement("<dMadeDate>2022/5/1</dMadeDate><dVDate>2023年5月1日</dVDate><dVouDate>2022/5/1</dVouDate>",
                    "dMadeDateia, dVDateia, dVouDate, ", "'2022-05-01', '2023-05-01', '2022/5/1', ");
    EXPECT_THAT(account.Rows("SELECT dVouDate FROM Ia_subsidiary"), ElementsAre(R"({"dVouDate":"2022-05-01"})"));
}

TEST_F(InsertOpeningRowTest, ATextThatIsNoDateStaysAsItIs) {
    ExpectFailure("<dMadeDate>soon</dMadeDate>", "dMadeDateia, ", "'soon', ", host::error_number::conversionFailed,
                  "Conversion failed when converting");
}

TEST_F(InsertOpeningRowTest, AnUnknownColumnFailsAsARow) {
    ExpectFailure("<cColour>red</cColour>", "cColour, ", "'red', ", host::error_number::syntaxError,
                  "Invalid column name 'cColour'.");
}

TEST_F(InsertOpeningRowTest, AnApostropheBreaksTheStatement) {
    ExpectFailure("<cMemo>it's</cMemo>", "cMemo, ", "'it's', ", host::error_number::syntaxError, "");
}

TEST_F(InsertOpeningRowTest, ATextThatIsTooLongFailsAsARow) {
    ExpectFailure("<cDepCode>1234567890123</cDepCode>", "cDepCode, ", "'1234567890123', ",
                  host::error_number::dataTruncated, "String or binary data would be truncated.");
}

TEST_F(InsertOpeningRowTest, AChildTwiceIsAColumnTwice) {
    const Outcome outcome = ImportOne(Row("<cMemo>a</cMemo><cMemo>b</cMemo>"));
    EXPECT_EQ(outcome.code, 101);
    EXPECT_THAT(Lines().back(), testing::HasSubstr("cMemo, cMemo, "));
}

TEST_F(InsertOpeningRowTest, AChildsTextIncludesThatOfItsDescendants) {
    ExpectStatement("<cMemo>期<b>初</b></cMemo>", "cMemo, ", "'期初', ");
}

TEST_F(InsertOpeningRowTest, TextBetweenTheChildrenIsAColumnWithoutAName) {
    ExpectFailure("stray", ", ", "'stray', ", host::error_number::syntaxError, "Incorrect syntax near");
}

TEST_F(InsertOpeningRowTest, RowsBeforeAFailedOneStay) {
    Import(Row("<cMemo>1</cMemo>") + Row("<cMemo>it's</cMemo>") + Row("<cMemo>3</cMemo>"));
    ASSERT_EQ(outcomes.size(), 3U);
    EXPECT_EQ(outcomes[0].code, 0);
    EXPECT_EQ(outcomes[1].code, 101);
    EXPECT_EQ(outcomes[2].code, 0);
    EXPECT_THAT(account.Rows("SELECT cMemo FROM Ia_subsidiary ORDER BY AutoID"),
                ElementsAre(R"({"cMemo":"1"})", R"({"cMemo":"3"})"));
}

} // namespace
