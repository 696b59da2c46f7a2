#include "bench/imports/RunImport.h"

#include "cli/Classes.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"

#include <algorithm>
#include <stdexcept>

namespace bench {

std::string LoginXml(const std::string& connectionString) {
    return "<login QxDbName=\"" + connectionString +
           "\" cAcc_Id=\"001\" cIYear=\"2023\" cUserId=\"demo\" cUserName=\"王会计\" cUserPassWord=\"\" "
           "CurDate=\"2023-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" iStartPeriod=\"1\"/>";
}

void RunImport(const Import& import, const std::string& request, const std::string& connectionString,
               const refhost::DatabaseOpener& opener) {
    refhost::Environment environment(opener);
    refhost::Login login(LoginXml(connectionString), environment);
    const auto importClass = std::ranges::find(cli::ImportClasses(), import.className, &cli::ImportClass::name);
    const std::string result = importClass->transact(environment, request, &login, nullptr);
    if (result.find("code=\"0\"") == std::string::npos || result.find("code=\"101\"") != std::string::npos ||
        result.find("code=\"999\"") != std::string::npos || result.starts_with("<error")) {
        throw std::runtime_error("the request is not accepted: " + result.substr(0, 300));
    }
}

} // namespace bench
