#include "import/reading/OpenTable.h"
#include "import/reading/UnreadableFile.h"
#include "tests/import/PackageFile.h"

#include <fstream>

#include <gtest/gtest.h>

namespace {

using importing::Line;
using importing::Note;
using importing::OpenFile;
using importing::OpenOptions;
namespace message = importing::message;

using namespace std::string_literals;

/// "仓库" in GB18030.
const std::string warehouseInGb = "\xB2\xD6\xBF\xE2";

bool HasRows(importing::Table& table) {
    Line line;
    return table.Next(line);
}

class OpenFileTest : public testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        std::ofstream(folder_.File(name), std::ios::binary) << bytes;
        return folder_.File(name);
    }
    std::string WriteBook(const std::string& sheets) {
        test::PackageFile package = test::PackageFile::OfSheet("<sheetData><row><c><v>1</v></c></row></sheetData>");
        package.Set("xl/workbook.xml", "<workbook xmlns:r='x'><sheets>" + sheets + "</sheets></workbook>");
        package.Set("xl/worksheets/sheet2.xml", "<worksheet><sheetData/></worksheet>");
        package.Set("xl/_rels/workbook.xml.rels",
                    "<Relationships><Relationship Id='rId1' Type='x/worksheet' Target='worksheets/sheet1.xml'/>"
                    "<Relationship Id='rId2' Type='x/worksheet' Target='worksheets/sheet2.xml'/></Relationships>");
        package.Write(folder_.File("book.xlsx"));
        return folder_.File("book.xlsx");
    }
    static Note Refusal(const std::string& path, const OpenOptions& options = {}) {
        try {
            const OpenFile file(path, options, HasRows);
        } catch (const importing::UnreadableFile& error) {
            return error.note();
        }
        ADD_FAILURE() << "opened";
        return {};
    }
    static std::string FirstCell(const std::string& path, const OpenOptions& options = {}) {
        const OpenFile file(path, options, HasRows);
        Line line;
        return file.table().Next(line) ? line.cells.at(0).text : "no line";
    }

    test::TestFolder folder_;
};

TEST_F(OpenFileTest, ReadsCsvInEveryEncodingThatPeopleHave) {
    EXPECT_EQ(FirstCell(Write("a.csv", "仓库;x")), "仓库");
    EXPECT_EQ(FirstCell(Write("b.csv", "\xEF\xBB\xBF仓库,x")), "仓库");
    EXPECT_EQ(FirstCell(Write("c.csv", warehouseInGb + "\tx")), "仓库");
    EXPECT_EQ(FirstCell(Write("d.csv", "\xFF\xFE\xD3\x4E\x93\x5E,\0x\0"s)), "仓库");
    EXPECT_EQ(FirstCell(Write("e.csv", "\xFE\xFF\x4E\xD3\x5E\x93\0,\0x"s)), "仓库");
}

TEST_F(OpenFileTest, ReadsTheEncodingThatTheUserNames) {
    EXPECT_EQ(FirstCell(Write("a.csv", "caf\xE9,x"), {.encoding = "ISO-8859-1", .sheet = ""}), "café");
}

TEST_F(OpenFileTest, RefusesAnEncodingThatIsUnknownOrNotTheFiles) {
    const std::string path = Write("a.csv", "caf\xE9,x");
    EXPECT_EQ(Refusal(path, {.encoding = "Klingon", .sheet = ""}), (Note{message::encodingUnknown, {"Klingon"}}));
    EXPECT_EQ(Refusal(path, {.encoding = "UTF-8", .sheet = ""}), (Note{message::notInEncoding, {"UTF-8"}}));
}

TEST_F(OpenFileTest, ShowsBothReadingsOfTheFirstLineWhenTheEncodingIsUnclear) {
    // D6 BF among the bytes of the two characters is U+05BF in UTF-8; the others begin nothing there.
    EXPECT_EQ(Refusal(Write("a.csv", warehouseInGb + ",\xFF\n1,2\n")),
              (Note{message::encodingUnclear, {"?\u05BF?,?", "仓库,?"}}));
}

TEST_F(OpenFileTest, SaysHowToSaveTheOldFormat) {
    const std::string path = Write("a.xls", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more");
    EXPECT_EQ(Refusal(path), (Note{message::oldSpreadsheet, {path}}));
}

TEST_F(OpenFileTest, SaysThatAFileIsNotThere) {
    EXPECT_EQ(Refusal(folder_.File("none.csv")).message, message::fileNotRead);
}

TEST_F(OpenFileTest, TakesTheOnlySheetThatFits) {
    EXPECT_EQ(FirstCell(WriteBook("<sheet name='说明' r:id='rId2'/><sheet name='数据' r:id='rId1'/>")), "1");
}

TEST_F(OpenFileTest, AsksWhichOfSeveralSheetsThatFit) {
    EXPECT_EQ(Refusal(WriteBook("<sheet name='甲' r:id='rId1'/><sheet name='乙' r:id='rId1'/>")),
              (Note{message::sheetUnclear, {"甲、乙"}}));
}

TEST_F(OpenFileTest, TakesTheSheetThatTheUserNames) {
    const std::string path = WriteBook("<sheet name='甲' r:id='rId2'/><sheet name='乙' r:id='rId1'/>");
    EXPECT_EQ(FirstCell(path, {.encoding = "", .sheet = "乙"}), "1");
    EXPECT_EQ(Refusal(path, {.encoding = "", .sheet = "丙"}), (Note{message::sheetUnknown, {"丙", "甲、乙"}}));
}

} // namespace
