#pragma once

#include "cli/Classes.h"
#include "cli/ImportAccount.h"
#include "import/file/ReadFileFacts.h"
#include "import/run/RunImport.h"
#include "tests/support/Paths.h"
#include "tests/support/Program.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace test {

/// The demonstration company, with a login, and spreadsheets beside it.
class ImportFixture : public ::testing::Test {
protected:
    ImportFixture() { WriteBytes(Path("login.xml"), account_.LoginXml()); }

    std::string Path(const std::string& name) const { return (account_.folder() / name).string(); }
    const TestAccount& account() const { return account_; }

    /// A login into the same account as a database of a server, through the tests' driver.
    void WriteServerLogin() const {
        std::string login = account_.LoginXml();
        const std::string embedded = account_.connectionString();
        login.replace(login.find(embedded), embedded.size(), "Driver=" + OdbcDriverPath() + ";" + embedded);
        WriteBytes(Path("server.xml"), login);
    }

    struct Options {
        bool commit = false;
        std::string login = "login.xml";
        bool strict = false;
        bool allowDuplicates = false;
        std::string time = "2024-01-15 10:00:00";
        std::function<bool()> wantsStop = {};
    };

    /// Imports the text of a CSV file; it is written as `name`.
    importing::Outcome Import(const std::string& csv, const Options& options, const std::string& name = "期初.csv",
                              const char* className = "ClsKovra") const {
        WriteBytes(Path(name), csv);
        return ImportFile(name, options, className);
    }

    importing::Outcome ImportFile(const std::string& name, const Options& options,
                                  const char* className = "ClsKovra") const {
        importing::Spreadsheet spreadsheet(Path(name), {}, {.allowDuplicates = options.allowDuplicates},
                                           importing::FieldsOf(className));
        cli::ImportAccount account(Path(options.login));
        importing::ImportLog log(Path("kovra-imports.db"));
        const std::vector<cli::ImportClass>& classes = cli::ImportClasses();
        return importing::RunImport({
            .account = account,
            .transact = std::ranges::find(classes, className, &cli::ImportClass::name)->transact,
            .spreadsheet = spreadsheet,
            .file = importing::ReadFileFacts(Path(name)),
            .log = log,
            .time = options.time,
            .commit = options.commit,
            .strict = options.strict,
            .allowDuplicates = options.allowDuplicates,
            .wantsStop = options.wantsStop,
        });
    }

    /// Every row of every table of the account and of its calendar, and what the numbers of new rows would be.
    std::vector<std::string> Everything() const {
        std::vector<std::string> everything;
        for (const std::string& json : account_.Rows("select name from sysobjects where xtype = 'U' order by name")) {
            const std::string name = json.substr(9, json.size() - 11);
            everything.push_back(name);
            std::vector<std::string> rows = account_.Rows("select * from [" + name + "]");
            everything.insert(everything.end(), rows.begin(), rows.end());
        }
        const std::vector<std::string> calendar = account_.Rows("select * from QxSystem..UA_Period");
        everything.insert(everything.end(), calendar.begin(), calendar.end());
        return everything;
    }

    /// The opening balances, in order of their numbers.
    std::vector<std::string> Opening() const {
        return account_.Rows("select cWhCode, cInvCode, iAInQuantity, iAInPrice from Ia_subsidiary where cVouType = "
                             "'34' order by AutoID");
    }

    static std::vector<importing::RowState> StatesOf(const importing::Outcome& outcome) {
        std::vector<importing::RowState> states;
        for (const importing::RowOutcome& row : outcome.rows) {
            states.push_back(row.state);
        }
        return states;
    }

    /// The messages of a row's refusals.
    static std::vector<importing::Message> Refusals(const importing::RowOutcome& row) {
        std::vector<importing::Message> messages;
        for (const importing::Finding& finding : row.row.refusals) {
            messages.push_back(finding.note.message);
        }
        return messages;
    }

    static std::vector<importing::Message> Remarks(const importing::Outcome& outcome) {
        std::vector<importing::Message> messages;
        for (const importing::Note& note : outcome.remarks) {
            messages.push_back(note.message);
        }
        return messages;
    }

    static inline const std::string openingHead =
        "仓库编码,存货编码,数量,单价,金额,入库日期,批号,生产日期,失效日期,保质期,自由项1,自由项2,备注\n";
    /// Three rows that are taken.
    static inline const std::string threeRows = openingHead + "01,1001,2,5000,10000,2023-12-31,,,,,,,\n"
                                                              "02,2001,1,800.5,800.5,2023-12-30,,,,,,,\n"
                                                              "06,1007,100,0.5,50,,,,,,,,6' 管件\n";

private:
    TestAccount account_{AccountContent::demo};
};

} // namespace test
