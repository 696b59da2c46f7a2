#include "ModPub/GetNodeText.h"
#include "ModPub/IsYearEndOpen.h"
#include "ModPub/ReadAccOption.h"
#include "refhost/trace/Traced.h"
#include "refhost/xml/Document.h"
#include "tests/support/Import.h"

#include <functional>

#include <gtest/gtest.h>

namespace test {
namespace {

class Lookups : public testing::Test {
protected:
    /// Hands `ask` an open connection to the account and returns what was asked of it.
    std::vector<std::string> Asked(const std::function<void(host::Environment&, host::Connection&)>& ask) const {
        const std::filesystem::path path = account.folder() / "trace.jsonl";
        {
            refhost::Trace trace(path.string());
            refhost::Traced<refhost::Environment> environment(&trace);
            const std::unique_ptr<host::Connection> connection = environment.CreateConnection();
            connection->Open(account.connectionString(), "", "", host::command_option::unspecified);
            ask(environment, *connection);
            trace.Flush();
        }
        std::vector<std::string> lines = OwnLines(path);
        lines.erase(lines.begin());
        return lines;
    }

    std::string Option(std::string_view cSysID, std::string_view cName) const {
        std::string option;
        Asked([&](host::Environment& environment, host::Connection& connection) {
            option = ModPub::ReadAccOption(environment, connection, cSysID, cName);
        });
        return option;
    }

    bool YearEndOpen(std::int16_t year) const {
        bool open = false;
        Asked([&](host::Environment& environment, host::Connection& connection) {
            open = ModPub::IsYearEndOpen(environment, year, connection);
        });
        return open;
    }

    TestAccount account;
};

TEST_F(Lookups, ReadAccOptionTrimsAValueAndNotADefault) {
    account.Run("INSERT INTO AccInformation (cSysID, cName, cValue, cDefault) VALUES\n"
                "(N'AA', N'value', N'  2 ', N'9'), (N'AA', N'default', NULL, N' 3'), (N'AA', N'neither', NULL, NULL),\n"
                "(N'AA', N'empty', N'', N'9'), (N'AA', N'blank', N'   ', N'9'), (N'IA', N'value', N'other', NULL)");
    EXPECT_EQ(Option("AA", "value"), "2");
    EXPECT_EQ(Option("AA", "default"), " 3");
    EXPECT_EQ(Option("AA", "neither"), "");
    EXPECT_EQ(Option("AA", "empty"), "");
    EXPECT_EQ(Option("AA", "blank"), "");
    EXPECT_EQ(Option("IA", "value"), "other");
    EXPECT_EQ(Option("AA", "missing"), "");
}

TEST_F(Lookups, ReadAccOptionAsksOnce) {
    EXPECT_EQ(Asked([](host::Environment& environment, host::Connection& connection) {
                  ModPub::ReadAccOption(environment, connection, "IA", "dIAStartDate");
              }),
              std::vector{LookedUp("SELECT * FROM AccInformation WHERE cSysID='IA' AND cName='dIAStartDate'")});
}

TEST_F(Lookups, ReadAccOptionLetsErrorsOut) { EXPECT_THROW(Option("IA", "a'b"), host::Error); }

TEST_F(Lookups, IsYearEndOpenUntilDecemberIsClosed) {
    EXPECT_TRUE(YearEndOpen(2023));
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 0), (2023, 11, 1), (2022, 12, 1)");
    EXPECT_TRUE(YearEndOpen(2023));
    EXPECT_FALSE(YearEndOpen(2022));
    account.Run("UPDATE GL_mend SET bflag_IA = 1 WHERE iyear = 2023 AND iperiod = 12");
    EXPECT_FALSE(YearEndOpen(2023));
    EXPECT_TRUE(YearEndOpen(-1));
}

TEST_F(Lookups, IsYearEndOpenAsksWithTheCursorAtTheClient) {
    EXPECT_EQ(
        Asked([](host::Environment& environment, host::Connection& connection) {
            ModPub::IsYearEndOpen(environment, 2023, connection);
        }),
        std::vector{LookedUpAtClient("SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12 AND bflag_IA=1")});
}

TEST(GetNodeText, ReadsTheFirstMatchWithItsDescendants) {
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    ASSERT_TRUE(document->LoadXML("<row><a>1</a><a>2</a><b>x<c>y</c>z</b><e/><f> 3 </f><g><h>deep</h></g></row>"));
    const host::DOMNodePtr row = document->DocumentElement();
    EXPECT_EQ(ModPub::GetNodeText(*row, "a"), "1");
    EXPECT_EQ(ModPub::GetNodeText(*row, "b"), "xyz");
    EXPECT_EQ(ModPub::GetNodeText(*row, "e"), "");
    EXPECT_EQ(ModPub::GetNodeText(*row, "f"), " 3 ");
    EXPECT_EQ(ModPub::GetNodeText(*row, "g/h"), "deep");
    EXPECT_EQ(ModPub::GetNodeText(*row, "A"), "");
    EXPECT_EQ(ModPub::GetNodeText(*row, "cWhCode"), "");
    EXPECT_THROW(ModPub::GetNodeText(*row, "["), host::Error);
}

} // namespace
} // namespace test
