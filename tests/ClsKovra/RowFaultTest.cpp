#include "tests/ClsKovra/OpeningFixture.h"
#include "tests/support/NameOfCase.h"

// A statement fails at each step of a row in turn: the row gets the outcome of the procedure that asked, and the rows
// around it are imported.

namespace {

using test::Outcome;
using testing::ElementsAre;

struct Fault {
    std::string_view name;
    /// Part of the failing statement, and how many such statements before it pass.
    std::string_view piece;
    int skip;
    /// What the row's outcome says.
    std::string_view description;
};

/// The rows before and behind, which do not touch item A1.
constexpr std::string_view neighbour = "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iQuantity>1</iQuantity>"
                                       "<iCost>1</iCost><iPrice>1</iPrice></row>";
constexpr std::string_view neighbourKey = "仓库编码：01， 存货编码：N1";

class RowFaultTest : public test::OpeningTest, public testing::WithParamInterface<Fault> {
protected:
    RowFaultTest() {
        account.Run("INSERT INTO inventory (cInvCode) VALUES ('N1')\nGO\n"
                    "UPDATE inventory SET bInvBatch = 1, iInvRCost = 3 WHERE cInvCode = 'A1'\nGO\n"
                    "INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('97', N'研发项目', 'fitemss97')\nGO\n"
                    "INSERT INTO fitemss97 (citemcode, citemname) VALUES ('RD01', N'主轴研制')");
    }
    void ExpectOutcome(std::string_view warehouse, const Fault& fault) {
        std::string row = "<row><cWhCode>";
        row.append(warehouse).append("</cWhCode><cInvCode>A1</cInvCode><iQuantity>-1</iQuantity><iCost>1</iCost>"
                                     "<iPrice>1</iPrice><cBatchCode>B1</cBatchCode><cItem_class>97</cItem_class>"
                                     "<cItemCode>RD01</cItemCode><cItemCName/><cName/></row>");
        std::string key = "仓库编码：";
        key.append(warehouse).append("， 存货编码：A1");

        Import(std::string(neighbour).append(row).append(neighbour));
        EXPECT_THAT(outcomes, ElementsAre(Outcome{std::string(neighbourKey), 0, "ok"}, Outcome{key, 0, "ok"},
                                          Outcome{std::string(neighbourKey), 0, "ok"}))
            << "without the fault every row is accepted";

        account.Run("DELETE FROM Ia_subsidiary");
        FailStatement(std::string(fault.piece), fault.skip);
        Import(std::string(neighbour).append(row).append(neighbour));
        EXPECT_THAT(outcomes, ElementsAre(Outcome{std::string(neighbourKey), 0, "ok"},
                                          Outcome{key, 101, std::string(fault.description)},
                                          Outcome{std::string(neighbourKey), 0, "ok"}));
        EXPECT_EQ(account.Rows("SELECT AutoID FROM Ia_subsidiary").size(), 2U);
    }
};

class AverageRowFaultTest : public RowFaultTest {};

TEST_P(AverageRowFaultTest, RefusesThatRowAlone) { ExpectOutcome("01", GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    All, AverageRowFaultTest,
    testing::Values(Fault{"Item", "Select cValuetype,iInvRCost From inventory  Where cInvCode='A1'", 0, ""},
                    Fault{"Scope", "cName='cValueStyle'", 2, ""},
                    Fault{"FreeItems", "from Inventory where cinvcode='A1'", 0, ""},
                    Fault{"Warehouse", "Select cwhvaluestyle From Warehouse", 1, ""},
                    Fault{"ScopeAgain", "cName='cValueStyle'", 3, ""},
                    Fault{"MethodOfWarehouse", "select cWhValueStyle from Warehouse", 1, ""},
                    Fault{"BatchAccounting", "isnull(bCheckBatch,0) from inventory where cInvCode=N'A1'", 0, ""},
                    Fault{"ProjectClass", "from fitem ", 0, ""}, Fault{"Project", "from fitemss97", 0, ""},
                    Fault{"BatchFlag", "SELECT bInvBatch", 0, ""},
                    Fault{"ShelfLifeFlag", "SELECT bInvQuality FROM Inventory WHERE cInvCode='A1'", 0, ""},
                    Fault{"TrackFlag", "SELECT bTrack", 0, test::faultText},
                    Fault{"Insert", "'A1', 'B1'", 0, test::faultText}),
    test::nameOfCase);

class PlannedRowFaultTest : public RowFaultTest {};

TEST_P(PlannedRowFaultTest, RefusesThatRowAlone) { ExpectOutcome("02", GetParam()); }

INSTANTIATE_TEST_SUITE_P(All, PlannedRowFaultTest,
                         testing::Values(Fault{"Price", "InvCheckFreeIA870", 0, ""},
                                         Fault{"Insert", "'A1', 'B1'", 0, test::faultText}),
                         test::nameOfCase);

class ItemMethodFaultTest : public RowFaultTest {
protected:
    ItemMethodFaultTest() {
        account.Run("UPDATE AccInformation SET cValue = N'按存货核算' WHERE cName = N'cValueStyle'\nGO\n"
                    "UPDATE inventory SET cValueType = N'移动平均法' WHERE cInvCode = 'N1'");
    }
};

TEST_P(ItemMethodFaultTest, RefusesThatRowAlone) { ExpectOutcome("01", GetParam()); }

INSTANTIATE_TEST_SUITE_P(All, ItemMethodFaultTest,
                         testing::Values(Fault{"MethodOfItem", "select cValueType from Inventory where cInvCode=N'A1'",
                                               0, ""}),
                         test::nameOfCase);

class CalendarFaultTest : public test::OpeningTest {};

TEST_F(CalendarFaultTest, ACalendarThatCannotBeReadRefusesTheLedger) {
    account.Run("DROP TABLE QxSystem..UA_Period");
    EXPECT_THAT(Import(neighbour), testing::StartsWith("<error code=\"101\" dsc=\"Invalid object name"));
    ASSERT_EQ(outcomes.size(), 1U);
    EXPECT_EQ(outcomes.front().code, host::error_number::noTable);
}

} // namespace
