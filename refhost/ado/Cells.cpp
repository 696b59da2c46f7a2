#include "refhost/ado/Cells.h"

#include <array>
#include <cstring>
#include <optional>
#include <string_view>
#include <type_traits>
#include <variant>

namespace refhost {
namespace {

/// Sizes below this one take a byte, all others this byte and eight more.
constexpr unsigned char longSize = 0xFF;

template <class Number> void AppendNumber(std::string& packed, Number number) {
    packed.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void AppendBytes(std::string& packed, const void* bytes, std::size_t size) {
    if (size < longSize) {
        packed.push_back(static_cast<char>(size));
    } else {
        packed.push_back(static_cast<char>(longSize));
        AppendNumber(packed, size);
    }
    packed.append(static_cast<const char*>(bytes), size);
}

struct Append {
    std::string& packed;

    void operator()(host::Empty) const {}
    void operator()(host::Null) const {}
    void operator()(host::Date date) const { AppendNumber(packed, date.days); }
    void operator()(const host::Decimal& decimal) const { (*this)(decimal.text); }
    void operator()(const std::string& text) const { AppendBytes(packed, text.data(), text.size()); }
    void operator()(const host::Bytes& bytes) const { AppendBytes(packed, bytes.data.data(), bytes.data.size()); }
    template <class Number> void operator()(Number number) const { AppendNumber(packed, number); }
};

// What stands at `at`, which moves behind it.

template <class Number> void Take(const char*& at, Number& number) {
    std::memcpy(&number, at, sizeof number);
    at += sizeof number;
}

std::string_view TakeBytes(const char*& at) {
    std::size_t size = static_cast<unsigned char>(*at++);
    if (size == longSize) {
        Take(at, size);
    }
    at += size;
    return {at - size, size};
}

void Take(const char*&, host::Null&) {}
void Take(const char*& at, host::Date& date) { Take(at, date.days); }
void Take(const char*& at, std::string& text) { text = TakeBytes(at); }
void Take(const char*& at, host::Decimal& decimal) { decimal.text = TakeBytes(at); }
void Take(const char*& at, host::Bytes& bytes) {
    const std::string_view data = TakeBytes(at);
    bytes.data.assign(data.begin(), data.end());
}

template <class Kind> constexpr std::optional<std::size_t> BytesOf() {
    if (std::is_same_v<Kind, std::string> || std::is_same_v<Kind, host::Decimal> || std::is_same_v<Kind, host::Bytes>) {
        return std::nullopt;
    }
    return std::is_empty_v<Kind> ? 0 : sizeof(Kind);
}

template <class Kind> host::Value TakeKind(const char*& at) {
    Kind kind{};
    Take(at, kind);
    return kind;
}
template <> host::Value TakeKind<host::Empty>(const char*&) { return {}; }

/// What becomes of a value of each kind, in the order of `host::Value::Storage`.
template <class Storage> struct OfKind;
template <class... Kinds> struct OfKind<std::variant<Kinds...>> {
    static constexpr std::array take = {&TakeKind<Kinds>...};
    /// How many bytes it takes, nothing where they begin with their number.
    static constexpr std::array<std::optional<std::size_t>, sizeof...(Kinds)> bytes = {BytesOf<Kinds>()...};
};

using Of = OfKind<host::Value::Storage>;

std::size_t TakeIndex(const char*& at) { return static_cast<unsigned char>(*at++); }

} // namespace

void Cells::Add(const host::Value& value) {
    if (size_ != 0 && size_ % stride == 0) {
        places_.push_back(packed_.size());
    }
    packed_.push_back(static_cast<char>(value.storage().index()));
    std::visit(Append{packed_}, value.storage());
    ++size_;
}

host::Value Cells::operator[](std::size_t index) const {
    const std::size_t known = index - index % stride;
    if (next_.index > index || next_.index < known) {
        next_ = {known, known == 0 ? 0 : places_[known / stride - 1]};
    }
    const char* at = packed_.data() + next_.place;
    for (std::size_t before = index - next_.index; before != 0; --before) {
        const std::optional<std::size_t> bytes = Of::bytes[TakeIndex(at)];
        if (bytes) {
            at += *bytes;
        } else {
            TakeBytes(at);
        }
    }
    host::Value value = Of::take[TakeIndex(at)](at);
    next_ = {index + 1, static_cast<std::size_t>(at - packed_.data())};
    return value;
}

} // namespace refhost
