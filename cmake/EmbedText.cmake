# kovra_embed_text(TARGET NAMESPACE HEADER FILE...): gives TARGET a header HEADER that declares, in NAMESPACE, one
# `extern const std::string_view` for each text FILE, named after it up to its first '.', with the file's text as value.
# The program needs no file at run time.
function(kovra_embed_text target namespace header)
  set(folder ${PROJECT_BINARY_DIR}/embedded/${target})
  set(declarations "")
  set(definitions "")
  foreach(file ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    get_filename_component(name ${file} NAME_WE)
    string(REGEX REPLACE "[^A-Za-z0-9_]" "_" name ${name})
    file(READ ${file} text)
    string(APPEND declarations "extern const std::string_view ${name};\n")
    string(APPEND definitions "const std::string_view ${name} = R\"embedded(${text})embedded\";\n")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${header} CONTENT
       "#pragma once\n\n#include <string_view>\n\nnamespace ${namespace} {\n${declarations}} // namespace ${namespace}\n"
       @ONLY)
  # Clang warns of texts beyond the 65,536 bytes that every compiler must take.
  set(quiet "#ifdef __clang__\n#pragma clang diagnostic ignored \"-Woverlength-strings\"\n#endif\n")
  file(CONFIGURE OUTPUT ${folder}/${header}.cpp CONTENT
       "#include \"${header}\"\n\n${quiet}\nnamespace ${namespace} {\n${definitions}} // namespace ${namespace}\n" @ONLY)
  target_sources(${target} PRIVATE ${folder}/${header}.cpp)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
