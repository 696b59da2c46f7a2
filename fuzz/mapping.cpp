// Any text as a mapping file; behind a NUL, a row that is converted by it.
#include "fuzz/Account.h"
#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/Environment.h"
#include "refhost/eai/EaiXmlConverter.h"
#include "refhost/eai/MappingStore.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace {

void Convert(refhost::Environment& environment, host::Connection& connection, const std::string& mapping,
             std::string_view row) {
    refhost::MappingStore store(environment, [&](const std::string&) { return std::optional(mapping); });
    refhost::EaiXmlConverter converter(environment, store);
    const auto records = environment.CreateRecordset();
    records->Open("select * from IA_DecReady", connection, host::CursorType::openStatic, host::LockType::readOnly,
                  host::command_option::text);
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    records->Save(*document);
    converter.FillHead(row, "row", *document, *records, "Fuzz.Xml");
    converter.FillBody(row, "row", *document, *records, "Fuzz.Xml");
    const std::unique_ptr<host::DOMDocument> again = environment.CreateDOMDocument();
    fuzz::Require(again->LoadXML(document->Xml()), "the filled record is not well-formed", mapping);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::Account account;
    static refhost::Environment environment(account.Opener());
    static const std::unique_ptr<host::Connection> connection = [] {
        auto opened = environment.CreateConnection();
        opened->Open("", "", "", host::command_option::unspecified);
        return opened;
    }();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = text.find('\0');
    account.Begin();
    try {
        Convert(environment, *connection, std::string(text.substr(0, end)),
                end == std::string_view::npos ? std::string_view("<row/>") : text.substr(end + 1));
    } catch (const host::Error& error) {
        fuzz::Require(error.number() != 0 && !error.description().empty(), "an error that says nothing", text);
    }
    fuzz::Require(account.changes().empty(), "a converter wrote to the database", text);
    return 0;
}
