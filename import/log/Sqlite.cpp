#include "import/log/Sqlite.h"

namespace importing::sqlite {
namespace {

[[noreturn]] void Fail(sqlite3* database) { throw Error(sqlite3_errcode(database), sqlite3_errmsg(database)); }

} // namespace

Database::Database(const std::string& path) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    handle_.reset(handle);
    if (code != SQLITE_OK) {
        throw Error(code, path + ": " + sqlite3_errstr(code));
    }
}

void Database::Run(const char* sql) {
    if (sqlite3_exec(get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail(get());
    }
}

Statement::Statement(const Database& database, std::string_view sql) : database_(database.get()) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(database_, sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
    statement_.reset(statement);
}

Statement& Statement::Bind(std::string_view text) {
    Check(sqlite3_bind_text(statement_.get(), ++bound_, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::Bind(std::int64_t number) {
    Check(sqlite3_bind_int64(statement_.get(), ++bound_, number));
    return *this;
}

Statement& Statement::Bind(double number) {
    Check(sqlite3_bind_double(statement_.get(), ++bound_, number));
    return *this;
}

Statement& Statement::BindNull() {
    Check(sqlite3_bind_null(statement_.get(), ++bound_));
    return *this;
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Fail(database_);
    }
    return code == SQLITE_ROW;
}

void Statement::Run() {
    while (Step()) {
    }
    Check(sqlite3_reset(statement_.get()));
    bound_ = 0;
}

std::string Statement::Text(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    const int bytes = sqlite3_column_bytes(statement_.get(), column);
    return text == nullptr ? std::string() : std::string(text, static_cast<std::size_t>(bytes));
}

void Statement::Check(int code) const {
    if (code != SQLITE_OK) {
        Fail(database_);
    }
}

Transaction::~Transaction() {
    if (open_) {
        sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void Transaction::Commit() {
    database_.Run("COMMIT");
    open_ = false;
}

} // namespace importing::sqlite
