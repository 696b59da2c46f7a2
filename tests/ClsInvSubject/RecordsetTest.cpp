#include "tests/ClsInvSubject/Fixture.h"
#include "tests/support/RecordsetUse.h"

#include <gmock/gmock.h>

namespace test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Recordsets = InventorySettings;

TEST_F(Recordsets, OneForTheCheckOfARowAndOneForItsMatch) {
    const RecordsetUse use = RecordsetsOf<kovra::ClsInvSubject>(
        account, Request("ADD", "<row><cWhCode>01</cWhCode><cInvCode>A</cInvCode><cInvHead>1401</cInvHead>"
                                "<cDifHead>1402</cDifHead></row>"
                                "<row><cWhCode>02</cWhCode><cInvCCode>C1</cInvCCode><cInvHead>1401</cInvHead></row>"));
    EXPECT_THAT(use, ElementsAre(ElementsAre(HasSubstr("FROM GL_mend")),
                                 ElementsAre(HasSubstr("From inventory "), HasSubstr("From Warehouse "),
                                             HasSubstr("'1401'"), HasSubstr("'1402'")),
                                 ElementsAre(HasSubstr("Select AutoID")),
                                 ElementsAre(HasSubstr("From inventoryclass "), HasSubstr("From Warehouse "),
                                             HasSubstr("'1401'")),
                                 ElementsAre(HasSubstr("Select AutoID"))));
    EXPECT_EQ(Stored().size(), 2U);
}

} // namespace
} // namespace test
