// What is found before the class is asked: in the class's words where it has some, and never more than it refuses.

#include "import/request/BuildRequest.h"
#include "import/run/RunClass.h"
#include "tests/imports/ImportFixture.h"

namespace test {
namespace {

using importing::Language;
using importing::Message;
using importing::Outcome;
using importing::RowState;
namespace message = importing::message;

struct FaultyRow {
    const char* name;
    const char* className;
    const char* head;
    const char* row;
    Message message;
};

const char* const opening =
    "仓库编码,存货编码,数量,单价,金额,入库日期,批号,生产日期,失效日期,自由项1,自由项2,项目大类编码,项目编码";
const char* const settings = "仓库编码,存货分类编码,存货编码,存货科目编码";
const char* const opposite = "收发类别编码,存货编码,项目大类编码,项目编码,项目大类名称,项目名称,对方科目编码";

const FaultyRow faultyRows[] = {
    {"ReceiptNotBeforeStart", "ClsKovra", opening, "01,1001,1,1,1,2024-01-01,,,,,,,", message::receiptNotBeforeStart},
    {"ReceiptTooEarly", "ClsKovra", opening, "01,1001,1,1,1,1949-01-01,,,,,,,", message::receiptTooEarly},
    {"BatchNotManaged", "ClsKovra", opening, "01,1001,1,1,1,,B1,,,,,,", message::batchNotManaged},
    {"BatchMissing", "ClsKovra", opening, "01,1003,1,1,1,,,,,,,,", message::batchMissing},
    {"FreeItemMissing", "ClsKovra", opening, "01,1002,1,1,1,,,,,银色,,,", message::freeItemMissing},
    {"MadeTooEarly", "ClsKovra", opening, "01,1003,1,1,1,,B1,1949-01-01,2025-01-01,,,,", message::madeTooEarly},
    {"ExpiryTooEarly", "ClsKovra", opening, "01,1003,1,1,1,,B1,1950-01-01,1949-01-01,,,,", message::expiryTooEarly},
    {"ExpiryBeforeMade", "ClsKovra", opening, "01,1003,1,1,1,,B1,2023-05-01,2023-05-01,,,,", message::expiryBeforeMade},
    {"ShelfLifeNotManaged", "ClsKovra", opening, "01,1001,1,1,1,,,2023-05-01,,,,,", message::shelfLifeNotManaged},
    {"WarehouseWithoutValuation", "ClsKovra", opening, "08,1001,1,1,1,,,,,,,,", message::warehouseWithoutValuation},
    {"QuantityNegativeIndividual", "ClsKovra", opening, "05,1001,-1,1,-1,,,,,,,,", message::quantityNegativeIndividual},
    {"QuantityNegativeTracked", "ClsKovra", opening, "01,1006,-1,1,-1,,,,,,,,", message::quantityNegativeTracked},
    {"QuantityZeroPlanned", "ClsKovra", opening, "03,1004,0,1,100,,,,,,,,", message::quantityZeroPlanned},
    {"PlannedPriceMissing", "ClsKovra", opening, "03,1008,1,1,1,,,,,,,,", message::plannedPriceMissing},
    {"RetailPriceMissing", "ClsKovra", opening, "04,1008,1,1,1,,,,,,,,", message::retailPriceMissing},
    {"ProjectMissing", "ClsKovra", opening, "01,1001,1,1,1,,,,,,,97,", message::projectMissing},
    {"ProjectClassMissing", "ClsKovra", opening, "01,1001,1,1,1,,,,,,,,RD01", message::projectClassMissing},
    {"ProjectUnknown", "ClsKovra", opening, "01,1001,1,1,1,,,,,,,97,RD99", message::projectUnknown},
    {"ItemProjectUnknown", "ClsKovra", opening, "01,1001,1,1,1,,,,,,,00,8888", message::projectUnknown},
    {"KeyMissingInventory", "ClsInvSubject", settings, ",,,140301", message::keyMissingInventory},
    {"ItemAndClass", "ClsInvSubject", settings, "01,0101,1001,140301", message::itemAndClass},
    {"AccountsMissingInventory", "ClsInvSubject", settings, "01,,1001,", message::accountsMissingInventory},
    {"KeyMissingOpposite", "ClsOppSubject", opposite, ",,97,RD01,研发项目,高速主轴研制,500101",
     message::keyMissingOpposite},
    {"AccountsMissingOpposite", "ClsOppSubject", opposite, "201,1001,,,,,", message::accountsMissingOpposite},
    {"OppositeProjectMissing", "ClsOppSubject", opposite, "201,,97,,研发项目,,500101", message::projectMissing},
    {"OppositeProjectClassMissing", "ClsOppSubject", opposite, "201,,,RD01,,,500101", message::projectClassMissing},
    {"OppositeProjectUnknown", "ClsOppSubject", opposite, "201,,97,RD99,研发项目,x,500101", message::projectUnknown},
    {"ProjectClassNameDiffers", "ClsOppSubject", opposite, "201,,97,RD01,研发,高速主轴研制,500101",
     message::projectClassNameDiffers},
    {"ProjectNameDiffers", "ClsOppSubject", opposite, "201,,97,RD01,研发项目,主轴,500101", message::projectNameDiffers},
    {"KeyMissingStandard", "ClsOppSubjectST", "收发类别编码,部门编码,直接材料对方科目", ",,500101",
     message::keyMissingStandard},
};

class FaultsOfRows : public ImportFixture, public ::testing::WithParamInterface<FaultyRow> {};
INSTANTIATE_TEST_SUITE_P(Rows, FaultsOfRows, ::testing::ValuesIn(faultyRows),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_P(FaultsOfRows, AreFoundInTheWordsThatTheClassHasForThem) {
    const FaultyRow& row = GetParam();
    const Outcome outcome = Import(std::string(row.head) + "\n" + row.row + "\n", {}, "a.csv", row.className);
    ASSERT_EQ(outcome.rows.size(), 1U);
    EXPECT_EQ(Refusals(outcome.rows[0]), std::vector<Message>{row.message});
    EXPECT_EQ(outcome.rows[0].state, RowState::refusedByChecks);

    // The class itself, asked about the row as it stands.
    Outcome asked = outcome;
    asked.rows[0].state = RowState::notReached;
    std::vector<importing::Unit> units = {{{&asked.rows[0]}}};
    cli::ImportAccount account(Path("login.xml"));
    const std::unique_ptr<importing::TestSession> session = account.OpenForTest();
    const std::vector<cli::ImportClass>& classes = cli::ImportClasses();
    importing::RunClass(asked, units, *session,
                        std::ranges::find(classes, row.className, &cli::ImportClass::name)->transact, {}, {});
    EXPECT_EQ(asked.rows[0].state, RowState::refusedByClass);
    ASSERT_FALSE(asked.rows[0].messages.empty());
    EXPECT_EQ(asked.rows[0].messages[0], importing::Words({row.message, {}}, Language::chinese));
}

class Checks : public ImportFixture {};

TEST_F(Checks, AllFaultsOfAllRowsAreToldAtOnce) {
    const Outcome outcome = Import(std::string(opening) + "\n99,1001,1,1,1,2024-02-01,B1,,,,,,\n"
                                                          "01,1003,x,1,1,,,2023-05-01,2023-04-01,,,97,\n",
                                   {});
    EXPECT_EQ(Refusals(outcome.rows[0]),
              (std::vector<Message>{message::codeUnknown, message::receiptNotBeforeStart, message::batchNotManaged}));
    EXPECT_EQ(Refusals(outcome.rows[1]), (std::vector<Message>{message::numberNone, message::expiryBeforeMade,
                                                               message::batchMissing, message::projectMissing}));
}

TEST_F(Checks, LetEverythingPassThatTheClassTakes) {
    const Outcome outcome =
        Import(std::string(opening) + "\n01,1003,1,1,1,2023-12-31,B1,2023-05-01,2024-05-01,,,97,RD01\n"
                                      "01,1002,1,1,1,,,,,银色,6米,00,1001\n"
                                      "03,1004,2,1,60,,,,,,,,\n04,4001,-1,1,-60,,,,,,,,\n"
                                      "05,1001,0,1,60,,,,,,,,\n",
               {});
    for (const importing::RowOutcome& row : outcome.rows) {
        EXPECT_EQ(row.state, RowState::ready) << row.row.line << (row.messages.empty() ? "" : row.messages[0]);
    }
}

TEST_F(Checks, ASettingOfAWarehouseIsMetByAnySettingInIt) {
    account().Run("delete from IA_HeadSet\nGO\ninsert into IA_HeadSet (cWhCode, cInvCode, cInvHead, iYear) values "
                  "('01', '1001', '140301', 2024), ('02', null, '140301', 2023)");
    const Outcome outcome =
        Import(std::string(settings) + "\n01,,,140301\n01,,1001,140303\n01,,1007,140303\n02,,,140301\n", {}, "a.csv",
               "ClsInvSubject");
    EXPECT_EQ(Refusals(outcome.rows[0]), std::vector<Message>{message::settingExists});
    EXPECT_EQ(Refusals(outcome.rows[1]), std::vector<Message>{message::settingExists});
    EXPECT_EQ(outcome.rows[2].state, RowState::ready);
    EXPECT_EQ(outcome.rows[3].state, RowState::ready);
}

TEST_F(Checks, ARowThatAnEarlierOneOfTheFileMeetsIsLeftToTheClass) {
    account().Run("delete from IA_HeadSet");
    const Outcome outcome =
        Import(std::string(settings) + "\n01,,1001,140301\n01,,,140301\n", {}, "a.csv", "ClsInvSubject");
    EXPECT_EQ(outcome.rows[0].state, RowState::ready);
    EXPECT_EQ(outcome.rows[1].state, RowState::refusedByClass);
    EXPECT_EQ(outcome.rows[1].messages, std::vector<std::string>{"对照关系已经存在，无法插入新记录。"});
}

TEST_F(Checks, ADocumentWhoseNumberExistsIsRefusedAsAWhole) {
    const std::string csv = "单据号,仓库编码,存货编码,跌价余额\nTD1,01,1001,1.25\nTD1,01,1007,2\nTD2,01,1001,3\n";
    account().Run("insert into IA_DecReady (ID, cDecCode) values (77, N'TD1')");
    const Outcome outcome = Import(csv, {}, "a.csv", "ClsKovraProof");
    EXPECT_EQ(Refusals(outcome.rows[0]), std::vector<Message>{message::documentExists});
    EXPECT_EQ(importing::Words(outcome.rows[0].row.refusals[0].note, Language::chinese), "单据号：TD1已存在。");
    EXPECT_EQ(outcome.rows[1].state, RowState::refusedByChecks);
    EXPECT_EQ(outcome.rows[2].state, RowState::ready);
}

TEST_F(Checks, ARefusedEntryOfAVoucherIsToldInItsOwnRow) {
    const Outcome outcome =
        Import("单据号,制单日期,存货编码,调整后单价\nTJ1,2024-01-15,1004,26\nTJ1,2024-01-15,1001,5\n", {}, "a.csv",
               "ClsPriceJustVou");
    EXPECT_EQ(outcome.rows[0].state, RowState::refusedByClass);
    EXPECT_EQ(outcome.rows[1].state, RowState::refusedByClass);
    ASSERT_FALSE(outcome.rows[1].messages.empty());
    EXPECT_NE(outcome.rows[1].messages[0].find("1001"), std::string::npos);
}

} // namespace
} // namespace test
