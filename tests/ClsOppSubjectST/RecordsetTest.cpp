#include "tests/ClsOppSubjectST/Fixture.h"
#include "tests/support/RecordsetUse.h"

#include <gmock/gmock.h>

namespace test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Recordsets = StandardCostSettings;

TEST_F(Recordsets, OneForTheCheckOfARowAndOneForItsMatch) {
    const RecordsetUse use = RecordsetsOf<kovra::ClsOppSubjectST>(
        account, Request("ADD", "<row><cRdCode>101</cRdCode><cDepCode>0201</cDepCode><cOppHead>a01</cOppHead>"
                                "<cProcessHead>a02</cProcessHead></row>"
                                "<row><cInvcCode>C1</cInvcCode></row>"));
    EXPECT_THAT(use,
                ElementsAre(ElementsAre(HasSubstr("'dCAFirstDate'")), ElementsAre(HasSubstr("'bRLOrST'")),
                            ElementsAre(HasSubstr("FROM GL_mend")),
                            // The account of processing is asked for twice.
                            ElementsAre(HasSubstr("From rd_style "), HasSubstr("from department "), HasSubstr("'a01'"),
                                        HasSubstr("'a02'"), HasSubstr("'a02'")),
                            ElementsAre(HasSubstr("Select AutoID")), ElementsAre(HasSubstr("From inventoryclass ")),
                            ElementsAre(HasSubstr("Select AutoID"))));
    EXPECT_EQ(Stored().size(), 2U);
}

} // namespace
} // namespace test
