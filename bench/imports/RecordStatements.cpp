#include "bench/imports/RecordStatements.h"

#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"

#include <string_view>

namespace bench {

std::vector<std::string> RecordStatements(const Import& import, std::size_t rows, const std::string& request) {
    // Each ends in NUL. A million texts of their own between the account's pages would leave holes all over the memory,
    // which no import that is measured afterwards would find otherwise.
    std::string joined;
    {
        MemoryAccount account;
        account.Fill(import.account(rows));
        RunImport(import, request, MemoryAccount::connectionString,
                  account.RecordingOpener([&](std::string_view sql) { joined.append(sql).push_back('\0'); }));
    }
    std::vector<std::string> statements;
    for (std::string_view rest = joined; !rest.empty(); rest.remove_prefix(statements.back().size() + 1)) {
        statements.emplace_back(rest.substr(0, rest.find('\0')));
    }
    return statements;
}

} // namespace bench
