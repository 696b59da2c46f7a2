#include "tests/support/rules/CallAccount.h"

#include "refhost/account/Batches.h"
#include "refhost/ado/JsonRow.h"
#include "refhost/eai/Login.h"
#include "tests/support/rules/Tape.h"

#include <algorithm>

namespace test {

CallAccount::CallAccount(const PlayedCall& call) : call_(call) {
    account_.Run(call.setup);
    account_.Run(call.restore);
}

std::string CallAccount::Run(Tape& tape) {
    return Run([&](const HostOperation& operation) { tape.Before(operation); },
               {[&] { tape.Begin(); }, [&] { tape.Returned(); }});
}

std::string CallAccount::Run(const BeforeOperation& before, const CallMarks& marks, const Through& through) {
    WatchedEnvironment environment(before, [&](const std::string& connectionString) {
        return through ? through(pool_.Open(connectionString)) : pool_.Open(connectionString);
    });
    refhost::Login login(LoginXml(), environment);
    return call_.run(environment, *environment.Watch(login), marks);
}

std::vector<std::string> CallAccount::Contents() {
    const std::unique_ptr<refhost::Database> database = pool_.Open(ConnectionString());
    std::vector<std::string> rows;
    for (const std::string& sql : call_.contents) {
        const refhost::ResultSet found = database->Query(sql);
        for (std::size_t row = 0; row < found.rowCount; ++row) {
            refhost::AppendJsonRow(rows.emplace_back(), found, row);
        }
    }
    std::ranges::sort(rows);
    return rows;
}

void CallAccount::Restore() {
    const std::unique_ptr<refhost::Database> database = pool_.Open(ConnectionString());
    for (const std::string& batch : refhost::SplitBatches(call_.restore)) {
        database->Execute(batch);
    }
}

std::string CallAccount::LoginXml() const {
    std::string xml = account_.LoginXml();
    const std::string plain = account_.connectionString();
    return xml.insert(xml.find(plain) + plain.size(), call_.connectionMore);
}

} // namespace test
