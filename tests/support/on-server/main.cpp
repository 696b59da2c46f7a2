// on-server tds|driver COMMAND...: runs a command with KOVRA_TEST_ODBC naming a server of the tests' own, which holds
// an empty database: over the wire with the real FreeTDS, or behind the tests' ODBC driver. Its status is the
// command's.

#include "refhost/OpenDatabase.h"
#include "tests/support/Paths.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int count, char** arguments) {
    const std::string_view kind = count > 2 ? arguments[1] : "";
    if (kind != "tds" && kind != "driver") {
        std::fputs("on-server tds|driver COMMAND...\n", stderr);
        return 2;
    }
    const test::TemporaryFolder folder;
    const std::string file = (folder.path() / "kovra_cases.db").string();
    refhost::OpenEmbeddedDatabase("Provider=KovraAccount;Data Source=" + file, refhost::OpenMode::create);
    std::optional<test::TdsServer> server;
    std::string connection = "Driver=" + test::OdbcDriverPath() + ";Databases=" + folder.path().string();
    if (kind == "tds") {
        connection = server.emplace("", test::TdsServer::Manners{.databases = folder.path()}).ConnectionString();
    }
    setenv("KOVRA_TEST_ODBC", (connection + ";Database=kovra_cases").c_str(), 1);

    pid_t child = 0;
    int status = 0;
    if (const int error = posix_spawnp(&child, arguments[2], nullptr, nullptr, arguments + 2, environ); error != 0) {
        std::fprintf(stderr, "%s: not started, error %d\n", arguments[2], error);
        return 127;
    }
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
