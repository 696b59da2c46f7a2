#pragma once

#include "refhost/sql/store/Runtime.h"
#include "refhost/sql/types/Convert.h"

#include <array>
#include <cstdint>
#include <new>
#include <optional>
#include <span>
#include <string_view>

#include <sqlite3.h>

namespace refhost::sql {

/// The arguments and the result of a SQLite function.
class Call {
public:
    Call(sqlite3_context* context, sqlite3_value** arguments, int count)
        : context_(context), arguments_(arguments), count_(count) {}

    Runtime& GetRuntime() const { return *static_cast<Runtime*>(sqlite3_user_data(context_)); }
    int Count() const { return count_; }
    bool IsNull(int i) const { return sqlite3_value_type(arguments_[i]) == SQLITE_NULL; }
    bool AnyNull(int count) const {
        for (int i = 0; i < count; ++i) {
            if (IsNull(i)) {
                return true;
            }
        }
        return false;
    }
    std::int64_t Integer(int i) const { return sqlite3_value_int64(arguments_[i]); }
    double Real(int i) const { return sqlite3_value_double(arguments_[i]); }
    std::string_view Text(int i) const {
        const auto* text = static_cast<const char*>(sqlite3_value_type(arguments_[i]) == SQLITE_BLOB
                                                        ? sqlite3_value_blob(arguments_[i])
                                                        : static_cast<const void*>(sqlite3_value_text(arguments_[i])));
        return text == nullptr ? std::string_view()
                               : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(arguments_[i])));
    }
    Type TypeAt(int i) const { return Unpack(Integer(i)); }

    Cell Read(int i) const {
        Cell cell;
        switch (sqlite3_value_type(arguments_[i])) {
        case SQLITE_INTEGER:
            cell.SetInteger(Integer(i));
            break;
        case SQLITE_FLOAT:
            cell.SetReal(Real(i));
            break;
        case SQLITE_TEXT:
            cell.PointTo(Cell::Kind::text, Text(i));
            break;
        case SQLITE_BLOB:
            cell.PointTo(Cell::Kind::blob, Text(i));
            break;
        default:
            break;
        }
        return cell;
    }

    void ReturnNull() { sqlite3_result_null(context_); }
    void Return(std::int64_t value) { sqlite3_result_int64(context_, value); }
    void Return(double value) { sqlite3_result_double(context_, value); }
    void Return(std::string_view text) {
        sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void ReturnBlob(std::string_view bytes) {
        sqlite3_result_blob64(context_, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
    }
    void Return(const Cell& cell) {
        switch (cell.kind) {
        case Cell::Kind::null:
            return ReturnNull();
        case Cell::Kind::integer:
            return Return(cell.integer);
        case Cell::Kind::real:
            return Return(cell.real);
        case Cell::Kind::text:
            return Return(cell.Bytes());
        case Cell::Kind::blob:
            return ReturnBlob(cell.Bytes());
        }
    }

private:
    sqlite3_context* context_;
    sqlite3_value** arguments_;
    int count_;
};

/// Runs `body` as a SQLite function: what it throws becomes the statement's error, which the connection's `Runtime`
/// keeps.
template <class Body> void Guarded(sqlite3_context* context, const Body& body) {
    try {
        try {
            body();
        } catch (const host::Error& error) {
            static_cast<Runtime*>(sqlite3_user_data(context))->SetError(error);
            sqlite3_result_error(context, error.what(), -1);
        }
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

/// `Function` as SQLite calls it.
template <void (*Function)(Call&)> void Entry(sqlite3_context* context, int count, sqlite3_value** arguments) {
    Guarded(context, [&] {
        Call call(context, arguments, count);
        Function(call);
    });
}

/// A function by the name that plans call it by, with the count of its arguments; -1 where that varies.
struct FunctionRow {
    const char* name;
    int arguments;
    void (*entry)(sqlite3_context*, int, sqlite3_value**);
};

} // namespace refhost::sql
