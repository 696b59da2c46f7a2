#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace host {

/// The Variant that was never set.
struct Empty {
    auto operator<=>(const Empty&) const = default;
};

/// The database's Null.
struct Null {
    auto operator<=>(const Null&) const = default;
};

/// A date and time as OLE Automation counts it: days since 1899-12-30, the time of day as the fraction.
struct Date {
    double days = 0;
    auto operator<=>(const Date&) const = default;
};

/// An exact decimal number as plain text: an optional '-', digits, and an optional '.' with digits; no exponent.
/// The digits behind the point are the number's scale, trailing zeros included.
struct Decimal {
    std::string text;
    auto operator<=>(const Decimal&) const = default;
};

/// Binary data, for example of a timestamp column.
struct Bytes {
    std::vector<std::uint8_t> data;
    auto operator<=>(const Bytes&) const = default;
};

/// A Variant. It only holds; `ModPub/Conversions.h` converts it as the run-time does.
class Value {
public:
    using Storage = std::variant<Empty, Null, bool, std::int64_t, float, double, Decimal, std::string, Date, Bytes>;

    Value() = default;
    Value(Null) : storage_(Null{}) {}
    Value(bool value) : storage_(value) {}
    Value(int value) : storage_(std::int64_t{value}) {}
    Value(std::int64_t value) : storage_(value) {}
    /// A Single: its text has seven digits.
    Value(float value) : storage_(value) {}
    Value(double value) : storage_(value) {}
    Value(Decimal value) : storage_(std::move(value)) {}
    /// Text in UTF-8.
    Value(std::string value) : storage_(std::move(value)) {}
    Value(const char* value) : storage_(std::string(value)) {}
    Value(Date value) : storage_(value) {}
    Value(Bytes value) : storage_(std::move(value)) {}

    bool IsEmpty() const noexcept { return std::holds_alternative<Empty>(storage_); }
    bool IsNull() const noexcept { return std::holds_alternative<Null>(storage_); }

    /// The held alternative, or nullptr when another is held.
    template <class T> const T* As() const noexcept { return std::get_if<T>(&storage_); }

    const Storage& storage() const noexcept { return storage_; }

    bool operator==(const Value&) const = default;

private:
    Storage storage_;
};

} // namespace host
