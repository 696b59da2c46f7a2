// What one more row costs in calls through COM, the same on every machine: what six rows take beyond what three take,
// shared out.

#include "bench/imports/Import.h"
#include "server/adapters/Msxml.h"
#include "server/adapters/ProgIds.h"
#include "tests/server/CountedFunctions.h"
#include "tests/support/com/CountedObject.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/ScriptedObject.h"

#include <numeric>
#include <optional>
#include <string>

namespace {

using server::ComPtr;
using server::DispatchObject;
using server::VariantHolder;
using test::CallCounts;

// Opened, asked whether there is a row, closed.
constexpr int callsOfLookUp = 3;
// The row's fields, and of each its object and its value.
constexpr int callsOfRow = 1;
constexpr int callsOfValue = 2;
// The one statement that writes, and the outcome.
constexpr int callsOfWrite = 1;
constexpr int callsOfOutcome = 1;
// Its name, its kind, its namespace, the next one: of a row among the rows, and of a child.
constexpr int callsOfStep = 4;

/// Children gone through from the first one on.
constexpr int Walk(int children) { return 1 + children * callsOfStep; }

/// All children of a row, and their texts.
constexpr int WholeRow(int children) { return callsOfStep + Walk(children) + children; }

/// Nine children: the batch number is the seventh; four texts are read at once. After the look-ups of the master data a
/// project is looked for among all, and the date is read; after those of the valuation the quantity and the cost, the
/// fifth. What is written takes the list of the children, nine names and the texts of those that are no amounts.
constexpr int openingNodes = callsOfStep + Walk(7) + 4 + Walk(9) + 1 + Walk(5) + 2 + 1 + 9 + 6;

/// What the rules have a row ask.
struct Rule {
    bench::Import (*import)();
    /// Look-ups of which it matters only whether they find something.
    int found;
    /// Look-ups whose first row is read, and the values of these rows together.
    int read;
    int values;
    /// Those among them of an option, which are asked at both ends.
    int options;
    /// Members of the login.
    int login;
    /// Calls to the nodes of the request.
    int nodes;
};

const Rule rules[] = {
    // The year: in the look-ups of two accounts and of the setting, and in the setting itself.
    {bench::InventorySettings, 5, 0, 0, 0, 4, WholeRow(8)},
    {bench::OppositeSettings, 6, 0, 0, 0, 4, WholeRow(5)},
    // Four accounts.
    {bench::StandardCostSettings, 8, 0, 0, 0, 6, WholeRow(7)},
    // Of the item two values, ten flags and two more, of the warehouse two, of the option twice its value. The year is
    // written.
    {bench::OpeningBalances, 0, 8, 2 + 10 + 2 + 2 + 2, 2, 1, openingNodes},
};

struct Calls {
    double lookUps = 0;
    double ado = 0;
    double host = 0;
    double login = 0;
    double nodes = 0;
    /// Calls of the ERP's components of vouchers.
    double components = 0;
};

int Sum(const std::map<std::wstring, int>& counts, std::wstring_view type = {}) {
    return std::accumulate(counts.begin(), counts.end(), 0, [&](int sum, const auto& count) {
        return sum + (count.first.starts_with(type) ? count.second : 0);
    });
}

void Fill(const test::TestAccount& account, const bench::Import& import, std::size_t rows) {
    std::string statements;
    for (const std::string& statement : import.account(rows))
        statements += statement + "\nGO\n";
    account.Run(statements);
}

/// Slots of MSXML's elements: IUnknown's and IDispatch's seven, those of a node, and their own.
constexpr std::size_t elementFunctions = 7 + 36 + 9;

/// The ERP's components that work on the connection and on recordsets themselves.
constexpr const wchar_t* components[] = {server::progid::eaiXmlConverter, server::progid::iaVoucherService,
                                         server::progid::provisionPreCheck, server::progid::rsXmlHelper,
                                         server::progid::zendaT};

ComPtr<IXMLDOMDocument> Sample() {
    ComPtr<IXMLDOMDocument> document =
        DispatchObject::Create(server::progid::domDocument).object().As<IXMLDOMDocument>();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const VariantHolder xml(std::string_view("<a>b</a>"));
    EXPECT_EQ(document->loadXML(V_BSTR(&xml.Get()), &loaded), S_OK);
    return document;
}

class CountedImports : public test::HostedTest {
protected:
    /// Of one row more, and told to whoever looks.
    static Calls OfEach(const bench::Import& import) {
        constexpr int rows = 3;
        const Calls few = Of(import, rows);
        const Calls many = Of(import, 2 * rows);
        Calls each;
        for (double Calls::*count :
             {&Calls::lookUps, &Calls::ado, &Calls::host, &Calls::login, &Calls::nodes, &Calls::components})
            each.*count = (many.*count - few.*count) / rows;
        std::printf("%s: %.1f names looked up, %.1f calls of ADO, %.1f of the helper, %.1f of the login, %.1f of "
                    "nodes, %.1f of components\n",
                    import.name.c_str(), each.lookUps, each.ado, each.host, each.login, each.nodes, each.components);
        return each;
    }

private:
    /// Of an import of so many rows, on a thread of its own, since a thread keeps its helper.
    static Calls Of(const bench::Import& import, std::size_t rows) {
        const test::TestAccount account;
        Fill(account, import, rows);
        CallCounts counts;
        Calls calls;
        test::InNewApartment([&] {
            std::optional<test::ReplacedClass> replaced[3];
            const auto count = [&](std::optional<test::ReplacedClass>& place, const wchar_t* progId,
                                   const wchar_t* type) {
                place.emplace(progId, [&place, &counts, type] { return Counted(place->Original(), type, counts); });
            };
            count(replaced[0], server::progid::connection, L"Connection");
            count(replaced[1], server::progid::recordset, L"Recordset");
            count(replaced[2], server::progid::eaiHelper, L"Helper");
            std::optional<test::ReplacedClass> replacedComponents[std::size(components)];
            for (std::size_t i = 0; i < std::size(components); ++i) {
                auto& place = replacedComponents[i];
                place.emplace(components[i], [&place, &counts] {
                    return test::CountedComponent(place->Original(), L"Component", counts);
                });
            }
            const ComPtr<IXMLDOMDocument> sample = Sample();
            ComPtr<IXMLDOMElement> element;
            EXPECT_EQ(sample->get_documentElement(element.Put()), S_OK);
            const test::CountedFunctions elements(*element.Get(), elementFunctions, GetModuleHandleW(L"Kovra.dll"));
            const int before = test::CountedFunctions::Count();
            const DispatchObject login(Counted(test::Login(account.LoginXml()).object(), L"Login", counts));
            const std::string result =
                test::Transact((L"Kovra." + std::wstring(import.className.begin(), import.className.end())).c_str(),
                               VariantHolder(import.request(rows)), login);
            calls.nodes = test::CountedFunctions::Count() - before;
            EXPECT_EQ(result.find("code=\"101\""), std::string::npos) << result;
            EXPECT_NE(result.find("code=\"0\""), std::string::npos) << result;
        }).join();
        calls.lookUps = Sum(counts.lookUps);
        calls.host = Sum(counts.calls, L"Helper.");
        calls.login = Sum(counts.calls, L"Login.");
        calls.components = Sum(counts.calls, L"Component.");
        calls.ado = Sum(counts.calls) - calls.host - calls.login - calls.components;
        return calls;
    }
};

class RowCalls : public CountedImports, public testing::WithParamInterface<Rule> {};

TEST_P(RowCalls, AreThoseThatItsRulesNeed) {
    const Rule& rule = GetParam();
    const Calls each = OfEach(rule.import());
    // The number behind a name is known after the first row.
    EXPECT_EQ(each.lookUps, 0);
    EXPECT_EQ(each.ado, (rule.found + rule.read) * callsOfLookUp + rule.options + rule.read * callsOfRow +
                            rule.values * callsOfValue + callsOfWrite);
    EXPECT_EQ(each.host, callsOfOutcome);
    EXPECT_EQ(each.login, rule.login);
    EXPECT_EQ(each.nodes, rule.nodes);
    EXPECT_EQ(each.components, 0);
}

INSTANTIATE_TEST_SUITE_P(Imports, RowCalls, testing::ValuesIn(rules),
                         [](const auto& parameter) { return parameter.param.import().className; });

// A recordset's cursor is put on the client's side.
constexpr int callsOfPlace = 1;
/// The open month's month and year, and the month's two dates, of which each recordset is asked whether there is a row.
constexpr int callsOfMonth = callsOfLookUp + callsOfRow + 2 * callsOfValue;
/// The option is asked at both ends.
constexpr int callsOfOption = callsOfLookUp + 1 + callsOfRow + callsOfValue;

TEST_F(CountedImports, OfPriceVouchersAreThoseThatARowsRulesNeed) {
    const Calls each = OfEach(bench::PriceVouchers());
    EXPECT_EQ(each.lookUps, 0);
    // The companion opens the count of repetitions.
    EXPECT_EQ(each.components, 1);
    int ado = callsOfRow + callsOfValue;
    // The checks' recordset, the open month, the recordset of its dates, the dates.
    ado += callsOfPlace + callsOfMonth + callsOfPlace + callsOfMonth;
    // The latest date of the ledger, which is in a row always: opened, read, closed.
    ado += callsOfLookUp - 1 + callsOfRow + callsOfValue;
    // The item with its free items; the way of valuing and the item's planned price; the way once more, the price and
    // the month's end; whether there is cost accounting, which there is not.
    ado += callsOfLookUp + callsOfOption + callsOfLookUp + callsOfOption + 2 * callsOfLookUp + callsOfLookUp;
    ado += callsOfWrite;
    EXPECT_EQ(each.ado, ado);
    // The outcome is the document's.
    EXPECT_EQ(each.host, 0);
    // The account, today and its month.
    EXPECT_EQ(each.login, 3);
    // Three children and their texts; that there are no free items is known when they are gone through.
    EXPECT_EQ(each.nodes, Walk(3) + 3);
}

TEST_F(CountedImports, OfProvisionsAreThoseThatADocumentsRulesNeed) {
    const Calls each = OfEach(bench::Provisions());
    // Whether what a component hands out as a recordset is one.
    EXPECT_EQ(each.lookUps, 1);
    // The head and the body filled, the service begun, the template, the check, the save.
    EXPECT_EQ(each.components, 6);
    // Is the number taken: asked at both ends.
    int ado = callsOfLookUp + 1;
    // Two recordsets without rows: placed, opened, saved as documents.
    ado += 2 * (callsOfPlace + 2);
    // The template: is there one, and its number.
    ado += 1 + callsOfRow + callsOfValue;
    // The transaction's begin and its end.
    ado += 2;
    EXPECT_EQ(each.ado, ado);
    // The document's number, and the outcome.
    EXPECT_EQ(each.host, 1 + callsOfOutcome);
    // It goes to the components as it is.
    EXPECT_EQ(each.login, 0);
    // Itself among the documents, its head; after the look-up of the number its body, the second child.
    int nodes = callsOfStep + Walk(1) + Walk(2);
    // The type's path and its text, and the whole row's text for the converter.
    nodes += 2 + 1;
    // Of the head's record two attributes are set; then two more, the type is read, the template set, and the type read
    // again for the save.
    nodes += 2 + 2 + 1 + 1 + 1;
    // Three entries' items and balances.
    nodes += 3 * 2;
    EXPECT_EQ(each.nodes, nodes);
}

} // namespace
