# The reference host, the import and the program, on the targets `fmt::fmt`, `CLI11::CLI11`, `kovra_sqlite`,
# `kovra_libxml2`, `kovra_minizip`, `kovra_xlsxwriter` and `kovra_odbc`, which each platform defines, with
# KOVRA_ODBC_VERSION.
kovra_library(refhost/xml ModPub os kovra_libxml2)
kovra_library(refhost/odbc ModPub os kovra_odbc)
add_library(refhost STATIC refhost/Environment.cpp refhost/OpenDatabase.cpp)
target_link_libraries(refhost PUBLIC refhost-database refhost-xml refhost-odbc refhost-eai refhost-ia
                              PRIVATE kovra_sanitize)

kovra_library(import ModPub os fmt::fmt kovra_libxml2 kovra_minizip kovra_xlsxwriter kovra_sqlite)

# The classes by name, for the program and for what does without the rest of it.
add_library(cli-classes STATIC cli/Classes.cpp)
target_link_libraries(cli-classes PUBLIC ${KOVRA_CLASSES} refhost PRIVATE kovra_sanitize)

# The program's commands, apart from main, so that the tests reach them.
kovra_sources(cli_sources cli)
list(REMOVE_ITEM cli_sources ${PROJECT_SOURCE_DIR}/cli/main.cpp ${PROJECT_SOURCE_DIR}/cli/Classes.cpp)
# What reads the command line takes a library of headers that is compiled as long as all commands; it runs once.
set(command_line cli/CommandLine.cpp cli/HelpFormatter.cpp)
list(TRANSFORM command_line PREPEND ${PROJECT_SOURCE_DIR}/)
list(REMOVE_ITEM cli_sources ${command_line})
add_library(cli-command-line OBJECT ${command_line})
target_link_libraries(cli-command-line PRIVATE cli-classes import fmt::fmt CLI11::CLI11 kovra_sanitize_memory)
if(NOT KOVRA_SANITIZE)
  target_compile_options(cli-command-line PRIVATE $<IF:$<BOOL:${MSVC}>,/O1,-O1>)
endif()
add_library(cli STATIC ${cli_sources} $<TARGET_OBJECTS:cli-command-line>)
target_link_libraries(cli PUBLIC cli-classes import fmt::fmt CLI11::CLI11 PRIVATE kovra_sanitize)
kovra_precompiled(cli)
if(WIN32)
  # The login object of KovraHost.dll, for the host of the machine.
  add_library(refhost-com-login STATIC refhost/com/LoginObject.cpp)
  target_link_libraries(refhost-com-login PUBLIC refhost-eai server-adapters server-inproc)
  target_link_libraries(cli PUBLIC refhost-com-login server-trace advapi32 shell32 version)
endif()
set_property(SOURCE cli/Version.cpp PROPERTY COMPILE_DEFINITIONS
             KOVRA_VERSION="${PROJECT_VERSION}" KOVRA_ODBC_VERSION="${KOVRA_ODBC_VERSION}")
add_executable(kovra cli/main.cpp)
target_link_libraries(kovra PRIVATE cli kovra_sanitize)
set_target_properties(kovra PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
