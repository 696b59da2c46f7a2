#include "refhost/sql/store/Plan.h"

#include "refhost/sql/types/Errors.h"
#include "refhost/sql/types/ExactNumber.h"
#include "text/CodePage936.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <optional>

namespace refhost::sql {
namespace {

/// Ends in an error when a value could not be bound: SQLite would take Null in its place.
void RequireBound(int code) {
    if (code == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    if (code != SQLITE_OK) {
        FailOwn(host::error_number::unspecified, "A value is too long for the database.");
    }
}

void BindText(sqlite3_stmt* statement, int index, std::string_view text, sqlite3_destructor_type lifetime) {
    RequireBound(sqlite3_bind_text64(statement, index, text.data(), text.size(), lifetime, SQLITE_UTF8));
}

void BindCell(sqlite3_stmt* statement, int index, const Cell& cell, sqlite3_destructor_type lifetime) {
    switch (cell.kind) {
    case Cell::Kind::null:
        sqlite3_bind_null(statement, index);
        break;
    case Cell::Kind::integer:
        sqlite3_bind_int64(statement, index, cell.integer);
        break;
    case Cell::Kind::real:
        sqlite3_bind_double(statement, index, cell.real);
        break;
    case Cell::Kind::text:
        BindText(statement, index, cell.Bytes(), lifetime);
        break;
    case Cell::Kind::blob:
        RequireBound(sqlite3_bind_blob64(statement, index, cell.Bytes().data(), cell.Bytes().size(), lifetime));
        break;
    }
}

std::int64_t SmallInteger(std::string_view digits) {
    std::int64_t value = 0;
    for (const char c : digits) {
        value = value * 10 + (c - '0');
    }
    return value;
}

/// The base of a literal's own type.
Base BaseOf(const Literal& literal) {
    switch (literal.kind) {
    case LiteralKind::text:
        return literal.national ? Base::nvarchar : Base::varchar;
    case LiteralKind::integer:
        return Base::integer;
    case LiteralKind::real:
        return Base::floating;
    case LiteralKind::binary:
        return Base::varbinary;
    default:
        return Base::decimal;
    }
}

/// A number on its way into a float column, read at once.
std::optional<double> DirectReal(const Literal& literal, const Slot& slot) {
    constexpr std::size_t longest = 38;
    if (slot.steps.size() != 1 || slot.steps.front().to.base != Base::floating || literal.kind == LiteralKind::text ||
        literal.kind == LiteralKind::binary || literal.body.size() > longest) {
        return std::nullopt;
    }
    double value = 0;
    if (std::from_chars(literal.body.data(), literal.body.data() + literal.body.size(), value).ec != std::errc()) {
        return std::nullopt;
    }
    return slot.negated && value != 0 ? -value : value;
}

/// Whether a literal's body is its value: nothing in it is doubled, and a text without N has nothing that the code page
/// lacks.
bool StandsForItself(const Literal& literal) {
    return !literal.doubled && (literal.national || literal.kind != LiteralKind::text ||
                                text::FirstOutsideCodePage936(literal.body) == std::string_view::npos);
}

/// Whether a text of so many bytes fits the one step that leads to a text column of varying length as it stands.
bool FitsAsItStands(const Literal& literal, const Slot& slot) {
    if (slot.steps.size() != 1 || literal.kind != LiteralKind::text || !StandsForItself(literal)) {
        return false;
    }
    const Type& to = slot.steps.front().to;
    // What a text without N has, the code page has.
    if (literal.national && !IsNational(to.base) &&
        text::FirstOutsideCodePage936(literal.body) != std::string_view::npos) {
        return false;
    }
    return FamilyOf(to) == Family::text && !IsFixedLength(to.base) &&
           (to.length == Type::maxLength ||
            literal.body.size() <= static_cast<std::size_t>(to.length)); // a unit takes a byte at least
}

/// Binds a literal after its steps. What is bound may point to the literal's body.
void BindLiteral(sqlite3_stmt* statement, int index, const Literal& literal, const Slot& slot) {
    if ((slot.plain && StandsForItself(literal)) || FitsAsItStands(literal, slot)) {
        if (literal.kind == LiteralKind::text) {
            return BindText(statement, index, literal.body, SQLITE_STATIC);
        }
        if (literal.kind == LiteralKind::integer) {
            const std::int64_t value = SmallInteger(literal.body);
            sqlite3_bind_int64(statement, index, slot.negated ? -value : value);
            return;
        }
    }
    if (const std::optional<double> value = DirectReal(literal, slot)) {
        sqlite3_bind_double(statement, index, *value);
    } else {
        BindCell(statement, index, Evaluate(literal, slot), SQLITE_TRANSIENT);
    }
}

} // namespace

Type TypeOf(const Literal& literal) {
    switch (literal.kind) {
    case LiteralKind::text: {
        const std::size_t length = MeasuredLength(CellOf(literal, false).Bytes(), literal.national);
        const std::size_t most = literal.national ? 4000 : 8000;
        const int facet = length > most ? Type::maxLength : static_cast<int>(std::max<std::size_t>(1, length));
        return {literal.national ? Base::nvarchar : Base::varchar, facet, 0, 0};
    }
    case LiteralKind::integer:
        return {Base::integer, 0, 0, 0};
    case LiteralKind::bigNumber:
    case LiteralKind::decimal: {
        const ExactNumber number = ExactNumber::Parse(literal.body).value_or(ExactNumber());
        const int precision = std::max(1, number.WholeDigits() + number.Scale());
        if (precision > 38) {
            Fail(1007, "The number '{}' is out of the range for numeric representation (maximum precision 38).",
                 literal.body);
        }
        return {Base::decimal, 0, precision, number.Scale()};
    }
    case LiteralKind::real:
        return {Base::floating, 0, 0, 0};
    case LiteralKind::binary:
        return {Base::varbinary, std::max(1, static_cast<int>((literal.body.size() + 1) / 2)), 0, 0};
    }
    return {};
}

Cell CellOf(const Literal& literal, bool negated) {
    Cell cell;
    switch (literal.kind) {
    case LiteralKind::text:
        if (literal.doubled) {
            cell.SetText(TextOf(literal));
        } else {
            cell.PointTo(Cell::Kind::text, literal.body);
        }
        if (!literal.national && text::FirstOutsideCodePage936(cell.Bytes()) != std::string_view::npos) {
            cell.SetText(text::ThroughCodePage936(cell.Bytes()));
        }
        break;
    case LiteralKind::integer:
        cell.SetInteger(negated ? -SmallInteger(literal.body) : SmallInteger(literal.body));
        break;
    case LiteralKind::bigNumber:
    case LiteralKind::decimal: {
        const ExactNumber number = ExactNumber::Parse(literal.body).value_or(ExactNumber());
        cell.SetText((negated ? number.Negated() : number).ToText());
        break;
    }
    case LiteralKind::real: {
        double value = 0;
        const auto result = std::from_chars(literal.body.data(), literal.body.data() + literal.body.size(), value);
        if (result.ec != std::errc()) {
            Fail(168, "The floating point value '{}' is out of the range of computer representation (8 bytes).",
                 literal.body);
        }
        cell.SetReal(negated ? -value : value);
        break;
    }
    case LiteralKind::binary: {
        std::string digits(literal.body);
        if (digits.size() % 2 != 0) {
            digits.insert(0, 1, '0');
        }
        std::string bytes;
        for (std::size_t i = 0; i < digits.size(); i += 2) {
            unsigned value = 0;
            std::from_chars(digits.data() + i, digits.data() + i + 2, value, 16);
            bytes += static_cast<char>(value);
        }
        cell.SetBlob(std::move(bytes));
        break;
    }
    }
    return cell;
}

Cell Evaluate(const Literal& literal, const Slot& slot) {
    Cell cell = CellOf(literal, slot.negated);
    Type from{BaseOf(literal), Type::maxLength, 0, 0};
    for (const Step& step : slot.steps) {
        Convert(cell, from, step.to, step.style, step.surplus);
        from = step.to;
    }
    return cell;
}

void BindCell(sqlite3_stmt* statement, int index, const Cell& cell) {
    BindCell(statement, index, cell, SQLITE_TRANSIENT);
}

void PrepareStatement(Plan& plan, sqlite3* db) {
    plan.statement = Prepare(db, plan.text);
    plan.bound.clear();
}

void PrepareRows(RowPlan& rows, sqlite3* db) {
    const auto prepare = [db](Plan& plan) {
        if (!plan.text.empty()) {
            PrepareStatement(plan, db);
        }
    };
    for (RowPlan::Write& write : rows.writes) {
        prepare(write.choose);
        prepare(write.write);
        std::ranges::for_each(write.outputs, prepare);
    }
    std::ranges::for_each(rows.into, prepare);
}

void BindParameters(const Plan& plan, const std::vector<Literal>& literals, const Variables* variables) {
    // Longer ones are rarely the same again.
    constexpr std::size_t longestKept = 64;
    sqlite3_stmt* statement = plan.statement.get();
    plan.bound.resize(plan.slots.size());
    int index = 0;
    for (const Slot& slot : plan.slots) {
        BoundLiteral& bound = plan.bound[static_cast<std::size_t>(index++)];
        if (slot.variable) {
            BindCell(statement, index, (*variables)[*slot.variable].value, SQLITE_TRANSIENT);
            continue;
        }
        Literal literal = literals[slot.literal];
        if (bound.holds && bound.national == literal.national && bound.body == literal.body) {
            continue;
        }
        bound.holds = false;
        const bool keeps = literal.body.size() <= longestKept;
        if (keeps) {
            bound.national = literal.national;
            literal.body = bound.body = literal.body;
        }
        BindLiteral(statement, index, literal, slot);
        bound.holds = keeps;
    }
}

host::Value ReadValue(sqlite3_stmt* statement, int column, const Type& type) {
    // Looked up once. One thread at a time uses a connection, so that SQLite's unprotected values are as good as
    // others.
    sqlite3_value* const cell = sqlite3_column_value(statement, column);
    if (sqlite3_value_type(cell) == SQLITE_NULL) {
        return host::Null{};
    }
    const auto text = [&] {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(cell));
        return std::string(bytes, static_cast<std::size_t>(sqlite3_value_bytes(cell)));
    };
    switch (FamilyOf(type)) {
    case Family::integer:
    case Family::null: {
        const std::int64_t value = sqlite3_value_int64(cell);
        return type.base == Base::bit ? host::Value(value != 0) : host::Value(value);
    }
    case Family::real: {
        const double value = sqlite3_value_double(cell);
        return type.base == Base::real ? host::Value(static_cast<float>(value)) : host::Value(value);
    }
    case Family::exact:
        return host::Decimal{text()};
    case Family::date:
        return host::Date{ToOleDate(sqlite3_value_int64(cell))};
    case Family::binary: {
        const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(cell));
        const int size = sqlite3_value_bytes(cell);
        return host::Bytes{bytes == nullptr ? std::vector<std::uint8_t>()
                                            : std::vector<std::uint8_t>(bytes, bytes + size)};
    }
    case Family::text:
    case Family::guid:
        break;
    }
    return text();
}

} // namespace refhost::sql
