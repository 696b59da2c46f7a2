#include "import/reading/Csv.h"

#include "import/reading/UnreadableFile.h"

#include <gtest/gtest.h>

namespace {

using importing::Cell;
using importing::CsvTable;
using importing::DetectSeparator;
using importing::Line;

using Texts = std::vector<std::string>;

struct Record {
    std::size_t number;
    Texts texts;

    bool operator==(const Record&) const = default;
};

void PrintTo(const Record& record, std::ostream* out) {
    *out << record.number << ": " << testing::PrintToString(record.texts);
}

std::vector<Record> Records(std::string text, char separator = ',') {
    CsvTable table(std::move(text), separator);
    std::vector<Record> records;
    for (Line line; table.Next(line);) {
        Record& record = records.emplace_back(Record{line.number, {}});
        for (const Cell& cell : line.cells) {
            EXPECT_EQ(cell.kind, cell.text.empty() ? Cell::Kind::empty : Cell::Kind::text);
            record.texts.push_back(cell.text);
        }
    }
    return records;
}

TEST(Csv, ReadsRecordsOfEveryLineEnd) {
    EXPECT_EQ(Records("a,b\r\nc,d\ne,f\rg,h"),
              (std::vector<Record>{{1, {"a", "b"}}, {2, {"c", "d"}}, {3, {"e", "f"}}, {4, {"g", "h"}}}));
}

TEST(Csv, ReadsQuotedFieldsWithSeparatorsQuotesAndLineBreaks) {
    EXPECT_EQ(Records("\"a,b\",\"6\"\" 管\",\"上\r\n下\"\nnext,,"),
              (std::vector<Record>{{1, {"a,b", "6\" 管", "上\n下"}}, {3, {"next", "", ""}}}));
}

TEST(Csv, KeepsEmptyLinesSoThatLinesCount) {
    EXPECT_EQ(Records("a\n\nb\n"), (std::vector<Record>{{1, {"a"}}, {2, {""}}, {3, {"b"}}}));
}

TEST(Csv, ForgetsTheFieldsOfALongerRecordBefore) {
    EXPECT_EQ(Records("a,b,c\nd"), (std::vector<Record>{{1, {"a", "b", "c"}}, {2, {"d"}}}));
}

TEST(Csv, TakesAQuoteInsideAFieldAsItStands) {
    EXPECT_EQ(Records("6\" 管,x"), (std::vector<Record>{{1, {"6\" 管", "x"}}}));
}

TEST(Csv, NamesTheLineOfAQuoteWithoutAnEnd) {
    try {
        Records("a\nb,\"c\nd");
        FAIL() << "read";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (importing::Note{importing::message::quoteWithoutEnd, {"2"}}));
    }
}

TEST(Csv, OfNothingHasNoRecords) { EXPECT_EQ(Records(""), std::vector<Record>()); }

TEST(DetectSeparator, TakesTheOneThatStandsMostOftenInTheFirstRecord) {
    EXPECT_EQ(DetectSeparator("a,b,c\n1;2;3;4;5"), ',');
    EXPECT_EQ(DetectSeparator("a;b;c,d\n"), ';');
    EXPECT_EQ(DetectSeparator("仓库\t存货\t数量"), '\t');
    EXPECT_EQ(DetectSeparator("\"a,b,c\";d;e"), ';');
    EXPECT_EQ(DetectSeparator("\n\na;b"), ';');
    EXPECT_EQ(DetectSeparator("alone"), ',');
}

} // namespace
