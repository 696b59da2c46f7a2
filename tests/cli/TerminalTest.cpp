#include "tests/cli/ProgramFixture.h"

// The same run in a terminal of each encoding, in a pipe and without a locale.

namespace test {
namespace {

namespace fs = std::filesystem;

class Terminal : public Program {
protected:
    void SetUp() override {
        if (ProgramIsForWindows()) {
            GTEST_SKIP() << "consoles of Windows have no locale of this kind";
        }
    }

    /// The environment of a Chinese locale in GBK, which is made here once: few machines have one.
    static std::string ChineseInGbk() {
        static const TemporaryFolder folder;
        const std::string made = (folder.path() / "zh_CN.GBK").string();
        if (!fs::exists(made)) {
            // Its status tells of warnings too.
            [[maybe_unused]] const int status =
                std::system(("localedef -c -i zh_CN -f GBK '" + made + "' > /dev/null 2>&1").c_str());
            EXPECT_TRUE(fs::exists(made + "/LC_CTYPE")) << "localedef made no locale";
        }
        return "LOCPATH='" + folder.path().string() + "' LC_ALL=zh_CN.GBK";
    }

    /// Runs `kovra ARGUMENTS` with standard output and error on a terminal; the answer is what it shows.
    std::string OnTerminal(const std::string& arguments, const std::string& environment) const {
        Write("run.sh", "cd '" + account().folder().string() + "'\nexec '" + ProgramPath() + "' " + arguments + "\n");
        const std::string command = "env -u LC_ALL -u LC_MESSAGES -u LANG TERM=dumb " + environment +
                                    " script -qec \"sh '" + Path("run.sh") + "'\" /dev/null < /dev/null > '" +
                                    Path("shown.txt") + "'";
        status_ = WEXITSTATUS(std::system(command.c_str()));
        return Read(Path("shown.txt"));
    }

    int status() const { return status_; }

    static constexpr const char* importOne = "transact --class ClsInvSubject --login login.xml request.xml";

private:
    mutable int status_ = -1;
};

// 接受 and 仓库编码 by the table of GB 2312.
constexpr const char* acceptedInGbk = "\xBD\xD3\xCA\xDC";
constexpr const char* warehouseInGbk = "\xB2\xD6\xBF\xE2\xB1\xE0\xC2\xEB";

TEST_F(Terminal, OfGbkShowsTablesAndSummariesInGbk) {
    Write("request.xml", oneSetting);
    const std::string shown = OnTerminal(importOne, ChineseInGbk());
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(Contains(shown, acceptedInGbk));
    EXPECT_TRUE(Contains(shown, warehouseInGbk));
    EXPECT_EQ(shown.find("仓"), std::string::npos);
}

TEST_F(Terminal, OfUtf8ShowsThemInUtf8) {
    Write("request.xml", oneSetting);
    const std::string shown = OnTerminal(importOne, "LC_MESSAGES=zh_CN.UTF-8 LC_CTYPE=C.UTF-8");
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(Contains(shown, "接受"));
    EXPECT_TRUE(Contains(shown, "仓库编码：01"));
}

TEST_F(Terminal, WithoutALocaleShowsEnglishAndTheDataAsTheyAre) {
    Write("request.xml", oneSetting);
    const std::string shown = OnTerminal(importOne, "LANG=C");
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(Contains(shown, "accepted"));
    EXPECT_TRUE(Contains(shown, "仓库编码：01"));
}

TEST_F(Terminal, HasNoPartInWhatGoesIntoAPipe) {
    const std::string gbk = ChineseInGbk();
    Write("request.xml", oneSetting);
    const Ended run = Kovra(importOne, gbk);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, accepted);
    EXPECT_EQ(run.error.find("仓"), std::string::npos);
}

TEST_F(Terminal, OfGbkTellsFaultsOfTheCommandLineInGbk) {
    const Ended run = Kovra("transakt", ChineseInGbk());
    EXPECT_EQ(run.status, 2);
    // 无法识别
    EXPECT_TRUE(Contains(run.error, "kovra: \xCE\xDE\xB7\xA8\xCA\xB6\xB1\xF0 transakt\n"));
}

TEST_F(Terminal, OfGbkNamesFilesInItsEncoding) {
    // 期初.xml
    const Ended run = Kovra("transact --class ClsInvSubject --login login.xml \xC6\xDA\xB3\xF5.xml", ChineseInGbk());
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "\xC6\xDA\xB3\xF5.xml"));
    Write("\xC6\xDA\xB3\xF5.xml", oneSetting);
    const Ended found = Kovra("transact --class ClsInvSubject --login login.xml \xC6\xDA\xB3\xF5.xml", ChineseInGbk());
    EXPECT_EQ(found.status, 0) << found.error;
}

TEST_F(Terminal, OfGbkShowsAQuestionMarkForWhatGbkLacks) {
    Write("request.xml",
          "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>\xF0\x9F\x98\x80</cWhCode>"
          "<cInvHead>1405</cInvHead></row></qxinterface>");
    const std::string shown = OnTerminal(importOne, ChineseInGbk());
    EXPECT_EQ(status(), 1);
    EXPECT_TRUE(Contains(shown, std::string(warehouseInGbk) + "\xA3\xBA?"));
}

} // namespace
} // namespace test
