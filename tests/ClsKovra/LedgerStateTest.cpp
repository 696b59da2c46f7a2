#include "tests/ClsKovra/OpeningFixture.h"

#include <utility>

namespace {

using test::Failed;
using test::Opened;
using test::Outcome;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::string_view row = "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>5</iQuantity>"
                                 "<iCost>2</iCost><iPrice>10</iPrice></row>";

/// What is asked of an open ledger, in order.
const std::vector<std::string> ledgerLookups = {
    Opened("SELECT * FROM AccInformation WHERE cSysID='IA' AND cName='dIAStartDate'"),
    Opened("Select bFlag_IA from gl_mend where iPeriod=0 AND iYEar =2023"),
    Opened("SELECT id FROM IA_Subsidiary WHERE iMonth<>0 AND iYear = 2023  and ((cVouType<>'24' and not "
           "(isnull(cbusType,'')='假退料' and iAOutQuantity>0 and isnull(cPZID,'0') = '0')) or (cVouType='24' and not "
           "cPZID is null)) "),
    Opened("SELECT autoid FROM IA_enSubsidiary WHERE iMonth<>0 AND iYear = 2023 "),
    Opened("SELECT cJvCode FROM JustInVouch where djvdate >='2023-01-01'"),
    Opened("SELECT autoid FROM CostJustVouch  where dcjvdate >='2023-01-01'"),
    Opened("select top 1 * from ia_summary where iYear = 2023 and isnull(iperiod,0) <>0 and imonth <>0"),
};

const std::string versionLookup = Opened("SELECT * FROM AccInformation WHERE cSysID='AA' AND cName='cSysVersion'");

/// The first `count` look-ups.
std::vector<std::string> Lookups(std::size_t count) {
    return {ledgerLookups.begin(), ledgerLookups.begin() + static_cast<std::ptrdiff_t>(count)};
}

class LedgerStateTest : public test::OpeningTest {
protected:
    /// The class's look-ups of the last call.
    std::vector<std::string> Asked() const {
        std::vector<std::string> lines = Lines();
        lines.erase(lines.begin());
        return lines;
    }

    void ExpectRefused(const std::string& message, std::size_t lookups) {
        EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"" + message + "\"/>");
        EXPECT_THAT(outcomes, ElementsAreArray({Outcome{"", 101, message}}));
        EXPECT_THAT(Asked(), ElementsAreArray(Lookups(lookups)));
        ExpectNothingImported();
    }

    void ExpectNothingImported() {
        EXPECT_THAT(account.Rows("SELECT AutoID FROM Ia_subsidiary WHERE cBusType = 'EAI'"), IsEmpty());
    }

    void ExpectOpen() {
        EXPECT_EQ(ImportOne(row), (Outcome{"仓库编码：01， 存货编码：A1", 0, "ok"}));
        std::vector<std::string> asked = Asked();
        ASSERT_GE(asked.size(), ledgerLookups.size());
        asked.resize(ledgerLookups.size());
        EXPECT_THAT(asked, ElementsAreArray(ledgerLookups));
    }
};

TEST_F(LedgerStateTest, AsksEverythingOfAnOpenLedgerInOrder) { ExpectOpen(); }

TEST_F(LedgerStateTest, RefusesWhenTheModuleIsNotStarted) {
    account.Run("DELETE FROM AccInformation WHERE cName = N'dIAStartDate'");
    ExpectRefused("没有启用存货核算系统。", 1);
}

TEST_F(LedgerStateTest, RefusesAStartDateThatIsNoDate) {
    account.Run("UPDATE AccInformation SET cValue = N'2023-02-30' WHERE cName = N'dIAStartDate'");
    ExpectRefused("没有启用存货核算系统。", 1);
}

TEST_F(LedgerStateTest, TakesTheStartDateFromTheDefault) {
    account.Run("UPDATE AccInformation SET cValue = NULL, cDefault = N'2023-1-1' WHERE cName = N'dIAStartDate'");
    ExpectOpen();
}

TEST_F(LedgerStateTest, RefusesAfterTheOpeningBookkeeping) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 0, 1)");
    ExpectRefused("存货核算系统已经期初记账。", 2);
}

TEST_F(LedgerStateTest, IgnoresTheOpeningBookkeepingOfAnotherYearOrModule) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2022, 0, 1)\nGO\n"
                "INSERT INTO GL_mend (iyear, iperiod, bflag, bflag_ST, bflag_IA) VALUES (2023, 0, 1, 1, 0)");
    ExpectOpen();
}

TEST_F(LedgerStateTest, CannotReadANullOpeningFlag) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 0, NULL)");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"无效使用 Null\"/>");
    EXPECT_THAT(outcomes, ElementsAreArray({Outcome{"", 94, "无效使用 Null"}}));
    EXPECT_THAT(Asked(), ElementsAreArray(Lookups(2)));
}

TEST_F(LedgerStateTest, RefusesWhenThereIsBusiness) {
    account.Run("INSERT INTO Ia_subsidiary (iYear, iMonth, id, cVouType) VALUES (2023, 1, 7, '01')");
    ExpectRefused("已有业务数据，不能导入期初数据。", 3);
}

TEST_F(LedgerStateTest, CountsAVoucherOfType24WithAVoucherId) {
    account.Run("INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, cPZID) VALUES (2023, 1, '24', 'PZ1')");
    ExpectRefused("已有业务数据，不能导入期初数据。", 3);
}

TEST_F(LedgerStateTest, IgnoresAVoucherOfType24WithoutAVoucherId) {
    account.Run("INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType) VALUES (2023, 1, '24')");
    ExpectOpen();
}

TEST_F(LedgerStateTest, IgnoresAFalseReturnWithoutAVoucherId) {
    account.Run("INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, cBusType, iAOutQuantity) "
                "VALUES (2023, 1, '11', N'假退料', 3)");
    ExpectOpen();
}

TEST_F(LedgerStateTest, CountsAFalseReturnWithAVoucherId) {
    account.Run("INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, cBusType, iAOutQuantity, cPZID) "
                "VALUES (2023, 1, '11', N'假退料', 3, 'PZ1')");
    ExpectRefused("已有业务数据，不能导入期初数据。", 3);
}

TEST_F(LedgerStateTest, IgnoresOpeningRowsAndOtherYears) {
    account.Run("INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType) VALUES (2023, 0, '34')\nGO\n"
                "INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType) VALUES (2022, 1, '01')");
    ExpectOpen();
}

TEST_F(LedgerStateTest, RefusesWhenGoodsAreIssuedOnConsignment) {
    account.Run("INSERT INTO IA_enSubsidiary (iYear, iMonth, cVouType) VALUES (2023, 1, '05')");
    ExpectRefused("已有发出商品业务，不能导入期初数据。", 4);
}

TEST_F(LedgerStateTest, RefusesWhenThereAreAdjustmentsFromTheFirstDayOn) {
    account.Run("INSERT INTO JustInVouch (cJVCode, dJVDate) VALUES ('J1', '2023-01-01')");
    ExpectRefused("已有调整单据，不能导入期初数据。", 5);
}

TEST_F(LedgerStateTest, IgnoresAdjustmentsOfTheYearBefore) {
    account.Run("INSERT INTO JustInVouch (cJVCode, dJVDate) VALUES ('J1', '2022-12-31')\nGO\n"
                "INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (1, '2022-12-31')");
    ExpectOpen();
}

TEST_F(LedgerStateTest, RefusesWhenThereArePlannedPriceAdjustments) {
    account.Run("INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (1, '2023-01-01')");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"已有计划价调整单，不能导入期初数据。\"/>");
    std::vector<std::string> expected = Lookups(6);
    expected.push_back(versionLookup);
    EXPECT_THAT(Asked(), ElementsAreArray(expected));
    ExpectNothingImported();
}

TEST_F(LedgerStateTest, CallsThemRetailPriceAdjustmentsInTheCommercialVersion) {
    account.Run("INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (1, '2023-01-01')\nGO\n"
                "UPDATE AccInformation SET cValue = N'商业' WHERE cName = N'cSysVersion'");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"已有售价调整单，不能导入期初数据。\"/>");
    std::vector<std::string> expected = Lookups(6);
    expected.push_back(versionLookup);
    EXPECT_THAT(Asked(), ElementsAreArray(expected));
    ExpectNothingImported();
}

TEST_F(LedgerStateTest, RefusesAfterPeriodEndProcessing) {
    account.Run("INSERT INTO ia_summary (iYear, iMonth, iPeriod, cInvCode) VALUES (2023, 1, 1, 'A1')");
    ExpectRefused("有存货的期末处理会计期不符，不能导入期初数据。", 7);
}

TEST_F(LedgerStateTest, IgnoresTotalsWithoutPeriodEndProcessing) {
    account.Run("INSERT INTO ia_summary (iYear, iMonth, iPeriod, cInvCode) VALUES (2023, 1, 0, 'A1')\nGO\n"
                "INSERT INTO ia_summary (iYear, iMonth, iPeriod, cInvCode) VALUES (2023, 1, NULL, 'A1')\nGO\n"
                "INSERT INTO ia_summary (iYear, iMonth, iPeriod, cInvCode) VALUES (2023, 0, 1, 'A1')\nGO\n"
                "INSERT INTO ia_summary (iYear, iMonth, iPeriod, cInvCode) VALUES (2022, 1, 1, 'A1')");
    ExpectOpen();
}

TEST_F(LedgerStateTest, GivesTheFirstOfTwoReasons) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 0, 1)\nGO\n"
                "INSERT INTO Ia_subsidiary (iYear, iMonth, id, cVouType) VALUES (2023, 1, 7, '01')\nGO\n"
                "INSERT INTO ia_summary (iYear, iMonth, iPeriod, cInvCode) VALUES (2023, 1, 1, 'A1')");
    ExpectRefused("存货核算系统已经期初记账。", 2);
    account.Run("DELETE FROM GL_mend");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"已有业务数据，不能导入期初数据。\"/>");
    account.Run("DELETE FROM Ia_subsidiary");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"有存货的期末处理会计期不符，不能导入期初数据。\"/>");
}

TEST_F(LedgerStateTest, ReportsTheDatabasesErrorAtEachLookup) {
    const std::vector<std::string> pieces = {"dIAStartDate", "gl_mend",       "IA_Subsidiary", "IA_enSubsidiary",
                                             "JustInVouch",  "CostJustVouch", "ia_summary"};
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        SCOPED_TRACE(pieces[index]);
        FailStatement(pieces[index]);
        EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"" + std::string(test::faultText) + "\"/>");
        EXPECT_THAT(outcomes, ElementsAreArray({Outcome{"", test::faultNumber, std::string(test::faultText)}}));
        std::vector<std::string> expected = Lookups(index + 1);
        expected.back() = Failed(expected.back(), test::faultNumber);
        EXPECT_THAT(Asked(), ElementsAreArray(expected));
        ExpectNothingImported();
    }
}

TEST_F(LedgerStateTest, ReportsTheDatabasesErrorAtTheVersion) {
    account.Run("INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (1, '2023-01-01')");
    FailStatement("cSysVersion");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"" + std::string(test::faultText) + "\"/>");
}

TEST_F(LedgerStateTest, ReportsALoginYearThatIsNoNumber) {
    loginXml.replace(loginXml.find("cIYear=\"2023\""), 13, "cIYear=\"今年\"");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"类型不匹配\"/>");
    EXPECT_THAT(outcomes, ElementsAreArray({Outcome{"", 13, "类型不匹配"}}));
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(LedgerStateTest, ReportsALoginWithoutAYear) {
    loginXml.replace(loginXml.find("cIYear=\"2023\""), 13, "");
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"对象不支持该属性或方法\"/>");
    EXPECT_THAT(outcomes, ElementsAreArray({Outcome{"", 438, "对象不支持该属性或方法"}}));
}

TEST_F(LedgerStateTest, AsksFromTheEmptyDateWhenTheCalendarLacksThePeriod) {
    account.Run("DELETE FROM QxSystem..UA_Period");
    Import(row);
    const std::vector<std::string> asked = Asked();
    EXPECT_THAT(asked, testing::Contains(Opened("SELECT cJvCode FROM JustInVouch where djvdate >=''")));
    EXPECT_THAT(asked, testing::Contains(Opened("SELECT autoid FROM CostJustVouch  where dcjvdate >=''")));
}

TEST_F(LedgerStateTest, ReportsAFailureToRecordTheReason) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 0, 1)");
    beforeHelper = [failed = false](std::string_view operation) mutable {
        if (operation == "AddResultItem" && !std::exchange(failed, true)) {
            throw host::Error(test::faultNumber, std::string(test::faultText));
        }
    };
    EXPECT_EQ(Import(row), "<error code=\"101\" dsc=\"" + std::string(test::faultText) + "\"/>");
}

} // namespace
