#include "ClsKovraProof/ClsKovraProof.h"
#include "refhost/xml/Document.h"
#include "tests/faults/DisturbEveryOperation.h"
#include "tests/support/Import.h"

#include <gtest/gtest.h>

namespace stock_query_faults {
namespace {

using test::CallMarks;
using test::DisturbEveryOperation;
using test::Play;

constexpr const char* setup =
    "INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode) VALUES (1, 1, N'R1', N'01'), (2, 1, N'R2', N'02'), "
    "(3, 0, N'I1', N'01')\nGO\n"
    "INSERT INTO rdrecords (ID, cInvCode) VALUES (1, N'A'), (2, N'B'), (3, N'C')";

constexpr const char* restore =
    " if exists (select * from dbo.sysobjects where id = object_id(N'[dbo].[RdRecordView]') and OBJECTPROPERTY(id, "
    "N'IsView') = 1) drop view [dbo].[RdRecordView] ";

constexpr const char* envelope = "<q roottag=\"stock\"><storeinout type=\"入库单\"/></q>";
constexpr const char* conditions = "<eleList><condition name=\"cWhCode\" operation=\"=\" value=\"01\" logic=\"and\"/>"
                                   "<condition name=\"ID\" operation=\"&lt;\" value=\"9\" logic=\"or\"/></eleList>";

std::string Told(std::size_t documents) { return std::to_string(documents) + " documents"; }
std::string Told(const host::Error& error) { return std::to_string(error.number()) + " " + error.description(); }

/// Queries and tells how many documents came, or the error that was raised; the caller's text then stays as it was.
std::string Query(host::Environment& environment, host::HostLogin& login, const CallMarks& marks) {
    kovra::ClsKovraProof instance(environment);
    instance.Transact(test::Request("ADD", ""), &login);
    test::TellMade(marks, instance);
    const auto list = refhost::xml::CreateDocument();
    list->LoadXML(conditions);
    std::string text = envelope;
    std::string told;
    marks.begin();
    try {
        EXPECT_FALSE(instance.QueryProc(list->SelectNodes("/eleList/condition"), text));
        const auto answer = refhost::xml::CreateDocument();
        EXPECT_TRUE(answer->LoadXML(text));
        told = Told(answer->SelectNodes("/q/stock").size());
    } catch (const host::Error& error) {
        EXPECT_EQ(text, envelope);
        told = Told(error);
    }
    marks.returned();
    return told;
}

/// Whether the rows will be filtered: any error loses the condition, the kind's own filter with it.
bool PlayCondition(Play& play) {
    try {
        play.Create("Recordset");
        play.Do("Open", "select * from Rdrecord where 1>1", Play::main);
        const auto lookUpField = [&] {
            play.Helper("GetAttr", "name");
            play.Do("Read", "select * from Rdrecord where 1>1", Play::main);
        };
        // Once to count the timestamps, once to build the condition.
        lookUpField();
        lookUpField();
        lookUpField();
        play.Helper("GetAttr", "operation");
        play.Helper("GetAttr", "value");
        play.Helper("GetAttr", "logic");
        lookUpField();
        play.Helper("GetAttr", "operation");
        play.Helper("GetAttr", "value");
        // The last one's logic joins nothing.
        return true;
    } catch (const host::Error&) {
        return false;
    }
}

std::string PlayQuery(Play& play) {
    play.HelperIsThere();
    try {
        play.Create("DOMDocument");
        play.Create("DOMDocument");
        play.Execute("drop view [dbo].[RdRecordView]");
        play.Execute("create  View RdRecordView AS");
        play.Put("view", R"({"name":"RdRecordView"})");
        const bool filtered = PlayCondition(play);
        const std::string head = filtered ? "brdflag=1) and (cWhCode='01' and ID<9)" : "select * from rdrecordView ";
        play.Create("Recordset");
        play.Create("Recordset");
        play.Do("SetCursorLocation");
        play.Do("SetCursorLocation");
        play.Do("Open", head, Play::main);
        play.Do("Read", head, Play::main);
        const std::size_t documents = filtered ? 1 : 3;
        for (std::size_t document = 0; document < documents; ++document) {
            play.Helper("GetAttr", "roottag");
            if (document == 0) {
                play.Create("EaiXmlConverter");
            }
            play.Do("HeadToXml", "StoreInOutXmlRs.Xml", Play::main);
            play.Do("Read", head, Play::main);
            const std::string body = "select * from rdrecords where id=" + std::to_string(document + 1);
            play.Do("Open", body, Play::main);
            play.Do("BodyToXml", "StoreInOutXmlRs.Xml", Play::main);
            play.Do("Close", body, Play::main);
            play.Do("MoveNext", head, Play::main);
            play.Do("Read", head, Play::main);
        }
        play.Do("Close", head, Play::main);
        return Told(documents);
    } catch (const host::Error& error) {
        return Told(error);
    }
}

TEST(StockQueryFaults, QueryProc) {
    DisturbEveryOperation({.name = "ClsKovraProof QueryProc",
                           .proc = "ADD",
                           .setup = setup,
                           .restore = restore,
                           .contents = {"select name from sysobjects where name = N'RdRecordView'"},
                           .run = Query,
                           .rules = PlayQuery});
}

} // namespace
} // namespace stock_query_faults
