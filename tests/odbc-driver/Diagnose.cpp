#include "tests/odbc-driver/Diagnose.h"

namespace odbc_driver {
namespace {

bool Contains(const std::string& text, std::string_view piece) { return text.find(piece) != std::string::npos; }

Diagnostic StateOf(const host::Error& error) {
    namespace number = host::error_number;
    const std::string& message = error.description();
    switch (error.number()) {
    case number::noTable:
        return {"42S02", 208, {}};
    case number::syntaxError:
        return Contains(message, "Invalid column name") ? Diagnostic{"42S22", 207, {}} : Diagnostic{"42000", 102, {}};
    case number::dataTruncated:
        return {"22001", 8152, {}};
    case number::integrityViolation:
        return {"23000", Contains(message, "NULL") ? 515 : 2627, {}};
    case number::conversionFailed:
        return {"22018", 245, {}};
    default:
        return {"HY000", 0, {}};
    }
}

} // namespace

Diagnostic Diagnose(const host::Error& error) {
    Diagnostic diagnostic = StateOf(error);
    diagnostic.message = "[Kovra][T-SQL driver]" + error.description();
    return diagnostic;
}

} // namespace odbc_driver
