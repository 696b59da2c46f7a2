// Any text as a statement of the embedded account database.
#include "fuzz/Account.h"
#include "fuzz/Require.h"
#include "host/Error.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::Account account;
    const std::string_view sql(reinterpret_cast<const char*>(data), size);
    account.Begin();
    bool inTransaction = true;
    account.database().BeginTrans();
    try {
        const refhost::ResultSet answer = account.database().Query(sql);
        const std::size_t columns = answer.fields ? answer.fields->size() : 0;
        fuzz::Require(answer.cells.size() == columns * answer.rowCount, "an answer lacks cells", sql);
    } catch (const host::Error& error) {
        fuzz::Require(error.number() != 0, "an error without number", sql);
        fuzz::Require(!error.description().empty(), "an error without description", sql);
    }
    // One batch is one statement: it writes to one table in one way.
    fuzz::Require(account.changes().size() <= 1, "two statements ran", sql);
    try {
        account.database().RollbackTrans();
    } catch (const host::Error&) {
        // The text ended the transaction itself.
        inTransaction = false;
    }
    if (inTransaction) {
        account.database().BeginTrans();
        account.database().RollbackTrans();
    }
    return 0;
}
