// Any text spliced between the quotes of the statements that the classes build; the first byte chooses the statement.
#include "fuzz/Account.h"
#include "fuzz/Require.h"
#include "host/Error.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

struct Template {
    /// `?` is where the value goes.
    std::string_view sql;
    /// What the statement may write, as `Account::changes` has it; empty for a query.
    std::string_view change;
};

constexpr std::array<Template, 14> templates = {{
    {"Select cValuetype From inventory  Where cInvCode='?' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 ",
     ""},
    {"Select cInvCCode From inventoryclass  Where cInvCCode='?'", ""},
    {"select ccode from code where ccode = '?' and  bend =1 and iyear =2024", ""},
    {"Select AutoID From IA_HeadSet Where cWhCode = '?' And cInvCode = '?' And iyear = 2024", ""},
    {"INSERT INTO IA_HeadSet (cWhCode,cInvCCode,cInvHead,cDifHead,cOutHead,cEnDispHead,czyHead,cInvCode,iYear) \r\n"
     " VALUES ('?', Null,'?', Null,Null,Null,Null,Null,2024)",
     "INSERT IA_HeadSet"},
    {"Update IA_HeadSet Set \r\n cWhCode = '?', \r\n cInvCCode = Null,\r\n cInvHead = '?', \r\n cDifHead = Null,\r\n"
     " cOutHead = Null,\r\n cEnDispHead = Null,\r\n czyHead = Null,\r\n cInvCode = '?', \r\n iYear = 2024\r\n"
     "Where AutoID = 1",
     "UPDATE IA_HeadSet"},
    {"Select AutoID From IA_OppHead Where cRdCode = N'?' And isnull(cInvcCode,N'') = N'' And isnull(cInvCode,N'') = N''"
     " And cDepCode = N'?' And iyear = 2024",
     ""},
    {"INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode ,cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear) \r\n"
     " VALUES ('?', '?', Null,Null,Null,Null,'?', '?',2024)",
     "INSERT IA_OppHead"},
    {"Select cItemCode,cItemName from fitemss97 Where cItemCode ='?' ", ""},
    {"Insert Into Ia_subsidiary (iYear,cVouType,bRdFlag,cWhCode,cInvCode) Values (2024,'34',1,'?','?')",
     "INSERT Ia_subsidiary"},
    {"Delete IA_DecReady Where cDecCode='?'", "DELETE IA_DecReady"},
    {"IF EXISTS (SELECT * FROM dbo.sysobjects WHERE id = OBJECT_ID('[dbo].[?]') AND OBJECTPROPERTY(id, N'IsUserTable')"
     " = 1) DROP TABLE [dbo].[?]",
     ""},
    {"SELECT dBegin, dEnd FROM QxSystem..UA_Period WHERE cAcc_ID = '?' AND iYear = 2024 AND iId = 1", ""},
    {"select * from inventory where ? and 1=1", ""},
}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::Account account;
    if (size == 0) {
        return 0;
    }
    const Template& chosen = templates[data[0] % templates.size()];
    const std::string_view value(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::string sql;
    for (const char c : chosen.sql) {
        if (c == '?') {
            sql.append(value);
        } else {
            sql.push_back(c);
        }
    }
    account.Begin();
    account.database().BeginTrans();
    try {
        account.database().Query(sql);
    } catch (const host::Error& error) {
        fuzz::Require(error.number() != 0 && !error.description().empty(), "an error that says nothing", sql);
    }
    for (const std::string& change : account.changes()) {
        fuzz::Require(change == chosen.change, change, sql);
    }
    account.database().RollbackTrans();
    return 0;
}
