#include "refhost/eai/Login.h"
#include "refhost/trace/Trace.h"
#include "refhost/xml/Document.h"
#include "tests/ModPub/FrameClasses.h"
#include "tests/support/Import.h"
#include "tests/support/NameOfCase.h"

#include <new>

#include <gtest/gtest.h>

namespace test {
namespace {

/// Replaces the first `from` in `text`.
std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    return text.replace(text.find(from), from.size(), to);
}

/// An account in which every class takes requests; year 2023.
class Frame : public testing::TestWithParam<FrameClass> {
protected:
    Frame() {
        account.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES\n"
                    "(N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1'),\n"
                    "(N'IA', N'dIAStartDate', N'2023-01-01')\n"
                    "GO\n"
                    "INSERT INTO QxSystem..UA_Period (cAcc_Id, iYear, iId, dBegin, dEnd) VALUES\n"
                    "(N'001', 2023, 1, '2023-01-01', '2023-01-31')\n");
    }

    struct Run {
        std::vector<std::string> results;
        std::vector<std::string> trace;
    };

    Run Call(host::Environment& environment, const std::string& request, const std::string& loginXml, int times = 1) {
        // The login is the caller's: what is wrong with the class's world is not wrong with it.
        refhost::Environment callersWorld;
        refhost::Login login(loginXml, callersWorld);
        return {GetParam().calls(environment, request, &login, times), {}};
    }

    /// One call under the account's login on an environment with these faults.
    ImportRun Call(const std::string& request, Faults faults = {}) {
        return Call(request, account.LoginXml(), std::move(faults));
    }

    ImportRun Call(const std::string& request, const std::string& loginXml, Faults faults = {}) {
        const std::filesystem::path path = account.folder() / "trace.jsonl";
        ImportRun run;
        {
            refhost::Trace trace(path.string());
            FaultyEnvironment environment(std::move(faults), &trace);
            run.result = Call(environment, request, loginXml).results.front();
            trace.Flush();
        }
        run.trace = OwnLines(path);
        return run;
    }

    TestAccount account;
};

INSTANTIATE_TEST_SUITE_P(All, Frame,
                         testing::Values(InventorySettings(), OppositeSettings(), StandardCostSettings(),
                                         OpeningBalances(), Provisions(), PriceAdjustments()),
                         test::nameOfCase);

constexpr const char* noRows = R"(<qxinterface roottag="row" docid="D" proc="ADD"/>)";

TEST_P(Frame, RefusesWhatIsNoXml) {
    for (const char* request : {"", "no XML", "<qxinterface", "<a></b>", "<a/><b/>", "<a b=\"1\" b=\"2\"/>"}) {
        const ImportRun run = Call(request);
        EXPECT_EQ(run.result, GetParam().errors.notParsed) << request;
        // The connection comes first, and nothing is asked of it.
        EXPECT_EQ(run.trace, std::vector{Connected(account.connectionString())}) << request;
    }
}

/// A document that takes any text and stays empty.
class RootlessDocument : public host::DOMDocument {
public:
    bool LoadXML(std::string_view) override { return true; }
    std::string LoadError() const override { return {}; }
    host::DOMNodePtr DocumentElement() const override { return nullptr; }
    std::string Xml() const override { return {}; }
    host::DOMNodePtr SelectSingleNode(std::string_view) const override { return nullptr; }
    host::DOMNodeList SelectNodes(std::string_view) const override { return {}; }
    host::DOMNodePtr CreateElement(std::string_view) override { return nullptr; }
    host::DOMNodePtr CreateElementNS(std::string_view, std::string_view) override { return nullptr; }
};

/// Its second document, the request, stays empty.
class RootlessEnvironment : public FaultyEnvironment {
public:
    using FaultyEnvironment::FaultyEnvironment;

    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override {
        if (++documents_ == 2) {
            return std::make_unique<RootlessDocument>();
        }
        return FaultyEnvironment::CreateDOMDocument();
    }

private:
    int documents_ = 0;
};

TEST_P(Frame, RefusesARequestWithoutRoot) {
    std::vector<std::string> asked;
    RootlessEnvironment environment(
        {.eaiHelper = [&asked](std::string_view operation) { asked.emplace_back(operation); }});
    EXPECT_EQ(Call(environment, noRows, account.LoginXml()).results,
              std::vector<std::string>{GetParam().errors.noRoot});
    EXPECT_EQ(asked, GetParam().askedWithoutRoot);
}

TEST_P(Frame, TakesARootOfAnyName) {
    EXPECT_EQ(Call(R"(<anything roottag="row" docid="D" proc="ADD"/>)").result, ResultDocument("ADD", {}));
}

TEST_P(Frame, ReturnsTheInitialDocumentWhenTheRowTagNamesNothing) {
    EXPECT_EQ(Call(R"(<qxinterface roottag="row" docid="D" proc="ADD"><other/><a><row/></a></qxinterface>)").result,
              ResultDocument("ADD", {}));
}

TEST_P(Frame, HandsDocumentIdAndOperationBackAsTheyStand) {
    EXPECT_EQ(Call(R"(<qxinterface roottag="row" docid="a &lt;&quot;b&quot;&gt; &amp; c" proc="aDd"/>)").result,
              R"(<qxinterface docid="a &lt;&quot;b&quot;&gt; &amp; c" proc="aDd"/>)");
    EXPECT_EQ(Call(R"(<qxinterface roottag="row" proc="ADD"/>)").result, R"(<qxinterface docid="" proc="ADD"/>)");
}

TEST_P(Frame, TakesTheOperationInAnyLetterCase) {
    for (const std::string& proc : GetParam().operations) {
        EXPECT_EQ(Call(Request(proc, "")).result, ResultDocument(proc, {})) << proc;
    }
}

TEST_P(Frame, RefusesAnOperationThatItDoesNotOffer) {
    for (const char* request :
         {R"(<qxinterface roottag="row" docid="D" proc="Delete"/>)", R"(<qxinterface roottag="row" docid="D"/>)",
          R"(<qxinterface roottag="row" docid="D" proc=" ADD"/>)"}) {
        EXPECT_EQ(Call(request).result, GetParam().errors.notOffered) << request;
    }
}

TEST_P(Frame, ReportsALoginWithoutConnectionString) {
    const std::string login = Replaced(account.LoginXml(), "QxDbName=\"" + account.connectionString() + "\"", "");
    const ImportRun run = Call(noRows, login);
    EXPECT_EQ(run.result, R"(<error code="438" dsc="对象不支持该属性或方法"/>)");
    EXPECT_EQ(run.trace, std::vector<std::string>());
}

TEST_P(Frame, ReportsAConnectionStringThatNoProviderTakes) {
    const ImportRun run =
        Call(noRows, Replaced(account.LoginXml(), account.connectionString(), "Provider=Unknown;Data Source=x"));
    EXPECT_EQ(run.result, R"(<error code="3706" dsc="Provider cannot be found. It may not be properly installed."/>)");
    EXPECT_EQ(run.trace, std::vector{Connected("Provider=Unknown;Data Source=x", 3706)});
}

TEST_P(Frame, ReportsADatabaseFileThatCannotBeOpened) {
    const std::string missing = "Provider=KovraAccount;Data Source=" + (account.folder() / "no" / "file.db").string();
    const ImportRun run = Call(noRows, Replaced(account.LoginXml(), account.connectionString(), missing));
    EXPECT_TRUE(run.result.starts_with(R"(<error code="-2147467259" dsc=")")) << run.result;
    EXPECT_EQ(run.trace, std::vector{Connected(missing, -2147467259)});
}

TEST_P(Frame, ServesOneCallAnInstance) {
    FaultyEnvironment environment({});
    EXPECT_EQ(Call(environment, noRows, account.LoginXml(), 3).results,
              (std::vector<std::string>{
                  ResultDocument("ADD", {}),
                  R"(<error code="3705" dsc="Operation is not allowed when the object is open."/>)",
                  R"(<error code="3705" dsc="Operation is not allowed when the object is open."/>)",
              }));
}

TEST_P(Frame, RefusesToWorkWithoutALogin) {
    FaultyEnvironment environment({});
    EXPECT_EQ(GetParam().calls(environment, noRows, nullptr, 1),
              std::vector<std::string>{R"(<error code="91" dsc="对象变量或 With 块变量未设置"/>)"});
}

TEST_P(Frame, ReportsAnErrorOfTheHelper) {
    for (const std::string_view failing : {"GetAttr", "MakeResultDoc"}) {
        EXPECT_EQ(Call(noRows, {.eaiHelper =
                                    [failing](std::string_view operation) {
                                        if (operation == failing) {
                                            throw host::Error(-2147467259, "no \"helper\" <here>");
                                        }
                                    }})
                      .result,
                  R"(<error code="-2147467259" dsc="no &quot;helper&quot; &lt;here&gt;"/>)")
            << failing;
    }
}

TEST_P(Frame, WritesTheErrorItselfWhereTheHelperFailsAltogether) {
    const std::string description = "a \"helper\" <lost> & gone\r\n\tfor 好";
    const ImportRun run = Call(noRows, {.eaiHelper = [&description](std::string_view operation) {
                                   throw host::Error(operation == "GetAttr" ? 91 : 5, description);
                               }});
    const std::unique_ptr<host::DOMDocument> result = refhost::xml::CreateDocument();
    ASSERT_TRUE(result->LoadXML(run.result)) << run.result;
    EXPECT_EQ(result->DocumentElement()->NodeName(), "error");
    EXPECT_EQ(result->DocumentElement()->GetAttribute("code"), "91");
    EXPECT_EQ(result->DocumentElement()->GetAttribute("dsc"), description);
}

TEST_P(Frame, ReportsWhatIsNoErrorOfTheHouse) {
    EXPECT_EQ(Call(noRows, {.document = [] { throw std::bad_alloc(); }}).result, R"(<error code="7" dsc="内存溢出"/>)");
    EXPECT_EQ(Call(noRows, {.document = [] { throw std::runtime_error("odd"); }}).result,
              R"(<error code="-2147467259" dsc="odd"/>)");
    EXPECT_EQ(Call(noRows, {.document = [] { throw 1; }}).result, R"(<error code="-2147467259" dsc=""/>)");
}

/// The three settings classes have the year-end check and rows that can be told apart by a warehouse or a category.
class SettingsFrame : public Frame {
protected:
    /// A row that the class imports; it differs by `code`, one of 1 to 5.
    static std::string Row(int code) {
        const std::string text = std::to_string(code);
        return "<row><cWhCode>" + text + "</cWhCode><cRdCode>" + text + "</cRdCode><cInvHead>1401</cInvHead>" +
               "<cOppHead>1401</cOppHead></row>";
    }

    static std::string Key(int code) {
        const std::string text = std::to_string(code);
        const std::string_view name = GetParam().name;
        if (name == "ClsInvSubject") {
            return "仓库编码：" + text + "， ， ";
        }
        return "收发类别编码：" + text + (name == "ClsOppSubject" ? "， ， ， ， ， " : "， ， ");
    }

    void AddMasterData() const {
        account.Run("INSERT INTO Warehouse (cWhCode) VALUES (N'1'), (N'2'), (N'3'), (N'4'), (N'5')\n"
                    "GO\n"
                    "INSERT INTO rd_style (cRdCode) VALUES (N'1'), (N'2'), (N'3'), (N'4'), (N'5')\n"
                    "GO\n"
                    "INSERT INTO code (iyear, ccode) VALUES (2023, N'1401')\n");
    }

    std::size_t Stored() const {
        const std::string table = GetParam().name == std::string_view("ClsInvSubject") ? "IA_HeadSet" : "IA_OppHead";
        return account.Rows("select AutoID from " + table).size();
    }
};

INSTANTIATE_TEST_SUITE_P(All, SettingsFrame,
                         testing::Values(InventorySettings(), OppositeSettings(), StandardCostSettings()),
                         test::nameOfCase);

TEST_P(SettingsFrame, ImportsRowsInDocumentOrderAndIgnoresOtherElements) {
    AddMasterData();
    const ImportRun run =
        Call("<q roottag='row' docid='D' proc='ADD'>" + Row(2) + "<other>" + Row(4) + "</other>" + Row(1) + "</q>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{Key(2), 0, "ok"}, {Key(1), 0, "ok"}}));
    EXPECT_EQ(Stored(), 2U);
}

TEST_P(SettingsFrame, FollowsTheRowTagAsAPath) {
    AddMasterData();
    const ImportRun run =
        Call("<q roottag='body/row' docid='D' proc='ADD'>" + Row(2) + "<body>" + Row(4) + Row(1) + "</body></q>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{Key(4), 0, "ok"}, {Key(1), 0, "ok"}}));
}

TEST_P(SettingsFrame, ReportsARowTagThatIsNoPath) {
    const ImportRun run = Call("<q roottag='row[' docid='D' proc='ADD'>" + Row(2) + "</q>");
    EXPECT_TRUE(run.result.starts_with("<error code=\"-2147467259\" dsc=\"")) << run.result;
}

TEST_P(SettingsFrame, StopsAtARowWhoseOutcomeCannotBeRecorded) {
    AddMasterData();
    int items = 0;
    const ImportRun run = Call(Request("ADD", Row(1) + Row(2) + Row(3) + Row(4) + Row(5)),
                               {.eaiHelper = [&items](std::string_view operation) {
                                   if (operation == "AddResultItem" && ++items == 3) {
                                       throw host::Error(-2147467259, "The document is full.");
                                   }
                               }});
    EXPECT_EQ(run.result,
              ResultDocument("ADD", {{Key(1), 0, "ok"}, {Key(2), 0, "ok"}, {"", 999, "The document is full."}}));
    // What the third row wrote stays; the fourth and fifth are not looked at.
    EXPECT_EQ(Stored(), 3U);
    EXPECT_EQ(items, 4);
}

TEST_P(SettingsFrame, ReportsAStoppingErrorThatCannotBeRecordedEither) {
    AddMasterData();
    EXPECT_EQ(Call(Request("ADD", Row(1)), {.eaiHelper =
                                                [](std::string_view operation) {
                                                    if (operation == "AddResultItem") {
                                                        throw host::Error(91, "对象变量或 With 块变量未设置");
                                                    }
                                                }})
                  .result,
              R"(<error code="91" dsc="对象变量或 With 块变量未设置"/>)");
}

TEST_P(SettingsFrame, ReportsALoginYearThatIsNoYear) {
    EXPECT_EQ(Call(noRows, Replaced(account.LoginXml(), "cIYear=\"2023\"", "cIYear=\"year\"")).result,
              R"(<error code="13" dsc="类型不匹配"/>)");
    EXPECT_EQ(Call(noRows, Replaced(account.LoginXml(), "cIYear=\"2023\"", "cIYear=\"40000\"")).result,
              R"(<error code="6" dsc="溢出"/>)");
    EXPECT_EQ(Call(noRows, Replaced(account.LoginXml(), "cIYear=\"2023\"", "")).result,
              R"(<error code="438" dsc="对象不支持该属性或方法"/>)");
}

TEST_P(SettingsFrame, ReportsAnErrorOfTheYearEndLookUp) {
    account.Run("DROP TABLE GL_mend");
    const ImportRun run = Call(noRows);
    EXPECT_EQ(run.result, R"(<error code="-2147217865" dsc="Invalid object name 'GL_mend'."/>)");
    EXPECT_EQ(
        run.trace.back(),
        LookedUpAtClient("SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12 AND bflag_IA=1", -2147217865));
}

TEST_P(SettingsFrame, AsksForTheYearAsAWholeNumber) {
    const ImportRun run = Call(noRows, Replaced(account.LoginXml(), "cIYear=\"2023\"", "cIYear=\" 2024.5\""));
    EXPECT_EQ(run.trace.back(),
              LookedUpAtClient("SELECT bflag_IA FROM GL_mend WHERE iyear = 2024 AND iperiod=12 AND bflag_IA=1"));
}

TEST_P(SettingsFrame, EmptyReadsNoRow) {
    int items = 0;
    const ImportRun run = Call(
        Request("EMPTY", "<row/>"), Replaced(account.LoginXml(), "account.db\"", "account.db;Delete Star=Accept\""),
        {.eaiHelper = [&items](std::string_view operation) { items += operation == "AddResultItem" ? 1 : 0; }});
    EXPECT_EQ(run.result, "");
    EXPECT_EQ(items, 0);
}

/// The two classes without "EMPTY".
class FrameWithoutEmpty : public Frame {};

INSTANTIATE_TEST_SUITE_P(All, FrameWithoutEmpty, testing::Values(OpeningBalances(), Provisions()), test::nameOfCase);

TEST_P(FrameWithoutEmpty, RefusesToEmpty) {
    EXPECT_EQ(Call(Request("EMPTY", "<row/>")).result, commonErrors.notOffered);
}

/// The class that adjusts prices has operations of its own.
class PriceFrame : public Frame {};

INSTANTIATE_TEST_SUITE_P(All, PriceFrame, testing::Values(PriceAdjustments()), test::nameOfCase);

TEST_P(PriceFrame, NeverTakesEdit) {
    for (const char* proc : {"EDIT", "edit", "Edit"}) {
        const ImportRun run = Call(Request(proc, "<row/>"));
        EXPECT_EQ(run.result, priceErrors.notOffered) << proc;
        EXPECT_EQ(run.trace, std::vector{Connected(account.connectionString())}) << proc;
    }
}

TEST_P(PriceFrame, EmptyDoesNothing) {
    for (const char* proc : {"EMPTY", "empty"}) {
        const ImportRun run = Call(Request(proc, "<row/>"));
        EXPECT_EQ(run.result, "") << proc;
        EXPECT_EQ(run.trace, std::vector{Connected(account.connectionString())}) << proc;
    }
}

} // namespace
} // namespace test
