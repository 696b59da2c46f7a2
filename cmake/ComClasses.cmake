# kovra_com_library(PREFIX IDL): what IDL describes, as variables: the library's name and identifier as PREFIX_LIBRARY and
# PREFIX_LIBRARY_ID, the names of its interfaces and classes as PREFIX_INTERFACES and PREFIX_CLASSES, and of each of both
# its identifier as PREFIX_ID_name and its help text, where it has one, as PREFIX_HELP_name.
function(kovra_com_library prefix idl)
  file(READ ${idl} text)
  # Brackets and semicolons mean something in CMake's own lists.
  string(REGEX REPLACE "[][;]" " " text "${text}")
  string(REGEX MATCH "uuid\\(([0-9A-F-]+)\\)[^{]*library ([A-Za-z]+)" found "${text}")
  set(${prefix}_LIBRARY_ID ${CMAKE_MATCH_1} PARENT_SCOPE)
  set(${prefix}_LIBRARY ${CMAKE_MATCH_2} PARENT_SCOPE)

  set(interfaces "")
  string(REGEX MATCHALL "uuid\\([0-9A-F-]+\\)[^{]*interface _[A-Za-z]+ :" found "${text}")
  foreach(interface ${found})
    string(REGEX MATCH "uuid\\(([0-9A-F-]+)\\).*helpstring\\(\"([^\"]*)\"\\).*interface (_[A-Za-z]+) :" all "${interface}")
    list(APPEND interfaces ${CMAKE_MATCH_3})
    set(${prefix}_ID_${CMAKE_MATCH_3} ${CMAKE_MATCH_1} PARENT_SCOPE)
    set(${prefix}_HELP_${CMAKE_MATCH_3} ${CMAKE_MATCH_2} PARENT_SCOPE)
  endforeach()
  set(${prefix}_INTERFACES ${interfaces} PARENT_SCOPE)

  set(classes "")
  string(REGEX MATCHALL "uuid\\([0-9A-F-]+\\)[ \t\r\n]*coclass [A-Za-z]+" found "${text}")
  foreach(class ${found})
    string(REGEX MATCH "uuid\\(([0-9A-F-]+)\\).*coclass ([A-Za-z]+)" all "${class}")
    list(APPEND classes ${CMAKE_MATCH_2})
    set(${prefix}_ID_${CMAKE_MATCH_2} ${CMAKE_MATCH_1} PARENT_SCOPE)
  endforeach()
  set(${prefix}_CLASSES ${classes} PARENT_SCOPE)
endfunction()

# kovra_com_classes(IDL): what a manifest says of the library that IDL describes: its identifier as
# KOVRA_TYPE_LIBRARY_ID, an element for each class as KOVRA_COM_CLASSES and for each interface as KOVRA_COM_INTERFACES.
function(kovra_com_classes idl)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl})
  kovra_com_library(com ${idl})

  set(interfaces "")
  foreach(name ${com_INTERFACES})
    string(APPEND interfaces "  <comInterfaceExternalProxyStub name=\"${name}\" iid=\"{${com_ID_${name}}}\"\n"
                             "      proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\" tlbid=\"{${com_LIBRARY_ID}}\"/>\n")
  endforeach()
  set(classes "")
  foreach(name ${com_CLASSES})
    string(APPEND classes "    <comClass description=\"${com_HELP__${name}}\" clsid=\"{${com_ID_${name}}}\"\n"
                          "              threadingModel=\"Apartment\" progid=\"${com_LIBRARY}.${name}\" tlbid=\"{${com_LIBRARY_ID}}\"/>\n")
  endforeach()

  set(KOVRA_TYPE_LIBRARY_ID ${com_LIBRARY_ID} PARENT_SCOPE)
  set(KOVRA_COM_CLASSES "${classes}" PARENT_SCOPE)
  set(KOVRA_COM_INTERFACES "${interfaces}" PARENT_SCOPE)
endfunction()
