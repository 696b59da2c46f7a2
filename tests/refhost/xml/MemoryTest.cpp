#include "refhost/eai/EaiHelper.h"
#include "refhost/xml/Document.h"
#include "tests/support/Sanitized.h"

#include <array>
#include <string>

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::array fields = {"cWhCode",  "cInvCCode", "cInvCode",    "cInvHead",
                               "cDifHead", "cOutHead",  "cEnDispHead", "czyHead"};

std::string Request(int rows) {
    std::string xml = "<qxinterface roottag=\"row\" docid=\"1\" proc=\"ADD\">\n";
    for (int row = 0; row < rows; ++row) {
        xml += "  <row>\n";
        for (const char* field : fields)
            xml += "    <" + std::string(field) + ">" + std::to_string(1'000'000 + row) + "</" + field + ">\n";
        xml += "  </row>\n";
    }
    return xml + "</qxinterface>\n";
}

/// Everything that the documents of an import do: the request read, its fields asked, an outcome for each row.
std::string Import(const std::string& request) {
    refhost::EaiHelper helper;
    refhost::xml::Document document;
    refhost::xml::Document result;
    if (!document.LoadXML(request) || !result.LoadXML(helper.MakeResultDoc("1", "ADD")))
        return {};
    for (const host::DOMNodePtr& row : document.DocumentElement()->SelectNodes("row")) {
        std::string key;
        for (const char* field : fields)
            key = "仓库编码：" + helper.GetChildText(row.get(), field);
        helper.AddResultItem(result, key, 0, "ok");
    }
    return result.Xml();
}

/// Peak memory in bytes of a process of its own that does `work`, which says whether it succeeded.
template <class Work> long PeakMemory(const Work& work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work() ? 0 : 1);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    EXPECT_EQ(status, 0);
    return usage.ru_maxrss * 1024;
}

TEST(Memory, DocumentsOfAnImportTakeAFewTimesTheRequest) {
    if (test::sanitized) {
        GTEST_SKIP() << "the sanitizer's own memory would be measured";
    }
    // What the tests before left free would be taken without being seen.
    malloc_trim(0);
    const std::string request = Request(100'000);
    const long before = PeakMemory([] { return true; });
    const long peak = PeakMemory([&] { return !Import(request).empty(); });
    // A whole import may take 15 times the request; the request itself and the database need their share of that.
    EXPECT_LE(peak - before, 5 * static_cast<long>(request.size()));
    EXPECT_GE(peak - before, static_cast<long>(request.size())) << "nothing was measured";
}

} // namespace
