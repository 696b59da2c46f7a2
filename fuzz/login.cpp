// Any text as a login file.
#include "refhost/eai/Login.h"

#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/Environment.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

using fuzz::Require;

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
    read([&] { login.ConnectionString(); });
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
    return 0;
}
