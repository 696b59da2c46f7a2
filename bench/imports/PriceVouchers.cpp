#include "bench/imports/Import.h"

namespace bench {
namespace price_vouchers {
namespace {

std::string Item(std::size_t row) { return "I" + std::to_string(row); }

std::vector<std::string> Account(std::size_t rows) {
    std::vector<std::string> statements = {
        "insert into AccInformation (cSysID, cName, cValue) values (N'AA', N'iStrsPriDecDgt', N'4')",
        "insert into AccInformation (cSysID, cName, cValue) values (N'IA', N'cValueStyle', N'按存货核算')",
        "insert into GL_mend (iyear, iperiod, iYPeriod, bflag_IA) values (2023, 1, 202301, 0)",
        "insert into QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) "
        "values (N'001', 2023, 1, '2023-01-01', '2023-01-31')",
    };
    for (std::size_t row = 0; row < rows; ++row) {
        const std::string item = "'" + Item(row) + "'";
        statements.push_back("insert into inventory (cInvCode, cValueType, iInvRCost) values (" + item +
                             ", N'计划价法', 25)");
        statements.push_back("insert into InvCheckFreeIA870 (cInvCode, fInvRCost) values (" + item + ", 25)");
        statements.push_back("insert into Ia_subsidiary (cInvCode, dVouDate, iAInQuantity, iAInPrice) values (" + item +
                             ", '2022-12-31', 10, 250)");
    }
    return statements;
}

/// One document, saved and posted.
std::string Request(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"voucher\" docid=\"bench\" proc=\"ADD\"><voucher><header><ID>B1</ID>"
                      "<cMaker>李工</cMaker><cAccounter>王会计</cAccounter><dCJVDate>2023-01-15</dCJVDate></header>"
                      "<body>\n";
    for (std::size_t row = 0; row < rows; ++row) {
        xml +=
            "<entry><cInvCode>" + Item(row) + "</cInvCode><cWhCode>03</cWhCode><iCJVACost>26.5</iCJVACost></entry>\n";
    }
    return xml + "</body></voucher></qxinterface>";
}

} // namespace
} // namespace price_vouchers

Import PriceVouchers() {
    using namespace price_vouchers;
    return {"price vouchers", "ClsPriceJustVou", Account, Request};
}

} // namespace bench
