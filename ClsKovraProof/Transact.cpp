#include "ClsKovraProof/ClsKovraProof.h"
#include "ModPub/Conversions.h"
#include "ModPub/ImportRows.h"
#include "ModPub/TransactFrame.h"

namespace kovra {

std::string ClsKovraProof::Transact(std::string_view sXml, host::HostLogin* login) {
    return ModPub::RunTransact(
        state_,
        [this] {
            const auto importRows = [this](bool edit) {
                return [this, edit](const host::DOMNodeList& rows) {
                    ModPub::ImportRows(state_, rows,
                                       [this, edit](const host::DOMNode& row) { ImportProvisionDoc(row, edit); });
                };
            };
            return ModPub::FrameVariation{
                .afterConnection = [this] { LogIntoSubsystem(); },
                .operations =
                    {
                        ModPub::RowsOperation(state_, "ADD", importRows(false)),
                        ModPub::RowsOperation(state_, "EDIT", importRows(true)),
                    },
            };
        },
        sXml, login);
}

void ClsKovraProof::LogIntoSubsystem() {
    host::HostLogin& login = *state_.login;
    const std::string accountId = ModPub::ToText(login.Member("cAcc_Id"));
    const std::string year = ModPub::ToText(login.Member("cIYear"));
    const std::string userId = ModPub::ToText(login.Member("cUserId"));
    const std::string password = ModPub::ToText(login.Member("cUserPassWord"));
    const std::string date = ModPub::ToText(login.Member("CurDate"));
    const std::string server = ModPub::ToText(login.Member("cServer"));
    const std::string serial = ModPub::ToText(login.Member("cSerial"));
    // The answer is not looked at: a request goes on where the host refuses the subsystem.
    login.SubsystemLogin("IA", accountId, year, userId, password, date, server, serial);
}

} // namespace kovra
