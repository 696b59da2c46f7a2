// Any text as the envelope of a stock query; behind a NUL, its conditions.
#include "ClsKovraProof/ClsKovraProof.h"
#include "fuzz/Account.h"
#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::Account account;
    static refhost::Environment environment(account.Opener());
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = text.find('\0');

    account.Begin();
    refhost::Login login(std::string(fuzz::loginXml), environment);
    kovra::ClsKovraProof instance(environment);
    instance.Transact("<qxinterface roottag=\"none\" proc=\"ADD\"/>", &login);
    const std::unique_ptr<host::DOMDocument> conditions = environment.CreateDOMDocument();
    host::DOMNodeList list;
    if (end != std::string_view::npos && conditions->LoadXML(text.substr(end + 1))) {
        list = conditions->DocumentElement()->SelectNodes("*");
    }
    const std::string before(text.substr(0, end));
    std::string envelope = before;
    try {
        instance.QueryProc(list, envelope);
        const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
        fuzz::Require(document->LoadXML(envelope), "the filled envelope is not well-formed", envelope);
    } catch (const host::Error& error) {
        fuzz::Require(error.number() != 0, "an error without number", text);
        fuzz::Require(envelope == before, "an error changed the envelope", text);
    }
    fuzz::Require(account.changes().empty(), "a query wrote", text);
    return 0;
}
