#include "refhost/sql/types/Collation.h"

#include "refhost/sql/types/CharacterOrder.h"
#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>
#include <map>
#include <utility>

namespace test_sql {
namespace {

using refhost::sql::CompareText;
using refhost::sql::FoldCharacter;
using refhost::sql::FoldText;
using refhost::sql::Weight;
using refhost::sql::WeightOf;

int Sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

TEST(Collation, WidthKanaCaseAndTrailingBlanksDoNotCount) {
    for (const auto& [left, right] : std::array<std::pair<const char*, const char*>, 12>{{
             {"１００１", "1001"},
             {"（", "("},
             {"ＡＢｃ", "abC"},
             {"あいう", "アイウ"},
             {"ｱｲｳ", "アイウ"},
             {"ｶﾞ", "カ゛"},
             {"￥", "¥"},
             {"甲　", "甲"},
             {"甲　乙", "甲 乙"},
             {"m²", "m2"},
             {"H₂O", "h2o"},
             {"É", "é"},
         }}) {
        EXPECT_EQ(CompareText(left, right), 0) << left << " " << right;
        EXPECT_EQ(FoldText(left), FoldText(right)) << left << " " << right;
    }
}

TEST(Collation, LettersThatStandForTwoAreTheTwo) {
    for (const auto& [left, right] : std::array<std::pair<const char*, const char*>, 6>{{
             {"Straße", "strasse"},
             {"Ægir", "aegir"},
             {"œuvre", "OEUVRE"},
             {"Þór", "thór"},
             {"ßs", "sß"},
             {"a-ß", "a-ss"},
         }}) {
        EXPECT_EQ(CompareText(left, right), 0) << left << " " << right;
        EXPECT_EQ(FoldText(left), FoldText(right)) << left << " " << right;
    }
    EXPECT_LT(CompareText("sr", "ß"), 0);
    EXPECT_LT(CompareText("s", "ß"), 0);
    EXPECT_LT(CompareText("ß", "sst"), 0);
    EXPECT_LT(CompareText("ß", "st"), 0);
    EXPECT_NE(CompareText("ä", "ae"), 0);
}

TEST(Collation, WhatDiffersStaysApart) {
    for (const auto& [left, right] : std::array<std::pair<const char*, const char*>, 9>{{
             {"e", "é"},
             {"ab", "a-b"},
             {"a-b", "a'b"},
             {"a-bc", "ab-c"},
             {"ァ", "ア"},
             {"か", "が"},
             {"①", "1"},
             {"𠀀", "𠀁"},
             {"㎡", "m2"},
         }}) {
        EXPECT_NE(CompareText(left, right), 0) << left << " " << right;
        EXPECT_EQ(Sign(CompareText(left, right)), -Sign(CompareText(right, left))) << left << " " << right;
    }
}

TEST(Collation, OrdersSignsDigitsLettersThenChineseByPinyin) {
    // 阿 a, 白 bai, 包 bao, 存 cun, 货 huo, 科 ke, 目 mu, 期 qi, 重 zhong, 作 zuo; then what pinyin does not order.
    const std::array ascending = {"",   "\t", "!",   "_",  "~",  "、", "+",  "0",  "1",  "１０", "½",
                                  "2",  "a",  "Ａb", "b",  "z",  "α",  "б",  "ア", "한", "阿",   "白",
                                  "包", "存", "货",  "科", "目", "期", "重", "作", "㐀", "𠀀"};
    for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
        EXPECT_LT(CompareText(ascending[i], ascending[i + 1]), 0) << ascending[i] << " " << ascending[i + 1];
        EXPECT_GT(CompareText(ascending[i + 1], ascending[i]), 0) << ascending[i] << " " << ascending[i + 1];
        EXPECT_LT(CompareText(ascending[i], ascending.back()), 0) << ascending[i];
    }
}

TEST(Collation, HyphensAndApostrophesWeighLittle) {
    // The order that Windows documents for its word sort.
    const std::array ascending = {"billet", "bills", "bill's", "cannot", "cant",   "can't", "co_op", "coat",  "comb",
                                  "con",    "coop",  "co'op",  "co-op",  "co-opa", "cork",  "were",  "we're", "wet"};
    for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
        EXPECT_LT(CompareText(ascending[i], ascending[i + 1]), 0) << ascending[i] << " " << ascending[i + 1];
        EXPECT_GT(CompareText(ascending[i + 1], ascending[i]), 0) << ascending[i] << " " << ascending[i + 1];
    }
}

TEST(Collation, AccentsCountWhereNothingElseDiffers) {
    const std::array ascending = {"cote", "coté", "côte", "côté", "coter"};
    for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
        EXPECT_LT(CompareText(ascending[i], ascending[i + 1]), 0) << ascending[i] << " " << ascending[i + 1];
    }
}

TEST(Collation, NoTwoFoldedCharactersShareAWeight) {
    std::map<Weight, char32_t> seen;
    for (char32_t c = 1; c < 0x30000; ++c) {
        if (FoldCharacter(c) != c || refhost::sql::IsMinimal(c)) {
            continue;
        }
        const auto [other, fresh] = seen.emplace(WeightOf(c), c);
        EXPECT_TRUE(fresh) << std::hex << std::uint32_t{c} << " " << std::uint32_t{other->second};
    }
    for (char32_t c = 1; c < 0x30000; ++c) {
        EXPECT_EQ(FoldCharacter(FoldCharacter(c)), FoldCharacter(c)) << std::hex << std::uint32_t{c};
    }
}

TEST(Collation, IsTotal) {
    // Every three of these texts are in one order, whichever two are compared first.
    const std::array<std::string, 22> texts = {"",     "-",   "'",  "a",    "a-",  "-a",  "a-b", "ab-",
                                               "á-b",  "a'b", "ab", "a'-b", "中",  "中-", "-中", "\xE4\xB8",
                                               "\x80", "ß",   "s",  "ss",   "s-s", "sß"};
    for (const std::string& a : texts) {
        for (const std::string& b : texts) {
            EXPECT_EQ(CompareText(a, b) == 0, FoldText(a) == FoldText(b)) << a << " " << b;
            EXPECT_EQ(Sign(CompareText(a, b)), -Sign(CompareText(b, a))) << a << " " << b;
            for (const std::string& c : texts) {
                if (CompareText(a, b) < 0 && CompareText(b, c) < 0) {
                    EXPECT_LT(CompareText(a, c), 0) << a << " " << b << " " << c;
                }
            }
        }
    }
}

class CollationOf : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, CollationOf, testing::ValuesIn(Places()), PlaceName);

TEST_P(CollationOf, EveryPlaceWhereTextsMeet) {
    Check(std::array{
        Case{"create table t (c nvarchar(20) not null primary key, g nvarchar(5))", ""},
        Case{"insert into t values (N'1001', N'あ')", ""},
        Case{"insert into t values (N'乙', N'ア')", ""},
        Case{"insert into t values (N'（甲）', N'い')", ""},
        Case{"insert into t values (N'１００１', N'')",
             "-2147217873: Violation of PRIMARY KEY constraint 'PK__t__75D7831F'. Cannot insert duplicate "
             "key in object 'dbo.t'. The duplicate key value is (１００１)."},
        Case{"select c from t where c = N'１００１'", "'1001'"},
        Case{"select c from t where c like N'１００_'", "'1001'"},
        Case{"select c from t where c like N'(%)'", "'（甲）'"},
        Case{"select c from t where c like N'[一-龥]%'", "'乙'"},
        Case{"select c from t where c in (N'(甲)', N'丙')", "'（甲）'"},
        Case{"select charindex(N'）', c), charindex(N'甲)', c) from t where g = N'イ'", "3 2"},
        Case{"select replace(c, N'(', N'<') from t where g = N'イ'", "'<甲）'"},
        Case{"select count(*) from t group by g order by g", "2 | 1"},
        Case{"select count(distinct g) from t", "2"},
        Case{"select c from t order by c", "'（甲）' | '1001' | '乙'"},
        Case{"insert into t values (N'Weiß', N'')", ""},
        Case{"insert into t values (N'WEISS', N'')",
             "-2147217873: Violation of PRIMARY KEY constraint 'PK__t__75D7831F'. Cannot insert duplicate "
             "key in object 'dbo.t'. The duplicate key value is (WEISS)."},
        Case{"select c from t where c = N'weiss'", "'Weiß'"},
        Case{"select c from t where c like N'%ss'", "'Weiß'"},
        Case{"select c from t where c like N'Wei_'", "'Weiß'"},
        Case{"select charindex(N'ss', N'Weiß!'), charindex(N's', N'Weiß'), charindex(N'œ', N'Chloe')", "4 0 4"},
        Case{"select replace(N'Chloe', N'œ', N'o'), replace(N'Weiße', N'ss', N's')", "'Chlo' 'Weise'"},
        Case{"select case N'Ａ' when N'a' then 1 else 2 end, nullif(N'１', N'1')", "1 Null"},
    });
}

} // namespace
} // namespace test_sql
