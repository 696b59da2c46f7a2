#include "cli/Version.h"

#include <cstdlib>

#include <CLI/Version.hpp>
#include <fmt/format.h>
#include <libxml/parser.h>
#include <sqlite3.h>

namespace cli {
namespace {

/// "2.9.14" of "20914": what the library that was loaded says of itself.
std::string LibxmlVersion() {
    const int number = std::atoi(xmlParserVersion);
    return fmt::format("{}.{}.{}", number / 10000, number / 100 % 100, number % 100);
}

} // namespace

std::string VersionText() {
    std::string text = "kovra " KOVRA_VERSION "\n";
    text.append("libxml2 ").append(LibxmlVersion()).append("\n");
    text.append("SQLite ").append(sqlite3_libversion()).append("\n");
    text.append(KOVRA_ODBC_VERSION "\n");
    text.append(fmt::format("fmt {}.{}.{}\n", FMT_VERSION / 10000, FMT_VERSION / 100 % 100, FMT_VERSION % 100));
    text.append("CLI11 " CLI11_VERSION "\n");
    return text;
}

} // namespace cli
