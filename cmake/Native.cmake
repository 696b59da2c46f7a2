# The reference host, the program and what proves them.
find_package(PkgConfig REQUIRED)
find_package(fmt REQUIRED)
find_package(CLI11 REQUIRED)
pkg_check_modules(LIBXML2 REQUIRED IMPORTED_TARGET libxml-2.0)
pkg_check_modules(SQLITE3 REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(ODBC REQUIRED IMPORTED_TARGET odbc)
pkg_check_modules(MINIZIP REQUIRED IMPORTED_TARGET minizip)
pkg_check_modules(XLSXWRITER REQUIRED IMPORTED_TARGET xlsxwriter)

add_library(kovra_sqlite ALIAS PkgConfig::SQLITE3)
include(cmake/AccountDatabase.cmake)

kovra_library(refhost/xml ModPub PkgConfig::LIBXML2)
kovra_library(refhost/odbc ModPub PkgConfig::ODBC)
add_library(refhost STATIC refhost/Environment.cpp refhost/OpenDatabase.cpp refhost/LoginFile.cpp)
target_link_libraries(refhost PUBLIC refhost-database refhost-xml refhost-odbc refhost-eai refhost-ia
                              PRIVATE kovra_sanitize)

kovra_library(import ModPub fmt::fmt PkgConfig::LIBXML2 PkgConfig::MINIZIP PkgConfig::XLSXWRITER kovra_sqlite)

# The program's commands, apart from main, so that the tests reach them.
file(GLOB_RECURSE cli_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/cli/*.cpp)
list(REMOVE_ITEM cli_sources ${PROJECT_SOURCE_DIR}/cli/main.cpp)
add_library(cli STATIC ${cli_sources})
target_link_libraries(cli PUBLIC ${KOVRA_CLASSES} refhost import fmt::fmt CLI11::CLI11 PRIVATE kovra_sanitize)
set_property(SOURCE cli/Version.cpp PROPERTY COMPILE_DEFINITIONS
             KOVRA_VERSION="${PROJECT_VERSION}" KOVRA_ODBC_VERSION="${ODBC_VERSION}")
add_executable(kovra cli/main.cpp)
target_link_libraries(kovra PRIVATE cli kovra_sanitize)
set_target_properties(kovra PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})

include(cmake/Installed.cmake)

if(KOVRA_TESTS)
  enable_testing()
  add_subdirectory(tests)
endif()
# The driver's runs are tests of the sanitizers; with libFuzzer the targets stand alone.
if(KOVRA_FUZZ OR (KOVRA_TESTS AND KOVRA_SANITIZE MATCHES "address"))
  add_subdirectory(fuzz)
endif()
if(KOVRA_BENCH)
  add_subdirectory(bench)
endif()
