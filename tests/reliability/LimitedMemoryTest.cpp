// Imports that find no more memory.

#include "tests/reliability/HostileTexts.h"
#include "tests/reliability/Soundness.h"
#include "tests/support/Program.h"

#include <cstdio>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace test {
namespace {

/// Lets this process have no more than `bytes` of memory of its own, libraries aside; to be called in a process of the
/// test's own.
void LimitMemory(rlim_t bytes) {
    const rlimit limit{bytes, bytes};
    if (setrlimit(RLIMIT_DATA, &limit) != 0) {
        throw std::runtime_error("no limit of memory");
    }
}

/// A row that is accepted, and rows inside each other, each of which has all that is inside it for its item: what a
/// result says of them grows with the square of their number.
std::string NestedRows(std::size_t depth) {
    return "<qxinterface roottag=\"//row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode>"
           "<cInvHead>140301</cInvHead></row>" +
           Repeat(depth, "<row><cInvCode>A") + Repeat(depth, "</cInvCode></row>") + "</qxinterface>";
}

TEST(LimitedMemory, GivesErrorSevenAndKeepsWhatWasWritten) {
    if (sanitized) {
        GTEST_SKIP() << "a sanitizer takes more memory than any limit";
    }
    int ended = 0;
    for (rlim_t megabytes = 24; megabytes < 72; megabytes += 16) {
        const TestAccount account(AccountContent::demo);
        WriteBytes(account.folder() / "login.xml", account.LoginXml());
        WriteBytes(account.folder() / "request.xml", NestedRows(10'000));
        const Ended run =
            Program(account.folder(), {"transact", "--class", "ClsInvSubject", "--login", "login.xml", "request.xml"},
                    [&] { LimitMemory(megabytes * 1'000'000); })
                .Wait();
        EXPECT_EQ(run.status, 3) << megabytes << " MB: " << run.error;
        EXPECT_EQ(run.output, "<error code=\"7\" dsc=\"内存溢出\"/>\n") << megabytes << " MB";
        ExpectIntegrity(account);
        EXPECT_EQ(account.Rows("select cWhCode, cInvHead from IA_HeadSet"),
                  std::vector<std::string>{R"({"cWhCode":"01","cInvHead":"140301"})"});
        ++ended;
    }
    std::printf("reliability: %d imports that ran out of memory survived\n", ended);
}

} // namespace
} // namespace test
