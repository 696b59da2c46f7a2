#include "tests/support/rules/ProvisionRules.h"

namespace test {
namespace {

std::string Head(const std::string& cDecCode) { return "{\"cDecCode\":\"" + cDecCode + "\"}"; }
std::string Body(const std::string& cInvCode) { return "{\"cInvCode\":\"" + cInvCode + "\"}"; }

} // namespace

std::string ProvisionRules::Transact(const std::vector<ProvisionDoc>& docs) {
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

void ProvisionRules::Document(const ProvisionDoc& doc) {
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

std::string ProvisionRules::Save(const ProvisionDoc& doc, bool& inTransaction) {
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

} // namespace test
