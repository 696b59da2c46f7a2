#include "import/reading/Workbook.h"

#include "import/reading/UnreadableFile.h"
#include "tests/import/PackageFile.h"

#include <fstream>

#include <gtest/gtest.h>

namespace {

using importing::ArchiveBounds;
using importing::Cell;
using importing::Line;
using importing::Note;
using importing::Workbook;
using test::PackageFile;
namespace message = importing::message;

class WorkbookFile : public testing::Test {
protected:
    /// The lines of the package's first sheet.
    std::vector<Line> Lines(const PackageFile& package) {
        package.Write(folder_.File("book.xlsx"));
        Workbook workbook(folder_.File("book.xlsx"));
        const std::unique_ptr<importing::Table> table = workbook.Open(0);
        std::vector<Line> lines;
        for (Line line; table->Next(line);) {
            lines.push_back(line);
        }
        merged_ = table->Merged();
        return lines;
    }
    std::vector<Line> LinesOf(const std::string& rows, const std::string& strings = "",
                              const std::string& styles = "") {
        return Lines(PackageFile::OfSheet("<sheetData>" + rows + "</sheetData>", strings, styles));
    }
    /// The only cell of the only row.
    Cell Only(const std::string& cell, const std::string& strings = "", const std::string& styles = "") {
        const std::vector<Line> lines = LinesOf("<row r='1'>" + cell + "</row>", strings, styles);
        return lines.at(0).cells.at(0);
    }
    /// Why the package cannot be read.
    Note Refusal(const PackageFile& package) {
        try {
            Lines(package);
        } catch (const importing::UnreadableFile& error) {
            return error.note();
        }
        ADD_FAILURE() << "read";
        return {};
    }

    static void Expect(const Cell& cell, Cell::Kind kind, const std::string& text) {
        EXPECT_EQ(cell.kind, kind);
        EXPECT_EQ(cell.text, text);
    }

    test::TestFolder folder_;
    std::vector<importing::MergedCells> merged_;
};

TEST_F(WorkbookFile, ReadsSharedStringsWithTheirRuns) {
    Expect(Only("<c r='A1' t='s'><v>1</v></c>",
                "<si><t>甲</t></si><si><r><t>钢</t></r><r><rPr><b/></rPr><t xml:space='preserve'> 管</t></r>"
                "<rPh sb='0' eb='1'><t>gang</t></rPh></si>"),
           Cell::Kind::text, "钢 管");
}

TEST_F(WorkbookFile, ReadsInlineStrings) {
    Expect(Only("<c t='inlineStr'><is><t>01</t></is></c>"), Cell::Kind::text, "01");
}

TEST_F(WorkbookFile, ReadsEscapedCharacters) {
    Expect(Only("<c t='inlineStr'><is><t>a_x000D_b_x005F_x000D_ _xZZZZ_</t></is></c>"), Cell::Kind::text,
           "a\rb_x000D_ _xZZZZ_");
}

TEST_F(WorkbookFile, ReadsNumbersAsTheyAreShown) {
    Expect(Only("<c r='A1'><v>0.10000000000000001</v></c>"), Cell::Kind::number, "0.1");
    Expect(Only("<c r='A1' t='n'><v>6.9E12</v></c>"), Cell::Kind::number, "6900000000000");
}

TEST_F(WorkbookFile, ReadsDatesByTheirFormat) {
    const std::string styles = "<numFmts><numFmt numFmtId='164' formatCode='yyyy\"年\"m\"月\"'/></numFmts>"
                               "<cellStyleXfs><xf numFmtId='14'/></cellStyleXfs>"
                               "<cellXfs><xf numFmtId='0'/><xf numFmtId='14'/><xf numFmtId='164'/></cellXfs>";
    Expect(Only("<c r='A1' s='0'><v>45296</v></c>", "", styles), Cell::Kind::number, "45296");
    Expect(Only("<c r='A1' s='1'><v>45296</v></c>", "", styles), Cell::Kind::date, "2024-01-05");
    Expect(Only("<c r='A1' s='2'><v>45296.25</v></c>", "", styles), Cell::Kind::date, "2024-01-05 06:00:00");
    Expect(Only("<c r='A1' s='1'><v>60</v></c>", "", styles), Cell::Kind::noDate, "60");
}

TEST_F(WorkbookFile, ReadsDatesOfThe1904System) {
    PackageFile package = PackageFile::OfSheet("<sheetData><row r='1'><c r='A1' s='0'><v>60</v></c></row></sheetData>",
                                               "", "<cellXfs><xf numFmtId='14'/></cellXfs>");
    package.Set(
        "xl/workbook.xml",
        "<workbook xmlns:r='x'><workbookPr date1904='1'/><sheets><sheet name='S' r:id='rId1'/></sheets></workbook>");
    Expect(Lines(package).at(0).cells.at(0), Cell::Kind::date, "1904-03-01");
}

TEST_F(WorkbookFile, ReadsDatesOfTheStrictForm) {
    Expect(Only("<c r='A1' t='d'><v>2024-01-05T00:00:00</v></c>"), Cell::Kind::date, "2024-01-05");
    Expect(Only("<c r='A1' t='d'><v>2024-01-05T08:30:00</v></c>"), Cell::Kind::date, "2024-01-05 08:30:00");
}

TEST_F(WorkbookFile, ReadsBooleansAndErrors) {
    Expect(Only("<c r='A1' t='b'><v>1</v></c>"), Cell::Kind::boolean, "TRUE");
    Expect(Only("<c r='A1' t='b'><v>0</v></c>"), Cell::Kind::boolean, "FALSE");
    Expect(Only("<c r='A1' t='e'><v>#N/A</v></c>"), Cell::Kind::error, "#N/A");
}

TEST_F(WorkbookFile, ReadsFormulasByTheirStoredValue) {
    Expect(Only("<c r='A1'><f>B1*2</f><v>84</v></c>"), Cell::Kind::number, "84");
    Expect(Only("<c r='A1' t='str'><f>A2&amp;\"x\"</f><v>甲x</v></c>"), Cell::Kind::text, "甲x");
    Expect(Only("<c r='A1' t='str'><f>\"\"</f><v></v></c>"), Cell::Kind::empty, "");
}

TEST_F(WorkbookFile, NamesAFormulaWithoutAValue) {
    Expect(Only("<c r='A1'><f>B1*2</f></c>"), Cell::Kind::noValue, "=B1*2");
    Expect(Only("<c r='A1'><f>B1*2</f><v></v></c>"), Cell::Kind::noValue, "=B1*2");
}

TEST_F(WorkbookFile, PutsCellsIntoTheirColumns) {
    const std::vector<Line> lines = LinesOf(
        "<row r='3'><c r='B3'><v>1</v></c><c r='AA3'><v>2</v></c></row><row><c><v>3</v></c><c><v>4</v></c></row>");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].number, 3U);
    ASSERT_EQ(lines[0].cells.size(), 27U);
    Expect(lines[0].cells[0], Cell::Kind::empty, "");
    Expect(lines[0].cells[1], Cell::Kind::number, "1");
    Expect(lines[0].cells[26], Cell::Kind::number, "2");
    EXPECT_EQ(lines[1].number, 4U);
    ASSERT_EQ(lines[1].cells.size(), 2U);
    Expect(lines[1].cells[1], Cell::Kind::number, "4");
}

TEST_F(WorkbookFile, ForgetsTheCellsOfTheRowBefore) {
    const std::vector<Line> lines = LinesOf("<row r='1'><c r='A1' t='e'><v>#N/A</v></c><c r='B1'><v>1</v></c></row>"
                                            "<row r='2'><c r='B2'><v>2</v></c></row><row r='3'/>");
    Expect(lines.at(1).cells.at(0), Cell::Kind::empty, "");
    Expect(lines.at(1).cells.at(1), Cell::Kind::number, "2");
    EXPECT_TRUE(lines.at(2).cells.empty());
}

TEST_F(WorkbookFile, TellsHiddenRows) {
    const std::vector<Line> lines =
        LinesOf("<row r='1' hidden='1'><c><v>1</v></c></row><row r='2'><c><v>2</v></c></row>");
    EXPECT_TRUE(lines.at(0).hidden);
    EXPECT_FALSE(lines.at(1).hidden);
}

TEST_F(WorkbookFile, TellsMergedCells) {
    Lines(PackageFile::OfSheet("<sheetData/><mergeCells><mergeCell ref='B2:C4'/></mergeCells>"));
    ASSERT_EQ(merged_.size(), 1U);
    EXPECT_EQ(merged_[0].firstColumn, 1U);
    EXPECT_EQ(merged_[0].firstLine, 2U);
    EXPECT_EQ(merged_[0].lastColumn, 2U);
    EXPECT_EQ(merged_[0].lastLine, 4U);
}

TEST_F(WorkbookFile, ListsItsSheets) {
    PackageFile package = PackageFile::OfSheet("<sheetData/>");
    package.Set("xl/workbook.xml", "<workbook xmlns:r='x'><sheets><sheet name='期初' r:id='rId1'/>"
                                   "<sheet name='旧' state='hidden' r:id='rId1'/><sheet name='图' r:id='rId9'/>"
                                   "</sheets></workbook>");
    package.Write(folder_.File("book.xlsx"));
    const Workbook workbook(folder_.File("book.xlsx"));
    ASSERT_EQ(workbook.sheets().size(), 2U);
    EXPECT_EQ(workbook.sheets()[0].name, "期初");
    EXPECT_FALSE(workbook.sheets()[0].hidden);
    EXPECT_TRUE(workbook.sheets()[1].hidden);
}

TEST_F(WorkbookFile, RefusesADocumentType) {
    PackageFile package = PackageFile::OfSheet("<sheetData/>");
    package.Set("xl/worksheets/sheet1.xml", "<!DOCTYPE worksheet [<!ENTITY a 'x'>]><worksheet>&a;</worksheet>");
    EXPECT_EQ(Refusal(package), (Note{message::documentType, {"xl/worksheets/sheet1.xml"}}));
}

TEST_F(WorkbookFile, RefusesADocumentTypeInEveryPartThatIsRead) {
    for (const char* const part :
         {"_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/sharedStrings.xml", "xl/styles.xml"}) {
        PackageFile package = PackageFile::OfSheet("<sheetData/>");
        package.Set(part, "<!DOCTYPE a SYSTEM 'file:///etc/passwd'>" + package.Part(part));
        EXPECT_EQ(Refusal(package), (Note{message::documentType, {part}}));
    }
}

TEST_F(WorkbookFile, RefusesMissingAndBrokenParts) {
    PackageFile missing = PackageFile::OfSheet("<sheetData/>");
    missing.Remove("xl/worksheets/sheet1.xml");
    EXPECT_EQ(Refusal(missing), (Note{message::partMissing, {"xl/worksheets/sheet1.xml"}}));

    PackageFile broken = PackageFile::OfSheet("<sheetData><row>");
    EXPECT_EQ(Refusal(broken), (Note{message::partBroken, {"xl/worksheets/sheet1.xml"}}));
}

TEST_F(WorkbookFile, RefusesCellsThatCannotBe) {
    for (const char* const row : {"<row r='0'/>", "<row r='1048577'/>", "<row r='1'><c r='XFE1'/></row>",
                                  "<row r='1'><c r='B1'/><c r='A1'/></row>", "<row r='1'><c r='1'/></row>",
                                  "<row r='1'><c t='s'><v>5</v></c></row>", "<row r='1'><c><v>x</v></c></row>"}) {
        EXPECT_EQ(Refusal(PackageFile::OfSheet("<sheetData>" + std::string(row) + "</sheetData>")),
                  (Note{message::partBroken, {"xl/worksheets/sheet1.xml"}}))
            << row;
    }
}

TEST_F(WorkbookFile, RefusesMoreThanItsBoundsUnpacked) {
    PackageFile package = PackageFile::OfSheet("<sheetData/>");
    package.Set("xl/sharedStrings.xml", "<sst><si><t>" + std::string(1'000'000, ' ') + "</t></si></sst>");
    package.Write(folder_.File("bomb.xlsx"));
    try {
        const Workbook workbook(folder_.File("bomb.xlsx"), ArchiveBounds{.unpacked = 100'000});
        FAIL() << "read";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (Note{message::archiveTooLarge, {}}));
    }
}

TEST_F(WorkbookFile, RefusesASheetThatUnpacksToMoreThanItsBounds) {
    PackageFile::OfSheet("<sheetData><row><c/></row><!--" + std::string(1'000'000, ' ') + "--></sheetData>")
        .Write(folder_.File("bomb.xlsx"));
    Workbook workbook(folder_.File("bomb.xlsx"), ArchiveBounds{.unpacked = 100'000});
    Line line;
    try {
        const std::unique_ptr<importing::Table> table = workbook.Open(0);
        while (table->Next(line)) {
        }
        FAIL() << "read";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (Note{message::archiveTooLarge, {}}));
    }
}

TEST_F(WorkbookFile, RefusesAnArchiveOfTooManyParts) {
    PackageFile package = PackageFile::OfSheet("<sheetData/>");
    for (int part = 0; part < 20; ++part) {
        package.Set("xl/media/" + std::to_string(part), "");
    }
    package.Write(folder_.File("parts.xlsx"));
    try {
        const Workbook workbook(folder_.File("parts.xlsx"), ArchiveBounds{.parts = 20});
        FAIL() << "read";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (Note{message::archiveTooLarge, {}}));
    }
}

TEST_F(WorkbookFile, RefusesMoreCellsThanASheetIsReadFor) {
    PackageFile::OfSheet("<sheetData><row><c r='CV1'><v>1</v></c></row><row><c r='CV2'><v>1</v></c></row></sheetData>")
        .Write(folder_.File("wide.xlsx"));
    Workbook workbook(folder_.File("wide.xlsx"), ArchiveBounds{.cells = 199});
    const std::unique_ptr<importing::Table> table = workbook.Open(0);
    Line line;
    EXPECT_TRUE(table->Next(line));
    try {
        table->Next(line);
        FAIL() << "read";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (Note{message::tooManyCells, {}}));
    }
}

TEST_F(WorkbookFile, RefusesWhatIsNoWorkbook) {
    std::ofstream(folder_.File("text.xlsx")) << "cWhCode,cInvCode\n";
    const std::string path = folder_.File("text.xlsx");
    try {
        const Workbook workbook(path);
        FAIL() << "read";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (Note{message::notASpreadsheet, {path}}));
    }
}

} // namespace
