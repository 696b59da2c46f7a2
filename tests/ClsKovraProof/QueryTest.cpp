#include "refhost/xml/Document.h"
#include "tests/ClsKovraProof/ProofFixture.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>

namespace {

using test::ExecuteLine;
using test::Failed;
using test::OpenLine;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string dropView = ExecuteLine(
    " if exists (select * from dbo.sysobjects where id = object_id(N'[dbo].[RdRecordView]') and OBJECTPROPERTY(id, "
    "N'IsView') = 1) drop view [dbo].[RdRecordView] ");

const std::string createView = ExecuteLine(
    " create  View RdRecordView AS  select   ID, "
    "bRdFlag,cVouchType,cBusType,cSource,cBusCode,cWhCode,dDate,cCode,cRdCode"
    ",cDepCode,cPersonCode,cPTCode,cSTCode,A.cCusCode,cVenCode,cOrderCode,  "
    "cARVCode,cBillCode,cDLCode,cProBatch,cHandler"
    ",A.cMemo,A.iTaxRate,A.cExch_Name,A.iExchRate,bTransFlag,cAccounter,cMaker,iNetLock,dKeepdate,dVeriDate,bpufirst,"
    "biafirst,iMQuantity,  dARVDate,cChkCode,dChkDate,cChkPerson,VT_ID,bIsSTQc,cPsPCode,cMPoCode,gspcheck,ipurorderid,"
    "ipurarriveid,iproorderid,iarriveid,isalebillid,   convert(char, convert(money,A.qxts), 2) as "
    "qxts,cDefine1,cDefine2,"
    "cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine15,"
    "cDefine16,  B.cCusAddress as cDefine14 from rdrecord  A left join Customer B  on   A.cCusCode=B.cCusCode ");

const std::string columnsLookup = OpenLine("select * from Rdrecord where 1>1", 0, 1, 2);

const std::string receipts =
    "select * from rdrecordView  where (isnull(bIsSTQc,0)<>1 and isnull(bPuFirst,0)<>1 and isnull(bIAFirst,0)<>1 and "
    "brdflag=1)";
const std::string issues =
    "select * from rdrecordView  where (isnull(bIsSTQc,0)<>1 and isnull(bPuFirst,0)<>1 and isnull(bIAFirst,0)<>1 and "
    "brdflag=0)";

std::string RecordsLine(const std::string& sql) { return OpenLine(sql, 3, 1, 3); }
std::string BodyLine(int id) { return RecordsLine("select * from rdrecords where id=" + std::to_string(id)); }

std::string Envelope(const std::string& kind) {
    return "<q roottag=\"stock\" docid=\"7\"><a><storeinout type=\"" + kind + "\"/></a></q>";
}

class StockQuery : public test::ProofFixture {
protected:
    struct Answer {
        std::string envelope;
        std::vector<std::string> statements;
    };

    /// Queries with these `condition` elements.
    Answer Query(const std::string& envelope, const std::string& conditions = {}) {
        Answer answer{envelope, {}};
        answer.statements = WithOpenInstance([&](kovra::ClsKovraProof& instance, host::Environment&) {
            const auto document = refhost::xml::CreateDocument();
            ASSERT_TRUE(document->LoadXML("<eleList>" + conditions + "</eleList>"));
            EXPECT_FALSE(instance.QueryProc(document->DocumentElement()->SelectNodes("*"), answer.envelope));
        });
        return answer;
    }
    /// A query that raises `number`; the caller's text stays as it was.
    std::vector<std::string> QueryRaises(const std::string& envelope, int number, const std::string& conditions = {}) {
        return WithOpenInstance([&](kovra::ClsKovraProof& instance, host::Environment&) {
            const auto document = refhost::xml::CreateDocument();
            ASSERT_TRUE(document->LoadXML("<eleList>" + conditions + "</eleList>"));
            std::string text = envelope;
            try {
                instance.QueryProc(document->DocumentElement()->SelectNodes("*"), text);
                ADD_FAILURE() << "no error";
            } catch (const host::Error& error) {
                EXPECT_EQ(error.number(), number) << error.description();
            }
            EXPECT_EQ(text, envelope);
        });
    }
    /// The head query that these conditions give.
    std::string HeadQuery(const std::string& kind, const std::string& conditions) {
        const std::vector<std::string> statements = Query(Envelope(kind), conditions).statements;
        EXPECT_GE(statements.size(), 4U);
        return statements.size() < 4 ? std::string() : statements[3];
    }

    static std::string Condition(const std::string& name, const std::string& operation, const std::string& value,
                                 const std::string& logic = "and") {
        return "<condition name=\"" + name + "\" operation=\"" + operation + "\" value=\"" + value + "\" logic=\"" +
               logic + "\"/>";
    }

    void StoreDocuments() {
        account.Run("INSERT INTO Customer (cCusCode, cCusAddress) VALUES (N'C1', N'上海路1号')\nGO\n"
                    "INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode, dDate, cCusCode, bPuFirst) VALUES "
                    "(1, 1, N'R1', N'01', '2023-01-02', NULL, 0), (2, 0, N'I1', N'01', '2023-01-03', N'C1', 0), "
                    "(3, 1, N'R2', N'02', '2023-01-04', NULL, 0), (4, 1, N'R0', N'01', '2023-01-01', NULL, 1)\nGO\n"
                    "INSERT INTO rdrecords (ID, cInvCode, iQuantity) VALUES (1, N'A', 2), (2, N'B', 1.5), "
                    "(1, N'C', NULL)");
    }
};

/// A document without what changes with the database: its timestamp.
std::string WithoutTimestamps(std::string xml) {
    for (std::size_t begin = xml.find("<qxts>"); begin != std::string::npos; begin = xml.find("<qxts>")) {
        const std::size_t end = xml.find("</qxts>", begin);
        EXPECT_NE(end, std::string::npos);
        xml.erase(begin, end + 7 - begin);
    }
    return xml;
}

TEST_F(StockQuery, FillsTheEnvelopeWithTheReceipts) {
    StoreDocuments();
    const Answer answer = Query(Envelope("入库单"));
    EXPECT_THAT(answer.statements,
                ElementsAre(dropView, createView, columnsLookup, RecordsLine(receipts), BodyLine(1), BodyLine(3)));
    EXPECT_EQ(WithoutTimestamps(answer.envelope),
              "<q roottag=\"stock\" docid=\"7\">"
              "<stock><header><ID>1</ID><bRdFlag>1</bRdFlag><cWhCode>01</cWhCode><dDate>2023-01-02</dDate>"
              "<cCode>R1</cCode><bTransFlag>0</bTransFlag><bPuFirst>0</bPuFirst><bIAFirst>0</bIAFirst>"
              "<bIsSTQc>0</bIsSTQc></header><body>"
              "<entry><AutoID>1</AutoID><ID>1</ID><cInvCode>A</cInvCode><iQuantity>2</iQuantity></entry>"
              "<entry><AutoID>3</AutoID><ID>1</ID><cInvCode>C</cInvCode></entry></body></stock>"
              "<stock><header><ID>3</ID><bRdFlag>1</bRdFlag><cWhCode>02</cWhCode><dDate>2023-01-04</dDate>"
              "<cCode>R2</cCode><bTransFlag>0</bTransFlag><bPuFirst>0</bPuFirst><bIAFirst>0</bIAFirst>"
              "<bIsSTQc>0</bIsSTQc></header><body/></stock></q>");
}

TEST_F(StockQuery, GivesTheCustomersAddressOfAnIssue) {
    StoreDocuments();
    const Answer answer = Query(Envelope("出库单"));
    EXPECT_THAT(answer.statements, ElementsAre(dropView, createView, columnsLookup, RecordsLine(issues), BodyLine(2)));
    EXPECT_EQ(WithoutTimestamps(answer.envelope),
              "<q roottag=\"stock\" docid=\"7\">"
              "<stock><header><ID>2</ID><bRdFlag>0</bRdFlag><cWhCode>01</cWhCode><dDate>2023-01-03</dDate>"
              "<cCode>I1</cCode><cCusCode>C1</cCusCode><bTransFlag>0</bTransFlag><bPuFirst>0</bPuFirst>"
              "<bIAFirst>0</bIAFirst><bIsSTQc>0</bIsSTQc><cDefine14>上海路1号</cDefine14></header><body>"
              "<entry><AutoID>2</AutoID><ID>2</ID><cInvCode>B</cInvCode><iQuantity>1.5</iQuantity></entry>"
              "</body></stock></q>");
}

TEST_F(StockQuery, GivesTheEnvelopesRootWhenNothingMatches) {
    const Answer answer = Query("<q roottag='stock' docid='7' x='&lt;'>text<storeinout a='入库单' b='出库单'/></q>");
    EXPECT_EQ(answer.envelope, "<q roottag=\"stock\" docid=\"7\" x=\"&lt;\"/>");
    EXPECT_THAT(answer.statements, ElementsAre(dropView, createView, columnsLookup, RecordsLine(receipts)));
}

TEST_F(StockQuery, ReplacesTheViewOnEveryCall) {
    account.Run("create view RdRecordView as select cCusCode from Customer");
    Query(Envelope("入库单"));
    EXPECT_THAT(account.Rows("select count(*) as n from RdRecordView where ID=1"), ElementsAre(R"({"n":0})"));
}

TEST_F(StockQuery, ServesSeveralCallsAnInstance) {
    StoreDocuments();
    const auto statements = WithOpenInstance([](kovra::ClsKovraProof& instance, host::Environment&) {
        std::string first = Envelope("入库单");
        std::string second = "<other roottag='d'><storeinout k='出库单'/></other>";
        EXPECT_FALSE(instance.QueryProc({}, first));
        EXPECT_FALSE(instance.QueryProc({}, second));
        EXPECT_THAT(first, testing::HasSubstr("<cCode>R2</cCode>"));
        EXPECT_THAT(second, testing::StartsWith("<other roottag=\"d\"><d><header><ID>2</ID>"));
        EXPECT_THAT(second, testing::Not(testing::HasSubstr("R2")));
    });
    EXPECT_THAT(statements,
                ElementsAre(dropView, createView, columnsLookup, RecordsLine(receipts), BodyLine(1), BodyLine(3),
                            dropView, createView, columnsLookup, RecordsLine(issues), BodyLine(2)));
}

TEST_F(StockQuery, JoinsOrdinaryConditionsByTheirLogic) {
    EXPECT_EQ(
        HeadQuery("出库单", Condition("cWhCode", "=", "01", "and") + Condition("dDate", "&gt;=", "2021-01-01", "or")),
        RecordsLine(issues + " and (cWhCode='01' and dDate>='2021-01-01')"));
    EXPECT_EQ(HeadQuery("入库单", Condition("CWHCODE", "=", "01", "or") + Condition("iTaxRate", "&lt;", "17", "and") +
                                      Condition("bRdFlag", "=", "1")),
              RecordsLine(receipts + " and (cWhCode='01' or iTaxRate<17 and bRdFlag=1)"));
}

/// A condition on a column of a type, and how its value is written.
struct TypedCondition {
    const char* column;
    const char* value;
    const char* text;
};

class StockQueryTypes : public StockQuery, public testing::WithParamInterface<TypedCondition> {};

TEST_P(StockQueryTypes, QuotesTextAndDatesOnly) {
    EXPECT_EQ(HeadQuery("入库单", Condition(GetParam().column, "=", GetParam().value)),
              RecordsLine(receipts + " and (" + GetParam().text + ")"));
}

INSTANTIATE_TEST_SUITE_P(
    Columns, StockQueryTypes,
    testing::Values(TypedCondition{"cCode", "x", "cCode='x'"},
                    TypedCondition{"dDate", "2023-01-01", "dDate='2023-01-01'"}, TypedCondition{"ID", "5", "ID=5"},
                    TypedCondition{"iTaxRate", "1.5", "iTaxRate=1.5"}, TypedCondition{"bRdFlag", "1", "bRdFlag=1"}),
    [](const testing::TestParamInfo<TypedCondition>& each) { return std::string(each.param.column); });

TEST_F(StockQuery, KeepsTimestampConditionsApart) {
    EXPECT_EQ(HeadQuery("入库单", Condition("QXTS", "&gt;", "0x01", "or") + Condition("cCode", "=", "a", "or") +
                                      Condition("qxts", "&lt;=", "0x02", "and") + Condition("cCode", "=", "b", "and")),
              RecordsLine(receipts + " and (cCode='a' or cCode='b') and (qxts> convert(Char, convert(Money, 0x01), 2) "
                                     "or qxts<= convert(Char, convert(Money, 0x02), 2))"));
    EXPECT_EQ(HeadQuery("出库单", Condition("qxts", "=", "0x01")),
              RecordsLine(issues + " and (qxts= convert(Char, convert(Money, 0x01), 2))"));
}

TEST_F(StockQuery, FindsDocumentsChangedSinceATimestampThatItGave) {
    StoreDocuments();
    const std::string envelope = Query(Envelope("入库单")).envelope;
    const std::size_t begin = envelope.rfind("<qxts>") + 6;
    const std::string stamp = envelope.substr(begin, envelope.find(' ', begin) - begin);
    EXPECT_THAT(stamp, testing::MatchesRegex("[0-9]+\\.[0-9][0-9][0-9][0-9]"));
    account.Run("update rdrecord set cMemo=N'changed' where ID=1");
    EXPECT_THAT(Query(Envelope("入库单"), Condition("qxts", "&gt;", stamp)).statements,
                ElementsAre(dropView, createView, columnsLookup,
                            RecordsLine(receipts + " and (qxts> convert(Char, convert(Money, " + stamp + "), 2))"),
                            BodyLine(1)));
}

TEST_F(StockQuery, DropsOrdinaryConditionsOfAnotherKind) {
    StoreDocuments();
    const Answer answer = Query(Envelope("盘点单"), Condition("cWhCode", "=", "01"));
    EXPECT_THAT(answer.statements,
                ElementsAre(dropView, createView, columnsLookup, RecordsLine("select * from rdrecordView "),
                            BodyLine(1), BodyLine(2), BodyLine(3), BodyLine(4)));
}

TEST_F(StockQuery, RaisesForATimestampConditionOfAnotherKind) {
    const std::string query = "select * from rdrecordView  and (qxts= convert(Char, convert(Money, 0x01), 2))";
    EXPECT_THAT(QueryRaises(Envelope("盘点单"), -2147217900, Condition("qxts", "=", "0x01")),
                ElementsAre(dropView, createView, columnsLookup, Failed(RecordsLine(query), -2147217900)));
}

TEST_F(StockQuery, GivesEveryDocumentForAnUnknownColumn) {
    StoreDocuments();
    const Answer answer =
        Query(Envelope("入库单"), Condition("cWhCode", "=", "01") + Condition("cNoSuchColumn", "=", "1"));
    EXPECT_THAT(answer.statements,
                ElementsAre(dropView, createView, columnsLookup, RecordsLine("select * from rdrecordView "),
                            BodyLine(1), BodyLine(2), BodyLine(3), BodyLine(4)));
    // A condition without a name is one on an unknown column.
    EXPECT_EQ(HeadQuery("入库单", "<condition/>"), RecordsLine("select * from rdrecordView "));
}

TEST_F(StockQuery, GivesEveryDocumentWhenTheColumnsCannotBeLookedUp) {
    faults.statement = [](std::string_view sql) {
        if (sql == "select * from Rdrecord where 1>1") {
            throw host::Error(-2147467259, "超时");
        }
    };
    EXPECT_THAT(Query(Envelope("入库单")).statements,
                ElementsAre(dropView, createView, Failed(columnsLookup, -2147467259),
                            RecordsLine("select * from rdrecordView ")));
}

TEST_F(StockQuery, SplicesOperationsAndValuesAsTheyStand) {
    EXPECT_EQ(HeadQuery("入库单", Condition("cCode", " like ", "%'+'R%") + Condition("ID", " in ", "(1,2)")),
              RecordsLine(receipts + " and (cCode like '%'+'R%' and ID in (1,2))"));
    EXPECT_THAT(QueryRaises(Envelope("入库单"), -2147217900, Condition("cCode", "=", "O'Hara")),
                ElementsAre(dropView, createView, columnsLookup,
                            Failed(RecordsLine(receipts + " and (cCode='O'Hara')"), -2147217900)));
}

TEST_F(StockQuery, RaisesForAnEnvelopeThatLacksWhatIsReadOfIt) {
    EXPECT_THAT(QueryRaises("<q", 91), IsEmpty());
    EXPECT_THAT(QueryRaises("", 91), IsEmpty());
    EXPECT_THAT(QueryRaises("<q roottag='d'/>", 91), ElementsAre(dropView, createView));
    EXPECT_THAT(QueryRaises("<q roottag='d'><storeinout>入库单</storeinout></q>", 91),
                ElementsAre(dropView, createView));
}

TEST_F(StockQuery, TakesTheRootForTheQueryDescriptionToo) {
    const Answer answer = Query("<storeinout type='入库单' roottag='d'/>");
    EXPECT_EQ(answer.envelope, "<storeinout type=\"入库单\" roottag=\"d\"/>");
    EXPECT_EQ(answer.statements.back(), RecordsLine(receipts));
}

TEST_F(StockQuery, NeedsATagForTheFirstDocumentOnly) {
    const std::string envelope = "<q><storeinout type='入库单'/></q>";
    EXPECT_EQ(Query(envelope).envelope, "<q/>");
    StoreDocuments();
    const auto statements = WithOpenInstance([&](kovra::ClsKovraProof& instance, host::Environment&) {
        std::string text = envelope;
        EXPECT_THROW(instance.QueryProc({}, text), host::Error);
        EXPECT_EQ(text, envelope);
    });
    EXPECT_THAT(statements, ElementsAre(dropView, createView, columnsLookup, RecordsLine(receipts)));
}

TEST_F(StockQuery, LetsErrorsOfTheConverterOut) {
    StoreDocuments();
    script.headToXml = [] { throw host::Error(-2147220000, "映射错误"); };
    EXPECT_THAT(QueryRaises(Envelope("出库单"), -2147220000),
                ElementsAre(dropView, createView, columnsLookup, RecordsLine(issues)));
}

TEST_F(StockQuery, LetsErrorsOfTheDatabaseOut) {
    account.Run("DROP TABLE Customer");
    EXPECT_THAT(QueryRaises(Envelope("出库单"), -2147217865), ElementsAre(dropView, Failed(createView, -2147217865)));
}

TEST_F(StockQuery, NeedsAConnectionThatTransactOpened) {
    test::ScriptedEnvironment environment(faults, script, nullptr);
    kovra::ClsKovraProof instance(environment);
    std::string envelope = Envelope("入库单");
    const auto errorOf = [&] { return test::ErrorNumberOf([&] { instance.QueryProc({}, envelope); }); };
    EXPECT_EQ(errorOf(), 91);
    // A connection that could not be opened is there, but closed.
    refhost::Login lost("<login QxDbName=\"Provider=KovraAccount;Data Source=" +
                            (account.folder() / "none" / "account.db").string() + "\"/>",
                        environment);
    instance.Transact(Request("ADD", ""), &lost);
    EXPECT_EQ(errorOf(), 3704);
}

} // namespace
