#include "tests/ClsPriceJustVou/PriceAccount.h"

#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/HostCall.h"
#include "refhost/xml/Document.h"

#include <array>
#include <ostream>
#include <utility>

namespace test {
namespace {

constexpr std::string_view setup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'AA', N'iStrsQuanDecDgt', N'2'),
(N'AA', N'iStrsPriDecDgt', N'4')
GO
INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2022, 12, 202212, 1), (2023, 1, 202301, 0),
(2023, 2, 202302, 0)
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES
(N'001', 2023, 1, '2023-01-01', '2023-01-30'),
(N'002', 2023, 1, '2022-12-26', '2023-01-25')
GO
INSERT INTO Warehouse (cWhCode, cDepCode, cWhValueStyle) VALUES
(N'01', N'03', N'全月平均法'),
(N'03', N'05', N'计划价法'),
(N'04', N'0401', N'售价法')
GO
INSERT INTO inventory (cInvCode, cValueType, iInvRCost) VALUES (N'1004', N'计划价法', 25), (N'1007', N'计划价法', 0.5)
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, fInvRCost) VALUES (N'1004', 25), (N'1007', 0.5)
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, dVouDate, cWhCode, cInvCode, iAInQuantity, iAInPrice) VALUES
(2023, 0, N'34', '2022-12-31', N'03', N'1004', 100, 2500),
(2023, 0, N'34', '2022-12-31', N'04', N'1004', 8, 200)
GO
)";

/// How the log calls a statement that holds the piece. The first that fits counts.
constexpr std::array<std::pair<std::string_view, std::string_view>, 25> labels = {{
    {"DROP TABLE [dbo].[IA_tmpPriceJDATA]\r\n", "drop work table"},
    {"DROP TABLE [dbo].[IA_tmpPriceJDATA_Result]\r\n", "drop result table"},
    {"CREATE TABLE [IA_tmpPriceJDATA] (", "create work table"},
    {"select count(cInvCode) as iCount from IA_tmpPriceJDATA", "repeated?"},
    {"Insert into IA_tmpPriceJDATA ", "stage"},
    {"cName='iStrsQuanDecDgt'", "option quantity decimals"},
    {"cName='iStrsPriDecDgt'", "option price decimals"},
    {"cName='cValueStyle'", "option valuation"},
    {"select min(iyperiod)", "open month"},
    {"QxSystem..UA_Period", "calendar"},
    {"Select Max(dKeepDate)", "latest posting"},
    {"InvCheckFreeIA870 InvCheckFree On", "item and free items"},
    {"And cValuetype = N'计划价法'", "planned price?"},
    {"select fInvRCost from InvCheckFreeIA870", "free items' price"},
    {"select top 1 * from ia_summary", "processed, by item?"},
    {"select top 1 * from warehouse", "planned-price warehouse"},
    {"warehouse.cwhcode = ia_summary.cwhcode", "processed, by warehouse?"},
    {"warehouse.cdepcode = ia_summary.cdepcode", "processed, by department?"},
    {"'dCAFirstDate'", "cost accounting started?"},
    {"'bRLOrST'", "standard costing?"},
    {"v_CO_BOMList", "made here?"},
    {"as iCJVACost", "head to save"},
    {"select 'A' as editprop", "rows to save"},
    {"FROM Vouchers_base", "card"},
    {"CAST(qxts as money)", "head to post"},
}};

std::string Label(std::string_view sql) {
    for (const auto& [piece, label] : labels) {
        if (sql.find(piece) != std::string_view::npos) {
            return std::string(label);
        }
    }
    return std::string(sql);
}

} // namespace

std::string Voucher::Xml() const {
    return "<voucher><header><ID>" + ID + "</ID><cMaker>" + cMaker + "</cMaker><cAccounter>" + cAccounter +
           "</cAccounter><dCJVDate>" + dCJVDate + "</dCJVDate><cMemo>" + cMemo + "</cMemo></header><body>" + entries +
           "</body></voucher>";
}

std::string Entry(std::string_view cInvCode, std::string_view iCJVACost, std::string_view more) {
    std::string xml = "<entry><cInvCode>";
    xml.append(cInvCode).append("</cInvCode>").append(more);
    return xml.append("<iCJVACost>").append(iCJVACost).append("</iCJVACost></entry>");
}

std::string Request(const std::vector<Voucher>& vouchers, std::string_view proc) {
    std::string xml = "<qxinterface roottag=\"voucher\" docid=\"J1\" proc=\"";
    xml.append(proc).append("\">");
    for (const Voucher& voucher : vouchers) {
        xml.append(voucher.Xml());
    }
    return xml.append("</qxinterface>");
}

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << "{\"" << outcome.key << "\", " << outcome.code << ", \"" << outcome.dsc << "\"}";
}

std::vector<Outcome> Outcomes(const std::string& result) {
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    document->LoadXML(result);
    std::vector<Outcome> outcomes;
    for (const host::DOMNodePtr& item : document->SelectNodes("/qxinterface/item")) {
        outcomes.push_back({item->GetAttribute("key").value_or("none"), item->GetAttribute("code").value_or("none"),
                            item->GetAttribute("dsc").value_or("none")});
    }
    return outcomes;
}

PriceAccount::PriceAccount(std::string_view valuation) {
    Run(setup);
    Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'cValueStyle', N'" +
        std::string(valuation) + "')");
}

std::vector<std::string> PriceAccount::WorkTables() const {
    return Rows("SELECT name FROM sysobjects WHERE type = N'U' AND name LIKE N'IA[_]tmpPriceJDATA%' ORDER BY name");
}

std::string PriceAccount::LoginXml() const {
    return "<login QxDbName=\"" + account_.connectionString() +
           "\" cAcc_Id=\"001\" cIYear=\"2023\" cUserId=\"demo\" cUserPassWord=\"\" cServer=\"\" cSerial=\"\" "
           "iStartPeriod=\"1\" CurDate=\"" +
           login.CurDate + "\" cUserName=\"" + login.cUserName + "\" iMonth=\"" + login.iMonth + "\"/>";
}

std::string PriceAccount::Import(const std::string& request, std::size_t reportBound) {
    FaultyEnvironment environment(LoggedFaults());
    refhost::Login hostLogin(LoginXml(), environment);
    kovra::ClsPriceJustVou instance(environment, nullptr, reportBound);
    return instance.Transact(request, &hostLogin);
}

Faults PriceAccount::LoggedFaults() {
    log_.clear();
    statements_.clear();
    Faults logged = faults;
    logged.statement = [this](std::string_view sql) {
        if (!refhost::HostCall::Active()) {
            log_.push_back(Label(sql));
            statements_.emplace_back(sql);
        }
        if (faults.statement) {
            faults.statement(sql);
        }
    };
    logged.transaction = [this](std::string_view operation) {
        log_.emplace_back(operation);
        if (faults.transaction) {
            faults.transaction(operation);
        }
    };
    return logged;
}

std::function<void(std::string_view)> FailOn(std::string piece, host::ErrorNumber number, std::string description) {
    return [piece = std::move(piece), number, description = std::move(description)](std::string_view sql) {
        if (sql.find(piece) != std::string_view::npos) {
            throw host::Error(number, description);
        }
    };
}

} // namespace test
