#include "refhost/ado/JsonRow.h"

#include "text/Json.h"

#include <chrono>
#include <cmath>
#include <cstdint>

#include <fmt/format.h>

namespace refhost {
namespace {

std::string DateText(host::Date date) {
    using namespace std::chrono;
    constexpr sys_days epoch = 1899y / December / 30;
    // A negative date counts its day down and its time of day up (OLE Automation).
    const double whole = std::trunc(date.days);
    constexpr std::int64_t dayLength = 86'400'000; // in milliseconds, to which dates are kept
    const std::int64_t time = std::llround(std::abs(date.days - whole) * static_cast<double>(dayLength));
    const auto day = epoch + days(static_cast<int>(whole)) + days(time / dayLength);
    const year_month_day civil(day);
    const std::int64_t second = time % dayLength / 1000;
    const std::int64_t millisecond = time % 1000;
    std::string text = fmt::format("{:04}-{:02}-{:02}", static_cast<int>(civil.year()),
                                   static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day()));
    if (second != 0 || millisecond != 0) {
        text += fmt::format(" {:02}:{:02}:{:02}", second / 3600, second / 60 % 60, second % 60);
    }
    if (millisecond != 0) {
        text += fmt::format(".{:03}", millisecond);
    }
    return text;
}

void AppendHex(std::string& text, const host::Bytes& bytes) {
    text.append("0x");
    for (const std::uint8_t byte : bytes.data) {
        text += fmt::format("{:02X}", byte);
    }
}

struct AppendPlain {
    std::string& text;

    void operator()(host::Empty) const {}
    void operator()(host::Null) const {}
    void operator()(bool value) const { text.append(value ? "1" : "0"); }
    void operator()(std::int64_t value) const { text += fmt::format("{}", value); }
    void operator()(float value) const { text += fmt::format("{}", value); }
    void operator()(double value) const { text += fmt::format("{}", value); }
    void operator()(const host::Decimal& value) const { text.append(value.text); }
    void operator()(const std::string& value) const { text.append(value); }
    void operator()(host::Date value) const { text.append(DateText(value)); }
    void operator()(const host::Bytes& value) const { AppendHex(text, value); }
};

struct AppendJson : AppendPlain {
    using AppendPlain::operator();
    void operator()(host::Empty) const { text.append("null"); }
    void operator()(host::Null) const { text.append("null"); }
    void operator()(bool value) const { text.append(value ? "true" : "false"); }
    void operator()(const std::string& value) const { text::AppendJsonString(text, value); }
    void operator()(host::Date value) const { text::AppendJsonString(text, DateText(value)); }
    void operator()(const host::Bytes& value) const {
        text.push_back('"');
        AppendHex(text, value);
        text.push_back('"');
    }
};

} // namespace

std::string PlainText(const host::Value& value) {
    std::string text;
    std::visit(AppendPlain{text}, value.storage());
    return text;
}

void AppendJsonRow(std::string& json, const ResultSet& result, std::size_t row) {
    const Fields& fields = *result.fields;
    text::JsonWriter writer(json);
    writer.Open('{');
    for (std::size_t column = 0; column < fields.size(); ++column) {
        writer.Name(fields[column].name);
        std::visit(AppendJson{{json}}, result.cells[row * fields.size() + column].storage());
    }
    writer.Close('}');
}

} // namespace refhost
