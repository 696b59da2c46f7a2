#include "ClsPriceJustVou/ClsPriceJustVou.h"

namespace kovra {
namespace {

constexpr std::string_view createStatement = "CREATE TABLE [IA_tmpPriceJDATA] (\r\n"
                                             "[cWhCode] [nvarchar] (10)  NULL ,\r\n"
                                             "[cInvCode] [nvarchar] (60)  NOT NULL ,\r\n"
                                             "[bRandom] [int] NULL, \r\n"
                                             "[iCJVACost] [decimal](30, 10) NULL, \r\n"
                                             "[cFree1] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree2] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree3] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree4] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree5] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree6] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree7] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree8] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree9] [nvarchar] (20)  NULL ,\r\n"
                                             "[cFree10] [nvarchar] (20)  NULL )";

} // namespace

void ClsPriceJustVou::CreatePriceWorkTable(std::string_view name) {
    DropWorkTable(name);
    // The name counts for the drop alone; the statement names the table itself.
    state_.connection->Execute(createStatement);
}

void ClsPriceJustVou::DropWorkTable(std::string_view name) {
    std::string sql = "IF  EXISTS (SELECT * FROM sysobjects WHERE id = OBJECT_ID(N'[dbo].[";
    sql.append(name).append("]') AND type = N'U')\r\n"
                            "BEGIN\r\n"
                            "DROP TABLE [dbo].[");
    sql.append(name).append("]\r\n"
                            "End\r\n");
    state_.connection->Execute(sql);
}

} // namespace kovra
