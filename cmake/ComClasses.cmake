# kovra_com_classes(IDL): what a manifest says of the library that IDL describes: its identifier as
# KOVRA_TYPE_LIBRARY_ID, an element for each class as KOVRA_COM_CLASSES and for each interface as KOVRA_COM_INTERFACES.
function(kovra_com_classes idl)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl})
  file(READ ${idl} text)
  # Brackets and semicolons mean something in CMake's own lists.
  string(REGEX REPLACE "[][;]" " " text "${text}")
  string(REGEX MATCH "uuid\\(([0-9A-F-]+)\\)[^{]*library ([A-Za-z]+)" found "${text}")
  set(library ${CMAKE_MATCH_1})
  set(name ${CMAKE_MATCH_2})

  set(interfaces "")
  string(REGEX MATCHALL "uuid\\([0-9A-F-]+\\)[^{]*interface _[A-Za-z]+ :" found "${text}")
  foreach(interface ${found})
    string(REGEX MATCH "uuid\\(([0-9A-F-]+)\\).*helpstring\\(\"([^\"]*)\"\\).*interface (_[A-Za-z]+) :" all "${interface}")
    set(description${CMAKE_MATCH_3} ${CMAKE_MATCH_2})
    string(APPEND interfaces "  <comInterfaceExternalProxyStub name=\"${CMAKE_MATCH_3}\" iid=\"{${CMAKE_MATCH_1}}\"\n"
                             "      proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\" tlbid=\"{${library}}\"/>\n")
  endforeach()

  set(classes "")
  string(REGEX MATCHALL "uuid\\([0-9A-F-]+\\)[ \t\r\n]*coclass [A-Za-z]+" found "${text}")
  foreach(class ${found})
    string(REGEX MATCH "uuid\\(([0-9A-F-]+)\\).*coclass ([A-Za-z]+)" all "${class}")
    string(APPEND classes "    <comClass description=\"${description_${CMAKE_MATCH_2}}\" clsid=\"{${CMAKE_MATCH_1}}\"\n"
                          "              threadingModel=\"Apartment\" progid=\"${name}.${CMAKE_MATCH_2}\" tlbid=\"{${library}}\"/>\n")
  endforeach()

  set(KOVRA_TYPE_LIBRARY_ID ${library} PARENT_SCOPE)
  set(KOVRA_COM_CLASSES "${classes}" PARENT_SCOPE)
  set(KOVRA_COM_INTERFACES "${interfaces}" PARENT_SCOPE)
endfunction()
