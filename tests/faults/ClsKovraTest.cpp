#include "ClsKovra/ClsKovra.h"

#include "tests/faults/FaultedCall.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using test::CallMarks;
using test::FailEveryOperation;
using test::FaultRequest;
using test::Play;

/// The login's own connection, which it opens for its first look at the calendar and keeps.
constexpr int loginConnection = 2;

constexpr const char* setup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'IA', N'dIAStartDate', N'2023-01-01'), (N'IA', N'cValueStyle', N'按仓库核算'), (N'AA', N'cSysVersion', N'工业')
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES ('001', 2023, 1, '2023-01-01', '2023-01-31')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES ('01', N'全月平均法'), ('02', N'计划价法')
GO
INSERT INTO inventory (cInvCode, bInvBatch, iInvRCost) VALUES ('N1', 0, NULL), ('A1', 1, 3), ('P1', 0, 2.5)
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, fInvRCost) VALUES ('P1', 2.5)
GO
INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('97', N'研发项目', 'fitemss97')
GO
INSERT INTO fitemss97 (citemcode, citemname) VALUES ('RD01', N'主轴研制')
)";

constexpr const char* restore = "DELETE FROM Ia_subsidiary";

constexpr const char* contents = "select cWhCode, cInvCode, iAInQuantity, iInCost, iAInPrice, iDebitDifCost, cBatchIA, "
                                 "cName, cVouType, iYear from Ia_subsidiary";

/// A row of the request, and what the rules make of it.
struct OpeningRow {
    std::string warehouse;
    std::string item;
    /// What refuses the row: an item that the look-up does not find, a date, an amount.
    std::string unknownItem = {};
    std::string badDate = {};
    std::string badAmount = {};
    /// Whether the warehouse's method is one that knows batches, and whether it is planned price.
    bool averaged = true;
    bool planned = false;
    /// Whether the row names a project, a receipt date, a batch, a quantity below zero.
    bool hasProject = false;
    bool hasDate = false;
    bool hasBatch = false;
    bool isNegative = false;
    std::string stored = {};

    std::string Key() const { return "仓库编码：" + warehouse + "， 存货编码：" + item; }
};

/// Plays one call.
class Opening {
public:
    explicit Opening(Play& play) : play_(play) {}

    std::string Ledger(const std::function<std::string()>& last) {
        std::string reason;
        try {
            play_.Do("LoginYear");
            play_.Do("PeriodDates", {}, loginConnection);
            play_.LookUp("cSysID='IA' AND cName='dIAStartDate'");
            play_.Do("LoginYear");
            play_.LookUp("Select bFlag_IA from gl_mend where iPeriod=0 AND iYEar =2023");
            play_.LookUp("SELECT id FROM IA_Subsidiary WHERE iMonth<>0");
            play_.LookUp("SELECT autoid FROM IA_enSubsidiary");
            play_.LookUp("SELECT cJvCode FROM JustInVouch");
            play_.LookUp("SELECT autoid FROM CostJustVouch");
            reason = last();
            if (!reason.empty()) {
                play_.Outcome("", 101, reason);
            }
        } catch (const host::Error& error) {
            reason = error.description();
            play_.Outcome("", error.number(), reason);
        }
        return reason;
    }

    std::string Transact(const std::function<std::string()>& lastOfLedger, const std::vector<OpeningRow>& rows) {
        return PlayTransact(play_, {.ledgerCheck = [&]() -> std::optional<std::string> {
                                        const std::string reason = Ledger(lastOfLedger);
                                        if (reason.empty()) {
                                            return std::nullopt;
                                        }
                                        play_.Helper("GetAttr", "dsc");
                                        return play_.Refuse("101", reason);
                                    },
                                    .run =
                                        [&] {
                                            return PlayRows(play_, [&] {
                                                for (const OpeningRow& row : rows) {
                                                    Row(row);
                                                }
                                            });
                                        }});
    }

private:
    void Row(const OpeningRow& row) {
        if (!Check(row, [&] { return MasterData(row); }) || !Check(row, [&] { return Dates(row); })) {
            return;
        }
        try {
            if (row.isNegative) {
                play_.LookUp("SELECT bTrack FROM Inventory");
            }
            if (row.planned && row.badAmount.empty() && !PriceByFreeItems(row)) {
                return;
            }
            if (row.badAmount.empty()) {
                play_.Do("LoginYear");
                play_.Execute("Insert Into Ia_subsidiary");
                play_.Put(row.stored, row.stored);
                play_.Outcome(row.Key(), 0, "ok");
            } else {
                play_.Outcome(row.Key(), 101, row.badAmount);
            }
        } catch (const host::Error& error) {
            play_.Outcome(row.Key(), 101, row.badAmount.empty() ? error.description() : row.badAmount);
        }
    }

    /// A check refuses its row itself; an error in it, the refusal's own included, refuses it with the message so far.
    bool Check(const OpeningRow& row, const std::function<std::string()>& check) {
        std::string message;
        try {
            message = check();
            if (message.empty()) {
                return true;
            }
            play_.Outcome(row.Key(), 101, message);
        } catch (const host::Error&) {
            play_.Outcome(row.Key(), 101, message);
        }
        return false;
    }

    std::string MasterData(const OpeningRow& row) {
        play_.LookUp("Select cValuetype,iInvRCost From inventory  Where cInvCode='" + row.item + "'");
        if (!row.unknownItem.empty()) {
            return row.unknownItem;
        }
        play_.LookUp("cName='cValueStyle'");
        play_.LookUp("Select bFree1,bFree2,bFree3");
        play_.LookUp("Select cwhvaluestyle From Warehouse  Where cWhCode='" + row.warehouse + "' and bincost = 1 ");
        play_.LookUp("cName='cValueStyle'");
        play_.LookUp("select cWhValueStyle from Warehouse where cWHCode=N'" + row.warehouse + "'");
        if (row.averaged) {
            play_.LookUp("select isnull(bCheckBatch,0) from inventory");
        }
        if (row.hasProject) {
            play_.LookUp("from fitem  Where citem_class='97' ");
            play_.LookUp("from fitemss97 Where cItemCode ='RD01' ");
        }
        return {};
    }

    std::string Dates(const OpeningRow& row) {
        if (row.hasDate && !knowsStart_) {
            play_.Do("StartPeriod");
            play_.Do("LoginYear");
            play_.Do("PeriodDates", {}, loginConnection);
            // Asked of the login once a call.
            knowsStart_ = true;
        }
        if (!row.badDate.empty()) {
            return row.badDate;
        }
        if (row.hasBatch) {
            play_.LookUp("SELECT bInvBatch FROM Inventory");
        }
        play_.LookUp("SELECT bInvQuality FROM Inventory");
        return {};
    }

    bool PriceByFreeItems(const OpeningRow& row) {
        try {
            play_.LookUp("select fInvRCost from InvCheckFreeIA870");
            return true;
        } catch (const host::Error&) {
            play_.Outcome(row.Key(), 101, "");
            return false;
        }
    }

    Play& play_;
    bool knowsStart_ = false;
};

const std::string rows =
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iQuantity>1</iQuantity><iCost>2</iCost><iPrice>2</iPrice></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>-1</iQuantity><iCost>3</iCost><iPrice>-3</iPrice>"
    "<cBatchCode>B1</cBatchCode><dVouDate>2022-12-31</dVouDate><cItem_class>97</cItem_class>"
    "<cItemCode>RD01</cItemCode><cItemCName/><cName/></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>X9</cInvCode><iPrice>1</iPrice></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iPrice>1</iPrice><dVouDate>2022-12-31</dVouDate>"
    "<cDefine4>soon</cDefine4></row>"
    "<row><cWhCode>02</cWhCode><cInvCode>P1</cInvCode><iQuantity>10</iQuantity><iPrice>30</iPrice></row>"
    "<row><cWhCode>02</cWhCode><cInvCode>P1</cInvCode><iQuantity>0</iQuantity><iPrice>30</iPrice></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iQuantity>5</iQuantity><iCost>2</iCost><iPrice>10</iPrice>"
    "<dVouDate>2022-12-30</dVouDate></row>";

/// A stored row of one item; the batch and the project's name are JSON.
std::string Stored(const std::string& warehouse, const std::string& item, const std::string& amounts,
                   const std::string& batchAndName) {
    return "{\"cWhCode\":\"" + warehouse + "\",\"cInvCode\":\"" + item + "\"," + amounts + "," + batchAndName +
           ",\"cVouType\":\"34\",\"iYear\":2023}";
}

const std::string neither = R"("cBatchIA":null,"cName":null)";

std::vector<OpeningRow> Rows() {
    return {
        {.warehouse = "01",
         .item = "N1",
         .stored = Stored("01", "N1", R"("iAInQuantity":1,"iInCost":2,"iAInPrice":2,"iDebitDifCost":null)", neither)},
        {.warehouse = "01",
         .item = "A1",
         .hasProject = true,
         .hasDate = true,
         .hasBatch = true,
         .isNegative = true,
         .stored = Stored("01", "A1", R"("iAInQuantity":-1,"iInCost":3,"iAInPrice":-3,"iDebitDifCost":null)",
                          R"("cBatchIA":"B1","cName":"主轴研制")")},
        {.warehouse = "01", .item = "X9", .unknownItem = "存货编码不合法。"},
        {.warehouse = "01", .item = "N1", .badDate = "表头自定义项4日期不合法！", .hasDate = true},
        {.warehouse = "02",
         .item = "P1",
         .averaged = false,
         .planned = true,
         .stored = Stored("02", "P1", R"("iAInQuantity":10,"iInCost":2.5,"iAInPrice":25,"iDebitDifCost":5)", neither)},
        {.warehouse = "02",
         .item = "P1",
         .badAmount = "计划价/售价法不允许导入数量为0的期初数据。",
         .averaged = false,
         .planned = true},
        {.warehouse = "01",
         .item = "N1",
         .hasDate = true,
         .stored = Stored("01", "N1", R"("iAInQuantity":5,"iInCost":2,"iAInPrice":10,"iDebitDifCost":null)", neither)},
    };
}

void FailEveryOperationOf(const std::string& proc) {
    FailEveryOperation({.name = "ClsKovra " + proc,
                        .proc = proc,
                        .setup = setup,
                        .restore = restore,
                        .contents = {contents},
                        .run = test::TransactOf<kovra::ClsKovra>(FaultRequest(proc, rows)),
                        .rules = [](Play& play) {
                            return Opening(play).Transact(
                                [&] {
                                    play.LookUp("select top 1 * from ia_summary where iYear = 2023");
                                    return std::string();
                                },
                                Rows());
                        }});
}

TEST(OpeningBalancesFaults, Add) { FailEveryOperationOf("ADD"); }

TEST(OpeningBalancesFaults, Edit) { FailEveryOperationOf("EDIT"); }

TEST(OpeningBalancesFaults, RefusedLedger) {
    FailEveryOperation({.name = "ClsKovra ADD, ledger refused",
                        .proc = "ADD",
                        .setup = std::string(setup) +
                                 "GO\nINSERT INTO CostJustVouch (ID, cCode, dCJVDate) VALUES (1, N'1', '2023-01-02')",
                        .restore = restore,
                        .contents = {contents},
                        .run = test::TransactOf<kovra::ClsKovra>(FaultRequest("ADD", rows)),
                        .rules = [](Play& play) {
                            return Opening(play).Transact(
                                [&] {
                                    play.LookUp("cSysID='AA' AND cName='cSysVersion'");
                                    return std::string("已有计划价调整单，不能导入期初数据。");
                                },
                                {});
                        }});
}

/// An unknown item is shown to the user and counts as false; an error is the caller's.
TEST(OpeningBalancesFaults, InvCodeIsTorF) {
    FailEveryOperation({.name = "ClsKovra InvCodeIsTorF",
                        .proc = "ADD",
                        .setup = setup,
                        .restore = restore,
                        .contents = {contents},
                        .run =
                            [](host::Environment& environment, host::HostLogin& login, const CallMarks& marks) {
                                kovra::ClsKovra instance(environment);
                                instance.Transact(FaultRequest("ADD", ""), &login);
                                marks.begin();
                                std::string told;
                                try {
                                    told = instance.InvCodeIsTorF("X9", "bInvBatch") ? "true" : "false";
                                } catch (const host::Error& error) {
                                    told = error.description();
                                }
                                marks.returned();
                                return told;
                            },
                        .rules = [](Play& play) -> std::string {
                            try {
                                play.LookUp("SELECT bInvBatch FROM Inventory WHERE cInvCode='X9'");
                                play.Do("ShowMessage", "该存货没有找到！");
                                return "false";
                            } catch (const host::Error& error) {
                                return error.description();
                            }
                        }});
}

} // namespace
