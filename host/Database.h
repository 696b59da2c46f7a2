#pragma once

#include "host/Value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace host {

class DOMDocument;

/// ADO's CursorTypeEnum.
enum class CursorType { forwardOnly = 0, keyset = 1, dynamic = 2, openStatic = 3 };

/// ADO's LockTypeEnum.
enum class LockType { readOnly = 1, pessimistic = 2, optimistic = 3 };

/// ADO's CursorLocationEnum.
enum class CursorLocation { server = 2, client = 3 };

/// ADO's CommandTypeEnum and ExecuteOptionEnum, as the `options` argument carries them.
namespace command_option {
inline constexpr int unspecified = -1;
inline constexpr int text = 1;
/// Command text (1) that returns no records (128).
inline constexpr int textNoRecords = 129;
} // namespace command_option

/// ADO's DataTypeEnum, the members that columns here report.
enum class FieldType {
    smallInt = 2,
    integer = 3,
    single = 4,
    doubleFloat = 5,
    currency = 6,
    date = 7,
    boolean = 11,
    unsignedTinyInt = 17,
    bigInt = 20,
    guid = 72,
    binary = 128,
    character = 129,
    wideCharacter = 130,
    numeric = 131,
    dbDate = 133,
    dbTime = 134,
    dbTimeStamp = 135,
    varChar = 200,
    longVarChar = 201,
    varWideChar = 202,
    longVarWideChar = 203,
    varBinary = 204,
    longVarBinary = 205,
};

/// What a recordset tells of one of its columns.
struct Field {
    std::string name;
    FieldType type = FieldType::varWideChar;
    /// Defined size: characters for text, bytes for binary, 0 where the type has a fixed size.
    int definedSize = 0;
    /// Total digits and digits behind the point of a `numeric` column, else 0.
    int precision = 0;
    int scale = 0;
    bool nullable = true;
};

/// An ADO connection. It commits every statement by itself until `BeginTrans`, and again after `CommitTrans` or
/// `RollbackTrans`. Releasing it closes it and rolls an open transaction back.
/// Every member throws `Error` with the provider's number and message.
class Connection {
public:
    virtual ~Connection() = default;

    /// Opens the database. Throws 3705 when the connection is open already.
    virtual void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
                      int options) = 0;
    /// Executes one statement and reads no result. Throws 3704 when the connection is closed.
    virtual void Execute(std::string_view commandText, int options = command_option::unspecified) = 0;
    virtual void BeginTrans() = 0;
    virtual void CommitTrans() = 0;
    virtual void RollbackTrans() = 0;
    /// Tells a database that can make use of it that statements follow closely on each other until `EndSeries`. What
    /// they see, write and answer stays the same. ADO knows neither; the connection is open.
    virtual void BeginSeries() {}
    /// Ends a series, and has the disk take what was committed where the database leaves that for later: before a
    /// result is handed out. Does nothing where none is under way. Throws where the database could not keep what it had
    /// answered to a statement of the series.
    virtual void EndSeries() {}
    /// The connection that this one decorates; nullptr where it decorates none.
    virtual Connection* Decorated() noexcept { return nullptr; }
};

/// An ADO recordset over one query.
/// Every member throws `Error`; 3704 where it needs an open recordset and finds a closed one.
class Recordset {
public:
    virtual ~Recordset() = default;

    /// Where the cursor lives; to be set before `Open`. The default is `server`.
    virtual void SetCursorLocation(CursorLocation location) = 0;
    virtual CursorLocation GetCursorLocation() const = 0;

    /// Opens the query. Throws 3705 when the recordset is open already, 3709 … of the provider for a closed connection.
    virtual void Open(std::string_view source, Connection& connection, CursorType cursorType, LockType lockType,
                      int options) = 0;
    /// Closes the recordset; it can be opened again. Throws 3704 when it is closed.
    virtual void Close() = 0;
    /// Whether the recordset is open (ADO's `State` 1).
    virtual bool IsOpen() const = 0;

    /// Whether the current position is behind the last row (ADO's `EOF`); true for an empty recordset.
    virtual bool AtEOF() const = 0;
    /// Whether the current position is before the first row (ADO's `BOF`); true for an empty recordset.
    virtual bool AtBOF() const = 0;
    /// Number of rows of a static cursor; -1 for a forward-only one on the server.
    virtual std::int64_t RecordCount() const = 0;
    /// Moves to the next row, or behind the last one. Throws 3021 when it is there already.
    virtual void MoveNext() = 0;

    virtual std::size_t FieldCount() const = 0;
    /// The column at `index`, counted from 0. Throws 3265 when there is none.
    virtual const Field& FieldAt(std::size_t index) const = 0;
    /// Position of the column `name`, letter case ignored. Throws 3265 when there is none.
    virtual std::size_t FieldIndex(std::string_view name) const = 0;
    /// The current row's value in column `index`. Throws 3265 without such a column, 3021 without a current row.
    virtual Value FieldValue(std::size_t index) const = 0;
    /// The current row's value in column `name`, letter case ignored. Throws as the member above.
    virtual Value FieldValue(std::string_view name) const { return FieldValue(FieldIndex(name)); }

    /// Saves every row into `document` in ADO's XML persistence layout: a schema (`s:Schema`) and the rows as
    /// `z:row` elements under `rs:data`, one attribute for each column that is not Null.
    virtual void Save(DOMDocument& document) const = 0;
};

} // namespace host
