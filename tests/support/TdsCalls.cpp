#include "tests/support/TdsCalls.h"

#include "text/Utf16.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace test::tds {
namespace {

constexpr std::size_t collationSize = 5;

Procedure ReadProcedure(Reader& reader) {
    // A client calls them by number, behind a length that no name has, or by name.
    using Served = std::pair<std::string_view, Procedure>;
    constexpr std::array served = {Served{"sp_prepare", Procedure::prepare}, Served{"sp_execute", Procedure::execute},
                                   Served{"sp_prepexec", Procedure::prepareAndExecute},
                                   Served{"sp_unprepare", Procedure::unprepare}};
    constexpr std::uint64_t byNumber = 0xFFFF;
    const std::uint64_t length = reader.Little(2);
    const auto* const found = length == byNumber
                                  ? std::ranges::find(served, static_cast<Procedure>(reader.Little(2)), &Served::second)
                                  : std::ranges::find(served, reader.Text(length), &Served::first);
    if (found == served.end()) {
        throw std::runtime_error("a procedure that is not served");
    }
    return found->second;
}

/// A text in pieces, each with its length in front, none behind the last.
std::string ReadPieces(Reader& reader) {
    reader.Little(8);
    std::string text;
    while (const std::uint64_t size = reader.Little(4)) {
        text += reader.Text(size / 2);
    }
    return text;
}

std::variant<std::monostate, std::int64_t, std::string> ReadArgument(Reader& reader) {
    constexpr std::uint64_t wholeNumber = 0x26;
    constexpr std::uint64_t longText = 0x63;
    constexpr std::uint64_t text = 0xE7;
    reader.Text(reader.Little(1)); // its name
    reader.Little(1);              // whether it comes back
    switch (reader.Little(1)) {
    case wholeNumber: {
        reader.Little(1);
        const std::size_t size = reader.Little(1);
        if (size == 0) {
            return {};
        }
        return static_cast<std::int64_t>(reader.Little(size));
    }
    case longText: {
        reader.Little(4);
        reader.Bytes(collationSize);
        constexpr std::uint64_t null = 0xFFFFFFFF;
        const std::uint64_t size = reader.Little(4);
        if (size == null) {
            return {};
        }
        return reader.Text(size / 2);
    }
    case text: {
        constexpr std::uint64_t anyLength = 0xFFFF;
        const bool inPieces = reader.Little(2) == anyLength;
        reader.Bytes(collationSize);
        if (inPieces) {
            return ReadPieces(reader);
        }
        constexpr std::uint64_t null = 0xFFFF;
        const std::uint64_t size = reader.Little(2);
        if (size == null) {
            return {};
        }
        return reader.Text(size / 2);
    }
    default:
        throw std::runtime_error("an argument of a type that is not served");
    }
}

} // namespace

std::uint64_t Reader::Little(std::size_t count) {
    std::uint64_t number = 0;
    const std::string_view bytes = Bytes(count);
    for (std::size_t index = 0; index < count; ++index) {
        number |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[index])) << (8 * index);
    }
    return number;
}

std::string_view Reader::Bytes(std::size_t count) {
    if (count > bytes_.size()) {
        throw std::out_of_range("a message that ends early");
    }
    const std::string_view bytes = bytes_.substr(0, count);
    bytes_.remove_prefix(count);
    return bytes;
}

std::string Reader::Text(std::size_t units) {
    const std::string_view bytes = Bytes(2 * units);
    std::u16string text;
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[index]) |
                                             static_cast<unsigned char>(bytes[index + 1]) << 8));
    }
    return ::text::FromUtf16(std::u16string_view(text));
}

std::vector<ProcedureCall> ProcedureCalls(std::string_view body) {
    constexpr char next = '\xFF';
    Reader reader(body);
    std::vector<ProcedureCall> calls;
    while (!reader.AtEnd()) {
        calls.push_back({ReadProcedure(reader), {}});
        reader.Little(2); // options of the call
        // Behind a call's arguments its end, or what divides it from the next; no name is so long.
        while (!reader.AtEnd() && reader.Next() != next) {
            calls.back().arguments.push_back(ReadArgument(reader));
        }
        if (!reader.AtEnd()) {
            reader.Little(1);
        }
    }
    return calls;
}

} // namespace test::tds
