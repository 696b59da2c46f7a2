#include "tests/support/NumberedImport.h"

#include "cli/Classes.h"

#include <algorithm>
#include <ostream>

namespace test {
namespace {

/// Six digits, so that order of text is order of numbers.
std::string Digits(int n) {
    const std::string digits = std::to_string(n);
    return std::string(6 - digits.size(), '0') + digits;
}

std::string Item(int n) { return "N" + Digits(n); }
std::string Department(int n) { return "D" + Digits(n); }

std::string Outcome(const std::string& key) { return "<item key=\"" + key + "\" code=\"0\" dsc=\"ok\"/>"; }

NumberedImport InventorySettings() {
    return {
        .className = "ClsInvSubject",
        .row =
            [](int n) {
                return "<row><cWhCode>01</cWhCode><cInvCode>" + Item(n) +
                       "</cInvCode><cInvHead>140301</cInvHead><cDifHead>1404</cDifHead></row>";
            },
        .outcome = [](int n) { return Outcome("仓库编码：01， ， 存货编码：" + Item(n)); },
        .query = "select cWhCode, cInvCCode, cInvCode, cInvHead, cDifHead, iYear from IA_HeadSet order by AutoID",
        .written =
            [](int n) {
                return std::vector{R"({"cWhCode":"01","cInvCCode":null,"cInvCode":")" + Item(n) +
                                   R"(","cInvHead":"140301","cDifHead":"1404","iYear":2024})"};
            },
        .halves = {},
        .commit = "INSERT INTO IA_HeadSet",
    };
}

NumberedImport OppositeSettings() {
    return {
        .className = "ClsOppSubject",
        .row =
            [](int n) {
                return "<row><cRdCode>201</cRdCode><cInvCode>" + Item(n) +
                       "</cInvCode><cOppHead>500101</cOppHead></row>";
            },
        .outcome = [](int n) { return Outcome("收发类别编码：201， ， 存货编码：" + Item(n) + "， ， ， "); },
        .query = "select cRdCode, cInvcCode, cInvCode, cOppHead, cEstHead, iYear from IA_OppHead order by AutoID",
        .written =
            [](int n) {
                return std::vector{R"({"cRdCode":"201","cInvcCode":null,"cInvCode":")" + Item(n) +
                                   R"(","cOppHead":"500101","cEstHead":null,"iYear":2024})"};
            },
        .halves = {},
        .commit = "INSERT INTO IA_OppHead",
    };
}

NumberedImport StandardCostSettings() {
    return {
        .className = "ClsOppSubjectST",
        .row =
            [](int n) {
                return "<row><cRdCode>102</cRdCode><cDepCode>" + Department(n) +
                       "</cDepCode><cOppHead>500101</cOppHead><cOTaxRefundCode>222101</cOTaxRefundCode></row>";
            },
        .outcome = [](int n) { return Outcome("收发类别编码：102， ， 部门编码：" + Department(n)); },
        .query = "select cRdCode, cDepCode, cOppHead, cEstHead, cOTaxRefundCode, iYear from IA_OppHead order by AutoID",
        .written =
            [](int n) {
                return std::vector{R"({"cRdCode":"102","cDepCode":")" + Department(n) +
                                   R"(","cOppHead":"500101","cEstHead":null,"cOTaxRefundCode":"222101","iYear":2024})"};
            },
        .halves = {},
        .commit = "INSERT INTO IA_OppHead",
    };
}

NumberedImport OpeningBalances() {
    return {
        .className = "ClsKovra",
        .row =
            [](int n) {
                return "<row><cWhCode>01</cWhCode><cInvCode>" + Item(n) + "</cInvCode><iQuantity>" +
                       std::to_string(n + 1) + "</iQuantity><iCost>2</iCost><iPrice>" + std::to_string(2 * (n + 1)) +
                       "</iPrice><dVouDate>2023-12-31</dVouDate></row>";
            },
        .outcome = [](int n) { return Outcome("仓库编码：01， 存货编码：" + Item(n)); },
        .query = "select cWhCode, cInvCode, iAInQuantity, iInCost, iAInPrice from Ia_subsidiary order by AutoID",
        .written =
            [](int n) {
                return std::vector{R"({"cWhCode":"01","cInvCode":")" + Item(n) + R"(","iAInQuantity":)" +
                                   std::to_string(n + 1) + R"(,"iInCost":2,"iAInPrice":)" +
                                   std::to_string(2 * (n + 1)) + "}"};
            },
        .halves = {},
        .commit = "Insert Into Ia_subsidiary",
    };
}

/// Documents of three rows.
NumberedImport Provisions() {
    return {
        .className = "ClsKovraProof",
        .row =
            [](int n) {
                std::string entries;
                for (const char* price : {"1.25", "2.5", "3.75"}) {
                    entries += "<entry><cWhCode>01</cWhCode><cInvCode>" + Item(n) + "</cInvCode><iThisPrice>" + price +
                               "</iThisPrice></entry>";
                }
                return "<row><header><Deccode>" + Digits(n) +
                       "</Deccode><vouchtype>48</vouchtype><cMaker>王敏</cMaker></header><body>" + entries +
                       "</body></row>";
            },
        .outcome = [](int n) { return Outcome(Digits(n)); },
        .query = "select H.cDecCode, H.cMaker, H.cVouchType, B.cInvCode, B.iThisPrice from IA_DecReadys B "
                 "left join IA_DecReady H on H.ID = B.ID order by B.AutoID",
        .written =
            [](int n) {
                std::vector<std::string> rows;
                for (const char* price : {"1.25", "2.5", "3.75"}) {
                    rows.push_back(R"({"cDecCode":")" + Digits(n) +
                                   R"(","cMaker":"王敏","cVouchType":"48","cInvCode":")" + Item(n) +
                                   R"(","iThisPrice":)" + price + "}");
                }
                return rows;
            },
        .halves = {"select ID from IA_DecReady where ID not in (select ID from IA_DecReadys)",
                   "select AutoID from IA_DecReadys where ID not in (select ID from IA_DecReady)"},
        .commit = commitTrans,
    };
}

/// One voucher that is posted at once, each number an entry of it: a request is meant to carry one. An item has a row
/// for the warehouse of planned prices and one for that of retail prices.
NumberedImport PriceVoucher() {
    return {
        .className = "ClsPriceJustVou",
        .row = [](int n) { return "<entry><cInvCode>" + Item(n) + "</cInvCode><iCJVACost>26.5</iCJVACost></entry>"; },
        .before = "<row><header><ID>TJ1</ID><cMaker>李工</cMaker><cAccounter>王会计</cAccounter>"
                  "<dCJVDate>2024-01-15</dCJVDate><cMemo>调价</cMemo></header><body>",
        .after = "</body></row>",
        .outcome = [](int) { return std::string("<item key=\"单据TJ1\" code=\"0\" dsc=\"成功导入：\"/>"); },
        .query = "select H.cMemo, H.cAccounter, B.cWhCode, B.cInvCode, B.iCJVBCost, B.iCJVACost from CostJustVouchs B "
                 "left join CostJustVouch H on H.ID = B.ID order by B.cInvCode, B.cWhCode",
        .written =
            [](int n) {
                std::vector<std::string> rows;
                for (const char* warehouse : {"03", "04"}) {
                    rows.push_back(R"({"cMemo":"调价","cAccounter":"王会计","cWhCode":")" + std::string(warehouse) +
                                   R"(","cInvCode":")" + Item(n) +
                                   R"(","iCJVBCost":25.0000000000,"iCJVACost":26.5000000000})");
                }
                return rows;
            },
        .halves = {"select ID from CostJustVouch where ID not in (select ID from CostJustVouchs)",
                   "select AutoID from CostJustVouchs where AutoID not in (select id from Ia_subsidiary "
                   "where cVouType = N'22')",
                   "select AutoID from Ia_subsidiary where cVouType = N'22' and "
                   "id not in (select AutoID from CostJustVouchs)",
                   "select B.AutoID from CostJustVouchs B join InvCheckFreeIA870 P on P.cInvCode = B.cInvCode "
                   "where P.fInvRCost <> B.iCJVACost",
                   "select cInvCode from InvCheckFreeIA870 where fInvRCost = 26.5 and "
                   "cInvCode not in (select cInvCode from CostJustVouchs)",
                   "select name from sysobjects where name like 'IA_tmp%'"},
        .commit = commitTrans,
        .atOnce = true,
    };
}

/// Inserts a row for each number.
std::string InsertNumbered(const std::string& insert, int count, std::string (*values)(int n)) {
    constexpr int rowsPerStatement = 500;
    std::string batches;
    for (int n = 0; n < count; ++n) {
        batches.append(n % rowsPerStatement == 0 ? "\nGO\n" + insert + " values " : ", ").append(values(n));
    }
    return batches;
}

} // namespace

const std::array<NumberedImport, 6>& NumberedImports() {
    static const std::array<NumberedImport, 6> imports = {InventorySettings(),    OppositeSettings(),
                                                          StandardCostSettings(), OpeningBalances(),
                                                          Provisions(),           PriceVoucher()};
    return imports;
}

std::vector<NumberedImport> ImportsBesideEachOther() {
    return {InventorySettings(), OppositeSettings(), StandardCostSettings(), Provisions(), PriceVoucher()};
}

NumberedAccount::NumberedAccount(int count) : TestAccount(AccountContent::demo) {
    Run(InsertNumbered(
            "insert into inventory (cInvCode, cInvName, cInvCCode, cValueType, iInvRCost, bService, bInvType, "
            "bPTOModel)",
            count, [](int n) { return "('" + Item(n) + "', N'存货', '0103', N'计划价法', 25, 0, 0, 0)"; }) +
        InsertNumbered("insert into InvCheckFreeIA870 (cInvCode, fInvRCost)", count,
                       [](int n) { return "('" + Item(n) + "', 25)"; }) +
        InsertNumbered("insert into department (cDepCode, cDepName, bDepEnd)", count,
                       [](int n) { return "('" + Department(n) + "', N'部门', 1)"; }));
}

std::string RequestOf(const NumberedImport& import, int first, int last) {
    std::string request = "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">";
    request += import.before;
    for (int n = first; n < last; ++n) {
        request += import.row(n);
    }
    return request.append(import.after).append("</qxinterface>");
}

std::string AcceptedResult(const NumberedImport& import, int first, int last) {
    std::string result = "<qxinterface docid=\"D\" proc=\"ADD\">";
    for (int n = first; n < (import.atOnce ? first + 1 : last); ++n) {
        result += import.outcome(n);
    }
    return result + "</qxinterface>";
}

std::vector<std::string> WrittenBy(const NumberedImport& import, int first, int last) {
    std::vector<std::string> rows;
    for (int n = first; n < last; ++n) {
        for (std::string& row : import.written(n)) {
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

std::vector<std::string> Halves(const NumberedImport& import, const TestAccount& account) {
    std::vector<std::string> found;
    for (const char* query : import.halves) {
        for (const std::string& row : account.Rows(query)) {
            found.push_back(query + (": " + row));
        }
    }
    return found;
}

std::string Transact(const NumberedImport& import, const TestAccount& account, const std::string& request) {
    refhost::Environment environment;
    refhost::Login login(account.LoginXml(), environment);
    return Transact(import, environment, login, request);
}

std::string Transact(const NumberedImport& import, refhost::Environment& environment, refhost::Login& login,
                     const std::string& request) {
    const std::vector<cli::ImportClass>& classes = cli::ImportClasses();
    return std::ranges::find(classes, import.className, &cli::ImportClass::name)
        ->transact(environment, request, &login, nullptr);
}

void PrintTo(const NumberedImport& import, std::ostream* out) { *out << import.className; }

std::string NameOfImport(const testing::TestParamInfo<NumberedImport>& parameter) { return parameter.param.className; }

} // namespace test
