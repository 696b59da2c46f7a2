// Any text as a login file, its connection string and what the trace writes of it.
#include "refhost/eai/Login.h"

#include "ModPub/Utf8.h"
#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/Environment.h"
#include "refhost/ado/ConnectionString.h"
#include "refhost/trace/Json.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using fuzz::Require;

void CheckConnectionString(std::string_view text) {
    const auto provider = refhost::ConnectionStringValue(text, "Provider");
    Require(provider == refhost::ConnectionStringValue(text, "pROVIDER"), "letter case of a key matters", text);
    const std::string masked = refhost::MaskPasswords(text);
    for (const char* const key : {"Pwd", "Password"}) {
        const auto shown = refhost::ConnectionStringValue(masked, key);
        Require(!shown || *shown == "***", "a password shows", masked);
        Require(shown.has_value() == refhost::ConnectionStringValue(text, key).has_value(), "a key is lost", masked);
    }
    std::string json;
    refhost::AppendJsonString(json, text);
    Require(ModPub::IsUtf8(json), "JSON that is no UTF-8", json);
    for (const char c : json) {
        Require(static_cast<unsigned char>(c) >= 0x20, "a control character in JSON", json);
    }
}

void CheckMembers(refhost::Login& login) {
    const auto read = [](auto&& member) {
        try {
            member();
        } catch (const host::Error& error) {
            const host::ErrorNumber number = error.number();
            Require(number == host::error_number::noSuchMember || number == host::error_number::typeMismatch ||
                        number == host::error_number::overflow,
                    "a member raises something else");
        }
    };
    read([&] { CheckConnectionString(login.ConnectionString()); });
    read([&] { login.LoginYear(); });
    read([&] { login.AccountId(); });
    read([&] { login.UserName(); });
    read([&] { login.CurrentDate(); });
    read([&] { login.AccountingMonth(); });
    read([&] { login.StartPeriod(); });
    read([&] { login.Member("QxDbName"); });
    read([&] { login.Member("NoSuchMember"); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static refhost::Environment environment;
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        refhost::Login login(text, environment);
        CheckMembers(login);
    } catch (const std::runtime_error& error) {
        Require(*error.what() != '\0', "a refused login says nothing", text);
    }
    CheckConnectionString(text);
    return 0;
}
