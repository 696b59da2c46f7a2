#include "bench/imports/RecordStatements.h"

#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"

namespace bench {

std::vector<std::string> RecordStatements(const Import& import, std::size_t rows, const std::string& request) {
    std::vector<std::string> statements;
    MemoryAccount account;
    account.Fill(import.account(rows));
    RunImport(import, request, MemoryAccount::connectionString, account.RecordingOpener(statements));
    return statements;
}

} // namespace bench
