#include "tests/support/TestAccount.h"

#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/account/Batches.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/JsonRow.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace test {

TemporaryFolder::TemporaryFolder() {
    // Programs of one test run make theirs side by side.
    std::random_device random;
    do {
        path_ = std::filesystem::temp_directory_path() / ("kovra-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    // Under Wine a file of a program that has ended may count as open for a moment more.
    std::error_code error;
    for (int tries = 0; tries < 500; ++tries) {
        std::filesystem::remove_all(path_, error);
        if (!error) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

namespace {

std::string ConnectionString(const std::filesystem::path& folder) {
    return "Provider=KovraAccount;Data Source=" + (folder / "account.db").string();
}

std::unique_ptr<refhost::Database> Create(const std::string& connectionString) {
    return refhost::OpenEmbeddedDatabase(connectionString, refhost::OpenMode::create);
}

std::unique_ptr<refhost::Database> Open(const std::string& connectionString) {
    return refhost::OpenEmbeddedDatabase(connectionString);
}

/// File by file: the run-time library for Windows takes any two folders for the same one.
void CopyFiles(const std::filesystem::path& from, const std::filesystem::path& to) {
    for (const std::filesystem::directory_entry& file : std::filesystem::directory_iterator(from)) {
        std::filesystem::copy_file(file.path(), to / file.path().filename());
    }
}

/// A folder with a new account, which is made once a process: every test account starts as a copy of it.
class NewAccount {
public:
    explicit NewAccount(AccountContent content) {
        refhost::Connection connection(Create);
        connection.Open(ConnectionString(folder_.path()), "", "", host::command_option::unspecified);
        refhost::CreateAccount(connection, "001", content == AccountContent::demo);
    }
    const std::filesystem::path& path() const { return folder_.path(); }

private:
    TemporaryFolder folder_;
};

const NewAccount& Original(AccountContent content) {
    if (content == AccountContent::demo) {
        static const NewAccount demo(content);
        return demo;
    }
    static const NewAccount empty(content);
    return empty;
}

} // namespace

TestAccount::TestAccount(AccountContent content) : content_(content) { CopyFiles(Original(content).path(), folder()); }

TestAccount::TestAccount(const TestAccount& original) : content_(original.content_) {
    CopyFiles(original.folder(), folder());
}

std::string TestAccount::connectionString() const { return ConnectionString(folder()); }

std::string TestAccount::LoginXml(std::string_view more) const {
    const std::string year = content_ == AccountContent::demo ? "2024" : "2023";
    std::string xml = "<login QxDbName=\"" + connectionString() + "\" cAcc_Id=\"001\" cIYear=\"" + year +
                      "\" cUserId=\"demo\" cUserName=\"王会计\" cUserPassWord=\"\" CurDate=\"" + year +
                      "-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" iStartPeriod=\"1\"";
    return xml.append(" ").append(more).append("/>");
}

void TestAccount::Run(std::string_view batches) const {
    refhost::Connection connection(Open);
    connection.Open(connectionString(), "", "", host::command_option::unspecified);
    for (const std::string& batch : refhost::SplitBatches(batches)) {
        connection.Execute(batch, host::command_option::unspecified);
    }
}

std::vector<std::string> TestAccount::Rows(std::string_view sql) const {
    refhost::Connection connection(Open);
    connection.Open(connectionString(), "", "", host::command_option::unspecified);
    const refhost::ResultSet result = connection.database().Query(sql);
    std::vector<std::string> rows(result.rowCount);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        refhost::AppendJsonRow(rows[row], result, row);
    }
    return rows;
}

std::string ReadText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> ReadLines(const std::filesystem::path& path) {
    std::istringstream text(ReadText(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> OwnLines(const std::filesystem::path& path) {
    std::vector<std::string> lines = ReadLines(path);
    std::erase_if(lines, [](const std::string& line) { return line.find("\"host\":true") != std::string::npos; });
    return lines;
}

} // namespace test
