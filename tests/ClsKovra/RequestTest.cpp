#include "tests/ClsKovra/Lookups.h"
#include "tests/ClsKovra/OpeningFixture.h"

namespace {

using test::Outcome;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::string_view good = "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>5</iQuantity>"
                                  "<iCost>2</iCost><iPrice>10</iPrice></row>";
constexpr std::string_view key = "仓库编码：01， 存货编码：A1";
constexpr std::string_view accepted = R"(<item key="仓库编码：01， 存货编码：A1" code="0" dsc="ok"/>)";

std::string ResultDoc(std::string_view proc, std::string_view items) {
    std::string xml = R"(<qxinterface docid="D" proc=")";
    xml.append(proc).append("\"");
    return items.empty() ? xml.append("/>") : xml.append(">").append(items).append("</qxinterface>");
}

class RequestTest : public test::OpeningTest {
protected:
    std::size_t Stored() const { return account.Rows("SELECT AutoID FROM Ia_subsidiary").size(); }

    /// Fails the helper's operation `AddResultItem` for its calls `first` to `last`, counted from 1.
    void FailRecording(int first, int last) {
        beforeHelper = [=, call = 0](std::string_view operation) mutable {
            if (operation == "AddResultItem") {
                ++call;
                if (call >= first && call <= last) {
                    throw host::Error(test::faultNumber, std::string(test::faultText));
                }
            }
        };
    }
};

TEST_F(RequestTest, AddAppendsARow) {
    EXPECT_EQ(Import(good), ResultDoc("ADD", accepted));
    EXPECT_EQ(Stored(), 1U);
}

TEST_F(RequestTest, AddInLowerCaseIsTheSame) {
    EXPECT_EQ(Import(good, "add"), ResultDoc("add", accepted));
    EXPECT_EQ(Stored(), 1U);
}

TEST_F(RequestTest, EditAppendsAsAddDoes) {
    Import(good);
    const std::vector<std::string> added = Lines();
    EXPECT_EQ(Import(good, "Edit"), ResultDoc("Edit", accepted));
    EXPECT_THAT(Lines(), ElementsAreArray(added));
    EXPECT_EQ(Stored(), 2U);
}

TEST_F(RequestTest, TheSameRequestTwiceInsertsEveryRowTwice) {
    EXPECT_EQ(Import(std::string(good).append(good)), ResultDoc("ADD", std::string(accepted).append(accepted)));
    EXPECT_EQ(Import(std::string(good).append(good)), ResultDoc("ADD", std::string(accepted).append(accepted)));
    EXPECT_EQ(Stored(), 4U);
}

TEST_F(RequestTest, OtherOperationsAreNotOffered) {
    for (const std::string_view proc : {"Delete", "EMPTY", ""}) {
        SCOPED_TRACE(proc);
        EXPECT_EQ(Import(good, proc), R"(<error code="710" dsc="本模块暂不提供此功能！"/>)");
        EXPECT_THAT(RowLines(), IsEmpty());
        EXPECT_EQ(Lines().size(), 8U) << "the ledger is checked first";
    }
}

TEST_F(RequestTest, TheLedgersRefusalComesBeforeTheOperation) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 0, 1)");
    EXPECT_EQ(Import(good, "Delete"), R"(<error code="101" dsc="存货核算系统已经期初记账。"/>)");
}

TEST_F(RequestTest, IllFormedXmlIsRefused) {
    EXPECT_EQ(Transact("<qxinterface><row>"), R"(<error code="100" dsc="解析XML时发生错误,请你检查XML参数格式"/>)");
    EXPECT_EQ(Lines().size(), 1U) << "nothing but the connection";
}

TEST_F(RequestTest, AnyRootElementWillDo) {
    std::string request = R"(<balances roottag="row" docid="D" proc="ADD">)";
    EXPECT_EQ(Transact(request.append(good).append("</balances>")), ResultDoc("ADD", accepted));
}

TEST_F(RequestTest, ARowPathThatSelectsNothingGivesTheBareResult) {
    EXPECT_EQ(Import("<other/>"), ResultDoc("ADD", ""));
    EXPECT_THAT(RowLines(), IsEmpty());
}

TEST_F(RequestTest, ASecondCallOnAnInstanceFails) {
    std::string second;
    afterwards = [&](kovra::ClsKovra& instance) {
        refhost::Environment environment;
        refhost::Login login(loginXml, environment);
        second = instance.Transact("<a/>", &login);
    };
    Import(good);
    EXPECT_EQ(second, R"(<error code="3705" dsc="Operation is not allowed when the object is open."/>)");
}

TEST_F(RequestTest, ALoginWithoutAConnectionStringIsAnErrorResult) {
    loginXml = R"(<login cAcc_Id="001" cIYear="2023"/>)";
    EXPECT_EQ(Import(good), R"(<error code="438" dsc="对象不支持该属性或方法"/>)");
}

TEST_F(RequestTest, KeysNameWhatTheRowNames) {
    Import("<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode></row>"
           "<row><cWhCode>01</cWhCode></row>"
           "<row><cInvCode>A1</cInvCode></row>"
           "<row/>");
    EXPECT_THAT(outcomes, ElementsAreArray({
                              Outcome{"仓库编码：01， 存货编码：A1", 101, "金额不能为空。"},
                              Outcome{"仓库编码：01， ", 101, "存货编码不能为空。金额不能为空。"},
                              Outcome{"存货编码：A1", 101, "仓库编码不能为空。金额不能为空。"},
                              Outcome{"", 101, "仓库编码不能为空。存货编码不能为空。金额不能为空。"},
                          }));
}

TEST_F(RequestTest, ARefusedRowDoesNotStopTheOthers) {
    Import(std::string(good).append("<row><cWhCode>01</cWhCode></row>").append(good));
    EXPECT_THAT(outcomes, ElementsAreArray({
                              Outcome{std::string(key), 0, "ok"},
                              Outcome{"仓库编码：01， ", 101, "存货编码不能为空。金额不能为空。"},
                              Outcome{std::string(key), 0, "ok"},
                          }));
    EXPECT_EQ(Stored(), 2U);
}

TEST_F(RequestTest, ARowThatCannotBeRecordedAsAcceptedIsRecordedAsRefused) {
    FailRecording(1, 1);
    Import(std::string(good).append(good));
    EXPECT_THAT(outcomes, ElementsAreArray({
                              Outcome{std::string(key), 101, std::string(test::faultText)},
                              Outcome{std::string(key), 0, "ok"},
                          }));
    EXPECT_EQ(Stored(), 2U);
}

TEST_F(RequestTest, AMessageWinsOverTheErrorThatRecordingItRaised) {
    FailRecording(1, 1);
    Import("<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iPrice>1</iPrice><iCost>-1</iCost></row>");
    EXPECT_THAT(outcomes, ElementsAreArray({Outcome{std::string(key), 101, "单价必须大于等于零。"}}));
}

TEST_F(RequestTest, ACheckRecordsItsMessageAgainWhenRecordingFails) {
    FailRecording(1, 1);
    Import(std::string("<row><cWhCode>01</cWhCode></row>").append(good));
    EXPECT_THAT(outcomes, ElementsAreArray({
                              Outcome{"仓库编码：01， ", 101, "存货编码不能为空。金额不能为空。"},
                              Outcome{std::string(key), 0, "ok"},
                          }));
}

TEST_F(RequestTest, AnErrorThatEscapesARowStopsTheLoop) {
    // The second row is refused, and neither its outcome nor the repetition can be recorded.
    FailRecording(2, 3);
    Import(std::string(good).append("<row/>").append(good));
    EXPECT_THAT(outcomes, ElementsAreArray({
                              Outcome{std::string(key), 0, "ok"},
                              Outcome{"", 999, std::string(test::faultText)},
                          }));
    EXPECT_EQ(Stored(), 1U);
}

TEST_F(RequestTest, AnErrorWhileTheLoopRecordsItsEndIsAnErrorResult) {
    FailRecording(1, 100);
    EXPECT_EQ(Import(good), "<error code=\"" + std::to_string(test::faultNumber) + "\" dsc=\"" +
                                std::string(test::faultText) + "\"/>");
}

} // namespace
