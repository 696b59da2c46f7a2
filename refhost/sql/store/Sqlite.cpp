#include "refhost/sql/store/Sqlite.h"

#include "refhost/sql/types/Errors.h"

namespace refhost::sql {

StatementHandle Prepare(sqlite3* db, std::string_view text) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(db, text.data(), static_cast<int>(text.size()), SQLITE_PREPARE_PERSISTENT, &statement,
                           nullptr) != SQLITE_OK) {
        FailSqlite(db);
    }
    return StatementHandle(statement);
}

void Run(sqlite3* db, const std::string& text) {
    if (sqlite3_exec(db, text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        FailSqlite(db);
    }
}

std::string LockText(std::string_view schemaName) {
    return fmt::format("UPDATE {}.\"sys:counter\" SET value = value WHERE 0", schemaName);
}

void Run(sqlite3* db, sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE) {
        const host::Error error = SqliteError(db);
        sqlite3_reset(statement);
        throw host::Error(error);
    }
    sqlite3_reset(statement);
}

void BeginWriting(sqlite3* db, sqlite3_stmt* begin, sqlite3_stmt* lock) {
    Run(db, begin);
    try {
        Run(db, lock);
    } catch (...) {
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

Command& Command::Bind(std::string_view text) {
    sqlite3_bind_text(statement_.get(), ++bound_, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    return *this;
}

Command& Command::Bind(std::int64_t value) {
    sqlite3_bind_int64(statement_.get(), ++bound_, value);
    return *this;
}

bool Command::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        FailSqlite(db_);
    }
    return code == SQLITE_ROW;
}

std::string Command::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return text == nullptr
               ? std::string()
               : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column)));
}

Cell ReadCell(sqlite3_stmt* statement, int column) {
    Cell cell;
    const int kind = sqlite3_column_type(statement, column);
    if (kind == SQLITE_INTEGER) {
        cell.SetInteger(sqlite3_column_int64(statement, column));
    } else if (kind == SQLITE_FLOAT) {
        cell.SetReal(sqlite3_column_double(statement, column));
    } else if (kind != SQLITE_NULL) {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
        cell.PointTo(kind == SQLITE_TEXT ? Cell::Kind::text : Cell::Kind::blob,
                     bytes == nullptr ? std::string_view() : std::string_view(bytes, size));
    }
    return cell;
}

std::string Quoted(std::string_view name) {
    std::string text = "\"";
    for (const char c : name) {
        text += c;
        if (c == '"') {
            text += c;
        }
    }
    text += '"';
    return text;
}

std::string Spelled(const Cell& cell) {
    switch (cell.kind) {
    case Cell::Kind::null:
        return "NULL";
    case Cell::Kind::integer:
        // The lowest number has no literal of its own in SQLite.
        return cell.integer == INT64_MIN ? "(-9223372036854775807-1)" : std::to_string(cell.integer);
    case Cell::Kind::real:
        return fmt::format("{:.17e}", cell.real);
    case Cell::Kind::text:
    case Cell::Kind::blob:
        break;
    }
    const bool hex = cell.kind == Cell::Kind::blob || cell.Bytes().find('\0') != std::string_view::npos;
    std::string text = hex ? "x'" : "'";
    for (const char c : cell.Bytes()) {
        if (hex) {
            text += fmt::format("{:02x}", static_cast<unsigned char>(c));
        } else {
            text += c;
            if (c == '\'') {
                text += c;
            }
        }
    }
    text += '\'';
    return hex && cell.kind == Cell::Kind::text ? "CAST(" + text + " AS TEXT)" : text;
}

} // namespace refhost::sql
