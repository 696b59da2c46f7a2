#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace host {

/// Number of an error, as a trap reads it: a small positive number for the run-time's own errors and for ADO's
/// (3705), the signed 32-bit HRESULT for every other.
using ErrorNumber = std::int32_t;

/// The run-time's customary numbers (Visual Basic run-time, unchanged since version 5).
namespace error_number {
inline constexpr ErrorNumber invalidCall = 5;
inline constexpr ErrorNumber overflow = 6;
inline constexpr ErrorNumber outOfMemory = 7;
inline constexpr ErrorNumber typeMismatch = 13;
inline constexpr ErrorNumber userInterrupt = 18;
inline constexpr ErrorNumber objectNotSet = 91;
inline constexpr ErrorNumber invalidUseOfNull = 94;
inline constexpr ErrorNumber cannotCreateObject = 429;
inline constexpr ErrorNumber noSuchMember = 438;

// ADO's own errors, low words of HRESULTs 0x800A....
inline constexpr ErrorNumber noCurrentRecord = 3021;
inline constexpr ErrorNumber itemNotFound = 3265;
inline constexpr ErrorNumber objectClosed = 3704;
inline constexpr ErrorNumber objectOpen = 3705;
inline constexpr ErrorNumber providerNotFound = 3706;

// OLE DB's, as signed HRESULTs.
inline constexpr ErrorNumber syntaxError = -2147217900;        // DB_E_ERRORSINCOMMAND 0x80040E14
inline constexpr ErrorNumber noTable = -2147217865;            // DB_E_NOTABLE 0x80040E37
inline constexpr ErrorNumber dataTruncated = -2147217833;      // DB_E_DATAOVERFLOW 0x80040E57
inline constexpr ErrorNumber integrityViolation = -2147217873; // DB_E_INTEGRITYVIOLATION 0x80040E2F
inline constexpr ErrorNumber conversionFailed = -2147217913;   // DB_E_CANTCONVERTVALUE 0x80040E07
inline constexpr ErrorNumber unspecified = -2147467259;        // E_FAIL 0x80004005
} // namespace error_number

/// What an error trap sees: a number and a description. Every failure inside the house travels as this exception.
class Error : public std::exception {
public:
    /// @param native the database server's own number of the error, 0 when it is not the server's
    Error(ErrorNumber number, std::string description, int native = 0)
        : number_(number), native_(native), description_(std::move(description)) {}

    /// The number, see `ErrorNumber`.
    ErrorNumber number() const noexcept { return number_; }
    /// SQL Server's own number (`message_id` of sys.messages); 0 when there is none. A trap does not see it.
    int native() const noexcept { return native_; }
    /// The description in UTF-8; may be empty.
    const std::string& description() const noexcept { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    ErrorNumber number_;
    int native_;
    std::string description_;
};

} // namespace host
