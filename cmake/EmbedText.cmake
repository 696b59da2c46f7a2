# kovra_embed_text(TARGET NAMESPACE HEADER FILE...): gives TARGET a header HEADER that declares, in NAMESPACE, one
# `extern const std::string_view` for each text FILE, named after it up to its first '.', with the file's text as value.
# The program needs no file at run time.
function(kovra_embed_text target namespace header)
  set(folder ${PROJECT_BINARY_DIR}/embedded/${target})
  set(declarations "")
  set(definitions "")
  string(REPEAT "[0-9a-f][0-9a-f]" 16 line)
  foreach(file ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    get_filename_component(name ${file} NAME_WE)
    string(REGEX REPLACE "[^A-Za-z0-9_]" "_" name ${name})
    # As single characters: MSVC takes no literal of more than 65,535 bytes.
    file(READ ${file} characters HEX)
    string(REGEX REPLACE "(${line})" "\\1\n" characters "${characters}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," characters "${characters}")
    string(APPEND declarations "extern const std::string_view ${name};\n")
    string(APPEND definitions "constexpr char text_${name}[] = {\n${characters}};\n"
                              "constexpr std::string_view ${name}(text_${name}, sizeof text_${name});\n")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${header} CONTENT
       "#pragma once\n\n#include <string_view>\n\nnamespace ${namespace} {\n${declarations}} // namespace ${namespace}\n"
       @ONLY)
  file(CONFIGURE OUTPUT ${folder}/${header}.cpp CONTENT
       "#include \"${header}\"\n\nnamespace ${namespace} {\n${definitions}} // namespace ${namespace}\n" @ONLY)
  target_sources(${target} PRIVATE ${folder}/${header}.cpp)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
