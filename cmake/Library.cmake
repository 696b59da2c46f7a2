# kovra_sources(VARIABLE FOLDER): every source in FOLDER and below that this platform has: files named Posix… are for all
# but Windows, those named Windows… for Windows.
function(kovra_sources variable folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "/Posix[^/]*$")
  else()
    list(FILTER sources EXCLUDE REGEX "/Windows[^/]*$")
  endif()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# kovra_precompiled(TARGET): TARGET takes the standard library as `text`, the first to be compiled, has it. With the
# sanitizers alone: GCC takes what it has compiled before for ours, and warns of its own std::string when it optimises.
function(kovra_precompiled target)
  if(NOT KOVRA_PRECOMPILED OR NOT KOVRA_SANITIZE)
    return()
  endif()
  if(target STREQUAL "text")
    target_precompile_headers(text PRIVATE ${KOVRA_PRECOMPILED})
  else()
    target_precompile_headers(${target} REUSE_FROM text)
  endif()
endfunction()

# kovra_compiled_once(TARGET SOURCE...): the sources of a TARGET that is the same in every native build. Where KOVRA_TESTS_OF
# names another one, it takes the objects that are compiled there, which each build tells. The thread sanitizer's compiles
# them itself.
function(kovra_compiled_once target)
  set(objects objects/${target})
  if(KOVRA_TESTS_OF AND NOT KOVRA_SANITIZE STREQUAL "thread")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${KOVRA_TESTS_OF}/${objects})
    file(STRINGS ${KOVRA_TESTS_OF}/${objects} compiled)
    target_sources(${target} PRIVATE ${compiled})
    set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  else()
    target_sources(${target} PRIVATE ${ARGN})
    file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/${objects} CONTENT "$<JOIN:$<TARGET_OBJECTS:${target}>,\n>\n")
  endif()
endfunction()

# kovra_library(FOLDER [LIBRARY...]): a static library of every source in FOLDER and below, named after it ('/' becomes '-').
function(kovra_library folder)
  string(REPLACE "/" "-" name ${folder})
  kovra_sources(sources ${folder})
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC kovra_flags ${ARGN} PRIVATE kovra_sanitize)
    kovra_precompiled(${name})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE kovra_flags ${ARGN})
  endif()
endfunction()
