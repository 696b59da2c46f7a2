#include "refhost/xml/FileText.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using refhost::xml::DecodeXmlBytes;
using refhost::xml::ReadTextFile;
using refhost::xml::ReadXmlFile;
using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;

/// ASCII characters as 16-bit ones, the low or the high byte first.
std::string Wide(std::string_view ascii, bool lowFirst) {
    std::string wide;
    for (const char c : ascii) {
        wide += lowFirst ? std::string{c, '\0'} : std::string{'\0', c};
    }
    return wide;
}

std::string Declared(const std::string& encoding, const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><a>" + content + "</a>";
}

TEST(FileText, WithoutMarkAndDeclarationItIsUtf8) {
    EXPECT_EQ(DecodeXmlBytes("<a>仓</a>"), "<a>仓</a>");
    EXPECT_EQ(DecodeXmlBytes("<?xml version='1.0'?><a>仓</a>"), "<?xml version='1.0'?><a>仓</a>");
    EXPECT_EQ(DecodeXmlBytes(""), "");
}

TEST(FileText, ByteOrderMarkDecides) {
    EXPECT_EQ(DecodeXmlBytes("\xEF\xBB\xBF<a>仓</a>"), "<a>仓</a>");
    EXPECT_EQ(DecodeXmlBytes("\xEF\xBB\xBF" + Declared("gb2312", "仓")), Declared("gb2312", "仓"));
    // 仓 is U+4ED3, 𠀀 the pair D840 DC00.
    EXPECT_EQ(DecodeXmlBytes("\xFF\xFE" + Wide("<a>", true) + "\xD3\x4E" + std::string("\x40\xD8\x00\xDC", 4) +
                             Wide("</a>", true)),
              "<a>仓\xF0\xA0\x80\x80</a>");
    EXPECT_EQ(DecodeXmlBytes("\xFE\xFF" + Wide("<a>", false) + "\x4E\xD3" + Wide("</a>", false)), "<a>仓</a>");
}

TEST(FileText, SixteenBitsAreSeenWithoutAMark) {
    EXPECT_EQ(DecodeXmlBytes(Wide("<?xml version='1.0' encoding='UTF-16'?><a/>", true)),
              "<?xml version='1.0' encoding='UTF-16'?><a/>");
    EXPECT_EQ(DecodeXmlBytes(Wide("<a/>", false)), "<a/>");
}

TEST(FileText, DeclarationNamesTheEncoding) {
    // 仓库 in GB2312, 镕 in GBK only, 𠀀 in GB18030 only.
    EXPECT_EQ(DecodeXmlBytes(Declared("gb2312", "\xB2\xD6\xBF\xE2")), Declared("gb2312", "仓库"));
    EXPECT_EQ(DecodeXmlBytes(Declared("GBK", "\xB2\xD6\xE9\x46")), Declared("GBK", "仓镕"));
    EXPECT_EQ(DecodeXmlBytes(Declared("GB18030", "\xB2\xD6\x95\x32\x82\x36")),
              Declared("GB18030", "仓\xF0\xA0\x80\x80"));
    EXPECT_EQ(DecodeXmlBytes(Declared("utf-8", "仓")), Declared("utf-8", "仓"));
    EXPECT_EQ(DecodeXmlBytes(Declared("ISO-8859-1", "\xE9")), Declared("ISO-8859-1", "é"));
    EXPECT_EQ(DecodeXmlBytes(Declared("big5", "\xAE\x77")), Declared("big5", "庫"));
}

TEST(FileText, Gb2312IsReadAsWindowsDoes) {
    EXPECT_EQ(DecodeXmlBytes(Declared("GB2312", "\xE9\x46")), Declared("GB2312", "镕")) << "beyond the standard";
    EXPECT_EQ(DecodeXmlBytes(Declared("GB2312", "\xA1\xAA\xA1\xA4")), Declared("GB2312", "—·"));
}

TEST(FileText, DeclarationIsReadAttributeByAttribute) {
    EXPECT_EQ(DecodeXmlBytes("<?xml version = '1.0'\n encoding = 'GBK' standalone='yes'?><a>\xB2\xD6</a>"),
              "<?xml version = '1.0'\n encoding = 'GBK' standalone='yes'?><a>仓</a>");
    EXPECT_EQ(DecodeXmlBytes("<a encoding='GBK'>仓</a>"), "<a encoding='GBK'>仓</a>");
    EXPECT_EQ(DecodeXmlBytes("<?xml version='encoding=\"GBK\"'?><a>仓</a>"),
              "<?xml version='encoding=\"GBK\"'?><a>仓</a>");
    for (const char* broken : {"<?xml", "<?xml ", "<?xml encoding", "<?xml encoding=", "<?xml encoding='GBK",
                               "<?xml ?>", "<?xml version=1.0?>"}) {
        EXPECT_EQ(DecodeXmlBytes(broken), broken);
    }
}

TEST(FileText, LongTextsAreConvertedInPieces) {
    std::string gbk;
    std::string utf8;
    for (int n = 0; n < 100'000; ++n) {
        gbk += n % 7 == 0 ? "x\xB2\xD6" : "\xBF\xE2";
        utf8 += n % 7 == 0 ? "x仓" : "库";
    }
    EXPECT_TRUE(DecodeXmlBytes(Declared("GBK", gbk)) == Declared("GBK", utf8));
}

TEST(FileText, BytesThatAreNotInTheEncodingAreRefused) {
    const auto refused = [](const std::string& bytes) {
        EXPECT_THROW(DecodeXmlBytes(bytes), std::runtime_error) << bytes;
    };
    refused("<a>\xB2\xD6</a>");
    refused("\xEF\xBB\xBF<a>\xB2\xD6</a>");
    refused(Declared("UTF-8", "\xB2\xD6"));
    refused(Declared("GBK", "\xFF\xFF"));
    refused(Declared("GBK", "") + "\xB2");
    refused(std::string("\xFF\xFE<\0a", 5));
    refused(std::string("\xFF\xFE\x00\xDC", 4));
    refused(Declared("UTF-16", "x"));
    refused(Declared("utf-16le", "x"));
}

TEST(FileText, UnknownEncodingIsNamed) {
    EXPECT_THAT([] { DecodeXmlBytes(Declared("klingon", "x")); },
                ThrowsMessage<std::runtime_error>(HasSubstr("unknown encoding 'klingon'")));
    EXPECT_THROW(DecodeXmlBytes(Declared("GBK//IGNORE", "\xFF\xFF")), std::runtime_error);
}

class FileTextFile : public testing::Test {
protected:
    FileTextFile() : path_(testing::TempDir() + "kovra-filetext-" + std::to_string(getpid()) + ".xml") {}
    ~FileTextFile() override { std::filesystem::remove(path_); }

    void Write(std::string_view bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

    const std::string path_;
};

TEST_F(FileTextFile, IsReadAndDecoded) {
    Write(Declared("gb2312", "\xB2\xD6\xBF\xE2"));
    EXPECT_EQ(ReadXmlFile(path_), Declared("gb2312", "仓库"));
}

TEST_F(FileTextFile, ErrorsNameTheFile) {
    Write("<a>\xB2\xD6</a>");
    EXPECT_THAT([&] { ReadXmlFile(path_); },
                ThrowsMessage<std::runtime_error>(AllOf(HasSubstr(path_), HasSubstr("not valid UTF-8"))));
    EXPECT_THAT([] { ReadXmlFile("/no/such/file.xml"); },
                ThrowsMessage<std::runtime_error>(AllOf(HasSubstr("'/no/such/file.xml'"), HasSubstr("No such file"))));
    EXPECT_THAT([] { ReadXmlFile("/tmp"); },
                ThrowsMessage<std::runtime_error>(AllOf(HasSubstr("'/tmp'"), HasSubstr("it is a folder"))));
    EXPECT_THAT([] { ReadXmlFile(""); }, ThrowsMessage<std::runtime_error>(HasSubstr("''")));
}

TEST_F(FileTextFile, UnreadableFileIsAnError) {
    if (geteuid() == 0) {
        // The superuser may read everything; a process's memory at address 0 fails for it too.
        EXPECT_THAT([] { ReadXmlFile("/proc/self/mem"); },
                    ThrowsMessage<std::runtime_error>(HasSubstr("cannot read '/proc/self/mem': ")));
        return;
    }
    Write("<a/>");
    std::filesystem::permissions(path_, std::filesystem::perms::none);
    EXPECT_THAT([&] { ReadXmlFile(path_); }, ThrowsMessage<std::runtime_error>(HasSubstr("Permission denied")));
}

TEST_F(FileTextFile, OtherFilesAreReadByTheirMarkOrAsUtf8) {
    Write("\xEF\xBB\xBFselect N'仓'");
    EXPECT_EQ(ReadTextFile(path_), "select N'仓'");
    Write("\xFF\xFE" + Wide("GO", true));
    EXPECT_EQ(ReadTextFile(path_), "GO");
    Write("<?xml version='1.0' encoding='GBK'?>仓");
    EXPECT_EQ(ReadTextFile(path_), "<?xml version='1.0' encoding='GBK'?>仓");
    Write("\xB2\xD6");
    EXPECT_THROW(ReadTextFile(path_), std::runtime_error);
}

TEST_F(FileTextFile, DashIsStandardInput) {
    Write(Declared("GBK", "\xB2\xD6"));
    ASSERT_NE(std::freopen(path_.c_str(), "rb", stdin), nullptr);
    EXPECT_EQ(ReadXmlFile("-"), Declared("GBK", "仓"));
}

} // namespace
