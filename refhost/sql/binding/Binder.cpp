#include "refhost/sql/binding/Binder.h"

#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/syntax/Words.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>

namespace refhost::sql {
namespace {

/// Whether values of `from` are values of `to` as they stand.
bool Contains(const Type& to, const Type& from) {
    if (FamilyOf(to) != FamilyOf(from)) {
        return false;
    }
    switch (FamilyOf(to)) {
    case Family::integer:
        return to.base >= from.base;
    case Family::text:
    case Family::binary: {
        if (IsFixedLength(to.base) || to.base == Base::timestamp) {
            return to == from;
        }
        const bool lengthFits =
            to.length == Type::maxLength || (from.length != Type::maxLength && from.length <= to.length);
        // A national text may take twice its length in the code page, or lose what that lacks.
        return lengthFits && (IsNational(to.base) || !IsNational(from.base));
    }
    case Family::exact:
        return to == from || (to.base == Base::decimal && from.base == Base::decimal && to.scale == from.scale &&
                              to.precision >= from.precision);
    case Family::real:
        return to.base >= from.base;
    case Family::date:
        return FractionDigits(to) >= FractionDigits(from) &&
               (to.base == from.base || to.base == Base::datetime2 ||
                (to.base == Base::datetime && from.base == Base::smalldatetime));
    default:
        return true;
    }
}

/// The terms joined by AND or OR. Long chains become a tree, because SQLite bounds the depth of expressions.
std::string JoinTerms(const std::vector<std::string>& terms, std::size_t first, std::size_t last,
                      std::string_view connective) {
    constexpr std::size_t longest = 64;
    if (last - first > longest) {
        const std::size_t middle = first + (last - first) / 2;
        return fmt::format("({}{}{})", JoinTerms(terms, first, middle, connective), connective,
                           JoinTerms(terms, middle, last, connective));
    }
    std::string text = "(";
    for (std::size_t i = first; i < last; ++i) {
        text += i > first ? connective : std::string_view();
        text += terms[i];
    }
    return text + ")";
}

/// SQLite has no definition that depends on when it is asked.
void RefuseMoment(std::string_view text) {
    if (text.find(nowTicks) != std::string_view::npos) {
        FailOwn(host::error_number::unspecified,
                "The embedded account database takes no moment in computed columns and checks.");
    }
}

} // namespace

std::string Binder::Parameter(const Slot& slot) {
    if (inlining_) {
        Pin(slot.literal);
    }
    if (use_ == LiteralUse::inlined || inlining_) {
        return Spelled(Evaluate(LiteralAt(slot.literal), slot));
    }
    slots_.push_back(slot);
    return fmt::format("?{}", slots_.size());
}

std::string Binder::Own(Bound& value) {
    if (value.kind == Bound::Kind::literal) {
        if (value.slot.steps.empty()) {
            Pin(value.slot.literal);
        }
        value.text = Parameter(value.slot);
        value.kind = Bound::Kind::expression;
        value.nullable = false;
    }
    return value.text;
}

int Binder::StyleFor(int style, const Type& from, const Type& to) const {
    const bool reads = FamilyOf(from) == Family::text && FamilyOf(to) == Family::date;
    return style == 0 && reads ? session_.dateStyle : style;
}

Bound Binder::Converted(Bound value, const Type& type, int style, Surplus surplus) {
    if (value.kind == Bound::Kind::null) {
        value.type = type;
        return value;
    }
    style = StyleFor(style, value.type, type);
    if (value.kind == Bound::Kind::literal) {
        const Literal& literal = LiteralAt(value.slot.literal);
        const bool same = literal.kind == LiteralKind::integer && value.slot.steps.empty() &&
                          (type.base == Base::integer || type.base == Base::bigint);
        if (same) {
            value.slot.plain = true;
        } else {
            value.slot.plain = false;
            value.slot.steps.push_back({type, style, surplus});
        }
        value.type = type;
        return value;
    }
    if (!Contains(type, value.type)) {
        // A date leaves nothing over, and only the other has a style.
        value.text = surplus == Surplus::refuse && style == 0
                         ? fmt::format("k_store({}, {}, {})", value.text, Pack(value.type), Pack(type))
                         : fmt::format("k_convert({}, {}, {}, {})", value.text, Pack(value.type), Pack(type), style);
        value.kind = Bound::Kind::expression;
        value.column = nullptr;
    }
    value.type = type;
    return value;
}

std::string Binder::As(Bound value, const Type& type, int style, Surplus surplus) {
    Bound converted = Converted(std::move(value), type, style, surplus);
    return converted.kind == Bound::Kind::literal ? Parameter(converted.slot) : converted.text;
}

std::string Binder::Collated(const Bound& value) {
    if (value.kind == Bound::Kind::column) {
        return value.text;
    }
    const Family family = FamilyOf(value.type);
    if (family == Family::text || family == Family::guid) {
        return fmt::format("{} COLLATE {}", value.text, textCollation);
    }
    return family == Family::exact ? fmt::format("{} COLLATE {}", value.text, exactCollation) : value.text;
}

Family Binder::Unify(const std::vector<Bound*>& values) {
    Type highest;
    const Type* exactOperand = nullptr;
    for (const Bound* value : values) {
        if (value->type.base > highest.base) {
            highest = value->type;
        }
        if (FamilyOf(value->type) == Family::exact && value->kind != Bound::Kind::literal) {
            exactOperand = &value->type;
        }
    }
    const Family family = highest.base == Base::null ? Family::integer : FamilyOf(highest);
    const Type exact = exactOperand != nullptr ? *exactOperand : Type{Base::decimal, 0, 38, 10};
    for (Bound* value : values) {
        if (value->kind == Bound::Kind::null) {
            continue;
        }
        const Family own = FamilyOf(value->type);
        if (value->kind == Bound::Kind::literal && own == family && value->slot.steps.empty()) {
            // Its length or digits play no part in a comparison.
            value->slot.plain = true;
            value->text = Parameter(value->slot);
        } else if (own == family) {
            value->text = Own(*value);
        } else if (family == Family::text) {
            value->text = As(*value, endlessText);
        } else if (family == Family::exact) {
            // A text becomes what it meets, a whole number keeps its value.
            value->text = As(*value, own == Family::integer ? AsDecimal(value->type) : exact);
        } else if (family == Family::binary) {
            value->text = As(*value, {Base::varbinary, Type::maxLength, 0, 0});
        } else {
            value->text = As(*value, highest);
        }
        if (own != family || value->kind == Bound::Kind::literal) {
            value->kind = Bound::Kind::expression;
            value->type = own == family ? value->type : highest;
        }
    }
    return family;
}

// Values.

Bound Binder::BindValue(const Expression& expression) {
    switch (expression.node) {
    case Node::literal:
        return BindLiteral(expression);
    case Node::null: {
        Bound value;
        value.kind = Bound::Kind::null;
        value.text = "NULL";
        return value;
    }
    case Node::column:
        return BindColumn(expression.name);
    case Node::negate:
        return BindNegate(expression);
    case Node::plus:
        return BindValue(*expression.arguments[0]);
    case Node::binary:
        return BindArithmetic(expression);
    case Node::function:
        return BindFunction(expression);
    case Node::convert:
        return BindConvert(expression);
    case Node::caseOf:
        return BindCase(expression);
    case Node::subquery:
        return BindSubquery(expression);
    case Node::variable:
        return BindVariable(expression);
    case Node::collate: {
        const std::string name = FoldText(expression.text);
        if (name.find("_ci_as") == std::string::npos && name != "database_default") {
            FailOwn(host::error_number::unspecified,
                    "The embedded database compares texts as Chinese_PRC_CI_AS does, and not as {}.", expression.text);
        }
        return BindValue(*expression.arguments[0]);
    }
    default:
        Fail(102, "Incorrect syntax near '*'.");
    }
}

Bound Binder::BindLiteral(const Expression& expression) {
    Bound value;
    value.kind = Bound::Kind::literal;
    value.slot.literal = expression.literal;
    value.type = TypeOf(LiteralAt(expression.literal));
    value.nullable = false;
    return value;
}

Bound Binder::BindColumn(const Name& name) {
    Scope* found = nullptr;
    const ScopeColumn& column = FindColumn(name, found);
    if (!found->inAggregate) {
        found->bareColumns.push_back(column.value.text);
    }
    return column.value;
}

Bound Binder::BindNegate(const Expression& expression) {
    Bound value = BindValue(*expression.arguments[0]);
    if (value.kind == Bound::Kind::null) {
        return value;
    }
    const Family family = FamilyOf(value.type);
    if (family == Family::text || family == Family::date || family == Family::guid) {
        Fail(8117, "Operand data type {} is invalid for minus operator.", NameOf(value.type.base));
    }
    if (value.kind == Bound::Kind::literal && value.slot.steps.empty() && family != Family::binary) {
        value.slot.negated = !value.slot.negated;
        return value;
    }
    Own(value);
    value.text = family == Family::exact ? fmt::format("k_subtract('0', {}, {})", value.text, Pack(value.type))
                                         : fmt::format("(-{})", value.text);
    value.kind = Bound::Kind::expression;
    return value;
}

Bound Binder::BindArithmetic(const Expression& expression) {
    Bound left = BindValue(*expression.arguments[0]);
    Bound right = BindValue(*expression.arguments[1]);
    const std::string& operation = expression.text;
    const auto isText = [](const Bound& value) { return FamilyOf(value.type) == Family::text; };
    const auto isNull = [](const Bound& value) { return value.kind == Bound::Kind::null; };
    if (operation == "+" && (isText(left) || isText(right)) && (isText(left) || isNull(left)) &&
        (isText(right) || isNull(right))) {
        return BindConcatenation(std::move(left), std::move(right));
    }
    if (FamilyOf(left.type) == Family::date || FamilyOf(right.type) == Family::date) {
        return BindDateArithmetic(operation, std::move(left), std::move(right));
    }
    for (const Bound* value : {&left, &right}) {
        if (value->kind == Bound::Kind::literal && !isText(*value)) {
            Pin(value->slot.literal); // its digits give the result's
        }
    }
    Type type = CommonType(left.type, right.type);
    if (isText(left) && isText(right)) {
        Fail(8117, "Operand data type {} is invalid for {} operator.", NameOf(type.base),
             operation == "-"   ? "subtract"
             : operation == "*" ? "multiply"
             : operation == "/" ? "divide"
                                : "modulo");
    }
    if (FamilyOf(type) == Family::null || FamilyOf(type) == Family::binary) {
        type = {Base::integer, 0, 0, 0};
    }
    if (type.base == Base::bit) {
        type = {Base::tinyint, 0, 0, 0};
    }
    Type leftType = type;
    Type rightType = type;
    if (type.base == Base::decimal) {
        const auto operand = [&](const Bound& value) {
            if (value.kind == Bound::Kind::literal && value.type.base == Base::integer) {
                const auto digits = static_cast<int>(LiteralAt(value.slot.literal).body.size());
                return Type{Base::decimal, 0, digits, 0};
            }
            const bool number = FamilyOf(value.type) == Family::exact || FamilyOf(value.type) == Family::integer;
            return number ? AsDecimal(value.type) : type;
        };
        leftType = operand(left);
        rightType = operand(right);
        const int leftWhole = leftType.precision - leftType.scale;
        const int rightWhole = rightType.precision - rightType.scale;
        const int scale = std::max(leftType.scale, rightType.scale);
        if (operation == "*") {
            type = FitDecimal(leftType.precision + rightType.precision + 1, leftType.scale + rightType.scale);
        } else if (operation == "/") {
            const int quotientScale = std::max(6, leftType.scale + rightType.precision + 1);
            type = FitDecimal(leftWhole + rightType.scale + quotientScale, quotientScale);
        } else if (operation == "%") {
            type = FitDecimal(std::min(leftWhole, rightWhole) + scale, scale);
        } else {
            type = FitDecimal(std::max(leftWhole, rightWhole) + scale + 1, scale);
        }
    }
    const std::string_view function = operation == "+"   ? "k_add"
                                      : operation == "-" ? "k_subtract"
                                      : operation == "*" ? "k_multiply"
                                      : operation == "/" ? "k_divide"
                                                         : "k_modulo";
    Bound result;
    result.type = type;
    const std::string leftText = As(std::move(left), leftType);
    result.text = fmt::format("{}({}, {}, {})", function, leftText, As(std::move(right), rightType), Pack(type));
    return result;
}

Bound Binder::BindConcatenation(Bound left, Bound right) {
    Bound result;
    const bool national = IsNational(left.type.base) || IsNational(right.type.base);
    const bool endless = left.type.length == Type::maxLength || right.type.length == Type::maxLength;
    const int most = national ? 4000 : 8000;
    result.type = {national ? Base::nvarchar : Base::varchar,
                   endless ? Type::maxLength : std::clamp(left.type.length + right.type.length, 1, most), 0, 0};
    const std::string leftText = Own(left);
    result.text = fmt::format("({} || {})", leftText, Own(right));
    return result;
}

Bound Binder::BindDateArithmetic(const std::string& operation, Bound left, Bound right) {
    const bool leftDate = FamilyOf(left.type) == Family::date;
    const bool rightDate = FamilyOf(right.type) == Family::date;
    const Type type = leftDate ? left.type : right.type;
    if ((operation != "+" && operation != "-") || type.base == Base::date || type.base == Base::datetime2 ||
        (operation == "-" && !leftDate)) {
        Fail(206, "Operand type clash: {} is incompatible with {}", NameOf(left.type.base), NameOf(right.type.base));
    }
    Bound result;
    result.type = type;
    const auto ticks = [&](Bound& value, bool date) {
        // The other operand counts days from the server's day 0.
        return date ? Own(value)
                    : fmt::format("(k_convert({}, {}, {}, 0) - {})", As(value, {Base::floating, 0, 0, 0}),
                                  Pack({Base::floating, 0, 0, 0}), Pack({Base::datetime, 0, 0, 0}),
                                  serverDayZero * ticksPerDay);
    };
    const std::string leftText = ticks(left, leftDate);
    const std::string rightText = ticks(right, rightDate);
    const std::int64_t correction =
        leftDate && rightDate ? (operation == "+" ? -serverDayZero : serverDayZero) * ticksPerDay : 0;
    result.text = fmt::format("k_convert({} {} {} + ({}), {}, {}, 0)", leftText, operation, rightText, correction,
                              Pack({Base::datetime2, 0, 0, 0}), Pack(type));
    return result;
}

Bound Binder::BindConvert(const Expression& expression) {
    int style = 0;
    if (expression.arguments.size() > 1) {
        const Expression& given = *expression.arguments[1];
        if (given.node != Node::literal || LiteralAt(given.literal).kind != LiteralKind::integer) {
            Fail(8116, "Argument data type is invalid for argument 3 of convert function.");
        }
        Pin(given.literal);
        style = static_cast<int>(CellOf(LiteralAt(given.literal), false).integer);
    }
    if (expression.flag) {
        return BindTryConvert(BindValue(*expression.arguments[0]), expression.type, style);
    }
    if (expression.type.base == Base::timestamp) {
        return Converted(BindValue(*expression.arguments[0]), {Base::binary, 8, 0, 0}, style, Surplus::cut);
    }
    return Converted(BindValue(*expression.arguments[0]), expression.type, style, Surplus::cut);
}

Bound Binder::BindTryConvert(Bound value, const Type& type, int style) {
    Own(value);
    Bound result;
    result.type = type;
    result.text = fmt::format("k_tryconvert({}, {}, {}, {})", value.text, Pack(value.type), Pack(type),
                              StyleFor(style, value.type, type));
    return result;
}

Bound Binder::BindCase(const Expression& expression) {
    const std::size_t first = expression.flag ? 1 : 0;
    const std::size_t pairs = (expression.arguments.size() - first) / 2;
    const bool hasElse = (expression.arguments.size() - first) % 2 == 1;
    std::vector<Bound> results;
    for (std::size_t i = 0; i < pairs; ++i) {
        results.push_back(BindValue(*expression.arguments[first + 2 * i + 1]));
    }
    if (hasElse) {
        results.push_back(BindValue(*expression.arguments.back()));
    }
    Bound result;
    for (Bound& value : results) {
        if (value.kind == Bound::Kind::literal && value.slot.steps.empty()) {
            Pin(value.slot.literal);
        }
        result.type = CommonType(result.type, value.type);
    }
    const auto branch = [&](Bound& value) {
        if (value.kind == Bound::Kind::literal && FamilyOf(value.type) != FamilyOf(result.type)) {
            Own(value); // converted where the branch is reached: it may raise an error
        }
        return As(value, result.type);
    };
    result.text = "CASE";
    for (std::size_t i = 0; i < pairs; ++i) {
        const Expression& when = *expression.arguments[first + 2 * i];
        if (expression.flag) {
            Bound operand = BindValue(*expression.arguments[0]);
            Bound match = BindValue(when);
            Unify({&operand, &match});
            result.text += fmt::format(" WHEN {} = {}", Collated(operand), match.text);
        } else {
            result.text += " WHEN " + BindCondition(when, false);
        }
        result.text += " THEN " + branch(results[i]);
    }
    if (hasElse) {
        result.text += " ELSE " + branch(results.back());
    }
    result.text += " END";
    return result;
}

Bound Binder::BindSubquery(const Expression& expression) {
    const BoundSelect select = BindInner(*expression.select);
    if (select.columns.size() != 1) {
        Fail(116, "Only one expression can be specified in the select list when the subquery is not introduced "
                  "with EXISTS.");
    }
    Bound result;
    result.type = select.columns[0].value.type;
    // SQLite takes the first of several rows, the server none.
    result.text = select.single ? "(" + select.Text(false, false) + ")"
                                : fmt::format("(SELECT k_single(s.c0) FROM ({}) AS s)", select.Text(true, true));
    return result;
}

std::size_t Binder::VariableAt(const std::string& name) const {
    const std::optional<std::size_t> found =
        session_.variables != nullptr ? session_.variables->Find(name) : std::nullopt;
    if (!found) {
        Fail(137, "Must declare the scalar variable \"{}\".", name);
    }
    return *found;
}

Bound Binder::BindVariable(const Expression& expression) {
    Bound result;
    static constexpr Type integer{Base::integer, 0, 0, 0};
    struct Global {
        std::string_view name;
        std::string_view text;
        Type type;
    };
    static constexpr std::array globals{
        Global{"@@identity", "k_identity()", {Base::decimal, 0, 38, 0}},
        Global{"@@version", "'Kovra account database'", {Base::nvarchar, 300, 0, 0}},
        Global{"@@rowcount", "k_rowcount()", integer},
        Global{"@@error", "k_lasterror()", integer},
        Global{"@@trancount", "k_trancount()", integer},
        Global{"@@spid", "1", {Base::smallint, 0, 0, 0}},
    };
    for (const Global& global : globals) {
        if (EqualNames(expression.text, global.name)) {
            result.text = global.text;
            result.type = global.type;
            return result;
        }
    }
    const std::size_t index = VariableAt(expression.text);
    result.type = (*session_.variables)[index].type;
    if (use_ == LiteralUse::inlined) {
        result.text = Spelled((*session_.variables)[index].value);
        return result;
    }
    if (assigned_.contains(index)) {
        accumulates_ = true;
        result.text = fmt::format("k_variable({})", index);
        return result;
    }
    // One parameter for all its places: GROUP BY compares the text.
    const auto known =
        std::find_if(slots_.begin(), slots_.end(), [index](const Slot& slot) { return slot.variable == index; });
    if (known != slots_.end()) {
        result.text = fmt::format("?{}", known - slots_.begin() + 1);
        return result;
    }
    Slot& slot = slots_.emplace_back();
    slot.variable = index;
    result.text = fmt::format("?{}", slots_.size());
    return result;
}

// Conditions.

std::string Binder::BindCondition(const Expression& expression, bool topLevel) {
    switch (expression.node) {
    case Node::conjunction:
    case Node::disjunction: {
        const bool all = expression.node == Node::conjunction;
        std::vector<std::string> terms;
        for (const ExpressionPtr& term : expression.arguments) {
            terms.push_back(BindCondition(*term, topLevel && all));
        }
        return JoinTerms(terms, 0, terms.size(), all ? " AND " : " OR ");
    }
    case Node::negation:
        return "(NOT " + BindCondition(*expression.arguments[0], false) + ")";
    case Node::compare:
        return BindCompare(expression, topLevel);
    case Node::isNull: {
        Bound value = BindValue(*expression.arguments[0]);
        return fmt::format("({} IS {}NULL)", Own(value), expression.flag ? "NOT " : "");
    }
    case Node::like:
        return BindLike(expression);
    case Node::between:
        return BindBetween(expression);
    case Node::inList:
        return BindInList(expression);
    case Node::inSelect:
        return BindInSelect(expression);
    case Node::exists:
        return "EXISTS (" + BindInner(*expression.select).Text(false, false) + ")";
    default:
        Fail(4145, "An expression of non-boolean type specified in a context where a condition is expected.");
    }
}

std::string Binder::BindCompare(const Expression& expression, bool topLevel) {
    Bound left = BindValue(*expression.arguments[0]);
    Bound right = BindValue(*expression.arguments[1]);
    const Family family = Unify({&left, &right});
    const std::string_view operation = expression.text;
    const auto indexed = [&](const Bound& value) {
        return topLevel && family == Family::text && operation != "<>" && value.kind == Bound::Kind::column &&
               value.column != nullptr && value.column->blankIndex;
    };
    std::string text = fmt::format("({} {} {}", Collated(left), operation, right.text);
    if (indexed(left) || indexed(right)) {
        // The column is indexed as isnull(column, ''), see Definer::MakeIndex. That the same holds for this expression
        // follows from the comparison, and tells SQLite of the index.
        // Another column loses its affinity by the plus: SQLite uses an index on an expression only without one.
        const auto blank = [&](const Bound& value) {
            if (indexed(value)) {
                return fmt::format("ifnull({}, '')", value.text);
            }
            return value.kind == Bound::Kind::column ? "+" + value.text : value.text;
        };
        text += fmt::format(" AND {} COLLATE {} {} {}", blank(left), textCollation, operation, blank(right));
    }
    return text + ")";
}

std::string Binder::BindLike(const Expression& expression) {
    std::string text = expression.flag ? "(NOT k_like(" : "k_like(";
    for (const ExpressionPtr& argument : expression.arguments) {
        if (&argument != &expression.arguments.front()) {
            text += ", ";
        }
        text += As(BindValue(*argument), endlessText);
    }
    return text + (expression.flag ? "))" : ")");
}

std::string Binder::BindBetween(const Expression& expression) {
    Bound value = BindValue(*expression.arguments[0]);
    Bound low = BindValue(*expression.arguments[1]);
    Bound high = BindValue(*expression.arguments[2]);
    Unify({&value, &low, &high});
    return fmt::format("({} {}BETWEEN {} AND {})", Collated(value), expression.flag ? "NOT " : "", low.text, high.text);
}

std::string Binder::BindInList(const Expression& expression) {
    std::vector<Bound> values;
    for (const ExpressionPtr& argument : expression.arguments) {
        values.push_back(BindValue(*argument));
    }
    std::vector<Bound*> pointers;
    pointers.reserve(values.size());
    for (Bound& value : values) {
        pointers.push_back(&value);
    }
    Unify(pointers);
    std::string text = fmt::format("({} {}IN (", Collated(values[0]), expression.flag ? "NOT " : "");
    for (std::size_t i = 1; i < values.size(); ++i) {
        text += (i > 1 ? ", " : "") + values[i].text;
    }
    return text + "))";
}

std::string Binder::BindInSelect(const Expression& expression) {
    Bound value = BindValue(*expression.arguments[0]);
    BoundSelect select = BindInner(*expression.select);
    if (select.columns.size() != 1) {
        Fail(116, "Only one expression can be specified in the select list when the subquery is not introduced "
                  "with EXISTS.");
    }
    Bound inner = select.columns[0].value;
    const Type innerType = inner.type;
    inner.kind = Bound::Kind::expression;
    Unify({&value, &inner});
    if (FamilyOf(innerType) != FamilyOf(value.type)) {
        const Type meeting = FamilyOf(value.type) == Family::exact && FamilyOf(innerType) == Family::integer
                                 ? AsDecimal(innerType)
                                 : value.type;
        for (BoundSelect::Member& member : select.members) {
            member.values[0] = Converted(member.values[0], meeting, 0, Surplus::cut);
        }
    }
    return fmt::format("({} {}IN ({}))", Collated(value), expression.flag ? "NOT " : "", select.Text(false, false));
}

void Binder::AddRowOf(const Table& table) {
    ScopeSource& source = scope_->sources.emplace_back();
    source.alias = table.name;
    source.tableName = table.name;
    for (const Column& column : table.columns) {
        if (!column.computedText.empty()) {
            continue;
        }
        Bound value;
        value.kind = Bound::Kind::column;
        value.text = Quoted(column.name);
        value.type = column.type;
        source.columns.push_back({column.name, std::move(value)});
    }
}

std::string Binder::BindCheck(const Expression& condition, const Table& table) {
    const ScopeGuard guard(*this, nullptr);
    AddRowOf(table);
    std::string text = BindCondition(condition, false);
    RefuseMoment(text);
    return text;
}

Bound Binder::BindComputed(const Column& column, const Table& table) {
    Parser parser(column.computedText, {});
    const ExpressionPtr expression = parser.ParseExpressionText();
    for (const Column& other : table.columns) {
        if (!other.computedText.empty() && Mentions(column.computedText, other.name)) {
            Fail(1759,
                 "Computed column '{}' in table '{}' is not allowed to be used in another computed-column "
                 "definition.",
                 other.name, table.name);
        }
    }
    Binder inner(catalog_, session_, parser.Literals(), LiteralUse::inlined);
    const ScopeGuard guard(inner, nullptr);
    inner.AddRowOf(table);
    Bound value = inner.BindValue(*expression);
    RefuseMoment(inner.Own(value));
    return value;
}

std::string Binder::BindDefault(const Column& column) {
    Parser parser(column.defaultText, {});
    const ExpressionPtr expression = parser.ParseExpressionText();
    Binder inner(catalog_, session_, parser.Literals(), LiteralUse::inlined);
    return inner.As(inner.BindValue(*expression), column.type, 0, Surplus::refuse);
}

} // namespace refhost::sql
