#include "bench/RecordStatements.h"

#include "bench/Apart.h"
#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"

#include <string_view>

namespace bench {

std::vector<std::string> RecordStatements(const Import& import, std::size_t rows, const std::string& request) {
    return Apart([&] {
        Texts statements;
        MemoryAccount account;
        account.Fill(import.account(rows));
        RunImport(import, request, MemoryAccount::connectionString,
                  account.RecordingOpener([&](std::string_view sql) { statements.emplace_back(sql); }));
        return statements;
    });
}

} // namespace bench
