#include "tests/support/Paths.h"

#include "os/Variable.h"

namespace test {

std::filesystem::path SourceFolder() { return std::filesystem::absolute(KOVRA_SOURCE_DIR).make_preferred(); }

std::string ProgramPath() { return os::Variable("KOVRA_TEST_PROGRAM").value_or(KOVRA_PROGRAM); }

bool ProgramIsForWindows() { return os::Variable("KOVRA_EXE").has_value(); }

std::string OdbcDriverPath() { return KOVRA_ODBC_DRIVER; }

} // namespace test
