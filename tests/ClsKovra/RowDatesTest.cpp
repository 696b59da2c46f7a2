#include "tests/ClsKovra/Lookups.h"
#include "tests/ClsKovra/OpeningFixture.h"
#include "tests/support/NameOfCase.h"

namespace row_dates {
namespace {

namespace lookup = test::lookup;
using test::Outcome;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view key = "仓库编码：01， 存货编码：A1";

std::string Row(std::string_view more) {
    std::string row = "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>5</iQuantity><iCost>2</iCost>"
                      "<iPrice>10</iPrice>";
    return row.append(more).append("</row>");
}

std::string Child(std::string_view name, std::string_view text) {
    std::string xml = "<";
    return xml.append(name).append(">").append(text).append("</").append(name).append(">");
}

class RowDatesTest : public test::OpeningTest {
protected:
    void ExpectRefused(std::string_view children, std::string_view message) {
        EXPECT_EQ(ImportOne(Row(children)), (Outcome{std::string(key), 101, std::string(message)})) << children;
        EXPECT_THAT(account.Rows("SELECT AutoID FROM Ia_subsidiary"), IsEmpty());
    }
    void ExpectAccepted(std::string_view children) {
        EXPECT_EQ(ImportOne(Row(children)), (Outcome{std::string(key), 0, "ok"})) << children;
        account.Run("DELETE FROM Ia_subsidiary");
    }
    /// What the class asked behind the master data.
    std::vector<std::string> Asked() const {
        std::vector<std::string> lines = RowLines();
        const std::size_t before = lookup::MasterData("01", "A1").size();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
        return lines;
    }
};

struct DateMessages {
    std::string_view name;
    std::string_view notDate;
    std::string_view tooEarly;
};

class EachDateTest : public RowDatesTest, public testing::WithParamInterface<DateMessages> {};

TEST_P(EachDateTest, RefusesWhatIsNoDateOrTooEarly) {
    const auto& [name, notDate, tooEarly] = GetParam();
    for (const std::string_view text : {"never", "2022-02-30", "20220501", "5"}) {
        ExpectRefused(Child(name, text), notDate);
        EXPECT_THAT(Asked(), IsEmpty()) << "the first failure ends the check";
    }
    for (const std::string_view text : {"1949-01-01", "1948-12-31", "1949/1/1", "1900-01-01", "12:00"}) {
        ExpectRefused(Child(name, text), tooEarly);
        EXPECT_THAT(Asked(), IsEmpty());
    }
    for (const std::string_view text : {"", "1949-01-02", "2022-12-31", "2022/5/1"}) {
        ExpectAccepted(Child(name, text));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, EachDateTest,
    testing::Values(DateMessages{"dVouDate", "入库日期日期不合法！", "入库日期日期输入不合法"},
                    DateMessages{"cDefine4", "表头自定义项4日期不合法！", "表头自定义项4日期输入不合法"},
                    DateMessages{"cDefine6", "表头自定义项6日期不合法！", "表头自定义项6日期输入不合法"},
                    DateMessages{"cDefine36", "表体自定义项15日期不合法！", "表体自定义项15日期输入不合法"},
                    DateMessages{"cDefine37", "表体自定义项16日期不合法！", "表体自定义项16日期输入不合法"}),
    test::nameOfCase);

TEST_F(RowDatesTest, OpeningStockIsDatedBeforeTheStart) {
    ExpectAccepted("<dVouDate>2022-12-31</dVouDate>");
    ExpectAccepted("<dVouDate>2022-12-31 23:59</dVouDate>");
    ExpectRefused("<dVouDate>2023-01-01</dVouDate>", "入库日期必须小于本系统启用日期！");
    ExpectRefused("<dVouDate>2023/1/1</dVouDate>", "入库日期必须小于本系统启用日期！");
    ExpectRefused("<dVouDate>2024-05-01</dVouDate>", "入库日期必须小于本系统启用日期！");
}

TEST_F(RowDatesTest, TheStartIsThatOfTheLoginsOwnPeriod) {
    account.Run("INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) "
                "VALUES ('001', 2023, 4, '2023-04-01', '2023-04-30')");
    loginXml.replace(loginXml.find("iStartPeriod=\"1\""), 16, "iStartPeriod=\"4\"");
    ExpectAccepted("<dVouDate>2023-03-31</dVouDate>");
    ExpectRefused("<dVouDate>2023-04-01</dVouDate>", "入库日期必须小于本系统启用日期！");
}

TEST_F(RowDatesTest, WithoutTheStartPeriodInTheCalendarNoDateIsEarlyEnough) {
    loginXml.replace(loginXml.find("iStartPeriod=\"1\""), 16, "iStartPeriod=\"9\"");
    ExpectRefused("<dVouDate>2022-12-31</dVouDate>", "入库日期必须小于本系统启用日期！");
    ExpectAccepted("");
}

TEST_F(RowDatesTest, ALoginWithoutAStartPeriodRefusesDatedRowsWithoutAMessage) {
    loginXml.replace(loginXml.find("iStartPeriod=\"1\""), 16, "");
    Import(Row("<dVouDate>2022-12-31</dVouDate>") + Row("<dVouDate>never</dVouDate>") + Row(""));
    EXPECT_THAT(outcomes,
                ElementsAre(Outcome{std::string(key), 101, ""}, Outcome{std::string(key), 101, "入库日期日期不合法！"},
                            Outcome{std::string(key), 0, "ok"}));
}

TEST_F(RowDatesTest, TheOtherDatesMayLieBehindTheStart) {
    ExpectAccepted("<cDefine4>2030-01-01</cDefine4><cDefine6>2030-01-01</cDefine6><cDefine36>2030-01-01</cDefine36>"
                   "<cDefine37>2030-01-01</cDefine37>");
}

TEST_F(RowDatesTest, TheFirstOfTwoDatesWins) {
    ExpectRefused("<cDefine37>never</cDefine37><cDefine36>1900-01-01</cDefine36>", "表体自定义项15日期输入不合法");
    ExpectRefused("<cDefine6>never</cDefine6><cDefine4>never</cDefine4>", "表头自定义项4日期不合法！");
    ExpectRefused("<cDefine4>never</cDefine4><dVouDate>2023-01-01</dVouDate>", "入库日期必须小于本系统启用日期！");
    ExpectRefused("<cBatchCode>B</cBatchCode><cDefine37>never</cDefine37>", "表体自定义项16日期不合法！");
    ExpectRefused("<cBatchCode>B</cBatchCode><dVDate>never</dVDate>", "不是批次管理的存货！");
}

TEST_F(RowDatesTest, RefusesABatchNumberOfAnItemWithoutBatches) {
    ExpectRefused("<cBatchCode>B1</cBatchCode>", "不是批次管理的存货！");
    EXPECT_THAT(Asked(), ElementsAre(lookup::Flag("bInvBatch", "A1")));
}

TEST_F(RowDatesTest, ABatchNumberHasSixtyCharactersAtMost) {
    account.Run("UPDATE inventory SET bInvBatch = 1 WHERE cInvCode = 'A1'");
    ExpectAccepted(Child("cBatchCode", std::string(60, 'B')));
    EXPECT_EQ(Asked()[0], lookup::Flag("bInvBatch", "A1"));
    EXPECT_EQ(Asked()[1], lookup::Flag("bInvQuality", "A1"));
    ExpectRefused(Child("cBatchCode", std::string(61, 'B')), "批次超长！");
    EXPECT_THAT(Asked(), ElementsAre(lookup::Flag("bInvBatch", "A1")));
}

TEST_F(RowDatesTest, TheLengthOfABatchNumberCountsCharactersNotBytes) {
    account.Run("UPDATE inventory SET bInvBatch = 1 WHERE cInvCode = 'A1'");
    std::string sixty;
    for (int i = 0; i < 60; ++i) {
        sixty += "批";
    }
    ExpectAccepted(Child("cBatchCode", sixty));
    ExpectRefused(Child("cBatchCode", sixty + "号"), "批次超长！");
    // A letter outside the basic plane has two characters.
    ExpectRefused(Child("cBatchCode", std::string(59, 'B') + "𠀀"), "批次超长！");
}

TEST_F(RowDatesTest, RefusesShelfLifeDatesOfAnItemWithoutShelfLife) {
    ExpectRefused("<dVDate>2023-05-01</dVDate>", "不是保质期管理的存货");
    ExpectRefused("<dMadeDate>2022-05-01</dMadeDate>", "不是保质期管理的存货");
    ExpectRefused("<dMadeDate>never</dMadeDate>", "不是保质期管理的存货");
    EXPECT_THAT(Asked(), ElementsAre(lookup::Flag("bInvQuality", "A1")));
}

class ShelfLifeTest : public RowDatesTest {
protected:
    ShelfLifeTest() { account.Run("UPDATE inventory SET bInvQuality = 1 WHERE cInvCode = 'A1'"); }
};

TEST_F(ShelfLifeTest, AcceptsAnExpiryBehindTheProduction) {
    ExpectAccepted("<dMadeDate>2022-05-01</dMadeDate><dVDate>2022-05-02</dVDate>");
    ExpectAccepted("<dMadeDate>2022/5/9</dMadeDate><dVDate>2022-05-10</dVDate>");
    ExpectAccepted("");
}

TEST_F(ShelfLifeTest, RefusesAnExpiryOnOrBeforeTheProduction) {
    ExpectRefused("<dMadeDate>2022-05-01</dMadeDate><dVDate>2022-05-01</dVDate>", "生产日期大于失效日期");
    ExpectRefused("<dMadeDate>2022/5/1</dMadeDate><dVDate>2022-05-01</dVDate>", "生产日期大于失效日期");
    ExpectRefused("<dMadeDate>2022-05-02</dMadeDate><dVDate>2022-05-01</dVDate>", "生产日期大于失效日期");
}

TEST_F(ShelfLifeTest, RefusesWhatIsNoDateOrTooEarly) {
    ExpectRefused("<dMadeDate>never</dMadeDate><dVDate>2022-05-01</dVDate>", "生产日期不合法！");
    ExpectRefused("<dMadeDate>1949-01-01</dMadeDate><dVDate>2022-05-01</dVDate>", "生产日期输入不合法");
    ExpectRefused("<dMadeDate>2022-05-01</dMadeDate><dVDate>never</dVDate>", "失效日期不合法！");
    ExpectRefused("<dMadeDate>2022-05-01</dMadeDate><dVDate>1949-01-01</dVDate>", "失效日期输入不合法");
    ExpectRefused("<dVDate>never</dVDate><dMadeDate>never</dMadeDate>", "生产日期不合法！");
    ExpectRefused("<dVDate>never</dVDate><dMadeDate>1900-01-01</dMadeDate>", "生产日期输入不合法");
}

TEST_F(ShelfLifeTest, OneDateAlonePassesUnchecked) {
    ExpectAccepted("<dMadeDate>1900-01-01</dMadeDate><dVDate/>");
    ExpectAccepted("<dVDate>1900-01-01</dVDate>");
}

TEST_F(ShelfLifeTest, OneTextThatIsNoDateFailsAtTheInsert) {
    const Outcome outcome = ImportOne(Row("<dVDate>never</dVDate>"));
    EXPECT_EQ(outcome.code, 101);
    EXPECT_THAT(outcome.description, testing::StartsWith("Conversion failed when converting"));
    EXPECT_THAT(Asked().back(), testing::HasSubstr("dVDateia, "));
    EXPECT_THAT(Asked().back(), testing::HasSubstr("'never', "));
}

TEST_F(RowDatesTest, ANullFlagRefusesTheRowWithoutAMessage) {
    account.Run("UPDATE inventory SET bInvQuality = NULL WHERE cInvCode = 'A1'");
    ExpectRefused("", "");
    account.Run("UPDATE inventory SET bInvBatch = NULL, bInvQuality = 0 WHERE cInvCode = 'A1'");
    ExpectRefused("<cBatchCode>B1</cBatchCode>", "");
    EXPECT_THAT(shown, IsEmpty());
}

} // namespace
} // namespace row_dates
