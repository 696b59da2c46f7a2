#include "tests/ClsOppSubject/Fixture.h"
#include "tests/support/RecordsetUse.h"

#include <gmock/gmock.h>

namespace test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Recordsets : public OppositeSettings {
protected:
    /// Those of the rows alone: the first is the year-end look-up's.
    RecordsetUse OfRows(std::string_view rows) const {
        RecordsetUse use = RecordsetsOf<kovra::ClsOppSubject>(account, Request("ADD", rows));
        EXPECT_THAT(use.front(), ElementsAre(HasSubstr("FROM GL_mend")));
        use.erase(use.begin());
        return use;
    }
};

TEST_F(Recordsets, OneForTheCheckOfARowAndOneForItsMatch) {
    EXPECT_THAT(
        OfRows("<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cInvCode>A</cInvCode>"
               "<cDepCode>02</cDepCode><cItem_class>97</cItem_class><cItemCode>RD1</cItemCode>"
               "<cItemCName>Research</cItemCName><cName>Spindle</cName>"
               "<cOppHead>1401</cOppHead><cEstHead>1402</cEstHead></row>"
               "<row><cRdCode>1</cRdCode><cOppHead>1401</cOppHead></row>"),
        ElementsAre(ElementsAre(HasSubstr("From inventory "), HasSubstr("From inventoryclass "),
                                HasSubstr("From rd_style "), HasSubstr("from department "), HasSubstr("from fitem "),
                                HasSubstr("from fitemss97 "), HasSubstr("'1401'"), HasSubstr("'1402'")),
                    ElementsAre(HasSubstr("Select AutoID")),
                    ElementsAre(HasSubstr("From rd_style "), HasSubstr("'1401'")),
                    ElementsAre(HasSubstr("Select AutoID"))));
    EXPECT_EQ(Stored().size(), 2U);
}

TEST_F(Recordsets, NoneForARowThatIsRefusedBeforeItsLookUps) { EXPECT_THAT(OfRows("<row/>"), IsEmpty()); }

TEST_F(Recordsets, ANewOneForTheRowBehindAnError) {
    EXPECT_THAT(OfRows("<row><cDepCode>02</cDepCode><cOppHead>A'B</cOppHead></row>"
                       "<row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead></row>"),
                ElementsAre(ElementsAre(HasSubstr("from department "), HasSubstr("'A'B'")),
                            ElementsAre(HasSubstr("From rd_style "), HasSubstr("'1401'")),
                            ElementsAre(HasSubstr("Select AutoID"))));
    EXPECT_EQ(Stored().size(), 1U);
}

} // namespace
} // namespace test
