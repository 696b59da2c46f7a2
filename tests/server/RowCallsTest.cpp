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
    int lookUps = 0;
    int ado = 0;
    int host = 0;
    int login = 0;
    int nodes = 0;
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

/// Slots of MSXML's interfaces: IUnknown's and IDispatch's seven, and their own.
constexpr std::size_t nodeFunctions = 7 + 36;

ComPtr<IXMLDOMDocument> Sample() {
    ComPtr<IXMLDOMDocument> document =
        DispatchObject::Create(server::progid::domDocument).object().As<IXMLDOMDocument>();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const VariantHolder xml(std::string_view("<a>b</a>"));
    EXPECT_EQ(document->loadXML(V_BSTR(&xml.Get()), &loaded), S_OK);
    return document;
}

class RowCalls : public test::HostedTest, public testing::WithParamInterface<Rule> {
protected:
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
            const ComPtr<IXMLDOMDocument> sample = Sample();
            ComPtr<IXMLDOMElement> element;
            EXPECT_EQ(sample->get_documentElement(element.Put()), S_OK);
            const test::CountedFunctions elements(*element.Get(), nodeFunctions, GetModuleHandleW(L"Kovra.dll"));
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
        calls.ado = Sum(counts.calls) - calls.host - calls.login;
        return calls;
    }
};

TEST_P(RowCalls, AreThoseThatItsRulesNeed) {
    constexpr int rows = 3;
    const Rule& rule = GetParam();
    const bench::Import import = rule.import();
    const Calls few = Of(import, rows);
    const Calls many = Of(import, 2 * rows);
    const auto each = [&](int Calls::*count) {
        return static_cast<double>(many.*count - few.*count) / static_cast<double>(rows);
    };
    std::printf("%s: %.1f names looked up, %.1f calls of ADO, %.1f of the helper, %.1f of the login, %.1f of nodes\n",
                import.name.c_str(), each(&Calls::lookUps), each(&Calls::ado), each(&Calls::host), each(&Calls::login),
                each(&Calls::nodes));
    // The number behind a name is known after the first row.
    EXPECT_EQ(each(&Calls::lookUps), 0);
    EXPECT_EQ(each(&Calls::ado), (rule.found + rule.read) * callsOfLookUp + rule.options + rule.read * callsOfRow +
                                     rule.values * callsOfValue + callsOfWrite);
    EXPECT_EQ(each(&Calls::host), callsOfOutcome);
    EXPECT_EQ(each(&Calls::login), rule.login);
    EXPECT_EQ(each(&Calls::nodes), rule.nodes);
}

INSTANTIATE_TEST_SUITE_P(Imports, RowCalls, testing::ValuesIn(rules),
                         [](const auto& parameter) { return parameter.param.import().className; });

} // namespace
