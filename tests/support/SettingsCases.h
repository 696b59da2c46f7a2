#pragma once

#include "tests/support/SettingsFixture.h"

namespace test {

/// What every class of account settings does alike. A class's fixture gives
///   `table`                          where its settings are
///   `keyColumn`, `keyValue`          a key that suffices, which is an element and a column
///   `accountColumn`, `knownAccount`  an account, likewise
///   `rowKey`                         what names such a row in its outcome
///   `yearClosed`                     the error result of a closed year
template <class Settings> class EverySetting : public Settings {
protected:
    static std::string Row(const std::string& account = Settings::knownAccount) {
        const auto element = [](const std::string& name, const std::string& text) {
            return "<" + name + ">" + text + "</" + name + ">";
        };
        return element("row",
                       element(Settings::keyColumn, Settings::keyValue) + element(Settings::accountColumn, account));
    }

    /// Stores a setting of the row's key in each year.
    void Store(const std::vector<std::string>& years) const {
        for (const std::string& year : years) {
            this->account.Run(std::string("INSERT INTO ") + Settings::table + " (" + Settings::keyColumn +
                              ", iYear) VALUES (N'" + Settings::keyValue + "', " + year + ")");
        }
    }

    /// What the operation "EMPTY" asks.
    std::vector<std::string> Emptied(const std::string& connection, int error) const {
        std::vector<std::string> lines = this->Before(connection);
        lines.push_back(Executed(std::string("Delete * From ") + Settings::table, error));
        return lines;
    }
};
TYPED_TEST_SUITE_P(EverySetting);

TYPED_TEST_P(EverySetting, AsksWhetherItMayImportFirst) {
    const ImportRun run = this->Import("ADD", "");
    EXPECT_EQ(run.result, ResultDocument("ADD", {}));
    EXPECT_EQ(run.trace, this->Before());
}

TYPED_TEST_P(EverySetting, RefusesAClosedYearWhateverTheOperation) {
    this->account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)");
    for (const char* proc : {"ADD", "EDIT", "EMPTY", "Delete"}) {
        const ImportRun run = this->Import(proc, this->Row());
        EXPECT_EQ(run.result, TypeParam::yearClosed);
        EXPECT_EQ(run.trace, this->Before());
    }
}

TYPED_TEST_P(EverySetting, ImportsIntoAYearWhoseDecemberIsOpen) {
    this->account.Run(
        "INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 0), (2023, 11, 1), (2022, 12, 1)");
    EXPECT_EQ(this->Import("ADD", this->Row()).result, ResultDocument("ADD", {{TypeParam::rowKey, 0, "ok"}}));
}

TYPED_TEST_P(EverySetting, EmptyIsSentAsItStandsAndRefused) {
    this->Import("ADD", this->Row());
    const ImportRun run = this->Import("EMPTY", this->Row());
    EXPECT_EQ(run.result, R"(<error code="-2147217900" dsc="Incorrect syntax near '*'."/>)");
    EXPECT_EQ(run.trace, this->Emptied(this->account.connectionString(), -2147217900));
    EXPECT_EQ(this->Stored().size(), 1U);
}

TYPED_TEST_P(EverySetting, EmptyDeletesEverythingWhereTheDatabaseTakesTheAsterisk) {
    this->Store({"2023", "2022"});
    const std::string connection = this->account.connectionString() + ";Delete Star=Accept";
    std::string login = this->account.LoginXml();
    login.insert(login.find(this->account.connectionString()) + this->account.connectionString().size(),
                 ";Delete Star=Accept");
    const ImportRun run = this->ImportAs(login, "empty", this->Row());
    EXPECT_EQ(run.result, "");
    EXPECT_EQ(run.trace, this->Emptied(connection, 0));
    EXPECT_EQ(this->Stored(), std::vector<std::string>());
}

TYPED_TEST_P(EverySetting, OffersNoOtherOperation) {
    for (const char* proc : {"Delete", "", "ADD ", "QUERY"}) {
        EXPECT_EQ(this->Import(proc, this->Row()).result, R"(<error code="710" dsc="本模块暂不提供此功能！"/>)")
            << proc;
    }
    EXPECT_EQ(this->Stored(), std::vector<std::string>());
}

TYPED_TEST_P(EverySetting, TakesTheSameKeysOfAnotherYearForAnother) {
    this->Store({"2022"});
    EXPECT_EQ(this->Import("ADD", this->Row()).result, ResultDocument("ADD", {{TypeParam::rowKey, 0, "ok"}}));
    EXPECT_EQ(this->account.Rows(std::string("select iYear from ") + TypeParam::table + " order by AutoID"),
              (std::vector<std::string>{R"({"iYear":2022})", R"({"iYear":2023})"}));
}

TYPED_TEST_P(EverySetting, ReportsAnAccountLongerThanItsColumnAndOkBehind) {
    // Longer than the setting's 40 characters, and the chart of accounts knows it all the same.
    const std::string code = "1234567890123456789012345678901234567890X";
    this->account.Run("DROP TABLE code\n"
                      "GO\n"
                      "CREATE TABLE code (iyear smallint NULL, ccode nvarchar(80) NULL, bend bit NULL)\n"
                      "GO\n"
                      "INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'" +
                      code + "', 1)");
    EXPECT_EQ(this->Import("ADD", this->Row(code)).result,
              ResultDocument("ADD", {{TypeParam::rowKey, 101, "String or binary data would be truncated."},
                                     {TypeParam::rowKey, 0, "ok"}}));
    EXPECT_EQ(this->Stored(), std::vector<std::string>());
}

REGISTER_TYPED_TEST_SUITE_P(EverySetting, AsksWhetherItMayImportFirst, RefusesAClosedYearWhateverTheOperation,
                            ImportsIntoAYearWhoseDecemberIsOpen, EmptyIsSentAsItStandsAndRefused,
                            EmptyDeletesEverythingWhereTheDatabaseTakesTheAsterisk, OffersNoOtherOperation,
                            TakesTheSameKeysOfAnotherYearForAnother, ReportsAnAccountLongerThanItsColumnAndOkBehind);

} // namespace test
