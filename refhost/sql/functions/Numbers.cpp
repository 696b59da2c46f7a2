#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/Errors.h"
#include "refhost/sql/types/ExactNumber.h"

#include <cmath>

namespace refhost::sql {
namespace {

// Numbers: (value, …, type).

void AbsFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(1);
    if (FamilyOf(type) == Family::integer) {
        const std::int64_t value = call.Integer(0);
        if (value < 0) {
            CheckRange(-(value + 1), type.base, Base::bigint);
            CheckRange(value == INT64_MIN ? value : -value, type.base, Base::bigint);
        }
        call.Return(value < 0 ? -value : value);
    } else if (FamilyOf(type) == Family::exact) {
        const std::string_view text = call.Text(0);
        call.Return(text.substr(!text.empty() && text.front() == '-' ? 1 : 0));
    } else {
        call.Return(std::fabs(call.Real(0)));
    }
}

/// Floor (`up` false) and ceiling of exact numbers.
void WholeFunction(Call& call, bool up) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const ExactNumber value = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
    ExactNumber whole = value.Truncated(0);
    if (!(value - whole).IsZero() && value.IsNegative() != up) {
        whole = whole + ExactNumber(up ? 1 : -1);
    }
    call.Return(whole.Truncated(call.TypeAt(1).base == Base::decimal ? 0 : 4).ToText());
}
void FloorFunction(Call& call) { WholeFunction(call, false); }
void CeilingFunction(Call& call) { WholeFunction(call, true); }

/// The value rounded or cut to `digits` digits behind the point, negative ones before it; same scale as before.
ExactNumber RoundExact(const ExactNumber& value, std::int64_t digits, bool cut) {
    const int scale = value.Scale();
    if (digits >= scale) {
        return value;
    }
    if (digits >= 0) {
        const int kept = static_cast<int>(digits);
        return (cut ? value.Truncated(kept) : value.Rescaled(kept)).Truncated(scale);
    }
    if (digits < -40) {
        return ExactNumber().Truncated(scale);
    }
    ExactNumber unit(1);
    for (std::int64_t i = digits; i < 0; ++i) {
        unit = unit * ExactNumber(10);
    }
    const ExactNumber quotient = Divide(value, unit, scale + static_cast<int>(-digits));
    return ((cut ? quotient.Truncated(0) : quotient.Rescaled(0)) * unit).Truncated(scale);
}

/// k_round(value, digits, function, type)
void RoundFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(3);
    const bool cut = call.Integer(2) != 0;
    const std::int64_t digits = call.Integer(1);
    switch (FamilyOf(type)) {
    case Family::integer: {
        const std::optional<std::int64_t> value = RoundExact(ExactNumber(call.Integer(0)), digits, cut).ToInteger();
        CheckRange(value.value_or(0), type.base, Base::bigint);
        return call.Return(value.value_or(0));
    }
    case Family::exact: {
        const ExactNumber value = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
        return call.Return(FitExact(RoundExact(value, digits, cut), type, Base::null));
    }
    default: {
        const std::optional<ExactNumber> value = ExactNumber::FromDouble(call.Real(0));
        return call.Return(value ? RoundExact(*value, digits, cut).ToDouble() : call.Real(0));
    }
    }
}

/// k_sign(value, type)
void SignFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(1);
    if (FamilyOf(type) == Family::real) {
        const double value = call.Real(0);
        return call.Return(value > 0 ? 1.0 : value < 0 ? -1.0 : 0.0);
    }
    const ExactNumber value = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
    const std::int64_t sign = value.IsZero() ? 0 : value.IsNegative() ? -1 : 1;
    if (FamilyOf(type) == Family::integer) {
        return call.Return(sign);
    }
    call.Return(ExactNumber(sign).Rescaled(type.scale).ToText());
}

double RequireReal(double value) {
    if (std::isnan(value)) {
        Fail(3623, "An invalid floating point operation occurred.");
    }
    if (std::isinf(value)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type float.");
    }
    return value;
}

void SqrtFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    call.Return(RequireReal(std::sqrt(call.Real(0))));
}

/// k_power(value, exponent, type): the result in the value's own type.
void PowerFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    const double value = call.Real(0);
    const double exponent = call.Real(1);
    if (value == 0 && exponent < 0) {
        Fail(8134, "Divide by zero error encountered.");
    }
    Cell cell;
    cell.SetReal(RequireReal(std::pow(value, exponent)));
    Convert(cell, {Base::floating, 0, 0, 0}, call.TypeAt(2), 0, Surplus::cut);
    call.Return(cell);
}

/// k_recursion(level, most): the next level.
void RecursionFunction(Call& call) {
    const std::int64_t next = call.Integer(0) + 1;
    if (next > call.Integer(1)) {
        Fail(530, "The statement terminated. The maximum recursion {} has been exhausted before statement completion.",
             call.Integer(1));
    }
    call.Return(next);
}

} // namespace

std::span<const FunctionRow> NumberFunctions() {
    static constexpr std::array rows{
        FunctionRow{"k_abs", 2, Entry<AbsFunction>},         FunctionRow{"k_floor", 2, Entry<FloorFunction>},
        FunctionRow{"k_ceiling", 2, Entry<CeilingFunction>}, FunctionRow{"k_round", 4, Entry<RoundFunction>},
        FunctionRow{"k_sign", 2, Entry<SignFunction>},       FunctionRow{"k_sqrt", 1, Entry<SqrtFunction>},
        FunctionRow{"k_power", 3, Entry<PowerFunction>},     FunctionRow{"k_recursion", 2, Entry<RecursionFunction>},
    };
    return rows;
}

} // namespace refhost::sql
