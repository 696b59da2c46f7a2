#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace refhost::sql {
namespace {

constexpr Type floatType{Base::floating, 0, 0, 0};
constexpr Type dateType{Base::datetime, 0, 0, 0};
constexpr Type finestDate{Base::datetime2, 0, 0, 0};

/// A text function whose result has its first argument's type: T-SQL name, SQLite name, number of arguments.
struct TextRow {
    std::string_view name;
    std::string_view function;
    std::size_t texts;
    std::size_t numbers;
};

constexpr std::array textFunctions{
    TextRow{"left", "k_left", 1, 1},           TextRow{"right", "k_right", 1, 1},
    TextRow{"substring", "k_substring", 1, 2}, TextRow{"upper", "k_upper", 1, 0},
    TextRow{"lower", "k_lower", 1, 0},         TextRow{"ltrim", "ltrim", 1, 0},
    TextRow{"rtrim", "rtrim", 1, 0},           TextRow{"reverse", "k_reverse", 1, 0},
    TextRow{"replace", "k_replace", 3, 0},     TextRow{"replicate", "k_replicate", 1, 1},
};

Bound Expressed(std::string text, const Type& type) {
    Bound bound;
    bound.text = std::move(text);
    bound.type = type;
    return bound;
}

/// A value converted to text keeps its text type when it has one.
Type TextTypeOf(const Bound& value) {
    return FamilyOf(value.type) == Family::text ? value.type : Type{Base::varchar, 8000, 0, 0};
}

/// The type of a power, by that of its base.
Type PowerType(const Type& base) {
    switch (base.base) {
    case Base::tinyint:
    case Base::smallint:
    case Base::integer:
        return integerType;
    case Base::bigint:
        return base;
    case Base::decimal:
        return {Base::decimal, 0, 38, base.scale};
    case Base::money:
    case Base::smallmoney:
        return {Base::money, 0, 0, 4};
    default:
        return floatType;
    }
}

} // namespace

void Binder::RequireArguments(const Expression& expression, std::size_t least, std::size_t most) const {
    const std::size_t count = expression.arguments.size();
    if (count >= least && count <= most) {
        return;
    }
    const std::string name = FoldText(expression.name.Last());
    if (least == most) {
        Fail(174, "The {} function requires {} argument(s).", name, least);
    }
    Fail(189, "The {} function requires {} to {} arguments.", name, least, most);
}

std::string Binder::ConstantText(const Expression& expression) {
    if (expression.node != Node::literal || LiteralAt(expression.literal).kind != LiteralKind::text) {
        FailOwn(host::error_number::unspecified, "This database takes a constant text only as argument here.");
    }
    Pin(expression.literal);
    return TextOf(LiteralAt(expression.literal));
}

DatePart Binder::TakeDatePart(const Expression& expression, const std::string& function) const {
    const std::string word = expression.node == Node::column ? expression.name.Text() : std::string();
    const std::optional<DatePart> part = DatePartNamed(word);
    if (!part) {
        Fail(155, "'{}' is not a recognized {} option.", word, function);
    }
    return *part;
}

Bound Binder::BindFunction(const Expression& expression) {
    const std::string name = FoldText(expression.name.Last());
    if (const std::optional<Bound> bound = BindWindowFunction(name, expression)) {
        return *bound;
    }
    static constexpr std::array aggregates{"count",      "count_big", "sum",    "avg", "min", "max",
                                           "string_agg", "stdev",     "stdevp", "var", "varp"};
    if (std::find(aggregates.begin(), aggregates.end(), name) != aggregates.end()) {
        return BindAggregate(name, expression);
    }
    if (expression.window) {
        Fail(4113, "The function '{}' is not a valid windowing function, and cannot be used with the OVER clause.",
             expression.name.Last());
    }
    if (name == "isnull") {
        return BindIsNull(expression);
    }
    if (name == "coalesce") {
        return BindCoalesce(expression);
    }
    if (name == "nullif") {
        return BindNullIf(expression);
    }
    if (name == "object_id") {
        return BindObjectId(expression);
    }
    if (name == "objectproperty") {
        return BindObjectProperty(expression);
    }
    if (expression.flag) {
        Fail(156, "Incorrect syntax near the keyword 'distinct'.");
    }
    Bound bound = BindTextFunction(name, expression);
    if (bound.text.empty()) {
        bound = BindDateFunction(name, expression);
    }
    if (bound.text.empty()) {
        bound = BindNumberFunction(name, expression);
    }
    if (bound.text.empty()) {
        Fail(195, "'{}' is not a recognized built-in function name.", expression.name.Last());
    }
    return bound;
}

Bound Binder::BindAggregate(const std::string& name, const Expression& expression) {
    const std::size_t count = name == "string_agg" ? 2 : 1;
    RequireArguments(expression, count, count);
    if (scope_ == nullptr || (scope_->inAggregate && !expression.window)) {
        Fail(130, "Cannot perform an aggregate function on an expression containing an aggregate or a subquery.");
    }
    const Type countType{name == "count_big" ? Base::bigint : Base::integer, 0, 0, 0};
    if (expression.window && expression.flag) {
        FailOwn(host::error_number::syntaxError, "Use of DISTINCT is not allowed with the OVER clause.");
    }
    // Over a window it gives a value for each row.
    const std::string over = expression.window ? BindWindow(*expression.window) : std::string();
    scope_->aggregated = scope_->aggregated || over.empty();
    if (expression.arguments[0]->node == Node::star) {
        if (name != "count" && name != "count_big") {
            Fail(102, "Incorrect syntax near '*'.");
        }
        Bound rows = Expressed("count(*)" + over, countType);
        rows.nullable = false;
        return rows;
    }
    Scope* scope = scope_;
    scope->inAggregate = over.empty();
    const bool windows = std::exchange(scope->windows, false);
    Bound value = BindValue(*expression.arguments[0]);
    scope->inAggregate = false;
    scope->windows = windows;
    if (name == "string_agg") {
        return BindTextAggregate(expression, As(std::move(value), endlessText), over);
    }
    if (name == "stdev" || name == "stdevp" || name == "var" || name == "varp") {
        if (expression.window || expression.flag) {
            FailOwn(host::error_number::unspecified,
                    "The embedded database has no {} over a window or of DISTINCT values.", name);
        }
        return Expressed(fmt::format("k_{}({})", name, As(std::move(value), floatType)), floatType);
    }
    Own(value);
    const std::string argument = (expression.flag ? "DISTINCT " : "") + Collated(value);
    if (name == "count" || name == "count_big") {
        return Expressed("count(" + argument + ")" + over, countType);
    }
    const Family family = FamilyOf(value.type);
    if (name == "min" || name == "max") {
        if (value.type.base == Base::bit) {
            Fail(8117, "Operand data type bit is invalid for {} operator.", name);
        }
        return Expressed(name + "(" + argument + ")" + over, value.type);
    }
    if (value.type.base == Base::bit ||
        (family != Family::integer && family != Family::exact && family != Family::real)) {
        Fail(8117, "Operand data type {} is invalid for {} operator.", NameOf(value.type.base), name);
    }
    if (family == Family::real) {
        return Expressed(name + "(" + argument + ")" + over, floatType);
    }
    // Whole numbers are summed exactly too; small ones give int.
    Type result = value.type.base == Base::bigint ? value.type : integerType;
    if (family == Family::exact) {
        result = value.type.base == Base::decimal
                     ? Type{Base::decimal, 0, 38, name == "avg" ? std::max(value.type.scale, 6) : value.type.scale}
                     : Type{Base::money, 0, 0, 4};
    }
    const bool money = name == "avg" && result.base == Base::money;
    return Expressed(fmt::format("k_convert(k_{}{}({}){}, {}, {}, 0)", name, money ? "_money" : "", argument, over,
                                 Pack({Base::decimal, 0, 38, 6}), Pack(result)),
                     result);
}

Bound Binder::BindTextAggregate(const Expression& expression, std::string text, const std::string& over) {
    const std::string separator = As(BindValue(*expression.arguments[1]), endlessText);
    if (expression.within.empty()) {
        return Expressed(fmt::format("group_concat({}, {}){}", text, separator, over), endlessText);
    }
    if (expression.window) {
        FailOwn(
            host::error_number::syntaxError,
            "The function 'string_agg' is not a valid windowing function, and cannot be used with the OVER clause.");
    }
    std::string call = fmt::format("k_string_agg({}, {}", text, separator);
    Scope* scope = scope_;
    scope->inAggregate = true;
    for (const OrderItem& item : expression.within) {
        Bound key = BindValue(*item.value);
        Own(key);
        const Family family = FamilyOf(key.type);
        const bool exact = family == Family::exact;
        const bool words = family == Family::text || family == Family::guid;
        call += fmt::format(", {}, {}", key.text, (item.descending ? -1 : 1) * (exact ? 3 : words ? 2 : 1));
    }
    scope->inAggregate = false;
    return Expressed(call + ")", endlessText);
}

Bound Binder::BindTextFunction(const std::string& name, const Expression& expression) {
    const auto& arguments = expression.arguments;
    const auto text = [&](std::size_t i) { return As(BindValue(*arguments[i]), endlessText); };
    const auto number = [&](std::size_t i) { return As(BindValue(*arguments[i]), integerType); };
    for (const TextRow& row : textFunctions) {
        if (row.name != name) {
            continue;
        }
        RequireArguments(expression, row.texts + row.numbers, row.texts + row.numbers);
        Bound first = BindValue(*arguments[0]);
        const Type type = TextTypeOf(first);
        if (first.kind == Bound::Kind::literal) {
            Pin(first.slot.literal); // its length gives the result's
        }
        std::string call = fmt::format("{}({}", row.function, As(std::move(first), endlessText));
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            call += ", " + (i < row.texts ? text(i) : number(i));
        }
        if (row.function == "ltrim" || row.function == "rtrim") {
            call += ", ' '";
        }
        Bound bound = Expressed(call + ")", type);
        bound.type.base = IsNational(type.base) ? Base::nvarchar : Base::varchar;
        if (name == "left" || name == "right" || name == "substring") {
            // A constant length limits the result's.
            const Expression& length = *arguments.back();
            if (length.node == Node::literal && LiteralAt(length.literal).kind == LiteralKind::integer) {
                Pin(length.literal);
                const auto most = std::max<std::int64_t>(1, CellOf(LiteralAt(length.literal), false).integer);
                if (bound.type.length == Type::maxLength || most < bound.type.length) {
                    bound.type.length = static_cast<int>(std::min<std::int64_t>(most, 8000));
                }
            }
        } else if (name == "replace" || name == "replicate") {
            bound.type.length = IsNational(bound.type.base) ? 4000 : 8000;
        }
        return bound;
    }
    if (name == "trim") {
        RequireArguments(expression, 1, 1);
        Bound value = BindValue(*arguments[0]);
        const Type type = TextTypeOf(value);
        return Expressed("trim(" + As(std::move(value), endlessText) + ", ' ')", type);
    }
    if (name == "concat") {
        RequireArguments(expression, 2, 254);
        std::string joined = "(";
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            joined += (i > 0 ? " || " : "") + ("ifnull(" + text(i) + ", '')");
        }
        return Expressed(joined + ")", {Base::nvarchar, 4000, 0, 0});
    }
    if (name == "isnumeric" || name == "isdate") {
        RequireArguments(expression, 1, 1);
        const Type target = name == "isnumeric" ? floatType : dateType;
        const std::string tried = BindTryConvert(BindValue(*arguments[0]), target, 0).text;
        if (name == "isdate") {
            return Expressed("(" + tried + " IS NOT NULL)", integerType);
        }
        const std::string money = BindTryConvert(BindValue(*arguments[0]), {Base::money, 0, 0, 4}, 0).text;
        return Expressed("(" + tried + " IS NOT NULL OR " + money + " IS NOT NULL)", integerType);
    }
    if (name == "newid") {
        RequireArguments(expression, 0, 0);
        return Expressed("k_newid()", {Base::uniqueidentifier, 0, 0, 0});
    }
    if (name == "len") {
        RequireArguments(expression, 1, 1);
        return Expressed("k_len(" + text(0) + ")", integerType);
    }
    if (name == "datalength") {
        RequireArguments(expression, 1, 1);
        Bound value = BindValue(*arguments[0]);
        Own(value);
        return Expressed(fmt::format("k_datalength({}, {})", value.text, Pack(value.type)), integerType);
    }
    if (name == "str") {
        RequireArguments(expression, 1, 3);
        const std::string value = As(BindValue(*arguments[0]), floatType);
        return Expressed(fmt::format("k_str({}, {}, {})", value, arguments.size() > 1 ? number(1) : "10",
                                     arguments.size() > 2 ? number(2) : "0"),
                         {Base::varchar, 8000, 0, 0});
    }
    if (name == "patindex") {
        RequireArguments(expression, 2, 2);
        const std::string pattern = text(0);
        return Expressed(fmt::format("k_patindex({}, {})", pattern, text(1)), integerType);
    }
    if (name == "charindex") {
        RequireArguments(expression, 2, 3);
        const std::string first = text(0) + ", " + text(1);
        return Expressed("k_charindex(" + first + (arguments.size() > 2 ? ", " + number(2) : "") + ")", integerType);
    }
    if (name == "stuff") {
        RequireArguments(expression, 4, 4);
        const std::string head = text(0) + ", " + number(1) + ", " + number(2);
        return Expressed("k_stuff(" + head + ", " + text(3) + ")", {Base::nvarchar, 4000, 0, 0});
    }
    if (name == "space") {
        RequireArguments(expression, 1, 1);
        return Expressed("k_replicate(' ', " + number(0) + ")", {Base::varchar, 8000, 0, 0});
    }
    if (name == "ascii" || name == "unicode") {
        RequireArguments(expression, 1, 1);
        return Expressed("k_unicode(" + text(0) + ")", integerType);
    }
    if (name == "char" || name == "nchar") {
        RequireArguments(expression, 1, 1);
        return Expressed("k_char(" + number(0) + ")", {name == "char" ? Base::character : Base::nchar, 1, 0, 0});
    }
    if (name == "error_message") {
        RequireArguments(expression, 0, 0);
        return Expressed("k_errormessage()", {Base::nvarchar, 4000, 0, 0});
    }
    if (name == "error_number") {
        RequireArguments(expression, 0, 0);
        return Expressed("k_errornumber()", integerType);
    }
    if (name == "db_id") {
        RequireArguments(expression, 0, 1);
        const std::optional<Schema> schema = expression.arguments.empty()
                                                 ? std::optional(catalog_.Current())
                                                 : catalog_.SchemaNamed(ConstantText(*expression.arguments[0]));
        // The temporary database is 2 on every server; those of users begin with 5.
        return Expressed(!schema                        ? "(SELECT NULL)"
                         : *schema == Schema::temporary ? "2"
                         : *schema == Schema::account   ? "5"
                                                        : "6",
                         integerType);
    }
    if (name == "db_name") {
        RequireArguments(expression, 0, 0);
        Cell cell;
        cell.SetText(catalog_.DatabaseOf(catalog_.Current()));
        return Expressed(Spelled(cell), {Base::nvarchar, 128, 0, 0});
    }
    return {};
}

Bound Binder::BindDateFunction(const std::string& name, const Expression& expression) {
    const auto& arguments = expression.arguments;
    const auto date = [&](const Expression& argument) {
        Bound value = BindValue(argument);
        const Family family = FamilyOf(value.type);
        // A text has the finest type, a number counts the days of datetime.
        return family == Family::date ? Own(value)
                                      : As(std::move(value), family == Family::text ? finestDate : dateType);
    };
    if (name == "getdate" || name == "current_timestamp" || name == "sysdatetime") {
        RequireArguments(expression, 0, 0);
        Bound now = Expressed(
            fmt::format("k_convert({}, {}, {}, 0)", nowTicks, Pack({Base::datetime2, 0, 0, 0}), Pack(dateType)),
            dateType);
        now.nullable = false;
        return now;
    }
    const auto part = [&](DatePart which, std::size_t argument) {
        return Expressed(fmt::format("k_datepart({}, {})", static_cast<int>(which), date(*arguments[argument])),
                         integerType);
    };
    if (name == "year" || name == "month" || name == "day") {
        RequireArguments(expression, 1, 1);
        return part(name == "year" ? DatePart::year : name == "month" ? DatePart::month : DatePart::day, 0);
    }
    if (name == "datepart" || name == "datename") {
        RequireArguments(expression, 2, 2);
        const DatePart which = TakeDatePart(*arguments[0], name);
        if (name == "datepart") {
            return part(which, 1);
        }
        return Expressed(fmt::format("k_datename({}, {})", static_cast<int>(which), date(*arguments[1])),
                         {Base::nvarchar, 30, 0, 0});
    }
    if (name == "datefromparts") {
        RequireArguments(expression, 3, 3);
        std::string call = "k_datefromparts(";
        for (const ExpressionPtr& argument : arguments) {
            call += (&argument == &arguments.front() ? "" : ", ") + As(BindValue(*argument), integerType);
        }
        return Expressed(call + ")", {Base::date, 0, 0, 0});
    }
    if (name == "eomonth") {
        RequireArguments(expression, 1, 2);
        const std::string months = arguments.size() > 1 ? As(BindValue(*arguments[1]), integerType) : "0";
        return Expressed(fmt::format("k_eomonth({}, {})", date(*arguments[0]), months), {Base::date, 0, 0, 0});
    }
    if (name == "datediff") {
        RequireArguments(expression, 3, 3);
        const int which = static_cast<int>(TakeDatePart(*arguments[0], name));
        const std::string from = date(*arguments[1]);
        return Expressed(fmt::format("k_datediff({}, {}, {})", which, from, date(*arguments[2])), integerType);
    }
    if (name == "dateadd") {
        RequireArguments(expression, 3, 3);
        const int which = static_cast<int>(TakeDatePart(*arguments[0], name));
        const std::string count = As(BindValue(*arguments[1]), integerType);
        Bound value = BindValue(*arguments[2]);
        const Type type = FamilyOf(value.type) == Family::date ? value.type : dateType;
        return Expressed(fmt::format("k_dateadd({}, {}, {}, {})", which, count, As(std::move(value), type), Pack(type)),
                         type);
    }
    return {};
}

Bound Binder::BindNumberFunction(const std::string& name, const Expression& expression) {
    const auto& arguments = expression.arguments;
    static constexpr std::array unary{"abs", "floor", "ceiling", "sign", "sqrt"};
    const bool isUnary = std::find(unary.begin(), unary.end(), name) != unary.end();
    if (isUnary || name == "round") {
        RequireArguments(expression, isUnary ? 1 : 2, isUnary ? 1 : 3);
        Bound value = BindValue(*arguments[0]);
        Own(value);
        const Family family = FamilyOf(value.type);
        if (family != Family::integer && family != Family::exact && family != Family::real) {
            value = Converted(std::move(value), floatType, 0, Surplus::cut);
        }
        const std::int64_t type = Pack(value.type);
        if (name == "abs") {
            return Expressed(fmt::format("k_abs({}, {})", value.text, type), value.type);
        }
        if (name == "floor" || name == "ceiling") {
            if (FamilyOf(value.type) != Family::exact) {
                return Expressed(FamilyOf(value.type) == Family::integer
                                     ? value.text
                                     : fmt::format("{}({})", name == "floor" ? "floor" : "ceil", value.text),
                                 value.type);
            }
            Type result = value.type;
            if (result.base == Base::decimal) {
                result.scale = 0;
            }
            return Expressed(fmt::format("k_{}({}, {})", name, value.text, type), result);
        }
        if (name == "round") {
            const std::string digits = As(BindValue(*arguments[1]), integerType);
            const std::string cut = arguments.size() > 2 ? As(BindValue(*arguments[2]), integerType) : "0";
            return Expressed(fmt::format("k_round({}, {}, {}, {})", value.text, digits, cut, type), value.type);
        }
        if (name == "sign") {
            return Expressed(fmt::format("k_sign({}, {})", value.text, type), value.type);
        }
        return Expressed("k_sqrt(" + As(std::move(value), floatType) + ")", floatType);
    }
    static constexpr std::array real{"exp", "log", "log10", "sin", "cos", "tan", "radians", "degrees"};
    if (std::find(real.begin(), real.end(), name) != real.end()) {
        RequireArguments(expression, 1, 1);
        // SQLite's log is that of base 10.
        return Expressed((name == "log" ? "ln" : name) + "(" + As(BindValue(*arguments[0]), floatType) + ")",
                         floatType);
    }
    if (name == "pi") {
        RequireArguments(expression, 0, 0);
        return Expressed("pi()", floatType);
    }
    if (name == "square") {
        RequireArguments(expression, 1, 1);
        return Expressed("power(" + As(BindValue(*arguments[0]), floatType) + ", 2)", floatType);
    }
    if (name == "power") {
        RequireArguments(expression, 2, 2);
        Bound value = BindValue(*arguments[0]);
        if (value.kind == Bound::Kind::literal) {
            Pin(value.slot.literal); // its type gives the result's
        }
        const Type type = PowerType(value.type);
        const std::string base = As(std::move(value), floatType);
        return Expressed(fmt::format("k_power({}, {}, {})", base, As(BindValue(*arguments[1]), floatType), Pack(type)),
                         type);
    }
    if (name == "scope_identity") {
        RequireArguments(expression, 0, 0);
        return Expressed("k_identity()", {Base::decimal, 0, 38, 0});
    }
    return {};
}

/// `isnull(column, constant)` becomes `ifnull(column, constant)` with the constant spelled out: then it is the same
/// expression as that of the index which CREATE INDEX makes for it (see Ddl.cpp), and SQLite looks it up there.
Bound Binder::BindIsNull(const Expression& expression) {
    RequireArguments(expression, 2, 2);
    Bound check = BindValue(*expression.arguments[0]);
    if (check.kind == Bound::Kind::literal) {
        BindValue(*expression.arguments[1]);
        return check; // a constant is never Null, and stays free to vary
    }
    Bound replacement = BindValue(*expression.arguments[1]);
    if (check.kind == Bound::Kind::null) {
        // A Null that was given a type, as by cast, keeps it.
        if (check.type.base != Base::null) {
            return Converted(std::move(replacement), check.type, 0, Surplus::cut);
        }
        Own(replacement);
        return replacement;
    }
    std::string other;
    if (replacement.kind == Bound::Kind::literal) {
        Pin(replacement.slot.literal);
        const Slot slot = Converted(replacement, check.type, 0, Surplus::cut).slot;
        other = Spelled(Evaluate(LiteralAt(slot.literal), slot));
    } else {
        other = As(replacement, check.type);
    }
    Bound bound = Expressed(fmt::format("ifnull({}, {})", check.text, other), check.type);
    bound.nullable = check.nullable && replacement.nullable;
    return bound;
}

Bound Binder::BindCoalesce(const Expression& expression) {
    RequireArguments(expression, 2, 100);
    std::vector<Bound> values;
    Type type;
    for (const ExpressionPtr& argument : expression.arguments) {
        values.push_back(BindValue(*argument));
        if (values.back().kind == Bound::Kind::literal) {
            Pin(values.back().slot.literal);
        }
        type = CommonType(type, values.back().type);
    }
    std::string text = "coalesce(";
    for (Bound& value : values) {
        text += (&value == &values.front() ? "" : ", ") + As(std::move(value), type);
    }
    return Expressed(text + ")", type);
}

Bound Binder::BindNullIf(const Expression& expression) {
    RequireArguments(expression, 2, 2);
    Bound first = BindValue(*expression.arguments[0]);
    Bound left = BindValue(*expression.arguments[0]);
    Bound right = BindValue(*expression.arguments[1]);
    Own(first);
    Unify({&left, &right});
    return Expressed(fmt::format("CASE WHEN {} = {} THEN NULL ELSE {} END", Collated(left), right.text, first.text),
                     first.type);
}

/// The object's id is looked up when the statement runs, in the catalog of the database that its name points to.
Bound Binder::BindObjectId(const Expression& expression) {
    RequireArguments(expression, 1, 2);
    const std::string written = ConstantText(*expression.arguments[0]);
    std::string kind;
    if (expression.arguments.size() > 1) {
        kind = ConstantText(*expression.arguments[1]);
    }
    Name name;
    try {
        Lexer lexer(written);
        bool expectPart = true;
        for (Token token = lexer.Next(); token.kind != TokenKind::end; token = lexer.Next()) {
            if (token.IsSymbol(".")) {
                if (expectPart) {
                    name.parts.emplace_back();
                }
                expectPart = true;
            } else {
                name.parts.push_back(token.text);
                expectPart = false;
            }
        }
    } catch (const host::Error&) {
        name.parts.clear(); // a name that cannot be read names nothing
    }
    if (name.parts.empty()) {
        return Expressed("(SELECT NULL)", integerType);
    }
    ObjectPath path;
    try {
        path = catalog_.Resolve(name);
    } catch (const host::Error&) {
        return Expressed("(SELECT NULL)", integerType);
    }
    Cell nameCell;
    nameCell.SetText(path.name);
    Cell kindCell;
    kindCell.SetText(kind);
    return Expressed(fmt::format("(SELECT id FROM {}.\"sys:objects\" WHERE name = {}{})", SqliteName(path.schema),
                                 Spelled(nameCell), kind.empty() ? "" : " AND xtype = " + Spelled(kindCell)),
                     integerType);
}

Bound Binder::BindObjectProperty(const Expression& expression) {
    RequireArguments(expression, 2, 2);
    const std::string property = FoldText(ConstantText(*expression.arguments[1]));
    const std::string id = As(BindValue(*expression.arguments[0]), integerType);
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kinds{{
        {"isview", "V "},
        {"isusertable", "U "},
        {"istable", "U "},
        {"isprimarykey", "PK"},
        {"isuniquecnst", "UQ"},
        {"ischeckcnst", "C "},
    }};
    for (const auto& [name, xtype] : kinds) {
        if (name == property) {
            return Expressed(fmt::format("(SELECT xtype = '{}' FROM main.\"sys:objects\" WHERE id = {})", xtype, id),
                             integerType);
        }
    }
    return Expressed("(SELECT NULL)", integerType);
}

} // namespace refhost::sql
