#pragma once

#include "refhost/sql/types/DateTime.h"
#include "refhost/sql/types/Types.h"
#include "text/Utf16.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace refhost::sql {

class ExactNumber;

/// A value as SQLite holds it, see `Family`.
class Cell {
public:
    enum class Kind { null, integer, real, text, blob };

    Kind kind = Kind::null;
    std::int64_t integer = 0;
    double real = 0;

    bool IsNull() const { return kind == Kind::null; }
    /// Text or blob: what it holds.
    std::string_view Bytes() const { return owned_ ? std::string_view(storage_) : outside_; }
    void SetInteger(std::int64_t value) {
        kind = Kind::integer;
        integer = value;
    }
    void SetReal(double value) {
        kind = Kind::real;
        real = value;
    }
    void SetText(std::string text) {
        kind = Kind::text;
        storage_ = std::move(text);
        owned_ = true;
    }
    void SetBlob(std::string blob) {
        SetText(std::move(blob));
        kind = Kind::blob;
    }
    /// Points at bytes that outlive the cell.
    void PointTo(Kind textOrBlob, std::string_view outside) {
        kind = textOrBlob;
        outside_ = outside;
        owned_ = false;
    }
    /// Keeps the first `size` bytes.
    void Shorten(std::size_t size) {
        if (owned_) {
            storage_.resize(size);
        } else {
            outside_ = outside_.substr(0, size);
        }
    }

private:
    std::string_view outside_;
    std::string storage_;
    bool owned_ = false;
};

/// What becomes of a value that is too long for its new type.
enum class Surplus {
    cut,    ///< cast and convert cut it off
    refuse, ///< a column refuses it
};

/// What counts against the length of a text column: UTF-16 units, or bytes in the code page (two for what is not
/// ASCII).
std::size_t MeasuredLength(std::string_view text, bool national);
/// UTF-8 to UTF-16 and back, lone surrogates kept.
inline std::u16string ToUtf16(std::string_view text) { return text::ToUtf16<char16_t>(text); }
inline std::string FromUtf16(std::u16string_view text) { return text::FromUtf16(text); }

/// Converts a value as SQL Server does. `cell` holds a value of type `from` and receives one of type `to`.
/// `style` is convert's third argument, 0 without one. Throws SQL Server's conversion errors.
void Convert(Cell& cell, const Type& from, const Type& to, int style, Surplus surplus);

/// An exact number as text of a decimal or money type. Throws the overflow error when it does not fit, with the type
/// `from` named in it; `Base::null` for the result of an expression.
std::string FitExact(const ExactNumber& number, const Type& to, Base from);
/// Whether a value lies within the range of a whole-number type.
bool IsInRange(std::int64_t value, Base base);
/// Throws SQL Server's overflow error unless `value` lies within the range of the whole-number type.
void CheckRange(std::int64_t value, Base base, Base from);

} // namespace refhost::sql
