#include "refhost/ado/RowsetXml.h"

#include "host/Error.h"
#include "refhost/xml/Document.h"
#include "tests/support/ErrorOf.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using host::FieldType;
using refhost::xml::Document;

struct Column {
    host::Field field;
    host::Value value;
};

/// A recordset of one row.
refhost::ResultSet OneRow(std::vector<Column> columns) {
    refhost::Fields fields;
    refhost::ResultSet result;
    for (Column& column : columns) {
        fields.push_back(column.field);
        result.cells.Add(std::move(column.value));
    }
    result.fields = std::make_shared<refhost::Fields>(std::move(fields));
    result.rowCount = 1;
    return result;
}

host::Field Named(std::string name, FieldType type = FieldType::varWideChar, int size = 30) {
    return {std::move(name), type, size, 0, 0, true};
}

/// The first empty element of this name as it stands in the document.
std::string Written(const Document& document, const std::string& name) {
    const std::string xml = document.Xml();
    const std::size_t begin = xml.find("<" + name);
    return xml.substr(begin, xml.find("/>", begin) + 2 - begin);
}

void Write(const refhost::ResultSet& result, Document& document) {
    refhost::RowsetShapes shapes;
    WriteRowset(result, shapes, document);
}

std::string RowXml(std::vector<Column> columns) {
    Document document;
    Write(OneRow(std::move(columns)), document);
    return Written(document, "z:row");
}

/// The row of one column `v`.
std::string ValueXml(FieldType type, host::Value value) { return RowXml({{Named("v", type), std::move(value)}}); }

TEST(RowsetXml, WholeLayout) {
    refhost::ResultSet result = OneRow(
        {{{"ID", FieldType::integer, 4, 0, 0, false}, 7}, {{"cCode", FieldType::varWideChar, 20, 0, 0, true}, "01"}});
    result.cells.Add(8);
    result.cells.Add(host::Null{});
    result.rowCount = 2;
    Document document;
    Write(result, document);
    EXPECT_EQ(document.Xml(),
              "<xml xmlns:s=\"uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882\""
              " xmlns:dt=\"uuid:C2F41010-65B3-11d1-A29F-00AA00C14882\""
              " xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\">"
              "<s:Schema id=\"RowsetSchema\"><s:ElementType name=\"row\" content=\"eltOnly\" rs:CommandTimeout=\"30\">"
              "<s:AttributeType name=\"ID\" rs:number=\"1\" rs:writeunknown=\"true\">"
              "<s:datatype dt:type=\"int\" dt:maxLength=\"4\" rs:precision=\"10\" rs:fixedlength=\"true\""
              " rs:maybenull=\"false\"/></s:AttributeType>"
              "<s:AttributeType name=\"cCode\" rs:number=\"2\" rs:nullable=\"true\" rs:writeunknown=\"true\">"
              "<s:datatype dt:type=\"string\" dt:maxLength=\"20\"/></s:AttributeType>"
              "<s:extends type=\"rs:rowbase\"/></s:ElementType></s:Schema>"
              "<rs:data><z:row ID=\"7\" cCode=\"01\"/><z:row ID=\"8\"/></rs:data></xml>");
}

TEST(RowsetXml, ALongFirstRowIsNoMeasureForTheOthers) {
    // As long as the first, they would take 400 GB.
    refhost::ResultSet result = OneRow({{Named("v"), std::string(4'000'000, 'x')}});
    for (; result.rowCount < 100'000; ++result.rowCount) {
        result.cells.Add("y");
    }
    Document document;
    Write(result, document);
    EXPECT_EQ(document.SelectNodes("/xml/rs:data/z:row[@v='y']").size(), result.rowCount - 1);
}

TEST(RowsetXml, NoRowsStillHaveASchema) {
    refhost::ResultSet result = OneRow({{Named("a"), "1"}});
    result.cells = {};
    result.rowCount = 0;
    Document document;
    Write(result, document);
    EXPECT_EQ(document.SelectNodes("//z:row").size(), 0U);
    EXPECT_NE(document.SelectSingleNode("//rs:data"), nullptr);
    EXPECT_EQ(document.SelectSingleNode("//s:AttributeType")->GetAttribute("name"), "a");
}

TEST(RowsetXml, NullsAreLeftOutAndEmptyTextsAreNot) {
    EXPECT_EQ(RowXml({{Named("a"), host::Null{}}, {Named("b"), ""}, {Named("c"), host::Value()}}), "<z:row b=\"\"/>");
}

TEST(RowsetXml, ValuesAsAdoWritesThem) {
    EXPECT_EQ(ValueXml(FieldType::boolean, true), "<z:row v=\"True\"/>");
    EXPECT_EQ(ValueXml(FieldType::boolean, false), "<z:row v=\"False\"/>");
    EXPECT_EQ(ValueXml(FieldType::boolean, 1), "<z:row v=\"True\"/>");
    EXPECT_EQ(ValueXml(FieldType::bigInt, std::int64_t{-9'223'372'036'854'775'807}),
              "<z:row v=\"-9223372036854775807\"/>");
    EXPECT_EQ(ValueXml(FieldType::numeric, host::Decimal{"-12.500"}), "<z:row v=\"-12.500\"/>");
    EXPECT_EQ(ValueXml(FieldType::binary, host::Bytes{{0x00, 0x0F, 0xA7, 0xFF}}), "<z:row v=\"000fa7ff\"/>");
    EXPECT_EQ(ValueXml(FieldType::varWideChar, " 仓<\"&\n "), "<z:row v=\" 仓&lt;&quot;&amp;&#xA; \"/>");
}

TEST(RowsetXml, CharactersThatXmlDoesNotKnow) {
    EXPECT_EQ(ValueXml(FieldType::varWideChar, "a\x01\x1F\t\r"), "<z:row v=\"a\uFFFD\uFFFD&#x9;&#xD;\"/>");
    // U+FFFE, U+FFFF, a surrogate by itself, a byte that begins no character.
    for (const char* const text : {"\xEF\xBF\xBE", "仓\xEF\xBF\xBF", "\xED\xA0\x80", "\x80"}) {
        Document document;
        EXPECT_EQ(test::ErrorNumberOf([&] {
                      Write(OneRow({{Named("v"), text}}), document);
                  }),
                  host::error_number::unspecified);
    }
}

TEST(RowsetXml, DoublesArePlainAndExact) {
    EXPECT_EQ(ValueXml(FieldType::doubleFloat, 0.1), "<z:row v=\"0.1\"/>");
    EXPECT_EQ(ValueXml(FieldType::single, 0.1F), "<z:row v=\"0.1\"/>");
    EXPECT_EQ(ValueXml(FieldType::doubleFloat, 100.0), "<z:row v=\"100\"/>");
    EXPECT_EQ(ValueXml(FieldType::doubleFloat, -1e20), "<z:row v=\"-100000000000000000000\"/>");
    EXPECT_EQ(ValueXml(FieldType::doubleFloat, 3.125e-7), "<z:row v=\"0.0000003125\"/>");
    EXPECT_EQ(ValueXml(FieldType::doubleFloat, 3.1415926535897931), "<z:row v=\"3.141592653589793\"/>");
}

TEST(RowsetXml, DatesHaveTheirTimeOfDay) {
    // Day 45047 is 2023-05-01; 1899-12-30 is day 0.
    EXPECT_EQ(ValueXml(FieldType::dbTimeStamp, host::Date{45047}), "<z:row v=\"2023-05-01T00:00:00\"/>");
    EXPECT_EQ(ValueXml(FieldType::dbTimeStamp, host::Date{45047.5}), "<z:row v=\"2023-05-01T12:00:00\"/>");
    EXPECT_EQ(ValueXml(FieldType::dbTimeStamp, host::Date{45047 + 86399.0 / 86400}),
              "<z:row v=\"2023-05-01T23:59:59\"/>");
    EXPECT_EQ(ValueXml(FieldType::dbTimeStamp, host::Date{45047 + 1.25 / 86400}),
              "<z:row v=\"2023-05-01T00:00:01.250000000\"/>");
    EXPECT_EQ(ValueXml(FieldType::dbTimeStamp, host::Date{-1.25}), "<z:row v=\"1899-12-29T06:00:00\"/>");
    EXPECT_EQ(ValueXml(FieldType::dbDate, host::Date{45047.5}), "<z:row v=\"2023-05-01\"/>");
    EXPECT_EQ(ValueXml(FieldType::dbTime, host::Date{0.75}), "<z:row v=\"18:00:00\"/>");
}

TEST(RowsetXml, ColumnsWithoutAnXmlNameAreNumbered) {
    Document document;
    Write(OneRow({{Named("a b"), "1"},
                  {Named(""), "2"},
                  {Named("名称"), "3"},
                  {Named("1x"), "4"},
                  {Named("p:q"), "5"},
                  {Named("xmlns"), "6"},
                  {Named("-a"), "7"},
                  {Named("_a-b.1Üж"), "8"},
                  {Named("a×"), "9"}}),
          document);
    EXPECT_EQ(Written(document, "z:row"),
              "<z:row c0=\"1\" c1=\"2\" 名称=\"3\" c3=\"4\" c4=\"5\" c5=\"6\" c6=\"7\" _a-b.1Üж=\"8\" c8=\"9\"/>");
    const host::DOMNodeList columns = document.SelectNodes("//s:AttributeType");
    EXPECT_EQ(columns[0]->GetAttribute("name"), "c0");
    EXPECT_EQ(columns[0]->GetAttribute("rs:name"), "a b");
    EXPECT_EQ(columns[1]->GetAttribute("rs:name"), "");
    EXPECT_EQ(columns[2]->GetAttribute("rs:name"), std::nullopt);
}

TEST(RowsetXml, ColumnsOfOneNameStayApart) {
    EXPECT_EQ(RowXml({{Named("a"), "1"}, {Named("a"), "2"}, {Named("A"), "3"}}), "<z:row a=\"1\" c1=\"2\" A=\"3\"/>");
    EXPECT_EQ(RowXml({{Named("c1"), "1"}, {Named("c1"), "2"}}), "<z:row c1=\"1\" c1_=\"2\"/>");
}

struct TypeCase {
    host::Field field;
    const char* datatype;
};

class RowsetDatatype : public testing::TestWithParam<TypeCase> {};

TEST_P(RowsetDatatype, IsDescribedAsAdoDoes) {
    Document document;
    Write(OneRow({{GetParam().field, host::Null{}}}), document);
    EXPECT_EQ(Written(document, "s:datatype"), GetParam().datatype);
}

INSTANTIATE_TEST_SUITE_P(
    RowsetXml, RowsetDatatype,
    testing::Values(
        TypeCase{{"v", FieldType::smallInt, 2, 0, 0, true},
                 "<s:datatype dt:type=\"i2\" dt:maxLength=\"2\" rs:precision=\"5\" rs:fixedlength=\"true\"/>"},
        TypeCase{{"v", FieldType::doubleFloat, 8, 0, 0, true},
                 "<s:datatype dt:type=\"float\" dt:maxLength=\"8\" rs:precision=\"15\" rs:fixedlength=\"true\"/>"},
        TypeCase{{"v", FieldType::currency, 8, 0, 0, true},
                 "<s:datatype dt:type=\"number\" rs:dbtype=\"currency\" dt:maxLength=\"8\" rs:precision=\"19\""
                 " rs:fixedlength=\"true\"/>"},
        TypeCase{{"v", FieldType::boolean, 2, 0, 0, false},
                 "<s:datatype dt:type=\"boolean\" dt:maxLength=\"2\" rs:fixedlength=\"true\" rs:maybenull=\"false\"/>"},
        TypeCase{{"v", FieldType::numeric, 19, 20, 6, true},
                 "<s:datatype dt:type=\"number\" rs:dbtype=\"numeric\" dt:maxLength=\"19\" rs:scale=\"6\""
                 " rs:precision=\"20\" rs:fixedlength=\"true\"/>"},
        TypeCase{{"v", FieldType::dbTimeStamp, 16, 0, 0, true},
                 "<s:datatype dt:type=\"dateTime\" rs:dbtype=\"timestamp\" dt:maxLength=\"16\" rs:scale=\"3\""
                 " rs:precision=\"23\" rs:fixedlength=\"true\"/>"},
        TypeCase{{"v", FieldType::varChar, 30, 0, 0, true},
                 "<s:datatype dt:type=\"string\" rs:dbtype=\"str\" dt:maxLength=\"30\"/>"},
        TypeCase{{"v", FieldType::longVarWideChar, 1'073'741'823, 0, 0, true},
                 "<s:datatype dt:type=\"string\" dt:maxLength=\"1073741823\" rs:long=\"true\"/>"},
        TypeCase{
            {"v", FieldType::binary, 8, 0, 0, false},
            "<s:datatype dt:type=\"bin.hex\" dt:maxLength=\"8\" rs:fixedlength=\"true\" rs:maybenull=\"false\"/>"}));

TEST(RowsetXml, ManyRowsAreWrittenInOrder) {
    refhost::ResultSet result = OneRow({{Named("n", FieldType::integer), 0}, {Named("t"), "x"}});
    for (int row = 1; row < 50'000; ++row) {
        result.cells.Add(row);
        result.cells.Add("x");
    }
    result.rowCount = 50'000;
    Document document;
    Write(result, document);
    const host::DOMNodeList rows = document.SelectNodes("//z:row");
    ASSERT_EQ(rows.size(), 50'000U);
    for (std::size_t row = 0; row < rows.size(); ++row)
        ASSERT_EQ(rows[row]->GetAttribute("n"), std::to_string(row));
}

} // namespace
