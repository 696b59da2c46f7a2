#pragma once

#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace test {

/// What came of a run.
struct Ended {
    int status = -1;
    std::string output;
    std::string error;
};

/// The program as a shell calls it, in the folder of an account of its own with the warehouse 01 and the ledger account
/// 1405.
class Program : public testing::Test {
protected:
    Program() {
        Write("login.xml", account_.LoginXml());
        account_.Run("insert into Warehouse (cWhCode, cWhName) values ('01', N'原料库')\nGO\n"
                     "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)");
    }

    void Write(const std::string& name, std::string_view bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }
    std::string Path(const std::string& name) const { return (account_.folder() / name).string(); }
    static std::string Read(const std::filesystem::path& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    /// Runs `kovra ARGUMENTS` in the account's folder, with `environment` ("NAME=VALUE ...") and no locale besides.
    Ended Kovra(const std::string& arguments, const std::string& environment = {}) const {
        const std::string command = "cd '" + account_.folder().string() + "' && env -u LC_ALL -u LC_MESSAGES -u LANG " +
                                    environment + " '" + ProgramPath() + "' " + arguments + " > out.txt 2> err.txt";
        Ended run;
        run.status = WEXITSTATUS(std::system(command.c_str()));
        run.output = Read(account_.folder() / "out.txt");
        run.error = Read(account_.folder() / "err.txt");
        return run;
    }
    Ended Transact(const std::string& request, const std::string& more = "") const {
        Write("request.xml", request);
        return Kovra("transact --class ClsInvSubject --login login.xml " + more + " request.xml");
    }

    const TestAccount& account() const { return account_; }

    static constexpr const char* oneSetting =
        "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode><cInvHead>1405</cInvHead>"
        "</row></qxinterface>";
    static constexpr const char* accepted = "<qxinterface docid=\"D\" proc=\"ADD\"><item key=\"仓库编码：01， ， \" "
                                            "code=\"0\" dsc=\"ok\"/></qxinterface>\n";

private:
    TestAccount account_;
};

inline testing::AssertionResult Contains(const std::string& text, std::string_view piece) {
    if (text.find(piece) != std::string::npos) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "\"" << text << "\" does not contain \"" << piece << "\"";
}

} // namespace test
