#include "bench/imports/Import.h"

namespace bench {
namespace provisions {
namespace {

constexpr std::size_t entriesEach = 3;

std::vector<std::string> Account(std::size_t) {
    return {"insert into CurrentStock (cWhCode, cInvCode, iQuantity) values ('01', 'I0', 100)",
            "insert into ItemBudget (cItem_class, cItemCode, iBudget) values ('97', 'P1', 1000)"};
}

/// One document a row, of three entries each.
std::string Request(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"provision\" docid=\"bench\" proc=\"ADD\">";
    for (std::size_t row = 0; row < rows; ++row) {
        xml += "<provision><header><Deccode>DJ" + std::to_string(row) +
               "</Deccode><vouchtype>48</vouchtype><dDecDate>2023-01-15</dDecDate><cDepCode>03</cDepCode>"
               "<cMemo>年末计提</cMemo></header><body>";
        for (std::size_t entry = 0; entry < entriesEach; ++entry) {
            xml += "<entry><cWhCode>01</cWhCode><cInvCode>I" + std::to_string(entry) +
                   "</cInvCode><iQuantity>12</iQuantity><iThisPrice>150.25</iThisPrice><cItem_class>97</cItem_class>"
                   "<cItemCode>P1</cItemCode></entry>";
        }
        xml += "</body></provision>\n";
    }
    return xml + "</qxinterface>";
}

} // namespace
} // namespace provisions

Import Provisions() {
    using namespace provisions;
    return {"provisions", "ClsKovraProof", Account, Request};
}

} // namespace bench
