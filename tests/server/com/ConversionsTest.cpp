// Holds the run-time conversions against OLE Automation, whose part they play on every platform.
#include "ModPub/Conversions.h"

#include "server/com/BString.h"
#include "server/com/Platform.h"
#include "server/com/Utf16.h"
#include "tests/support/ConversionCases.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace en = host::error_number;
using server::BString;

constexpr LCID chinese = 2052;

/// What a conversion gives: a text form of its value, or the number of its error.
struct Outcome {
    std::optional<std::string> value;
    host::ErrorNumber error = 0;

    bool operator==(const Outcome&) const = default;
    std::string Show() const { return value ? "'" + *value + "'" : "error " + std::to_string(error); }
};

template <class Convert> Outcome Ours(Convert&& convert) {
    try {
        return {convert(), 0};
    } catch (const host::Error& error) {
        return {std::nullopt, error.number()};
    }
}

/// Seventeen digits tell every double from every other.
std::string Exact(double number) {
    char text[40];
    return {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%.17g", number))};
}

/// A difference that is accepted, and why. One of the two functions says for which inputs.
struct Accepted {
    const char* reason;
    /// Whether the difference between `ours` and `theirs` for `input` is this one.
    std::function<bool(const std::string& input, const Outcome& ours, const Outcome& theirs)> covers;
    /// The input in words that Wine knows, where it holds such that it does not: their answer to it must be ours to the
    /// input itself.
    std::function<std::optional<std::string>(const std::string& input)> inOtherWords;
};

/// `text` with every one of `words` (longer ones first) replaced, letter case ignored; nothing when none is there.
std::optional<std::string> Replaced(const std::string& text,
                                    std::initializer_list<std::pair<const char*, const char*>> words) {
    std::string result;
    bool any = false;
    for (std::size_t at = 0; at < text.size();) {
        const auto found = std::ranges::find_if(words, [&](const auto& word) {
            const std::string_view name = word.first;
            return ModPub::LowerCase(std::string_view(text).substr(at, name.size())) == name;
        });
        if (found == words.end()) {
            result += text[at++];
        } else {
            result += found->second;
            at += std::string_view(found->first).size();
            any = true;
        }
    }
    return any ? std::optional(result) : std::nullopt;
}

bool Refused(const Outcome& outcome) { return !outcome.value; }

/// The first of `accepted` that explains why `theirs` is not `ours` for `input`, or nullptr. A text in other words may
/// need a further explanation.
template <class Input>
const Accepted* Explain(const std::vector<Accepted>& accepted, const std::string& input, const Outcome& ours,
                        const Outcome& theirs, const std::function<Outcome(const Input&)>& ask) {
    for (const Accepted& difference : accepted) {
        if (difference.covers && difference.covers(input, ours, theirs))
            return &difference;
        if constexpr (std::is_same_v<Input, std::string>) {
            const auto words = difference.inOtherWords ? difference.inOtherWords(input) : std::nullopt;
            if (!words)
                continue;
            const Outcome answer = ask(*words);
            if (answer == ours || Explain(accepted, *words, ours, answer, ask))
                return &difference;
        }
    }
    return nullptr;
}

/// Runs both sides over all inputs and fails for every difference that none of `accepted` covers.
template <class Input>
void Compare(const std::vector<Input>& inputs, const std::vector<Accepted>& accepted,
             const std::function<std::string(const Input&)>& show, const std::function<Outcome(const Input&)>& ours,
             const std::function<Outcome(const Input&)>& theirs) {
    std::map<std::string, int> counts;
    int failures = 0;
    for (const Input& input : inputs) {
        const Outcome mine = ours(input);
        const Outcome other = theirs(input);
        if (mine == other)
            continue;
        const std::string shown = show(input);
        const Accepted* const found = Explain(accepted, shown, mine, other, theirs);
        if (found)
            ++counts[found->reason];
        else if (++failures <= 20)
            ADD_FAILURE() << "'" << shown << "': ours " << mine.Show() << ", theirs " << other.Show();
    }
    EXPECT_EQ(failures, 0);
    std::printf("%zu inputs\n", inputs.size());
    for (const auto& [reason, count] : counts)
        std::printf("  %4d times: %s\n", count, reason.c_str());
}

std::string ShowText(const std::string& text) { return text; }
std::string ShowNumber(const double& number) { return Exact(number); }

host::ErrorNumber NumberOf(HRESULT result) {
    switch (result) {
    case DISP_E_OVERFLOW:
        return en::overflow;
    case DISP_E_TYPEMISMATCH:
        return en::typeMismatch;
    case E_INVALIDARG:
        return en::invalidCall;
    default:
        return result;
    }
}

/// Calls a function of oleaut32 that reads a text. @param format shows its result
template <class T, class Function, class Format>
Outcome Theirs(const std::string& text, Function&& function, Format&& format) {
    const BString wide(server::ToUtf16(text));
    T value{};
    const HRESULT result = function(wide.Get(), chinese, LOCALE_NOUSEROVERRIDE, &value);
    return FAILED(result) ? Outcome{std::nullopt, NumberOf(result)} : Outcome{format(value), 0};
}

/// Calls a function of oleaut32 that writes a text.
template <class Function> Outcome TheirText(Function&& function) {
    BString text;
    const HRESULT result = function(text.Put());
    return FAILED(result) ? Outcome{std::nullopt, NumberOf(result)} : Outcome{server::ToUtf8(text.View()), 0};
}

std::vector<std::string> NumberTexts() {
    std::vector<std::string> texts = cases::MadeNumberTexts(3000, 1);
    texts.insert(texts.end(), cases::numberTextEdges.begin(), cases::numberTextEdges.end());
    return texts;
}

std::vector<std::string> DateTexts() {
    std::vector<std::string> texts = cases::MadeDateTexts(3000, 2);
    texts.insert(texts.end(), cases::dateTextEdges.begin(), cases::dateTextEdges.end());
    return texts;
}

std::vector<double> Doubles() {
    std::vector<double> numbers = cases::MadeDoubles(3000, 3);
    numbers.insert(numbers.end(), cases::doubleEdges.begin(), cases::doubleEdges.end());
    return numbers;
}

Outcome TheirDouble(const std::string& text) { return Theirs<double>(text, VarR8FromStr, Exact); }

const Accepted secondSign = {
    "Wine takes a second sign behind the number, an opening parenthesis without its other half included",
    [](const std::string& input, const Outcome& ours, const Outcome&) {
        const std::string_view text = ModPub::Trim(input);
        // Not a number: an error, "False", or for Format the text as it stands.
        const bool refused = ours.error == en::typeMismatch || ours.value == "False" || ours.value == input;
        return refused && (text.starts_with('(') || text.starts_with('+')) && text.ends_with('-');
    },
    nullptr};
const Accepted exponentWithD = {"Wine knows no exponent with D, which Visual Basic reads", nullptr,
                                [](const std::string& input) {
                                    return Replaced(input, {{"d", "e"}});
                                }};
const Accepted yuanSign = {"Wine knows no yuan sign", nullptr, [](const std::string& input) {
                               return Replaced(input, {{"￥", ""}, {"¥", ""}});
                           }};

const Accepted exponentBySize = {
    "Wine chooses the exponent form by the number's size, the system by the digits behind the point",
    [](const std::string&, const Outcome& ours, const Outcome& theirs) {
        return !Refused(ours) && !Refused(theirs) && std::fabs(std::stod(*ours.value)) < 1 &&
               std::stod(*ours.value) == std::stod(*theirs.value);
    },
    nullptr};

/// Where Wine's reading of numbers stays behind the system's.
std::vector<Accepted> NumberDifferences() {
    return {
        exponentWithD,
        yuanSign,
        secondSign,
        {"Wine rounds a number next to 0 to 1 or -1 when digits behind the point decide it",
         [](const std::string& input, const Outcome& ours, const Outcome& theirs) {
             const Outcome number = TheirDouble(input);
             return ours.value == "0" && (theirs.value == "1" || theirs.value == "-1") && number.value &&
                    std::fabs(std::stod(*number.value)) < 0.5;
         },
         nullptr},
        {"Wine finds 32 bits too many for the digits of a double",
         [](const std::string& input, const Outcome& ours, const Outcome& theirs) {
             return input == "&HFFFFFFFF" && (ours.value == "4294967295" || ours.value == "True") &&
                    theirs.error == en::overflow;
         },
         nullptr},
        {"Wine keeps the sign of a zero, which no text of a number shows",
         [](const std::string&, const Outcome& ours, const Outcome& theirs) {
             return ours.value == "0" && theirs.value == "-0";
         },
         nullptr},
        {"Wine adds the digits up and so misses the nearest double by a few units in the last place",
         [](const std::string&, const Outcome& ours, const Outcome& theirs) {
             if (Refused(ours) || Refused(theirs))
                 return false;
             const double mine = std::stod(*ours.value);
             const double other = std::stod(*theirs.value);
             return std::fabs(mine - other) <= std::fabs(mine) * 1e-15;
         },
         nullptr},
    };
}

/// The day number of a date that is shown as such a number or as "YYYY-MM-DD".
double DayNumber(const std::string& shown) {
    const std::optional<host::Date> date = ModPub::ParseDate(shown);
    return shown.find('-', 1) != shown.npos && date ? date->days : ModPub::Val(shown);
}

/// A day number to the second: the two sides put the fraction together in different orders.
std::string ShowDay(double day) {
    constexpr double secondsPerDay = 86400;
    return ModPub::NumberText(std::round(day * secondsPerDay) / secondsPerDay);
}

/// A text with `marker` behind everything else instead of before it; nothing without one there.
std::optional<std::string> WithMarkerLast(const std::string& text, const std::string& marker) {
    const std::size_t at = text.find(marker);
    if (at == text.npos || text.ends_with(marker))
        return std::nullopt;
    return text.substr(0, at) + text.substr(at + marker.size()) + " " + marker;
}

/// Where Wine's reading of dates stays behind the system's.
std::vector<Accepted> DateDifferences() {
    return {
        {"Wine does not know 年, 月, 日 as separators, which the Chinese long date is written with", nullptr,
         [](const std::string& input) {
             std::optional<std::string> text = Replaced(input, {{"年", "-"}, {"月", "-"}, {"日", ""}});
             if (text && text->ends_with('-'))
                 text->pop_back();
             return text;
         }},
        {"Wine does not take 上午 and 下午 before the time, where the Chinese time format has them", nullptr,
         [](const std::string& input) {
             const auto morning = WithMarkerLast(input, "上午");
             return morning ? morning : WithMarkerLast(input, "下午");
         }},
        {"Wine knows the names of the locale's language alone, the system English ones too", nullptr,
         [](const std::string& input) {
             return Replaced(input, {{"monday", "星期一"},
                                     {"january", "一月"},
                                     {"may", "五月"},
                                     {"dec", "十二月"},
                                     {" a", " 上午"},
                                     {" p", " 下午"}});
         }},
        {"Wine takes the years 30 to 49 for 2030 to 2049, following a newer calendar setting",
         [](const std::string&, const Outcome& ours, const Outcome& theirs) {
             constexpr double firstOf2030 = 47484;
             constexpr double firstOf2050 = 54789;
             const double their = Refused(theirs) ? 0 : DayNumber(*theirs.value);
             return !Refused(ours) && their >= firstOf2030 && their < firstOf2050 &&
                    std::fabs(their - DayNumber(*ours.value) - 36525) < 1.001;
         },
         nullptr},
    };
}

} // namespace

TEST(ConversionsAgainstOle, TextToDouble) {
    Compare<std::string>(
        NumberTexts(), NumberDifferences(), ShowText,
        [](const std::string& text) { return Ours([&] { return Exact(ModPub::ToDouble(std::string_view(text))); }); },
        TheirDouble);
}

TEST(ConversionsAgainstOle, TextToInt16) {
    Compare<std::string>(
        NumberTexts(), NumberDifferences(), ShowText,
        [](const std::string& text) {
            return Ours([&] { return std::to_string(ModPub::ToInt16(std::string_view(text))); });
        },
        [](const std::string& text) {
            return Theirs<SHORT>(text, VarI2FromStr, [](SHORT value) { return std::to_string(value); });
        });
}

TEST(ConversionsAgainstOle, TextToInt32) {
    Compare<std::string>(
        NumberTexts(), NumberDifferences(), ShowText,
        [](const std::string& text) {
            return Ours([&] { return std::to_string(ModPub::ToInt32(std::string_view(text))); });
        },
        [](const std::string& text) {
            return Theirs<LONG>(text, VarI4FromStr, [](LONG value) { return std::to_string(value); });
        });
}

TEST(ConversionsAgainstOle, TextToBoolean) {
    Compare<std::string>(
        NumberTexts(), NumberDifferences(), ShowText,
        [](const std::string& text) {
            return Ours([&] { return std::string(ModPub::ToBoolean(std::string_view(text)) ? "True" : "False"); });
        },
        [](const std::string& text) {
            return Theirs<VARIANT_BOOL>(text, VarBoolFromStr,
                                        [](VARIANT_BOOL value) { return std::string(value ? "True" : "False"); });
        });
}

TEST(ConversionsAgainstOle, IsNumeric) {
    const auto parses = [](const std::string& text) -> Outcome {
        const BString wide(server::ToUtf16(text));
        NUMPARSE parsed{};
        parsed.cDig = 30;
        parsed.dwInFlags = NUMPRS_STD;
        BYTE digits[30];
        const HRESULT result = VarParseNumFromStr(wide.Get(), chinese, LOCALE_NOUSEROVERRIDE, &parsed, digits);
        return {std::string(SUCCEEDED(result) ? "True" : "False"), 0};
    };
    const std::vector<Accepted> accepted = {
        secondSign,
        exponentWithD,
        yuanSign,
        {"the parser alone does not see that a number is too large; the conversion behind it does",
         [](const std::string& input, const Outcome& ours, const Outcome&) {
             return ours.value == "False" && TheirDouble(input).error == en::overflow;
         },
         nullptr},
    };
    Compare<std::string>(
        NumberTexts(), accepted, ShowText,
        [](const std::string& text) {
            return Ours([&] { return std::string(ModPub::IsNumeric(std::string_view(text)) ? "True" : "False"); });
        },
        parses);
}

TEST(ConversionsAgainstOle, TextToDate) {
    Compare<std::string>(
        DateTexts(), DateDifferences(), ShowText,
        [](const std::string& text) {
            return Ours([&] { return ShowDay(ModPub::ToDate(std::string_view(text)).days); });
        },
        [](const std::string& text) { return Theirs<DATE>(text, VarDateFromStr, ShowDay); });
}

TEST(ConversionsAgainstOle, DoubleToText) {
    Compare<double>(
        Doubles(), {exponentBySize}, ShowNumber,
        [](const double& number) { return Ours([&] { return ModPub::NumberText(number); }); },
        [](const double& number) {
            return TheirText([&](BSTR* text) { return VarBstrFromR8(number, chinese, LOCALE_NOUSEROVERRIDE, text); });
        });
}

TEST(ConversionsAgainstOle, SingleToText) {
    std::vector<double> singles;
    for (const double number : Doubles()) {
        if (std::fabs(number) <= double{std::numeric_limits<float>::max()})
            singles.push_back(double{static_cast<float>(number)});
    }
    Compare<double>(
        singles, {exponentBySize}, ShowNumber,
        [](const double& number) { return Ours([&] { return ModPub::SingleText(static_cast<float>(number)); }); },
        [](const double& number) {
            return TheirText([&](BSTR* text) {
                return VarBstrFromR4(static_cast<float>(number), chinese, LOCALE_NOUSEROVERRIDE, text);
            });
        });
}

TEST(ConversionsAgainstOle, DateToText) {
    std::vector<double> days(cases::doubleEdges.begin(), cases::doubleEdges.end());
    cases::Random random(4);
    for (int i = 0; i < 2000; ++i)
        days.push_back(static_cast<double>(random.Below(80000)) + static_cast<double>(random.Below(86400)) / 86400);
    const std::vector<Accepted> accepted = {
        {"Wine pads the hours, where the system's Chinese time format does not",
         [](const std::string&, const Outcome& ours, const Outcome& theirs) {
             if (Refused(ours) || Refused(theirs))
                 return false;
             std::string unpadded = *theirs.value;
             const std::size_t hour = unpadded.rfind(' ') == unpadded.npos ? 0 : unpadded.rfind(' ') + 1;
             if (unpadded[hour] == '0')
                 unpadded.erase(hour, 1);
             return unpadded == *ours.value;
         },
         nullptr},
    };
    Compare<double>(
        days, accepted, ShowNumber, [](const double& day) { return Ours([&] { return ModPub::DateText({day}); }); },
        [](const double& day) {
            return TheirText([&](BSTR* text) { return VarBstrFromDate(day, chinese, LOCALE_NOUSEROVERRIDE, text); });
        });
}

TEST(ConversionsAgainstOle, FormatOfDateText) {
    std::vector<std::string> texts = DateTexts();
    const std::vector<std::string> numbers = NumberTexts();
    texts.insert(texts.end(), numbers.begin(), numbers.end());
    std::vector<Accepted> accepted = DateDifferences();
    accepted.insert(accepted.end(), {secondSign, exponentWithD, yuanSign});
    accepted.push_back({"Visual Basic's own Format leaves the empty text empty",
                        [](const std::string& input, const Outcome& ours, const Outcome&) {
                            return input.empty() && ours.value == "";
                        },
                        nullptr});
    accepted.push_back({"Wine does not fill a year below 1000 up to four digits",
                        [](const std::string&, const Outcome& ours, const Outcome& theirs) {
                            return ours.value && theirs.value && *ours.value == "0" + *theirs.value;
                        },
                        nullptr});
    accepted.push_back({"Wine cuts a year off at 16 bits",
                        [](const std::string& input, const Outcome&, const Outcome& theirs) {
                            if (Refused(theirs) || theirs.value->size() != std::string_view("yyyy-mm-dd").size())
                                return false;
                            const int whole = static_cast<int>(ModPub::Val(theirs.value->substr(0, 4))) + 0x10000;
                            return input.find(std::to_string(whole)) != input.npos;
                        },
                        nullptr});
    accepted.push_back({"Wine's VarFormat reads hexadecimal digits as C writes them",
                        [](const std::string& input, const Outcome& ours, const Outcome&) {
                            return input == "0x10" && ours.value == input;
                        },
                        nullptr});
    Compare<std::string>(
        texts, accepted, ShowText,
        [](const std::string& text) { return Ours([&] { return ModPub::FormatDate(std::string_view(text)); }); },
        [](const std::string& text) {
            // VarFormat itself reads dates by the user's locale, and numbers in plain digits alone in Wine, so a text
            // that is either is read before.
            const BString wide(server::ToUtf16(text));
            wchar_t format[] = L"yyyy-mm-dd";
            double number = 0;
            VARIANT value{};
            if (SUCCEEDED(VarDateFromStr(wide.Get(), chinese, LOCALE_NOUSEROVERRIDE, &V_DATE(&value))) ||
                (SUCCEEDED(VarR8FromStr(wide.Get(), chinese, LOCALE_NOUSEROVERRIDE, &number)) &&
                 SUCCEEDED(VarDateFromR8(number, &V_DATE(&value))))) {
                V_VT(&value) = VT_DATE;
            } else {
                V_VT(&value) = VT_BSTR;
                V_BSTR(&value) = wide.Get();
            }
            return TheirText([&](BSTR* out) { return VarFormat(&value, format, 1, 1, 0, out); });
        });
}

TEST(ConversionsAgainstOle, TwoPlaces) {
    // Wine's VarFormat writes such numbers over the end of its buffer and brings the process down.
    constexpr double tooLongForWine = 1e100;
    std::vector<double> numbers = Doubles();
    std::erase_if(numbers, [](double number) { return std::fabs(number) > tooLongForWine; });
    Compare<double>(
        numbers, {}, ShowNumber,
        [](const double& number) { return Ours([&] { return Exact(ModPub::TwoPlaces(number)); }); },
        [](const double& number) -> Outcome {
            wchar_t format[] = L"###0.00";
            VARIANT value{};
            V_VT(&value) = VT_R8;
            V_R8(&value) = number;
            const Outcome text = TheirText([&](BSTR* out) { return VarFormat(&value, format, 1, 1, 0, out); });
            return text.value ? Outcome{Exact(ModPub::Val(*text.value)), 0} : text;
        });
}
