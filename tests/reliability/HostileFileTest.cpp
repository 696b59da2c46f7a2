// Files that the program reads: of any encoding, and of any size.

#include "refhost/xml/FileText.h"
#include "tests/reliability/HostileTexts.h"
#include "tests/reliability/Soundness.h"
#include "tests/support/Program.h"
#include "text/Utf8.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>

#include <gtest/gtest.h>
#include <iconv.h>

namespace test {
namespace {

constexpr long megabyte = 1 << 20;

/// The program on an account with a warehouse 仓, whose requests are files.
class HostileFile : public testing::Test {
protected:
    HostileFile() {
        WriteBytes(account_.folder() / "login.xml", account_.LoginXml());
        account_.Run("insert into Warehouse (cWhCode, cWhName, bInCost) values (N'仓', N'原料库', 1)");
    }

    std::filesystem::path RequestFile() const { return account_.folder() / "request.xml"; }
    Ended Transact() const {
        return Program(account_.folder(),
                       {"transact", "--quiet", "--class", "ClsInvSubject", "--login", "login.xml", "request.xml"})
            .Wait();
    }
    /// A request with so many megabytes of filler between `before` and `after`.
    Ended TransactLarge(long megabytes, std::string_view before, std::string_view after) const {
        std::ofstream file(RequestFile(), std::ios::binary);
        file << before;
        const std::string block(megabyte, 'x');
        for (long written = 0; written < megabytes; ++written) {
            file << block;
        }
        file << after;
        file.close();
        return Transact();
    }

    const TestAccount account_{AccountContent::demo};
};

constexpr const char* notParsed = "<error code=\"100\" dsc=\"解析XML时发生错误,请你检查XML参数格式\"/>\n";

// --- encodings

/// The names of encodings that this system knows.
std::vector<std::string> EncodingNames() {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> list(popen("iconv -l", "r"), pclose);
    std::vector<std::string> names;
    std::array<char, 1000> line = {};
    while (list && std::fgets(line.data(), static_cast<int>(line.size()), list.get()) != nullptr) {
        const std::string name(line.data());
        names.push_back(name.substr(0, name.find('/')));
    }
    return names;
}

/// `text` in an encoding, or nothing where the encoding cannot hold it.
std::optional<std::string> Encoded(std::string text, const std::string& encoding) {
    const iconv_t converter = iconv_open(encoding.c_str(), "UTF-8");
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        return std::nullopt;
    }
    std::string bytes(text.size() * 8 + 100, '\0');
    char* from = text.data();
    char* to = bytes.data();
    std::size_t left = text.size();
    std::size_t room = bytes.size();
    const bool whole =
        iconv(converter, &from, &left, &to, &room) == 0 && iconv(converter, nullptr, nullptr, &to, &room) == 0;
    iconv_close(converter);
    bytes.resize(bytes.size() - room);
    return whole ? std::optional(bytes) : std::nullopt;
}

std::string RequestIn(const std::string& encoding, const std::string& cWhCode) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding +
           "\"?><qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>" + cWhCode +
           "</cWhCode><cInvHead>140301</cInvHead></row></qxinterface>";
}

/// Whether the file's declaration can be read before its encoding is known, or a mark or its 16 bits tell it.
bool TellsItsEncoding(const std::string& bytes) {
    using namespace std::string_literals;
    return bytes.starts_with("<?xml version=\"1.0\" encoding=\"") || bytes.starts_with("\xFF\xFE<\0?\0"s) ||
           bytes.starts_with("\xFE\xFF\0<\0?"s) || bytes.starts_with("<\0?\0"s) || bytes.starts_with("\0<\0?"s);
}

TEST_F(HostileFile, OfAnyEncodingIsReadOrRefused) {
    int read = 0;
    int refused = 0;
    for (const std::string& encoding : EncodingNames()) {
        for (const char* cWhCode : {"仓", "01"}) {
            const std::string request = RequestIn(encoding, cWhCode);
            const std::optional<std::string> bytes = Encoded(request, encoding);
            if (!bytes) {
                continue;
            }
            WriteBytes(RequestFile(), *bytes);
            std::string text;
            try {
                text = refhost::xml::ReadXmlFile(RequestFile().string());
            } catch (const std::runtime_error& error) {
                EXPECT_FALSE(TellsItsEncoding(*bytes)) << encoding << ": " << error.what();
                EXPECT_NE(std::string(error.what()).find("request.xml"), std::string::npos) << error.what();
                ++refused;
                continue;
            }
            EXPECT_TRUE(text::IsUtf8(text)) << encoding;
            if (TellsItsEncoding(*bytes)) {
                EXPECT_EQ(text, request) << encoding;
                ++read;
            } else {
                ++refused;
            }
        }
    }
    EXPECT_GT(read, 500);
    EXPECT_GT(refused, 50);
    std::printf("reliability: files in %d encodings and texts read, in %d refused\n", read, refused);
}

TEST_F(HostileFile, OfAnotherEncodingThanItNamesIsRefusedOrReadAsItNames) {
    const auto transact = [&](const std::string& bytes) {
        WriteBytes(RequestFile(), bytes);
        return Transact();
    };
    const std::string gbk = *Encoded(RequestIn("UTF-8", "仓"), "GBK");
    EXPECT_EQ(transact(gbk).status, 2);
    EXPECT_EQ(transact(RequestIn("UTF-16", "01")).status, 2);
    EXPECT_EQ(transact(RequestIn("UTF-32", "01")).status, 2);
    // The file itself can be read; what it holds is no XML, since a name of an encoding has a letter at least.
    EXPECT_EQ(transact(RequestIn("", "01")).status, 3);
    EXPECT_EQ(transact(RequestIn("../../etc/passwd", "01")).status, 2);
    EXPECT_EQ(transact(RequestIn("UTF-8//IGNORE", "01")).status, 2);
    EXPECT_EQ(transact(RequestIn(std::string(1'000'000, 'x'), "01")).status, 2);
    // A mark says more than the declaration.
    EXPECT_EQ(transact("\xEF\xBB\xBF" + RequestIn("GBK", "仓")).output,
              "<qxinterface docid=\"D\" proc=\"ADD\"><item key=\"仓库编码：仓， ， \" code=\"0\" "
              "dsc=\"ok\"/></qxinterface>\n");
    // 仓 in UTF-8 is no GBK that means it.
    const Ended otherwise = transact(RequestIn("GBK", "仓"));
    EXPECT_TRUE(otherwise.status == 2 || otherwise.output.find("仓库编码不合法。") != std::string::npos)
        << otherwise.output;
}

TEST_F(HostileFile, WithLoneSurrogatesIsRefused) {
    using namespace std::string_literals;
    const std::string wide = *Encoded(RequestIn("UTF-16", "X"), "UTF-16LE");
    for (const std::string& lone : {"\x00\xD8"s, "\x00\xDC"s, "\x00\xDC\x00\xD8"s}) {
        std::string bytes = wide;
        bytes.replace(bytes.find("X\0<"s), 2, lone);
        WriteBytes(RequestFile(), bytes);
        const Ended ended = Transact();
        EXPECT_EQ(ended.status, 2);
        EXPECT_NE(ended.error.find("is not in the encoding 'UTF-16LE'"), std::string::npos) << ended.error;
    }
}

// --- sizes

/// Expects the answer to a request of so many megabytes, in no more memory than so many times its size.
void ExpectAnswer(const Ended& ended, const std::string& answer, long megabytes, long times) {
    EXPECT_EQ(ended.signal, 0);
    EXPECT_EQ(ended.status, answer == notParsed ? 3 : 0);
    EXPECT_EQ(ended.output, answer);
    EXPECT_EQ(ended.error, "");
    EXPECT_TRUE(sanitized || ended.peakMemory < times * megabytes * megabyte + 50'000'000) << ended.peakMemory;
    std::printf("reliability: %ld MB of one text: %ld MB of memory\n", megabytes, ended.peakMemory / megabyte);
}

TEST_F(HostileFile, WithAGigabyteOfOneTextIsAnswered) {
    const long gigabyte = sanitized ? 64 : 1024;
    const Ended ended = TransactLarge(gigabyte, "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cMemo>",
                                      "</cMemo><cWhCode>01</cWhCode><cInvHead>140301</cInvHead></row></qxinterface>");
    ExpectAnswer(ended,
                 "<qxinterface docid=\"D\" proc=\"ADD\"><item key=\"仓库编码：01， ， \" code=\"0\" dsc=\"ok\"/>"
                 "</qxinterface>\n",
                 gigabyte, 4);
}

TEST_F(HostileFile, OfATextThatNeverEndsIsRefused) {
    ExpectAnswer(TransactLarge(64, "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cMemo>", ""), notParsed,
                 64, 4);
}

TEST_F(HostileFile, OfAnAttributeThatNeverEndsIsRefused) {
    ExpectAnswer(TransactLarge(64, "<qxinterface roottag=\"row\" docid=\"", ""), notParsed, 64, 5);
}

TEST_F(HostileFile, OfOneNameIsRefused) {
    ExpectAnswer(TransactLarge(64, "<qxinterface><", "/></qxinterface>"), notParsed, 64, 5);
}

} // namespace
} // namespace test
