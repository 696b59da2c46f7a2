#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/CharacterOrder.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"
#include "text/Utf8.h"

#include <algorithm>

#include <fmt/format.h>

namespace refhost::sql {
namespace {

// Texts. Positions count UTF-16 units from 1.

/// The part of a text from unit `start` (counted from 0) on, at most `length` units.
std::string Slice(std::string_view text, std::int64_t start, std::int64_t length) {
    const auto cut = [&](const auto& units) {
        const auto size = static_cast<std::int64_t>(units.size());
        const std::int64_t begin = std::clamp<std::int64_t>(start, 0, size);
        const std::int64_t end = std::clamp<std::int64_t>(start + length, begin, size);
        return units.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    };
    if (text::IsAscii(text)) {
        return std::string(cut(text));
    }
    const std::u16string units = ToUtf16(text);
    return FromUtf16(cut(std::u16string_view(units)));
}

void LengthFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    // Blanks at the end do not count.
    const std::string_view text = call.Text(0);
    call.Return(static_cast<std::int64_t>(text::Utf16Length(text.substr(0, text.find_last_not_of(' ') + 1))));
}

[[noreturn]] void FailLength(std::string_view function) {
    Fail(536, "Invalid length parameter passed to the {} function.", function);
}

void LeftFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    if (call.Integer(1) < 0) {
        FailLength("left");
    }
    call.Return(Slice(call.Text(0), 0, call.Integer(1)));
}

void RightFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    if (call.Integer(1) < 0) {
        FailLength("right");
    }
    const auto units = static_cast<std::int64_t>(text::Utf16Length(call.Text(0)));
    const std::int64_t length = std::min(call.Integer(1), units);
    call.Return(Slice(call.Text(0), units - length, length));
}

void SubstringFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    constexpr std::int64_t farAway = INT32_MAX;
    std::int64_t start = std::clamp<std::int64_t>(call.Integer(1), -farAway, farAway) - 1;
    std::int64_t length = std::min<std::int64_t>(call.Integer(2), farAway);
    if (length < 0) {
        FailLength("substring");
    }
    if (start < 0) {
        length = std::max<std::int64_t>(0, length + start);
        start = 0;
    }
    call.Return(Slice(call.Text(0), start, length));
}

template <char32_t (*Map)(char32_t)> void MapFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const std::string_view text = call.Text(0);
    std::string mapped;
    mapped.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        AppendCodePoint(mapped, Map(NextCodePoint(text, position)));
    }
    call.Return(mapped);
}

/// k_stuff(text, start, length, replacement)
void StuffFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    std::u16string text = ToUtf16(call.Text(0));
    const std::int64_t start = call.Integer(1);
    const std::int64_t length = call.Integer(2);
    if (start < 1 || length < 0 || start > static_cast<std::int64_t>(text.size())) {
        return call.ReturnNull();
    }
    text.replace(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length),
                 call.IsNull(3) ? std::u16string() : ToUtf16(call.Text(3)));
    call.Return(FromUtf16(text));
}

void ReplicateFunction(Call& call) {
    if (call.AnyNull(2) || call.Integer(1) < 0) {
        return call.ReturnNull();
    }
    constexpr std::size_t most = 8000;
    const std::string_view text = call.Text(0);
    std::string result;
    for (std::int64_t i = 0; i < call.Integer(1) && result.size() + text.size() <= most && !text.empty(); ++i) {
        result += text;
    }
    call.Return(result);
}

void ReverseFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    std::u16string units = ToUtf16(call.Text(0));
    std::reverse(units.begin(), units.end());
    call.Return(FromUtf16(units));
}

void UnicodeFunction(Call& call) {
    if (call.IsNull(0) || call.Text(0).empty()) {
        return call.ReturnNull();
    }
    call.Return(static_cast<std::int64_t>(ToUtf16(call.Text(0)).front()));
}

void CharacterFunction(Call& call) {
    if (call.IsNull(0) || call.Integer(0) < 0 || call.Integer(0) > 0xFFFF) {
        return call.ReturnNull();
    }
    const std::u16string unit(1, static_cast<char16_t>(call.Integer(0)));
    call.Return(FromUtf16(unit));
}

/// k_str(number, length, decimals)
void NumberTextFunction(Call& call) {
    constexpr std::int64_t mostDecimals = 16;
    constexpr std::int64_t mostLength = 8000;
    if (call.AnyNull(3) || call.Integer(1) <= 0 || call.Integer(1) > mostLength || call.Integer(2) < 0) {
        return call.ReturnNull();
    }
    const auto length = static_cast<std::size_t>(call.Integer(1));
    // Decimals give way before the whole number does.
    for (std::int64_t decimals = std::min(call.Integer(2), mostDecimals); decimals >= 0; --decimals) {
        const std::string text = fmt::format("{:.{}f}", call.Real(0), decimals);
        if (text.size() <= length) {
            return call.Return(std::string(length - text.size(), ' ') + text);
        }
    }
    call.Return(std::string(length, '*'));
}

void DataLengthFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(1);
    switch (FamilyOf(type)) {
    case Family::text:
        return call.Return(static_cast<std::int64_t>(MeasuredLength(call.Text(0), IsNational(type.base)) *
                                                     (IsNational(type.base) ? 2 : 1)));
    case Family::binary:
        return call.Return(static_cast<std::int64_t>(call.Text(0).size()));
    case Family::integer:
        return call.Return(std::int64_t{type.base == Base::bigint     ? 8
                                        : type.base == Base::integer  ? 4
                                        : type.base == Base::smallint ? 2
                                                                      : 1});
    default:
        return call.Return(std::int64_t{8});
    }
}

} // namespace

std::span<const FunctionRow> TextFunctions() {
    static constexpr std::array rows{
        FunctionRow{"k_len", 1, Entry<LengthFunction>},
        FunctionRow{"k_left", 2, Entry<LeftFunction>},
        FunctionRow{"k_right", 2, Entry<RightFunction>},
        FunctionRow{"k_substring", 3, Entry<SubstringFunction>},
        FunctionRow{"k_upper", 1, Entry<MapFunction<ToUpper>>},
        FunctionRow{"k_lower", 1, Entry<MapFunction<ToLower>>},
        FunctionRow{"k_stuff", 4, Entry<StuffFunction>},
        FunctionRow{"k_replicate", 2, Entry<ReplicateFunction>},
        FunctionRow{"k_reverse", 1, Entry<ReverseFunction>},
        FunctionRow{"k_unicode", 1, Entry<UnicodeFunction>},
        FunctionRow{"k_char", 1, Entry<CharacterFunction>},
        FunctionRow{"k_str", 3, Entry<NumberTextFunction>},
        FunctionRow{"k_datalength", 2, Entry<DataLengthFunction>},
    };
    return rows;
}

} // namespace refhost::sql
