#include "tests/support/Paths.h"

namespace test {

std::filesystem::path SourceFolder() { return std::filesystem::absolute(KOVRA_SOURCE_DIR).make_preferred(); }

std::string ProgramPath() { return KOVRA_PROGRAM; }

std::string OdbcDriverPath() { return KOVRA_ODBC_DRIVER; }

} // namespace test
