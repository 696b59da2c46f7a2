#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace importing::sqlite {

/// An error of SQLite, in its own words.
class Error : public std::runtime_error {
public:
    Error(int code, const std::string& words) : std::runtime_error(words), code_(code) {}
    /// The primary result code.
    int code() const noexcept { return code_ & 0xff; }

private:
    int code_;
};

/// An open database file. Every member throws `Error`.
class Database {
public:
    /// Opens `path` (UTF-8), and creates it unless it is there.
    explicit Database(const std::string& path);

    void Run(const char* sql);
    sqlite3* get() const noexcept { return handle_.get(); }

private:
    struct Close {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

/// One statement, to be bound, stepped and read. Every member throws `Error`.
class Statement {
public:
    Statement(const Database& database, std::string_view sql);

    Statement& Bind(std::string_view text);
    Statement& Bind(std::int64_t number);
    Statement& Bind(double number);
    Statement& BindNull();
    /// Whether there is a (further) row.
    bool Step();
    /// Runs it to its end, and makes it ready to be bound again.
    void Run();

    std::int64_t Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
    double Real(int column) const { return sqlite3_column_double(statement_.get(), column); }
    bool IsNull(int column) const { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }
    std::string Text(int column) const;

private:
    void Check(int code) const;

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    sqlite3* database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
    int bound_ = 0;
};

/// A transaction, rolled back unless it is committed.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(database) { database_.Run("BEGIN IMMEDIATE"); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    Database& database_;
    bool open_ = true;
};

} // namespace importing::sqlite
