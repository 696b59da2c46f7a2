// Any bytes as the request of one of the six classes; the first byte chooses the class.
#include "cli/Classes.h"
#include "fuzz/Account.h"
#include "fuzz/Require.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/Document.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace {

using Tables = std::vector<std::string_view>;

/// What each class and the components that it calls may write to, in the order of `cli::ImportClasses`.
const std::array<Tables, 6> writable = {
    Tables{"IA_HeadSet"},
    Tables{"IA_OppHead"},
    Tables{"IA_OppHead"},
    Tables{"Ia_subsidiary"},
    Tables{"IA_DecReady", "IA_DecReadys"},
    Tables{"CostJustVouch", "CostJustVouchs", "Ia_subsidiary", "inventory", "InvCheckFreeIA870"},
};

/// Work tables that come and go with a price request.
bool IsWorkTable(std::string_view table) { return table.starts_with("IA_tmp"); }

bool MayWrite(const Tables& tables, std::string_view change) {
    const std::string_view table = change.substr(change.find(' ') + 1);
    for (const std::string_view own : tables) {
        if (table == own) {
            return true;
        }
    }
    return IsWorkTable(table);
}

void CheckResult(const std::string& result) {
    // "EMPTY" alone answers with nothing.
    if (result.empty()) {
        return;
    }
    refhost::xml::Document document;
    fuzz::Require(document.LoadXML(result), "the result is not well-formed", result);
    const std::string root = document.DocumentElement()->NodeName();
    fuzz::Require(root == "qxinterface" || root == "error", "the result's root is strange", result);
    for (const host::DOMNodePtr& item : document.DocumentElement()->ChildNodes()) {
        fuzz::Require(item->GetAttribute("code") && item->GetAttribute("dsc") && item->GetAttribute("key"),
                      "an outcome is not whole", result);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::Account account;
    static refhost::Environment environment(account.Opener());
    static const std::set<std::string> tablesBefore = account.Tables();
    if (size == 0) {
        return 0;
    }
    const std::size_t which = data[0] % writable.size();
    const std::string_view request(reinterpret_cast<const char*>(data) + 1, size - 1);

    account.Begin();
    refhost::Login login(std::string(fuzz::loginXml), environment);
    const cli::ImportClass& importClass = cli::ImportClasses()[which];
    CheckResult(importClass.transact(environment, request, &login, nullptr));
    fuzz::Require(sqlite3_get_autocommit(account.database().Handle()) != 0, "a transaction is left open", request);
    for (const std::string& change : account.changes()) {
        fuzz::Require(MayWrite(writable[which], change), importClass.name, change);
    }
    if (!account.changes().empty()) {
        std::set<std::string> left = account.Tables();
        std::erase_if(left, IsWorkTable);
        fuzz::Require(left == tablesBefore, "a table or view came or went", importClass.name);
    }
    return 0;
}
