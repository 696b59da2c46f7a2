#include "refhost/ia/RsXmlHelper.h"

#include "refhost/Environment.h"
#include "refhost/ia/VouchData.h"
#include "tests/support/TestAccount.h"

#include <gtest/gtest.h>

namespace {

class RsXmlHelper : public testing::Test {
protected:
    RsXmlHelper() : connection_(environment_.CreateConnection()), recordset_(environment_.CreateRecordset()) {
        connection_->Open(account_.connectionString(), "", "", host::command_option::unspecified);
    }

    std::unique_ptr<host::DOMDocument> Saved(std::string_view sql) {
        recordset_->Open(sql, *connection_, host::CursorType::openStatic, host::LockType::readOnly,
                         host::command_option::text);
        return environment_.GetRsXmlHelper().RecordsetToXml(*recordset_);
    }

    test::TestAccount account_;
    refhost::Environment environment_;
    std::unique_ptr<host::Connection> connection_;
    std::unique_ptr<host::Recordset> recordset_;
};

TEST_F(RsXmlHelper, GivesTheRowsOfARecordset) {
    const std::unique_ptr<host::DOMDocument> document =
        Saved("SELECT CardNumber, cVouchType, NULL AS nothing FROM Vouchers_base ORDER BY CardNumber");
    const host::DOMNodeList rows = document->SelectNodes("//rs:data/z:row");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]->GetAttribute("CardNumber"), "IA48");
    EXPECT_EQ(rows[1]->GetAttribute("CardNumber"), "IA51");
    EXPECT_EQ(rows[1]->GetAttribute("cVouchType"), "22");
    EXPECT_EQ(rows[1]->GetAttribute("nothing"), std::nullopt);
    EXPECT_EQ(document->SelectNodes("/xml/s:Schema/s:ElementType/s:AttributeType").size(), 3U);
    // The recordset is still on its first row.
    EXPECT_EQ(recordset_->FieldValue("CardNumber"), host::Value("IA48"));
}

TEST_F(RsXmlHelper, RaisesForAClosedRecordset) {
    try {
        environment_.GetRsXmlHelper().RecordsetToXml(*recordset_);
        FAIL();
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), host::error_number::objectClosed);
    }
}

TEST_F(RsXmlHelper, VouchDataHoldsTheHeadOfItsOwn) {
    const std::unique_ptr<host::DOMDocument> document =
        Saved("SELECT '2023-01-15' AS dCJVDate, 'first' AS cCode UNION ALL SELECT '2023-02-01', 'second'");
    const auto data = environment_.GetRsXmlHelper().XmlToVouchData(*document);
    document->SelectSingleNode("//rs:data/z:row")->SetAttribute("cCode", "changed");
    const auto& head = dynamic_cast<const refhost::VouchData&>(*data);
    EXPECT_EQ(head.Text("dCJVDate"), "2023-01-15");
    EXPECT_EQ(head.Text("cCode"), "first");
    EXPECT_EQ(head.Text("cMemo"), "");
}

TEST_F(RsXmlHelper, VouchDataOfNoRecordIsEmpty) {
    const auto data = environment_.GetRsXmlHelper().XmlToVouchData(*Saved("SELECT ID FROM CostJustVouch"));
    EXPECT_EQ(dynamic_cast<const refhost::VouchData&>(*data).Text("ID"), "");
}

TEST_F(RsXmlHelper, IsOneOfItsEnvironment) {
    EXPECT_EQ(&environment_.GetRsXmlHelper(), &environment_.GetRsXmlHelper());
}

} // namespace
