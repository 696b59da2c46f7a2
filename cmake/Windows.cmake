# Kovra.dll, KovraHost.dll and kovra.exe.
enable_language(RC)
option(KOVRA_PROGRAM "Build kovra.exe" ON)
option(KOVRA_OPTIMISE "Optimise kovra.exe; the tests run shorter than that takes" ON)

# The interface definitions as header, identifiers and type library. widl takes the base types and the standard type
# library from Wine's development files.
if(NOT MSVC)
  find_path(KOVRA_IDL_INCLUDE oaidl.idl HINTS /usr/include/wine/wine/windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  find_path(KOVRA_TYPE_LIBRARIES stdole2.tlb HINTS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
            /usr/lib/i386-linux-gnu/wine/i386-windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  # A type library holds the time that it was made.
  set(at_epoch "")
  if(DEFINED ENV{SOURCE_DATE_EPOCH})
    find_program(KOVRA_FAKETIME faketime REQUIRED)
    string(TIMESTAMP epoch "%Y-%m-%d %H:%M:%S" UTC)
    set(at_epoch ${CMAKE_COMMAND} -E env TZ=UTC ${KOVRA_FAKETIME} -f "${epoch}")
  endif()
  set(KOVRA_WIDL_COMMAND ${at_epoch} ${KOVRA_WIDL} -I ${KOVRA_IDL_INCLUDE} -L ${KOVRA_TYPE_LIBRARIES})
endif()

set(KOVRA_IDL_DIR ${PROJECT_BINARY_DIR}/idl)
file(MAKE_DIRECTORY ${KOVRA_IDL_DIR})

# kovra_interfaces(TARGET LIBRARY IDL DESCRIPTION): TARGET gives the header LIBRARY.h and the identifiers of the
# interfaces; the resource script LIBRARY.rc holds the type library and the version.
function(kovra_interfaces target library idl description)
  set(header ${KOVRA_IDL_DIR}/${library}.h)
  set(identifiers ${KOVRA_IDL_DIR}/${library}_i.c)
  set(type_library ${KOVRA_IDL_DIR}/${library}.tlb)
  if(MSVC)
    add_custom_command(
      OUTPUT ${header} ${identifiers} ${type_library}
      COMMAND midl /nologo /out ${KOVRA_IDL_DIR} /h ${library}.h /iid ${library}_i.c /tlb ${library}.tlb ${idl}
      DEPENDS ${idl} VERBATIM)
  else()
    add_custom_command(
      OUTPUT ${header} ${identifiers} ${type_library}
      COMMAND ${KOVRA_WIDL_COMMAND} -h -o ${header} ${idl}
      COMMAND ${KOVRA_WIDL_COMMAND} -u -o ${identifiers} ${idl}
      COMMAND ${KOVRA_WIDL_COMMAND} -t -o ${type_library} ${idl}
      DEPENDS ${idl} VERBATIM)
  endif()
  add_library(${target} STATIC ${identifiers} ${header})
  target_include_directories(${target} SYSTEM INTERFACE ${KOVRA_IDL_DIR})
  configure_file(server/Library.rc.in ${KOVRA_IDL_DIR}/${library}.rc @ONLY)
  set_property(SOURCE ${KOVRA_IDL_DIR}/${library}.rc PROPERTY OBJECT_DEPENDS ${type_library})
endfunction()
kovra_interfaces(kovra_idl Kovra ${PROJECT_SOURCE_DIR}/server/Kovra.idl "Kovra: inventory accounting imports")
kovra_interfaces(kovrahost_idl KovraHost ${PROJECT_SOURCE_DIR}/refhost/com/KovraHost.idl
                 "Kovra: a host without the ERP")

add_library(kovra_windows INTERFACE)
target_link_libraries(kovra_windows INTERFACE kovra_flags ole32 oleaut32 uuid advapi32 user32)
if(NOT MSVC)
  # COM interfaces have no destructor by design; objects delete themselves in Release.
  target_compile_options(kovra_windows INTERFACE -Wno-non-virtual-dtor)
endif()

kovra_library(server/com ModPub kovra_windows)
kovra_library(server/adapters server-com)
kovra_library(server/inproc server-com)
# What is no server takes single files of it.
set_property(TARGET server-inproc PROPERTY UNITY_BUILD OFF)
kovra_library(server/trace server-adapters refhost-trace)
# The entry points belong into the library that offers the classes.
set_property(TARGET server-inproc PROPERTY POSITION_INDEPENDENT_CODE ON)

file(GLOB server_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/server/*.cpp)
add_library(Kovra SHARED ${server_sources} server/Kovra.def ${KOVRA_IDL_DIR}/Kovra.rc)
target_link_libraries(Kovra PRIVATE ${KOVRA_CLASSES} server-adapters server-inproc server-trace kovra_idl)
set_target_properties(Kovra PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
add_dependencies(server-com kovra_idl)

# Kovra.X.manifest lets clients create the classes without registration; client.manifest is what they say for it.
set(KOVRA_ARCHITECTURE x86)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(KOVRA_ARCHITECTURE amd64)
endif()
include(cmake/ComClasses.cmake)
kovra_com_classes(${PROJECT_SOURCE_DIR}/server/Kovra.idl)
configure_file(server/Kovra.X.manifest.in ${PROJECT_BINARY_DIR}/Kovra.X.manifest @ONLY)
configure_file(server/client.manifest.in ${PROJECT_BINARY_DIR}/client.manifest @ONLY)

# KovraHost.dll: the reference host's components and login for machines without the ERP.
file(GLOB host_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/refhost/com/*.cpp)
add_library(KovraHost SHARED ${host_sources} refhost/com/KovraHost.def ${KOVRA_IDL_DIR}/KovraHost.rc)
target_link_libraries(KovraHost PRIVATE kovrahost_idl refhost-eai refhost-ia server-adapters server-inproc)
set_target_properties(KovraHost PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})

if(NOT MSVC)
  # Debug information is of no use to callers, and the library is copied about.
  target_link_options(Kovra PRIVATE $<$<CONFIG:Release>:-s>)
  target_link_options(KovraHost PRIVATE $<$<CONFIG:Release>:-s>)
endif()

if(KOVRA_PROGRAM OR KOVRA_TESTS)
  include(cmake/WindowsLibraries.cmake)
  include(cmake/AccountDatabase.cmake)
  include(cmake/Program.cmake)
  configure_file(cli/kovra.manifest.in ${PROJECT_BINARY_DIR}/kovra.manifest @ONLY)
  configure_file(cli/kovra.rc.in ${PROJECT_BINARY_DIR}/kovra.rc @ONLY)
  target_sources(kovra PRIVATE ${PROJECT_BINARY_DIR}/kovra.rc)
  if(NOT MSVC)
    target_link_options(kovra PRIVATE $<$<CONFIG:Release>:-s>)
  endif()
  include(cmake/Installed.cmake)
  if(NOT KOVRA_OPTIMISE)
    foreach(target refhost-ado refhost-sql refhost-account refhost-database refhost-xml refhost-odbc
            refhost import cli)
      target_compile_options(${target} PRIVATE $<IF:$<BOOL:${MSVC}>,/O1,-O1>)
    endforeach()
    # Where nothing runs, C compiles in half the time when it is not optimised; our own code takes as long either way.
    foreach(target kovra_sqlite kovra_xlsxwriter LibXml2)
      target_compile_options(${target} PRIVATE $<IF:$<BOOL:${MSVC}>,/O1,$<IF:$<BOOL:${KOVRA_TESTS}>,-O1,-O0>>)
    endforeach()
  endif()
endif()

if(KOVRA_TESTS)
  enable_testing()
  add_subdirectory(tests/support/ado)
  add_subdirectory(tests/server)
endif()
