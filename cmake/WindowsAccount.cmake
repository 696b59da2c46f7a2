# The embedded account database on Windows, for the tests: SQLite's amalgamation, and fmt's headers alone.
find_path(KOVRA_SQLITE_SOURCE sqlite3.c HINTS ${PROJECT_SOURCE_DIR}/build/sqlite NO_CMAKE_FIND_ROOT_PATH)
if(NOT KOVRA_SQLITE_SOURCE)
  message(FATAL_ERROR "The tests need SQLite's source: run scripts/fetch-sqlite, or configure with -D KOVRA_TESTS=OFF")
endif()
add_library(kovra_sqlite STATIC ${KOVRA_SQLITE_SOURCE}/sqlite3.c)
target_include_directories(kovra_sqlite SYSTEM INTERFACE ${KOVRA_SQLITE_SOURCE})
target_compile_options(kovra_sqlite PRIVATE $<IF:$<C_COMPILER_ID:MSVC>,/w,-w>)

# The headers stand among the system's own, which this compiler must not see.
find_path(KOVRA_FMT fmt/format.h HINTS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(fmt_headers ${PROJECT_BINARY_DIR}/fmt)
file(MAKE_DIRECTORY ${fmt_headers})
file(CREATE_LINK ${KOVRA_FMT}/fmt ${fmt_headers}/fmt SYMBOLIC)
add_library(kovra_fmt INTERFACE)
add_library(fmt::fmt ALIAS kovra_fmt)
target_include_directories(kovra_fmt SYSTEM INTERFACE ${fmt_headers})
target_compile_definitions(kovra_fmt INTERFACE FMT_HEADER_ONLY)

include(cmake/AccountDatabase.cmake)

# On Windows all this serves the tests alone, which run shorter than the optimiser takes.
if(NOT MSVC)
  foreach(target kovra_sqlite refhost-ado refhost-sql refhost-account refhost-database)
    target_compile_options(${target} PRIVATE -O1)
  endforeach()
endif()
