#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/Errors.h"
#include "refhost/sql/types/ExactNumber.h"

#include <cmath>

namespace refhost::sql {
namespace {

void ConvertTo(Call& call, Surplus surplus, int style) {
    Cell cell = call.Read(0);
    Convert(cell, call.TypeAt(1), call.TypeAt(2), style, surplus);
    call.Return(cell);
}
/// k_convert(value, from, to, style)
void ConvertFunction(Call& call) { ConvertTo(call, Surplus::cut, static_cast<int>(call.Integer(3))); }
/// k_store(value, from, to): what a column takes.
void StoreFunction(Call& call) { ConvertTo(call, Surplus::refuse, 0); }

/// k_tryconvert(value, from, to, style): Null where the conversion fails.
void TryConvertFunction(Call& call) {
    try {
        ConvertTo(call, Surplus::cut, static_cast<int>(call.Integer(3)));
    } catch (const host::Error&) {
        call.ReturnNull();
    }
}

// Arithmetic: (left, right, result type). Operands are of the result's family.

[[noreturn]] void FailDivision() { Fail(8134, "Divide by zero error encountered."); }

enum class Operation { add, subtract, multiply, divide, modulo };

bool Overflows(Operation operation, std::int64_t left, std::int64_t right, std::int64_t& result) {
    switch (operation) {
    case Operation::add:
        result = static_cast<std::int64_t>(static_cast<std::uint64_t>(left) + static_cast<std::uint64_t>(right));
        return right >= 0 ? result < left : result > left;
    case Operation::subtract:
        result = static_cast<std::int64_t>(static_cast<std::uint64_t>(left) - static_cast<std::uint64_t>(right));
        return right >= 0 ? result > left : result < left;
    case Operation::multiply: {
        const std::optional<std::int64_t> product = (ExactNumber(left) * ExactNumber(right)).ToInteger();
        result = product.value_or(0);
        return !product;
    }
    case Operation::divide:
        if (left == INT64_MIN && right == -1) {
            return true;
        }
        result = left / right;
        return false;
    case Operation::modulo:
        result = right == -1 ? 0 : left % right;
        return false;
    }
    return false;
}

void IntegerArithmetic(Call& call, Operation operation, Base base) {
    const std::int64_t right = call.Integer(1);
    if (right == 0 && (operation == Operation::divide || operation == Operation::modulo)) {
        FailDivision();
    }
    std::int64_t result = 0;
    if (Overflows(operation, call.Integer(0), right, result)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type bigint.");
    }
    CheckRange(result, base, Base::bigint);
    call.Return(result);
}

bool IsZero(double number) { return number == 0; }
bool IsZero(const ExactNumber& number) { return number.IsZero(); }

/// What numbers that have no overflow of their own come to; `quotient` and `rest` are asked of a divisor that is not
/// zero.
template <class Number, class Quotient, class Rest>
Number Computed(Operation operation, const Number& left, const Number& right, const Quotient& quotient,
                const Rest& rest) {
    switch (operation) {
    case Operation::add:
        return left + right;
    case Operation::subtract:
        return left - right;
    case Operation::multiply:
        return left * right;
    case Operation::divide:
    case Operation::modulo:
        break;
    }
    if (IsZero(right)) {
        FailDivision();
    }
    return operation == Operation::divide ? quotient(left, right) : rest(left, right);
}

void ExactArithmetic(Call& call, Operation operation, const Type& type) {
    const ExactNumber left = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
    const ExactNumber right = ExactNumber::Parse(call.Text(1)).value_or(ExactNumber());
    const auto divide = [&](const ExactNumber& dividend, const ExactNumber& divisor) {
        return Divide(dividend, divisor, type.scale);
    };
    const auto rest = [](const ExactNumber& dividend, const ExactNumber& divisor) { return Modulo(dividend, divisor); };
    call.Return(FitExact(Computed(operation, left, right, divide, rest), type, Base::null));
}

void RealArithmetic(Call& call, Operation operation) {
    const auto divide = [](double dividend, double divisor) { return dividend / divisor; };
    const auto rest = [](double dividend, double divisor) { return std::fmod(dividend, divisor); };
    const double result = Computed(operation, call.Real(0), call.Real(1), divide, rest);
    if (!std::isfinite(result)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type float.");
    }
    call.Return(result);
}

template <Operation operation> void Arithmetic(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(2);
    switch (FamilyOf(type)) {
    case Family::integer:
        return IntegerArithmetic(call, operation, type.base);
    case Family::exact:
        return ExactArithmetic(call, operation, type);
    default:
        return RealArithmetic(call, operation);
    }
}

} // namespace

std::span<const FunctionRow> ArithmeticFunctions() {
    static constexpr std::array rows{
        FunctionRow{"k_convert", 4, Entry<ConvertFunction>},
        FunctionRow{"k_store", 3, Entry<StoreFunction>},
        FunctionRow{"k_add", 3, Entry<Arithmetic<Operation::add>>},
        FunctionRow{"k_subtract", 3, Entry<Arithmetic<Operation::subtract>>},
        FunctionRow{"k_multiply", 3, Entry<Arithmetic<Operation::multiply>>},
        FunctionRow{"k_divide", 3, Entry<Arithmetic<Operation::divide>>},
        FunctionRow{"k_modulo", 3, Entry<Arithmetic<Operation::modulo>>},
        FunctionRow{"k_tryconvert", 4, Entry<TryConvertFunction>},
    };
    return rows;
}

} // namespace refhost::sql
