#include "refhost/sql/functions/AppliedRows.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace refhost::sql {
namespace {

// A packed row is its cells one after the other: SQLite's type in a byte, the size in eight where it is a text or a
// blob, and the bytes. In front of all rows stands how many cells one has.

template <class Number> void Append(std::string& packed, Number number) {
    packed.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void AppendCell(std::string& packed, sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    packed += static_cast<char>(type);
    switch (type) {
    case SQLITE_INTEGER:
        return Append(packed, sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return Append(packed, sqlite3_value_double(value));
    case SQLITE_TEXT:
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(
            type == SQLITE_TEXT ? static_cast<const void*>(sqlite3_value_text(value)) : sqlite3_value_blob(value));
        const auto size = static_cast<std::int64_t>(sqlite3_value_bytes(value));
        Append(packed, size);
        packed.append(bytes == nullptr ? "" : bytes, static_cast<std::size_t>(size));
        return;
    }
    default:
        return;
    }
}

std::string** PackedOf(sqlite3_context* context, bool create) {
    return static_cast<std::string**>(sqlite3_aggregate_context(context, create ? sizeof(void*) : 0));
}

void PackStep(sqlite3_context* context, int count, sqlite3_value** values) try {
    std::string** packed = PackedOf(context, true);
    if (packed == nullptr) {
        throw std::bad_alloc();
    }
    if (*packed == nullptr) {
        *packed = std::make_unique<std::string>(1, static_cast<char>(count)).release();
    }
    for (int i = 0; i < count; ++i) {
        AppendCell(**packed, values[i]);
    }
} catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
}

void PackFinal(sqlite3_context* context) {
    std::string** slot = PackedOf(context, false);
    const std::unique_ptr<std::string> packed(slot == nullptr ? nullptr : std::exchange(*slot, nullptr));
    if (packed) {
        sqlite3_result_blob64(context, packed->data(), packed->size(), SQLITE_TRANSIENT);
    }
}

/// Reads packed rows.
class PackedReader {
public:
    void Begin(std::string_view packed) {
        packed_ = packed;
        columns_ = packed_.empty() ? 0 : static_cast<std::size_t>(packed_.front());
        at_ = 1;
        rowId_ = 0;
        Next();
    }
    /// Goes on to the next row.
    void Next() {
        ++rowId_;
        atEnd_ = at_ >= packed_.size();
        cells_.clear();
        for (std::size_t i = 0; i < columns_ && !atEnd_; ++i) {
            cells_.push_back(at_);
            const int type = packed_[at_++];
            at_ += type == SQLITE_NULL                          ? 0
                   : type == SQLITE_TEXT || type == SQLITE_BLOB ? sizeof(std::int64_t) + Size(at_)
                                                                : sizeof(std::int64_t);
        }
    }
    bool AtEnd() const { return atEnd_; }
    std::int64_t RowId() const { return rowId_; }
    void Give(sqlite3_context* context, std::size_t column) const {
        if (column >= cells_.size()) {
            return sqlite3_result_null(context);
        }
        const std::size_t begin = cells_[column] + 1;
        switch (packed_[begin - 1]) {
        case SQLITE_INTEGER:
            return sqlite3_result_int64(context, Number<std::int64_t>(begin));
        case SQLITE_FLOAT:
            return sqlite3_result_double(context, Number<double>(begin));
        case SQLITE_TEXT:
            return sqlite3_result_text64(context, Bytes(begin), Size(begin), SQLITE_TRANSIENT, SQLITE_UTF8);
        case SQLITE_BLOB:
            return sqlite3_result_blob64(context, Bytes(begin), Size(begin), SQLITE_TRANSIENT);
        default:
            return sqlite3_result_null(context);
        }
    }

private:
    template <class Type> Type Number(std::size_t place) const {
        Type number = 0;
        std::memcpy(&number, packed_.data() + place, sizeof number);
        return number;
    }
    std::size_t Size(std::size_t place) const { return static_cast<std::size_t>(Number<std::int64_t>(place)); }
    const char* Bytes(std::size_t place) const { return packed_.data() + place + sizeof(std::int64_t); }

    std::string packed_;
    std::size_t columns_ = 0;
    std::size_t at_ = 0;
    std::int64_t rowId_ = 0;
    bool atEnd_ = true;
    /// Where the cells of the row begin.
    std::vector<std::size_t> cells_;
};

struct RowsCursor : sqlite3_vtab_cursor {
    PackedReader reader;
};

PackedReader& ReaderOf(sqlite3_vtab_cursor* cursor) { return static_cast<RowsCursor*>(cursor)->reader; }

int Connect(sqlite3* db, void* /*data*/, int /*count*/, const char* const* /*arguments*/, sqlite3_vtab** table,
            char** /*error*/) try {
    std::string declaration = "CREATE TABLE rows (";
    for (std::size_t i = 0; i < mostAppliedColumns; ++i) {
        declaration += "c" + std::to_string(i) + ", ";
    }
    const int code = sqlite3_declare_vtab(db, (declaration + "packed HIDDEN)").c_str());
    if (code == SQLITE_OK) {
        *table = std::make_unique<sqlite3_vtab>().release();
    }
    return code;
} catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
}

int Disconnect(sqlite3_vtab* table) {
    const std::unique_ptr<sqlite3_vtab> gone(table);
    return SQLITE_OK;
}

/// The rows are always asked for by what is packed.
int BestIndex(sqlite3_vtab* /*table*/, sqlite3_index_info* info) {
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        if (constraint.iColumn != static_cast<int>(mostAppliedColumns) || constraint.usable == 0 ||
            constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) {
            continue;
        }
        info->aConstraintUsage[i].argvIndex = 1;
        info->aConstraintUsage[i].omit = 1;
        info->estimatedCost = 1;
        info->estimatedRows = 10;
        return SQLITE_OK;
    }
    return SQLITE_CONSTRAINT;
}

int Open(sqlite3_vtab* /*table*/, sqlite3_vtab_cursor** cursor) try {
    *cursor = std::make_unique<RowsCursor>().release();
    return SQLITE_OK;
} catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
}

int Close(sqlite3_vtab_cursor* cursor) {
    const std::unique_ptr<RowsCursor> gone(static_cast<RowsCursor*>(cursor));
    return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* cursor, int /*number*/, const char* /*text*/, int /*count*/,
           sqlite3_value** arguments) try {
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(arguments[0]));
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(arguments[0]));
    ReaderOf(cursor).Begin(bytes == nullptr ? std::string_view() : std::string_view(bytes, size));
    return SQLITE_OK;
} catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
}

int Next(sqlite3_vtab_cursor* cursor) try {
    ReaderOf(cursor).Next();
    return SQLITE_OK;
} catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
}

int AtEnd(sqlite3_vtab_cursor* cursor) { return ReaderOf(cursor).AtEnd() ? 1 : 0; }

int Give(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column) {
    ReaderOf(cursor).Give(context, static_cast<std::size_t>(column));
    return SQLITE_OK;
}

int RowId(sqlite3_vtab_cursor* cursor, sqlite3_int64* row) {
    *row = ReaderOf(cursor).RowId();
    return SQLITE_OK;
}

sqlite3_module MakeModule() {
    sqlite3_module module = {};
    module.xConnect = Connect; // and none that creates: the table is there by itself
    module.xDisconnect = Disconnect;
    module.xBestIndex = BestIndex;
    module.xOpen = Open;
    module.xClose = Close;
    module.xFilter = Filter;
    module.xNext = Next;
    module.xEof = AtEnd;
    module.xColumn = Give;
    module.xRowid = RowId;
    return module;
}

} // namespace

void RegisterAppliedRows(sqlite3* db) {
    static const sqlite3_module module = MakeModule();
    sqlite3_create_module_v2(db, "k_rows", &module, nullptr, nullptr);
    sqlite3_create_function_v2(db, "k_pack", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                               nullptr, PackStep, PackFinal, nullptr);
}

} // namespace refhost::sql
