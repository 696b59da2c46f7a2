#pragma once

#include "import/messages/Language.h"
#include "import/outcome/Outcome.h"

#include <string>

namespace importing {

/// What came of an import as one HTML page, to look at, to print and to sign: totals by warehouse and account, the
/// reasons of refusals, warnings, every correction, and who imported which file when. It has no scripts and needs no
/// other file.
std::string ReportHtml(const Outcome& outcome, Language language);

/// Where the report goes: beside "期初.xlsx" it is "期初.试运行.html" after a test run, and "期初.报告-7.html" after
/// import number 7, so that the report of an import is never overwritten. Paths are in UTF-8.
std::string ReportPath(const Outcome& outcome, Language language);

} // namespace importing
