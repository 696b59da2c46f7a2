#include "tests/support/rules/PriceRules.h"

#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "tests/support/Import.h"

#include <optional>

namespace test {
namespace {

std::string Json(std::string_view name, const std::string& text) {
    return "\"" + std::string(name) + "\":\"" + text + "\"";
}

std::string Head(const std::string& number, const std::string& cMaker, const std::string& cAccounter) {
    const std::string maker = cMaker.empty() ? "\"cMaker\":null" : Json("cMaker", cMaker);
    const std::string accounter = cAccounter.empty() ? "\"cAccounter\":null" : Json("cAccounter", cAccounter);
    return "{" + Json("cCode", number) + "," + maker + "," + accounter + "}";
}

/// A row of an item with one number; `value` is JSON.
std::string OfItem(const std::string& item, std::string_view column, const std::string& value) {
    return "{" + Json("cInvCode", item) + ",\"" + std::string(column) + "\":" + value + "}";
}

/// The number of the n-th voucher of January 2023.
std::string Number(int voucher) { return "202301000" + std::to_string(voucher); }

const std::string workTable = R"({"name":"IA_tmpPriceJDATA"})";
const std::string resultTable = R"({"name":"IA_tmpPriceJDATA_Result"})";

constexpr const char* setup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'AA', N'iStrsQuanDecDgt', N'2'), (N'AA', N'iStrsPriDecDgt', N'4'), (N'ca', N'dCAFirstDate', N'2023-01-01'),
(N'ca', N'bRLOrST', N'1')
GO
INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2022, 12, 202212, 1), (2023, 1, 202301, 0)
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES (N'001', 2023, 1, '2023-01-01', '2023-01-30')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES (N'03', N'计划价法')
GO
INSERT INTO inventory (cInvCode, cValueType) VALUES (N'1004', N'计划价法'), (N'1007', N'计划价法')
GO
INSERT INTO InvCheckFreeIA870 (cInvCode) VALUES (N'1004'), (N'1007')
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, dVouDate, cWhCode, cInvCode, iAInQuantity, iAInPrice) VALUES
(2023, 0, N'34', '2022-12-31', N'03', N'1004', 100, 2500)
)";

std::string Document(const PriceDocument& document) {
    std::string xml = "<row><header><ID>" + document.ID + "</ID><cMaker>" + document.cMaker + "</cMaker><cAccounter>" +
                      document.cAccounter + "</cAccounter><dCJVDate>2023-01-15</dCJVDate></header><body>";
    for (const PriceRow& row : document.rows) {
        xml += "<entry><cInvCode>" + row.item + "</cInvCode><iCJVACost>" + row.price + "</iCJVACost></entry>";
    }
    return xml + "</body></row>";
}

std::string PriceDocuments(const std::vector<PriceDocument>& documents) {
    std::string xml;
    for (const PriceDocument& document : documents) {
        xml += Document(document);
    }
    return xml;
}

} // namespace

const std::string priceRestore = R"(DELETE FROM CostJustVouch
GO
DELETE FROM CostJustVouchs
GO
DELETE FROM Ia_subsidiary WHERE cVouType = N'22'
GO
UPDATE inventory SET iInvRCost = 25
GO
UPDATE InvCheckFreeIA870 SET fInvRCost = 25
GO
IF  EXISTS (SELECT * FROM sysobjects WHERE id = OBJECT_ID(N'[dbo].[IA_tmpPriceJDATA]') AND type = N'U')
BEGIN
DROP TABLE [dbo].[IA_tmpPriceJDATA]
End
GO
IF  EXISTS (SELECT * FROM sysobjects WHERE id = OBJECT_ID(N'[dbo].[IA_tmpPriceJDATA_Result]') AND type = N'U')
BEGIN
DROP TABLE [dbo].[IA_tmpPriceJDATA_Result]
End
)";

const std::vector<std::string> priceContents = {
    "select cCode, cMaker, cAccounter from CostJustVouch",
    "select cInvCode, iCJVACost from CostJustVouchs",
    "select cInvCode, iAInPrice from Ia_subsidiary where cVouType = N'22'",
    "select cInvCode, iInvRCost from inventory",
    "select cInvCode, fInvRCost from InvCheckFreeIA870",
    "select name from sysobjects where type = N'U' and name like N'IA[_]tmpPriceJDATA%'",
};

std::string PriceSetup(const std::string& valuation) {
    return std::string(setup) +
           "GO\nINSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'cValueStyle', N'" + valuation +
           "')";
}

PlayedCall PriceCall(const std::string& name, const std::string& valuation,
                     const std::vector<PriceDocument>& documents) {
    return {.name = "ClsPriceJustVou " + name,
            .proc = "ADD",
            .setup = PriceSetup(valuation),
            .restore = priceRestore,
            .contents = priceContents,
            .run = TransactOf<kovra::ClsPriceJustVou>(Request("ADD", PriceDocuments(documents))),
            .rules = [=](Play& play) { return PriceRules(play, valuation == "按存货核算").Transact(documents); }};
}

PriceRules::PriceRules(Play& play, bool byItem) : play_(play), byItem_(byItem) {
    for (const std::string item : {"1004", "1007"}) {
        play_.Put("price " + item, OfItem(item, "iInvRCost", "25"));
        play_.Put("free item's price " + item, OfItem(item, "fInvRCost", "25"));
    }
}

std::string PriceRules::Frame(const std::function<std::string()>& run) {
    try {
        play_.Create("ZendaT");
        play_.Create("Recordset");
    } catch (const host::Error& error) {
        return "raised " + std::to_string(error.number());
    }
    return PlayTransact(play_, {.notOffered = "本模块暂不提供此功能",
                                .before =
                                    [&] {
                                        play_.Create("IaVoucherService");
                                        play_.Do("Context");
                                    },
                                .connectionString = [&] { play_.Do("ConnectionString"); },
                                .run = run});
}

std::string PriceRules::Transact(const std::vector<PriceDocument>& documents) {
    return Frame([&] { return Vouchers(documents); });
}

std::string PriceRules::Vouchers(const std::vector<PriceDocument>& documents) {
    bool inTransaction = false;
    try {
        play_.Do("AllowAdd", {}, Play::main);
        play_.LookUp("cName='iStrsQuanDecDgt'");
        play_.LookUp("cName='iStrsPriDecDgt'");
        play_.BeginTrans();
        inTransaction = true;
        DropWorkTable();
        play_.Execute("CREATE TABLE [IA_tmpPriceJDATA]");
        hasWorkTable_ = true;
        play_.Put("work table", workTable);
        for (const PriceDocument& document : documents) {
            Document(document);
        }
        play_.Point();
        std::string result = play_.ResultDocument();
        play_.CommitTrans();
        return result;
    } catch (const host::Error& error) {
        play_.Outcome("产生未知异常，导入失败！", 999, error.description());
        std::string result = play_.ResultDocument();
        if (inTransaction) {
            play_.RollbackTrans();
        }
        return result;
    }
}

void PriceRules::Document(const PriceDocument& document) {
    if (Import(document)) {
        if (document.cAccounter.empty() || Post() || message_.empty()) {
            return;
        }
        report_ = message_;
    } else {
        report_ += message_ + "\r\n";
    }
    play_.Outcome("", 999, report_);
}

bool PriceRules::Import(const PriceDocument& document) {
    bool imported = false;
    saved_.clear();
    try {
        // The header is read.
        play_.Point();
        if (document.cMaker.empty()) {
            play_.Do("ContextLogin");
            play_.Do("UserName");
        }
        bool rowFailed = false;
        for (const PriceRow& row : document.rows) {
            rowFailed = !Stage(document, row) || rowFailed;
        }
        if (!rowFailed) {
            // An error from here on counts as imported.
            imported = true;
            Save(document);
        }
        DropWorkTable();
        DropResultTable();
    } catch (const host::Error& error) {
        play_.Outcome(std::to_string(error.number()), 999, error.description());
        message_ = play_.ResultDocument();
    }
    return imported;
}

bool PriceRules::Stage(const PriceDocument& document, const PriceRow& row) {
    OpenDBS("select count(cInvCode) as iCount");
    if (!hasWorkTable_) {
        throw host::Error(-2147217865, "Invalid object name 'IA_tmpPriceJDATA'.");
    }
    play_.Do("Read", "select count(cInvCode) as iCount", Play::main);
    const bool repeated = staged_.contains(row.item);
    if (Check(row) && !repeated) {
        play_.Execute("Insert into IA_tmpPriceJDATA");
        staged_[row.item] = row;
        return true;
    }
    message_ = "单据" + document.ID + "导入失败：" + message_;
    if (repeated) {
        message_ += "存货" + row.item + "重复";
    }
    return false;
}

/// An error in the checks refuses the row with the message as it stands.
bool PriceRules::Check(const PriceRow& row) {
    try {
        play_.Create("Recordset");
        play_.Do("SetCursorLocation");
        play_.OpenReadClose("select min(iyperiod) as iyperiod");
        StartEndDate();
        play_.Do("CurrentDate");
        play_.Do("AccountingMonth");
        play_.OpenReadClose("Select Max(dKeepDate) from ia_subsidiary");
        play_.OpenReadClose("Inner Join InvCheckFreeIA870");
        play_.LookUp("cName='cValueStyle'");
        if (byItem_) {
            play_.OpenReadClose("And cValuetype = N'计划价法' ");
            play_.LookUp("cName='cValueStyle'");
            play_.OpenReadClose("select fInvRCost from InvCheckFreeIA870");
            play_.OpenReadClose("select top 1 * from ia_summary");
        } else {
            play_.LookUp("cName='cValueStyle'");
            play_.OpenReadClose("select top 1 * from warehouse");
            play_.LookUp("cName='cValueStyle'");
            play_.OpenReadClose("warehouse.cwhcode = ia_summary.cwhcode");
        }
        if (!row.refusal.empty()) {
            message_ = row.refusal;
            return false;
        }
        play_.OpenReadClose("cName ='dCAFirstDate'");
        play_.OpenReadClose("cName ='bRLOrST'");
        play_.OpenReadClose("FROM v_CO_BOMList");
        return true;
    } catch (const host::Error&) {
        return false;
    }
}

void PriceRules::StartEndDate() {
    play_.Do("AccountId");
    play_.Create("Recordset");
    play_.Do("SetCursorLocation");
    play_.OpenReadClose("Select dBegin,dEnd from QxSystem..UA_Period");
}

void PriceRules::Save(const PriceDocument& document) {
    DropResultTable();
    std::optional<host::Error> failure;
    try {
        play_.Do("Update", "IA_tmpPriceJDATA", Play::main);
    } catch (const host::Error& error) {
        failure = error;
    }
    if (play_.Ran("CREATE TABLE [dbo].[IA_tmpPriceJDATA_Result]")) {
        play_.Put("result table", resultTable);
    }
    if (failure) {
        throw host::Error(*failure);
    }
    play_.Do("GetDefaultTemplateID", "IA51", Play::main);
    OpenDBS("select '' as AutoId");
    play_.Translator("RecordsetToXml", Play::main);
    play_.Translator("XmlToVouchData");
    play_.Do("GetVouchNum", "22", Play::main);
    OpenDBS("select 'A' as editprop");
    play_.Translator("RecordsetToXml", Play::main);
    // The companion saves a voucher as a whole or not at all.
    play_.Do("save", {}, Play::main);
    PutVoucher(document);
    play_.Do("GetMaxID", {}, Play::main);
    saved_ = "voucher " + std::to_string(vouchers_);
    savedMaker_ = document.cMaker;
    savedRows_ = staged_;
    play_.Outcome("单据" + document.ID, 0, "成功导入：");
}

/// A saved voucher: the head, the rows, the two kinds of prices.
void PriceRules::PutVoucher(const PriceDocument& document) {
    ++vouchers_;
    const std::string number = std::to_string(vouchers_);
    play_.Put("voucher " + number, Head(Number(vouchers_), document.cMaker, ""));
    for (const auto& [item, row] : staged_) {
        play_.Put("row " + number + " " + item, OfItem(item, "iCJVACost", row.stored));
        play_.Put("free item's price " + item, OfItem(item, "fInvRCost", row.price));
        play_.Put("price " + item, OfItem(item, "iInvRCost", row.price));
    }
}

bool PriceRules::Post() {
    const std::string head = "CAST(qxts as money) as qxts";
    std::string failure;
    try {
        OpenDBS("SELECT * FROM Vouchers_base");
        play_.Do("Read", "SELECT * FROM Vouchers_base", Play::main);
        OpenDBS(head);
        play_.Translator("RecordsetToXml", Play::main);
        play_.Do("Read", head, Play::main);
        OpenDBS(saved_.empty() ? head : "SELECT *, '' AS editprop FROM v_CostJustVouch_B");
        play_.Translator("RecordsetToXml", Play::main);
        // The companion posts a voucher as a whole or not at all, and refuses where there is none.
        play_.Do("DoAccount", {}, Play::main);
        if (!saved_.empty()) {
            for (const auto& [item, row] : savedRows_) {
                play_.Put("posted " + item, OfItem(item, "iAInPrice", row.adjusted));
            }
            play_.Put(saved_, Head(Number(vouchers_), savedMaker_, "王会计"));
            return true;
        }
    } catch (const host::Error& error) {
        failure = error.description();
    }
    play_.Outcome("记账失败！", 999, failure);
    message_ = failure;
    return false;
}

void PriceRules::DropWorkTable() {
    play_.Execute("DROP TABLE [dbo].[IA_tmpPriceJDATA]\r\n");
    play_.Erase("work table");
    staged_.clear();
    hasWorkTable_ = false;
}

void PriceRules::DropResultTable() {
    play_.Execute("DROP TABLE [dbo].[IA_tmpPriceJDATA_Result]\r\n");
    play_.Erase("result table");
}

} // namespace test
