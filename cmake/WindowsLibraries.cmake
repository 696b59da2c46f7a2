# What the program takes from elsewhere on Windows, linked in: libraries from Debian's sources (scripts/fetch-sources), and
# Debian's headers where a library is nothing else.
set(KOVRA_SOURCES ${PROJECT_SOURCE_DIR}/build/sources CACHE PATH "What scripts/fetch-sources has fetched")
if(NOT EXISTS ${KOVRA_SOURCES}/versions)
  message(FATAL_ERROR "The program takes the sources of its libraries: run scripts/fetch-sources, or configure with "
                      "-D KOVRA_PROGRAM=OFF -D KOVRA_TESTS=OFF for the COM servers alone")
endif()

# kovra_foreign_library(NAME INCLUDES SOURCE...): a static library of other people's, without our warnings.
function(kovra_foreign_library name includes)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} SYSTEM PUBLIC ${includes})
  target_compile_options(${name} PRIVATE $<IF:$<BOOL:${MSVC}>,/w,-w>)
  set_property(TARGET ${name} PROPERTY UNITY_BUILD OFF)
endfunction()

# Headers that stand among the system's own, which this compiler must not see.
function(kovra_headers target folder)
  find_path(KOVRA_${folder}_HEADERS ${folder} HINTS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers/${folder})
  file(CREATE_LINK ${KOVRA_${folder}_HEADERS}/${folder} ${PROJECT_BINARY_DIR}/headers/${folder}/${folder} SYMBOLIC)
  add_library(kovra_${folder}_headers INTERFACE)
  add_library(${target} ALIAS kovra_${folder}_headers)
  target_include_directories(kovra_${folder}_headers SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/headers/${folder})
endfunction()
kovra_headers(CLI11::CLI11 CLI)
kovra_headers(Boost::headers boost)
# Without threads of the compiler's own it takes the compiler for an old one, and says so.
target_compile_definitions(kovra_boost_headers INTERFACE BOOST_MP_DISABLE_DEPRECATE_03_WARNING)

kovra_foreign_library(kovra_fmt ${KOVRA_SOURCES}/fmtlib/include ${KOVRA_SOURCES}/fmtlib/src/format.cc)
add_library(fmt::fmt ALIAS kovra_fmt)

kovra_foreign_library(kovra_sqlite ${KOVRA_SOURCES}/sqlite3 ${KOVRA_SOURCES}/sqlite3/sqlite3.c)
# Paths as long as the system's: SQLite would end them at 260 characters.
target_compile_definitions(kovra_sqlite PRIVATE SQLITE_WIN32_MAX_PATH_CHARS=32767)

# libxml2 without what reaches beyond the text that it is given.
set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
set(BUILD_SHARED_LIBS OFF)
foreach(part C14N CATALOG DEBUG DOCB FTP HTML HTTP ICONV ICU LEGACY LZMA MEM_DEBUG MODULES PROGRAMS PYTHON RUN_DEBUG
        SCHEMAS SCHEMATRON TESTS XINCLUDE XPTR ZLIB)
  set(LIBXML2_WITH_${part} OFF)
endforeach()
add_subdirectory(${KOVRA_SOURCES}/libxml2 ${PROJECT_BINARY_DIR}/libxml2 EXCLUDE_FROM_ALL)
target_compile_options(LibXml2 PRIVATE $<IF:$<C_COMPILER_ID:MSVC>,/w,-w>)
set_property(TARGET LibXml2 PROPERTY UNITY_BUILD OFF)
add_library(kovra_libxml2 ALIAS LibXml2)

# Archives: zlib is Debian's own for mingw-w64. Files are opened by their names in UTF-8.
find_library(KOVRA_STATIC_ZLIB NAMES libz.a zlibstatic REQUIRED)
set(minizip ${KOVRA_SOURCES}/minizip)
kovra_foreign_library(kovra_minizip ${minizip} ${minizip}/ioapi.c ${minizip}/unzip.c ${minizip}/zip.c)
target_compile_options(kovra_minizip PRIVATE -include ${PROJECT_SOURCE_DIR}/os/Utf8Fopen.h)
target_link_libraries(kovra_minizip PUBLIC os ${KOVRA_STATIC_ZLIB})

# Workbooks are written through the same minizip, and temporary files where the user may make them.
set(xlsxwriter ${KOVRA_SOURCES}/libxlsxwriter)
file(GLOB xlsxwriter_sources ${xlsxwriter}/src/*.c)
kovra_foreign_library(kovra_xlsxwriter ${xlsxwriter}/include ${xlsxwriter_sources} ${minizip}/iowin32.c
                      ${xlsxwriter}/third_party/md5/md5.c
                      ${xlsxwriter}/third_party/tmpfileplus/tmpfileplus.c)
target_include_directories(kovra_xlsxwriter PRIVATE ${KOVRA_SOURCES})
target_compile_definitions(kovra_xlsxwriter PRIVATE USE_SYSTEM_MINIZIP)
target_compile_options(kovra_xlsxwriter PRIVATE -include ${PROJECT_SOURCE_DIR}/os/Utf8Fopen.h)
target_link_libraries(kovra_xlsxwriter PUBLIC kovra_minizip)

add_library(kovra_odbc INTERFACE)
target_link_libraries(kovra_odbc INTERFACE odbc32)
set(KOVRA_ODBC_VERSION "odbc32")
