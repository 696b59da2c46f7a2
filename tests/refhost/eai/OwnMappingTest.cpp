#include "refhost/Environment.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// The folder of mappings, named to the process as long as it lives.
class OwnMapping : public testing::Test {
protected:
    OwnMapping() { setenv("KOVRA_MAPPINGS", folder.path().c_str(), 1); }
    ~OwnMapping() override { unsetenv("KOVRA_MAPPINGS"); }

    void Write(const std::string& text) {
        std::ofstream(folder.path() / "StoreInOutXmlRs.Xml", std::ios::binary) << text;
    }
    std::string HeadXml() {
        refhost::Environment environment;
        const auto connection = environment.CreateConnection();
        connection->Open(account.connectionString(), "", "", host::command_option::unspecified);
        const auto head = environment.CreateRecordset();
        head->Open("select * from rdrecord", *connection, host::CursorType::openStatic, host::LockType::readOnly,
                   host::command_option::unspecified);
        const auto document = environment.CreateDOMDocument();
        EXPECT_TRUE(document->LoadXML("<d/>"));
        try {
            environment.CreateEaiXmlConverter()->HeadToXml(*document, *document->DocumentElement(),
                                                           "StoreInOutXmlRs.Xml", *head);
        } catch (const host::Error& error) {
            return error.description();
        }
        return document->Xml();
    }

    test::TemporaryFolder folder;
    test::TestAccount account;
};

TEST_F(OwnMapping, IsReadFromTheFolderThatTheEnvironmentNames) {
    account.Run("INSERT INTO rdrecord (ID, cCode) VALUES (1, N'R1')");
    EXPECT_THAT(HeadXml(), testing::StartsWith("<d><header><ID>1</ID>"));
    // 单号 in GBK.
    Write("<?xml version='1.0' encoding='GBK'?><mapping><head element='h'><field element='\xB5\xA5\xBA\xC5' "
          "column='cCode'/></head><body element='b' row='r'/></mapping>");
    EXPECT_EQ(HeadXml(), "<d><h><单号>R1</单号></h></d>");
    Write("<mapping>");
    EXPECT_EQ(HeadXml(), "映射文件StoreInOutXmlRs.Xml无效：不是格式正确的XML。");
}

} // namespace
