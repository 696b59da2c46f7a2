#include "ClsKovraProof/ClsKovraProof.h"

#include "tests/faults/FaultedCall.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using test::FailEveryOperation;
using test::FaultRequest;
using test::Play;

constexpr const char* setup = "INSERT INTO CurrentStock (cInvCode, iQuantity) VALUES (N'1001', 5), (N'1004', 1)";

constexpr const char* restore = R"(DELETE FROM IA_DecReady
GO
DELETE FROM IA_DecReadys
GO
INSERT INTO IA_DecReady (ID, cDecCode) VALUES (1, N'OLD1'), (2, N'OLD2')
GO
INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (1, N'old1'), (2, N'old2')
)";

constexpr const char* heads = "select cDecCode from IA_DecReady";
constexpr const char* bodies = "select cInvCode from IA_DecReadys";

std::string Head(const std::string& cDecCode) { return "{\"cDecCode\":\"" + cDecCode + "\"}"; }
std::string Body(const std::string& cInvCode) { return "{\"cInvCode\":\"" + cInvCode + "\"}"; }

/// A document of the request, and what the rules make of it.
struct ProvisionDoc {
    std::string number;
    /// What refuses the document: before its number is known, by its type, by the save.
    std::string noHeader = {};
    std::string badType = {};
    std::string saveRefusal = {};
    /// The item of the document that has its number already, empty where there is none.
    std::string storedItem = {};
    std::vector<std::string> items = {};
};

/// Plays one call.
class Provisions {
public:
    Provisions(Play& play, bool edit) : play_(play), edit_(edit) {}

    std::string Transact(const std::vector<ProvisionDoc>& docs) {
        for (const ProvisionDoc& doc : docs) {
            if (!doc.storedItem.empty()) {
                play_.Put("head " + doc.number, Head(doc.number));
                play_.Put("body " + doc.number, Body(doc.storedItem));
            }
        }
        return PlayTransact(play_, {.after =
                                        [&] {
                                            for (const char* member : {"cAcc_Id", "cIYear", "cUserId", "cUserPassWord",
                                                                       "CurDate", "cServer", "cSerial"}) {
                                                play_.Do("Member", member);
                                            }
                                            play_.Do("SubsystemLogin", "IA");
                                        },
                                    .run =
                                        [&] {
                                            return PlayRows(play_, [&] {
                                                for (const ProvisionDoc& doc : docs) {
                                                    Document(doc);
                                                }
                                            });
                                        }});
    }

private:
    void Document(const ProvisionDoc& doc) {
        bool inTransaction = false;
        const std::string message = Save(doc, inTransaction);
        if (!message.empty()) {
            if (inTransaction) {
                play_.RollbackTrans();
            }
            play_.Outcome(doc.number, 101, message);
        } else {
            play_.CommitTrans();
            play_.Outcome(doc.number, 0, "ok");
        }
    }

    std::string Save(const ProvisionDoc& doc, bool& inTransaction) {
        if (!doc.noHeader.empty()) {
            return doc.noHeader;
        }
        play_.Helper("GetChildText", "Deccode");
        const std::string lookUp = "Select ID From IA_DecReady Where cDecCode='" + doc.number + "'";
        play_.Create("Recordset");
        play_.Do("Open", lookUp, Play::main);
        play_.Do("Read", lookUp, Play::main);
        if (!doc.storedItem.empty()) {
            if (!edit_) {
                return "单据号：" + doc.number + "已存在。";
            }
            play_.Execute("Delete IA_DecReady Where cDecCode='" + doc.number + "'");
            play_.Erase("head " + doc.number);
            play_.Do("Read", lookUp, Play::main);
            play_.Execute("Delete IA_DecReadys Where ID=");
            play_.Erase("body " + doc.number);
        }
        play_.Do("Close", lookUp, Play::main);
        if (!doc.badType.empty()) {
            return "单据号为" + doc.number + doc.badType;
        }

        for (const char* sql : {"From ia_decready Where 1=2", "From ia_decreadys Where 1=2"}) {
            play_.Create("Recordset");
            play_.Do("SetCursorLocation");
            play_.Do("Open", sql, Play::main);
        }
        for (const char* sql : {"From ia_decready Where 1=2", "From ia_decreadys Where 1=2"}) {
            play_.Create("DOMDocument");
            play_.Do("Save", sql, Play::main);
        }
        play_.Create("EaiXmlConverter");
        play_.Do("FillHead", "EaiProof.Xml", Play::main);
        play_.Do("FillBody", "EaiProof.Xml", Play::main);

        play_.Create("IaVoucherService");
        if (std::string message = play_.Ask("VoucherInit", {}, components_); !message.empty()) {
            // The components give a connection up that failed them, and make another.
            ++components_;
            return message;
        }
        play_.Do("GetDefaultTemplate", "48", components_);
        play_.Do("Read", "Select VT_ID From VoucherTemplates", components_);
        play_.Create("ProvisionPreCheck");
        play_.Do("Check", {}, components_);

        play_.BeginTrans();
        inTransaction = true;
        play_.Create("DOMDocument");
        if (std::string message = play_.Ask("SaveVoucher", "48", Play::main); !message.empty()) {
            return message;
        }
        if (doc.saveRefusal.empty()) {
            play_.Put("new head " + doc.number, Head(doc.number));
            for (const std::string& item : doc.items) {
                play_.Put("new body " + item, Body(item));
            }
        }
        return doc.saveRefusal;
    }

    Play& play_;
    bool edit_;
    /// The connection that the host's components share.
    int components_ = 2;
};

std::string Doc(const std::string& number, const std::string& entries, const std::string& vouchtype = "48") {
    return "<row><header><Deccode>" + number + "</Deccode><vouchtype>" + vouchtype + "</vouchtype></header><body>" +
           entries + "</body></row>";
}

std::string Entry(const std::string& item, const std::string& iQuantity = {}) {
    return "<entry><cInvCode>" + item + "</cInvCode><iQuantity>" + iQuantity +
           "</iQuantity><iThisPrice>1.5</iThisPrice></entry>";
}

std::string Rows() {
    return Doc("P1", Entry("1001", "3") + Entry("1002")) + "<row/>" + Doc("OLD1", Entry("1003")) +
           Doc("P2", Entry("1003"), "49") + Doc("OLD2", Entry("1003"), "49") + Doc("P3", Entry("1004", "2")) +
           Doc("P4", Entry("1005"));
}

const std::vector<ProvisionDoc> docs = {
    {.number = "P1", .items = {"1001", "1002"}},
    {.number = "", .noHeader = "没有header节点"},
    {.number = "OLD1", .storedItem = "old1", .items = {"1003"}},
    {.number = "P2", .badType = "vouchtype单据类型节点值非法!"},
    {.number = "OLD2", .badType = "vouchtype单据类型节点值非法!", .storedItem = "old2"},
    {.number = "P3", .saveRefusal = "存货1004现存量不足;"},
    {.number = "P4", .items = {"1005"}},
};

void FailEveryOperationOf(const std::string& proc) {
    FailEveryOperation({.name = "ClsKovraProof " + proc,
                        .proc = proc,
                        .setup = setup,
                        .restore = restore,
                        .contents = {heads, bodies},
                        .run = test::TransactOf<kovra::ClsKovraProof>(FaultRequest(proc, Rows())),
                        .rules = [&](Play& play) { return Provisions(play, proc == "EDIT").Transact(docs); }});
}

TEST(ProvisionsFaults, Add) { FailEveryOperationOf("ADD"); }

TEST(ProvisionsFaults, Edit) { FailEveryOperationOf("EDIT"); }

} // namespace
