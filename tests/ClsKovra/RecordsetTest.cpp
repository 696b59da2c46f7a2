#include "tests/ClsKovra/OpeningFixture.h"
#include "tests/support/RecordsetUse.h"

#include <algorithm>
#include <iterator>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Recordsets : public test::OpeningTest {
protected:
    /// Those of the rows, behind the ledger's.
    test::RecordsetUse OfRows(std::string_view rows) const {
        test::RecordsetUse use = test::RecordsetsOf<kovra::ClsKovra>(
            account, std::string("<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">")
                         .append(rows)
                         .append("</qxinterface>"));
        const auto ledgersLast = std::ranges::find_if(use, [](const std::vector<std::string>& texts) {
            return texts.front().find("from ia_summary") != std::string::npos;
        });
        EXPECT_NE(ledgersLast, use.end());
        return {std::next(ledgersLast), use.end()};
    }

    std::size_t stored() const { return account.Rows("SELECT AutoID FROM Ia_subsidiary").size(); }
};

TEST_F(Recordsets, OneForARowAndOneForEachReadingOfAnOption) {
    const auto row = [] {
        return ElementsAre(
            ElementsAre(HasSubstr("cValuetype,iInvRCost"), HasSubstr("bFree1"),
                        HasSubstr("cwhvaluestyle From Warehouse"), HasSubstr("cWhValueStyle from Warehouse"),
                        HasSubstr("bCheckBatch"), HasSubstr("bInvQuality"), HasSubstr("bTrack")),
            ElementsAre(HasSubstr("cName='cValueStyle'")), ElementsAre(HasSubstr("cName='cValueStyle'")));
    };
    constexpr std::string_view xml = "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>-1</iQuantity>"
                                     "<iCost>1</iCost><iPrice>-1</iPrice></row>";
    const test::RecordsetUse use = OfRows(std::string(xml).append(xml));
    ASSERT_EQ(use.size(), 6U);
    EXPECT_THAT(test::RecordsetUse(use.begin(), use.begin() + 3), row());
    EXPECT_THAT(test::RecordsetUse(use.begin() + 3, use.end()), row());
    EXPECT_EQ(stored(), 2U);
}

TEST_F(Recordsets, TheSameForThePriceByFreeItems) {
    EXPECT_THAT(
        OfRows("<row><cWhCode>02</cWhCode><cInvCode>P1</cInvCode><iQuantity>10</iQuantity><iPrice>30</iPrice>"
               "</row>"),
        ElementsAre(ElementsAre(HasSubstr("cValuetype,iInvRCost"), HasSubstr("bFree1"),
                                HasSubstr("cwhvaluestyle From Warehouse"), HasSubstr("cWhValueStyle from Warehouse"),
                                HasSubstr("bInvQuality"), HasSubstr("from InvCheckFreeIA870")),
                    ElementsAre(HasSubstr("cName='cValueStyle'")), ElementsAre(HasSubstr("cName='cValueStyle'"))));
    EXPECT_EQ(stored(), 1U);
}

} // namespace
