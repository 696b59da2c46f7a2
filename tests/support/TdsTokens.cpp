#include "tests/support/TdsTokens.h"

#include "ModPub/Conversions.h"
#include "text/Utf16.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include <iconv.h>

namespace test::tds {
namespace {

using host::FieldType;

std::string Utf16(std::string_view text) {
    const auto units = ::text::ToUtf16<char16_t>(text);
    std::string bytes;
    for (const char16_t unit : units) {
        AppendLittle(bytes, unit, 2);
    }
    return bytes;
}

/// The text in the code page of the collation Chinese_PRC_CI_AS.
std::string CodePage936(std::string_view text) {
    static const iconv_t converter = iconv_open("CP936//TRANSLIT", "UTF-8");
    std::string input(text);
    std::string output(input.size() + 1, '\0');
    char* from = input.data();
    char* to = output.data();
    std::size_t fromLeft = input.size();
    std::size_t toLeft = output.size();
    iconv(converter, &from, &fromLeft, &to, &toLeft);
    output.resize(output.size() - toLeft);
    return output;
}

/// A text with its length in characters in front, in `lengthBytes` bytes.
void AppendName(std::string& bytes, std::string_view text, int lengthBytes) {
    const std::string units = Utf16(text);
    AppendLittle(bytes, units.size() / 2, lengthBytes);
    bytes += units;
}

std::string Sized(char token, const std::string& body) {
    std::string bytes(1, token);
    AppendLittle(bytes, body.size(), 2);
    return bytes + body;
}

/// Chinese_PRC_CI_AS: language 0x0804; case, kana and width do not count.
constexpr std::string_view collation("\x04\x08\xD0\x00\x00", 5);

/// How values of a column lie in a row.
enum class Layout { whole, bit, real, money, decimal, dateTime, date, guid, narrow, wide, bytes };

struct ColumnType {
    FieldType type;
    Layout layout;
    unsigned char token;
    /// Bytes of the fixed types; for texts whether they are of any length.
    int size;
};

constexpr int anyLength = 0xFFFF;

constexpr std::array columnTypes = std::to_array<ColumnType>({
    {FieldType::unsignedTinyInt, Layout::whole, 0x26, 1},
    {FieldType::smallInt, Layout::whole, 0x26, 2},
    {FieldType::integer, Layout::whole, 0x26, 4},
    {FieldType::bigInt, Layout::whole, 0x26, 8},
    {FieldType::boolean, Layout::bit, 0x68, 1},
    {FieldType::single, Layout::real, 0x6D, 4},
    {FieldType::doubleFloat, Layout::real, 0x6D, 8},
    {FieldType::currency, Layout::money, 0x6E, 8},
    {FieldType::numeric, Layout::decimal, 0x6C, 17},
    {FieldType::dbTimeStamp, Layout::dateTime, 0x6F, 8},
    {FieldType::dbDate, Layout::date, 0x28, 3},
    {FieldType::guid, Layout::guid, 0x24, 16},
    {FieldType::character, Layout::narrow, 0xAF, 0},
    {FieldType::varChar, Layout::narrow, 0xA7, 0},
    {FieldType::longVarChar, Layout::narrow, 0xA7, anyLength},
    {FieldType::wideCharacter, Layout::wide, 0xEF, 0},
    {FieldType::varWideChar, Layout::wide, 0xE7, 0},
    {FieldType::longVarWideChar, Layout::wide, 0xE7, anyLength},
    {FieldType::binary, Layout::bytes, 0xAD, 0},
    {FieldType::varBinary, Layout::bytes, 0xA5, 0},
    {FieldType::longVarBinary, Layout::bytes, 0xA5, anyLength},
});

const ColumnType& TypeOf(const host::Field& field) {
    const auto* const found = std::ranges::find(columnTypes, field.type, &ColumnType::type);
    if (found == columnTypes.end()) {
        throw std::runtime_error("a column type without a form on the wire: " + field.name);
    }
    return *found;
}

bool IsVariable(Layout layout) { return layout == Layout::narrow || layout == Layout::wide || layout == Layout::bytes; }

/// Whether values of a column travel in pieces, their length in front of them all.
bool InPieces(const host::Field& field, const ColumnType& type) {
    return type.size == anyLength || field.definedSize * (type.layout == Layout::wide ? 2 : 1) > 8000;
}

void AppendColumn(std::string& bytes, const host::Field& field) {
    const ColumnType& type = TypeOf(field);
    AppendLittle(bytes, 0, 4);                                  // no type of the user's own
    AppendLittle(bytes, field.nullable ? 0x0009U : 0x0008U, 2); // may be updated, may be Null
    bytes.push_back(static_cast<char>(type.token));
    if (IsVariable(type.layout)) {
        const int size = field.definedSize * (type.layout == Layout::wide ? 2 : 1);
        AppendLittle(bytes,
                     static_cast<std::uint64_t>(
                         InPieces(field, type) ? anyLength : std::max(size, type.layout == Layout::wide ? 2 : 1)),
                     2);
        if (type.layout != Layout::bytes) {
            bytes += collation;
        }
    } else if (type.layout != Layout::date) {
        bytes.push_back(static_cast<char>(type.size));
        if (type.layout == Layout::decimal) {
            bytes.push_back(static_cast<char>(field.precision));
            bytes.push_back(static_cast<char>(field.scale));
        }
    }
    AppendName(bytes, field.name, 1);
}

/// Sign and digits of a decimal with `scale` digits behind the point, as a number of 16 bytes.
std::string DecimalBytes(std::string text, int scale) {
    const bool negative = text.starts_with('-');
    std::size_t point = text.find('.');
    if (point == std::string::npos) {
        point = text.size();
        text.push_back('.');
    }
    text.resize(point + 1 + static_cast<std::size_t>(scale), '0');
    text.erase(point, 1);
    __extension__ unsigned __int128 magnitude = 0;
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            magnitude = magnitude * 10 + static_cast<unsigned>(c - '0');
        }
    }
    std::string bytes(1, negative ? '\0' : '\1');
    AppendLittle(bytes, static_cast<std::uint64_t>(magnitude), 8);
    AppendLittle(bytes, static_cast<std::uint64_t>(magnitude >> 64), 8);
    return bytes;
}

struct Moment {
    std::int64_t day;  ///< from 1900-01-01
    std::int64_t tick; ///< of 1/300 second
};

Moment MomentOf(double days) {
    constexpr std::int64_t ticksADay = 300LL * 86'400;
    constexpr int epoch = 2; // 1900-01-01 as OLE Automation counts
    const double whole = std::trunc(days);
    Moment moment{static_cast<std::int64_t>(whole) - epoch,
                  std::llround(std::fabs(days - whole) * static_cast<double>(ticksADay))};
    if (moment.tick == ticksADay) {
        moment = {moment.day + 1, 0};
    }
    return moment;
}

/// Bytes of "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx", the first three groups lowest byte first.
std::string GuidBytes(std::string_view text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return std::isxdigit(c) != 0; });
    constexpr std::array order = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    std::string bytes;
    for (const int index : order) {
        bytes.push_back(
            static_cast<char>(std::stoi(digits.substr(static_cast<std::size_t>(index) * 2, 2), nullptr, 16)));
    }
    return bytes;
}

std::string ValueBytes(const host::Value& value, const host::Field& field, const ColumnType& type) {
    std::string bytes;
    switch (type.layout) {
    case Layout::whole:
        AppendLittle(bytes, static_cast<std::uint64_t>(std::get<std::int64_t>(value.storage())), type.size);
        break;
    case Layout::bit:
        bytes.push_back(ModPub::ToBoolean(value) ? '\1' : '\0');
        break;
    case Layout::real: {
        const double number = ModPub::ToDouble(value);
        if (type.size == 4) {
            AppendLittle(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(number)), 4);
        } else {
            AppendLittle(bytes, std::bit_cast<std::uint64_t>(number), 8);
        }
        break;
    }
    case Layout::money: {
        const std::string digits = DecimalBytes(ModPub::ToText(value), 4);
        std::uint64_t magnitude = 0;
        std::memcpy(&magnitude, digits.data() + 1, sizeof(magnitude));
        const std::uint64_t units = digits[0] == 0 ? 0 - magnitude : magnitude;
        AppendLittle(bytes, units >> 32, 4);
        AppendLittle(bytes, units, 4);
        break;
    }
    case Layout::decimal:
        bytes = DecimalBytes(ModPub::ToText(value), field.scale);
        break;
    case Layout::dateTime: {
        const Moment moment = MomentOf(std::get<host::Date>(value.storage()).days);
        AppendLittle(bytes, static_cast<std::uint64_t>(moment.day), 4);
        AppendLittle(bytes, static_cast<std::uint64_t>(moment.tick), 4);
        break;
    }
    case Layout::date: {
        constexpr std::int64_t from0001 = 693'595; // days from 0001-01-01 to 1900-01-01
        AppendLittle(
            bytes, static_cast<std::uint64_t>(MomentOf(std::get<host::Date>(value.storage()).days).day + from0001), 3);
        break;
    }
    case Layout::guid:
        bytes = GuidBytes(ModPub::ToText(value));
        break;
    case Layout::narrow:
        bytes = CodePage936(ModPub::ToText(value));
        break;
    case Layout::wide:
        bytes = Utf16(ModPub::ToText(value));
        break;
    case Layout::bytes: {
        const auto& data = std::get<host::Bytes>(value.storage()).data;
        bytes.assign(data.begin(), data.end());
        break;
    }
    }
    return bytes;
}

void AppendValue(std::string& row, const host::Value& value, const host::Field& field) {
    const ColumnType& type = TypeOf(field);
    const bool null = value.IsNull() || value.IsEmpty();
    const std::string bytes = null ? std::string() : ValueBytes(value, field, type);
    if (!IsVariable(type.layout)) {
        row.push_back(static_cast<char>(bytes.size()));
        row += bytes;
    } else if (!InPieces(field, type)) {
        AppendLittle(row, null ? 0xFFFF : bytes.size(), 2);
        row += bytes;
    } else {
        AppendLittle(row, null ? ~std::uint64_t{0} : bytes.size(), 8);
        if (!null) {
            if (!bytes.empty()) {
                AppendLittle(row, bytes.size(), 4);
                row += bytes;
            }
            AppendLittle(row, 0, 4);
        }
    }
}

std::string EndToken(char kind, int status, std::uint64_t rows) {
    std::string token(1, kind);
    AppendLittle(token, static_cast<std::uint64_t>(status), 2);
    AppendLittle(token, 0, 2);
    AppendLittle(token, rows, 8);
    return token;
}

} // namespace

void AppendLittle(std::string& bytes, std::uint64_t number, int count) {
    for (int index = 0; index < count; ++index) {
        bytes.push_back(static_cast<char>(number >> (8 * index) & 0xFF));
    }
}

std::string LoginAccepted() {
    std::string body("\x01\x74\x00\x00\x04", 5);
    AppendName(body, "Microsoft SQL Server", 1);
    body.append("\x0F\x00\x00\x00", 4);
    return Sized('\xAD', body);
}

std::string Message(int number, std::string_view text, int severity) {
    std::string body;
    AppendLittle(body, static_cast<std::uint64_t>(number), 4);
    AppendLittle(body, 1, 1);
    AppendLittle(body, static_cast<std::uint64_t>(severity), 1);
    AppendName(body, text, 2);
    AppendName(body, "TEST", 1);
    AppendLittle(body, 0, 1);
    AppendLittle(body, 1, 4);
    return Sized(severity > 10 ? '\xAA' : '\xAB', body);
}

std::string Changed(TransactionChange change, Transaction transaction) {
    std::string named;
    AppendLittle(named, 8, 1);
    AppendLittle(named, transaction, 8);
    const std::string none(1, '\0');
    const std::string type(1, static_cast<char>(change));
    return Sized('\xE3', type + (change == TransactionChange::begun ? named + none : none + named));
}

std::string Rows(const refhost::ResultSet& result) {
    std::string bytes("\x81");
    AppendLittle(bytes, result.fields->size(), 2);
    for (const host::Field& field : *result.fields) {
        AppendColumn(bytes, field);
    }
    for (std::size_t index = 0; index < result.cells.size(); ++index) {
        const std::size_t column = index % result.fields->size();
        if (column == 0) {
            bytes.push_back('\xD1');
        }
        AppendValue(bytes, result.cells[index], (*result.fields)[column]);
    }
    return bytes;
}

std::string Done(int status, std::uint64_t rows) { return EndToken('\xFD', status, rows); }

std::string DoneInProcedure(int status, std::uint64_t rows) { return EndToken('\xFF', status | done::more, rows); }

std::string ProcedureDone(int status) {
    std::string tokens = "\x79";
    AppendLittle(tokens, status == done::error ? 1 : 0, 4);
    return tokens + EndToken('\xFE', status, 0);
}

std::string ReturnedNumber(std::int32_t number) {
    std::string token = "\xAC";
    AppendLittle(token, 0, 2);     // the first argument
    AppendLittle(token, 0, 1);     // without a name
    AppendLittle(token, 1, 1);     // an argument that comes back
    AppendLittle(token, 0, 4 + 2); // no type of the user's own
    AppendLittle(token, 0x26, 1);  // a whole number
    AppendLittle(token, 4, 1);
    AppendLittle(token, 4, 1);
    AppendLittle(token, static_cast<std::uint32_t>(number), 4);
    return token;
}

} // namespace test::tds
