// An import that somebody watches: the same statements and result, and every row told of with what came of it.

#include "cli/Classes.h"
#include "tests/support/Import.h"
#include "tests/support/NumberedImport.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace test {
namespace {

/// Notes what it hears, one text each.
class Notes : public ModPub::ImportObserver {
public:
    void RequestBegins(std::string_view docid, std::string_view proc) noexcept override {
        Note("request ", docid, " ", proc);
    }
    void RowsSelected(std::size_t count) noexcept override { Note("rows ", std::to_string(count)); }
    bool RowBegins(std::size_t number, const host::DOMNode& row) noexcept override {
        Note("row ", std::to_string(number), " <", row.NodeName(), ">");
        return number != stopBeforeRow;
    }
    void EntriesSelected(std::size_t count) noexcept override { Note("entries ", std::to_string(count)); }
    bool EntryBegins(std::size_t number, const host::DOMNode& entry) noexcept override {
        Note("entry ", std::to_string(number), " ", entry.SelectSingleNode("cInvCode")->Text());
        return number != stopBeforeEntry;
    }
    void EntryRefused(std::string_view message) noexcept override { Note("entry refused ", message); }
    void OutcomeRecorded(std::string_view key, long code, std::string_view description) noexcept override {
        Note("outcome ", key, " ", std::to_string(code), " ", description);
    }
    void RequestUndone() noexcept override { Note("undone"); }
    void RequestRefused(std::string_view code, std::string_view message) noexcept override {
        Note("refused ", code, " ", message);
    }

    std::vector<std::string> heard;
    std::size_t stopBeforeRow = 0;
    std::size_t stopBeforeEntry = 0;

private:
    template <class... Pieces> void Note(const Pieces&... pieces) {
        std::string note;
        (note.append(pieces), ...);
        heard.push_back(note);
    }
};

ImportRun Imported(const TestAccount& account, const char* className, const std::string& request,
                   ModPub::ImportObserver* observer, Faults faults = {}) {
    const std::filesystem::path path = account.folder() / "trace.jsonl";
    ImportRun run;
    {
        refhost::Trace trace(path.string());
        FaultyEnvironment environment(std::move(faults), &trace);
        refhost::Login login(account.LoginXml(), environment);
        run.result = std::ranges::find(cli::ImportClasses(), className, &cli::ImportClass::name)
                         ->transact(environment, request, &login, observer);
        trace.Flush();
    }
    run.trace = ReadLines(path);
    // They name the account's folder.
    std::erase_if(run.trace, [](const std::string& line) { return line.starts_with("{\"op\":\"Connect\""); });
    return run;
}

class ObservedImport : public testing::TestWithParam<NumberedImport> {};

TEST_P(ObservedImport, SendsTheSameStatementsAndGivesTheSameResult) {
    const NumberedAccount original(4);
    std::string request = RequestOf(GetParam(), 0, 4);
    // A row that is refused besides.
    request.insert(request.find("</qxinterface>"), "<row><cWhCode>none</cWhCode></row>");
    const TestAccount unobservedAccount(original);
    const TestAccount observedAccount(original);
    Notes notes;
    const ImportRun unobserved = Imported(unobservedAccount, GetParam().className, request, nullptr);
    const ImportRun observed = Imported(observedAccount, GetParam().className, request, &notes);
    EXPECT_GT(unobserved.trace.size(), 4U);
    EXPECT_EQ(observed.trace, unobserved.trace);
    EXPECT_EQ(observed.result, unobserved.result);
    EXPECT_EQ(notes.heard.front(), "request D ADD");
}

INSTANTIATE_TEST_SUITE_P(EachClass, ObservedImport, testing::ValuesIn(NumberedImports()), NameOfImport);

std::string Settings(const std::string& rows, const char* proc = "ADD") {
    return "<qxinterface roottag=\"row\" docid=\"D\" proc=\"" + std::string(proc) + "\">" + rows + "</qxinterface>";
}

constexpr const char* goodRow = "<row><cWhCode>01</cWhCode><cInvHead>140301</cInvHead></row>";
constexpr const char* goodOutcome = "outcome 仓库编码：01， ，  0 ok";

TEST(Observer, HearsOfEachRowAndItsOutcomes) {
    const TestAccount account(AccountContent::demo);
    Notes notes;
    Imported(
        account, "ClsInvSubject",
        Settings(std::string(goodRow) + "<row><cWhCode>99</cWhCode><cInvHead>140301</cInvHead></row><row2/>" + goodRow),
        &notes);
    EXPECT_EQ(notes.heard,
              (std::vector<std::string>{"request D ADD", "rows 3", "row 1 <row>", goodOutcome, "row 2 <row>",
                                        "outcome 仓库编码：99， ，  101 仓库编码不合法。", "row 3 <row>",
                                        "outcome 仓库编码：01， ，  101 对照关系已经存在，无法插入新记录。",
                                        // A row that is refused while it is written gets both.
                                        goodOutcome}));
}

TEST(Observer, HearsOfARequestThatIsRefused) {
    const TestAccount account(AccountContent::demo);
    Notes notes;
    Imported(account, "ClsInvSubject", "<a", &notes);
    EXPECT_EQ(notes.heard, std::vector<std::string>{"refused 100 解析XML时发生错误,请你检查XML参数格式"});
    notes.heard.clear();
    Imported(account, "ClsInvSubject", Settings("", "none"), &notes);
    EXPECT_EQ(notes.heard, (std::vector<std::string>{"request D NONE", "refused 710 本模块暂不提供此功能！"}));
}

TEST(Observer, HearsOfTheErrorThatEndsARequest) {
    const TestAccount account(AccountContent::demo);
    Notes notes;
    Faults faults;
    faults.statement = [](std::string_view) { throw host::Error(4711, "gone"); };
    Imported(account, "ClsInvSubject", Settings(goodRow), &notes, faults);
    EXPECT_EQ(notes.heard, std::vector<std::string>{"refused 4711 gone"});
}

TEST(Observer, StopsBetweenRowsAndWhatWasWrittenStays) {
    const TestAccount account(AccountContent::demo);
    Notes notes;
    notes.stopBeforeRow = 2;
    const ImportRun run =
        Imported(account, "ClsInvSubject", Settings(std::string(goodRow) + "<row><cWhCode>02</cWhCode></row>"), &notes);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"仓库编码：01， ， ", 0, "ok"}}));
    EXPECT_EQ(notes.heard,
              (std::vector<std::string>{"request D ADD", "rows 2", "row 1 <row>", goodOutcome, "row 2 <row>"}));
    EXPECT_EQ(account.Rows("select cWhCode from IA_HeadSet"), std::vector<std::string>{"{\"cWhCode\":\"01\"}"});
}

const NumberedImport& PriceVouchers() { return NumberedImports().back(); }

TEST(Observer, HearsOfTheEntriesOfAPriceVoucher) {
    const NumberedAccount account(2);
    Notes notes;
    Imported(account, "ClsPriceJustVou", RequestOf(PriceVouchers(), 0, 2), &notes);
    EXPECT_EQ(notes.heard,
              (std::vector<std::string>{"request D ADD", "rows 1", "row 1 <row>", "entries 2", "entry 1 N000000",
                                        "entry 2 N000001", "outcome 单据TJ1 0 成功导入："}));
}

TEST(Observer, HearsWhichEntryRefusesAPriceVoucher) {
    const NumberedAccount account(1);
    std::string request = RequestOf(PriceVouchers(), 0, 1);
    request.insert(request.find("</body>"), PriceVouchers().row(0));
    Notes notes;
    Imported(account, "ClsPriceJustVou", request, &notes);
    EXPECT_EQ(notes.heard,
              (std::vector<std::string>{"request D ADD", "rows 1", "row 1 <row>", "entries 2", "entry 1 N000000",
                                        "entry 2 N000000", "entry refused 单据TJ1导入失败：存货N000000重复",
                                        "outcome  999 单据TJ1导入失败：存货N000000重复\r\n"}));
}

TEST(Observer, RollsBackAPriceVoucherThatItStops) {
    const NumberedAccount account(2);
    Notes notes;
    notes.stopBeforeEntry = 2;
    const ImportRun run = Imported(account, "ClsPriceJustVou", RequestOf(PriceVouchers(), 0, 2), &notes);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"产生未知异常，导入失败！", 999, "出现用户中断"}}));
    EXPECT_EQ(notes.heard.back(), "undone");
    EXPECT_TRUE(account.Rows("select ID from CostJustVouch").empty());
    EXPECT_TRUE(account.Rows("select name from sysobjects where name like 'IA_tmp%'").empty());
}

TEST(Observer, RollsBackTheVouchersBeforeTheOneThatItStops) {
    const NumberedAccount account(1);
    std::string request = RequestOf(PriceVouchers(), 0, 1);
    request.insert(request.find("</qxinterface>"), "<row><header/></row>");
    Notes notes;
    notes.stopBeforeRow = 2;
    Imported(account, "ClsPriceJustVou", request, &notes);
    EXPECT_EQ(notes.heard, (std::vector<std::string>{"request D ADD", "rows 2", "row 1 <row>", "entries 1",
                                                     "entry 1 N000000", "outcome 单据TJ1 0 成功导入：", "row 2 <row>",
                                                     "outcome 产生未知异常，导入失败！ 999 出现用户中断", "undone"}));
    EXPECT_TRUE(account.Rows("select ID from CostJustVouch").empty());
}

} // namespace
} // namespace test
