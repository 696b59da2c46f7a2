// The pages' tables of fields, the schemas and the account's tables say the same of every field.

#include "cli/Classes.h"
#include "tests/docs/Pages.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <map>
#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace {

using Fields = std::map<std::string, std::string>;

/// The tables whose columns the fields of a class go to.
const std::map<std::string, std::vector<std::string>> tablesOf = {
    {"ClsInvSubject", {"IA_HeadSet"}},
    {"ClsOppSubject", {"IA_OppHead"}},
    {"ClsOppSubjectST", {"IA_OppHead"}},
    {"ClsKovra", {"Ia_subsidiary"}},
    {"ClsKovraProof", {"IA_DecReady", "IA_DecReadys"}},
    {"ClsPriceJustVou", {"CostJustVouch", "CostJustVouchs"}},
};

/// The names of a table's first cell; "`cFree1` … `cFree10`" are ten.
std::vector<std::string> NamesIn(const std::string& cell) {
    static const std::regex range("`([A-Za-z]+)([0-9]+)` … `[A-Za-z]+([0-9]+)`");
    static const std::regex name("`([A-Za-z0-9_]+)`");
    std::vector<std::string> names;
    std::smatch found;
    if (std::regex_search(cell, found, range)) {
        for (int i = std::stoi(found[2]); i <= std::stoi(found[3]); ++i) {
            names.push_back(found[1].str() + std::to_string(i));
        }
        return names;
    }
    for (std::sregex_iterator at(cell.begin(), cell.end(), name), end; at != end; ++at) {
        names.push_back((*at)[1]);
    }
    return names;
}

/// The type as the schemas name it, or nothing for one that the page describes in words.
std::string TypeNamed(const std::string& cell) {
    static const std::regex text("(?:文本|text)\\(([0-9]+)\\)");
    static const std::map<std::string, std::string> others = {
        {"数值", "number"}, {"number", "number"}, {"整数", "wholeNumber"}, {"whole number", "wholeNumber"},
        {"日期", "date"},   {"date", "date"},
    };
    std::smatch found;
    if (std::regex_match(cell, found, text)) {
        return "text" + found[1].str();
    }
    const auto other = others.find(cell);
    return other == others.end() ? "" : other->second;
}

/// The fields of a page with their types: its tables of five columns.
Fields PageFields(const std::string& language, const std::string& name) {
    Fields fields;
    for (const std::string& line :
         test::Lines(test::ReadText(test::SourceFolder() / "docs" / language / (name + ".md")))) {
        const std::vector<std::string> cells = test::TableCells(line);
        if (cells.size() != 5) {
            continue;
        }
        for (const std::string& field : NamesIn(cells[0])) {
            fields.emplace(field, TypeNamed(cells[2]));
        }
    }
    return fields;
}

/// The fields of a schema with their types; a type of its own is followed to the one that it restricts.
Fields SchemaFields(const std::string& name) {
    static const std::regex element("<xs:element name=\"(\\w+)\" type=\"([\\w:]+)\"");
    static const std::regex restricted("<xs:simpleType name=\"(\\w+)\">\\s*<xs:restriction base=\"(\\w+)\">");
    const std::string schema = test::ReadText(test::SourceFolder() / "schemas" / (name + ".xsd"));
    std::map<std::string, std::string> bases;
    for (std::sregex_iterator at(schema.begin(), schema.end(), restricted), end; at != end; ++at) {
        bases[(*at)[1]] = (*at)[2];
    }
    static const std::set<std::string> structure = {"subject", "balance", "provision", "voucher",
                                                    "row",     "header",  "body",      "entry"};
    Fields fields;
    for (std::sregex_iterator at(schema.begin(), schema.end(), element), end; at != end; ++at) {
        const std::string type = (*at)[2];
        if (!structure.contains((*at)[1])) {
            fields.emplace((*at)[1], bases.contains(type) ? bases[type] : type);
        }
    }
    return fields;
}

/// The text columns of a table with their lengths, as the schemas name types.
Fields TextColumns(const std::string& table) {
    const std::string sql = test::ReadText(test::SourceFolder() / "refhost/account/account.sql");
    const std::size_t begin = sql.find("CREATE TABLE " + table + " (");
    EXPECT_NE(begin, sql.npos) << table;
    const std::string columns = sql.substr(begin, sql.find("\n)", begin) - begin);
    static const std::regex column("\\n    (\\w+) nvarchar\\(([0-9]+)\\)");
    Fields fields;
    for (std::sregex_iterator at(columns.begin(), columns.end(), column), end; at != end; ++at) {
        fields[(*at)[1]] = "text" + (*at)[2].str();
    }
    return fields;
}

class PageOfFields : public testing::TestWithParam<std::string> {};

TEST_P(PageOfFields, TellsTheSameInBothLanguages) {
    ASSERT_FALSE(PageFields("zh", GetParam()).empty());
    EXPECT_EQ(PageFields("zh", GetParam()), PageFields("en", GetParam()));
}

TEST_P(PageOfFields, HasTheFieldsOfTheSchema) {
    const Fields schema = SchemaFields(GetParam());
    const Fields page = PageFields("zh", GetParam());
    for (const auto& [field, type] : page) {
        ASSERT_TRUE(schema.contains(field)) << field;
        // Where the page describes the type in words the schema has one all the same.
        if (!type.empty()) {
            EXPECT_EQ(schema.at(field), type) << field;
        }
    }
    for (const auto& [field, type] : schema) {
        // Of opening balances the page leaves the other columns of the ledger to the table.
        EXPECT_TRUE(GetParam() == "ClsKovra" || page.contains(field)) << field;
    }
}

TEST_P(PageOfFields, NamesInItsSchemaWhatTheClassReads) {
    const auto found = std::ranges::find(cli::ImportClasses(), GetParam(), &cli::ImportClass::name);
    ASSERT_NE(found, cli::ImportClasses().end());
    const std::optional<ModPub::RequestFields> fields = found->fields();
    ASSERT_TRUE(fields);
    std::set<std::string> read;
    for (const std::vector<std::string>& names : {fields->row, fields->header, fields->entry}) {
        read.insert(names.begin(), names.end());
    }
    std::set<std::string> described;
    for (const auto& [field, type] : SchemaFields(GetParam())) {
        // Any column of the ledger may be given an opening balance.
        if (!fields->othersAreColumns || read.contains(field)) {
            described.insert(field);
        }
    }
    // Small letters are what a check takes for missing: no request is meant to have them.
    std::erase_if(read, [](const std::string& field) { return field.starts_with("cfree"); });
    EXPECT_EQ(read, described);
}

TEST_P(PageOfFields, HasTheLengthsOfTheAccount) {
    int compared = 0;
    const Fields page = PageFields("zh", GetParam());
    for (const std::string& table : tablesOf.at(GetParam())) {
        for (const auto& [column, type] : TextColumns(table)) {
            const auto found = page.find(column);
            if (found != page.end() && !found->second.empty()) {
                EXPECT_EQ(found->second, type) << table << "." << column;
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 0);
}

INSTANTIATE_TEST_SUITE_P(Docs, PageOfFields, testing::ValuesIn(test::ClassPages()),
                         [](const auto& page) { return page.param; });

} // namespace
