# cmake -D STAGE=FOLDER -D SIZE=x64|x86 -D VERSION=V -D OUTPUT=FILE.msi -P Installer.cmake: an installer of what lies in
# FOLDER, as `cmake --install` lays it out. The same files give the same bytes where their times are the same.
set(namespace 65E1D519-CAB2-49BC-937F-39D39F7C8087)
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/Registration.cmake)

# Identifiers that are the same for the same things, in every version.
function(kovra_guid variable what)
  string(UUID guid NAMESPACE ${namespace} NAME "${what}" TYPE SHA1 UPPER)
  set(${variable} ${guid} PARENT_SCOPE)
endfunction()

if(SIZE STREQUAL "x64")
  set(win64 yes)
  set(machine x64)
  set(platform win64)
  # The search looks into the registry of 64 bits.
  set(locator 18)
  set(programs ProgramFiles64Folder)
else()
  set(win64 no)
  set(machine Intel)
  set(platform win32)
  set(locator 2)
  set(programs ProgramFilesFolder)
endif()

kovra_registration(server server/Kovra.idl server/Coclasses.cpp Kovra.dll ${platform})
kovra_registration(host refhost/com/KovraHost.idl refhost/com/Classes.cpp KovraHost.dll ${platform})
set(values_Kovra.dll "${server_VALUES}")
set(values_KovraHost.dll "${host_VALUES}")

# A component for each file: an element in its folder, a reference in its feature. What is not named here is a document.
set(server Kovra.dll Kovra.X.manifest client.manifest Kovra.tlb)
set(program kovra.exe kovra-import.cmd)
set(host KovraHost.dll)
set(features server program documents host)
foreach(feature ${features})
  set(references_${feature} "")
endforeach()
set(queries "")
set(folders "")
set(contents "${SIZE} ${VERSION}")
set(number 0)
file(GLOB_RECURSE files RELATIVE ${STAGE} ${STAGE}/*)
list(SORT files)
foreach(file ${files})
  math(EXPR number "${number} + 1")
  get_filename_component(folder "${file}" DIRECTORY)
  get_filename_component(name "${file}" NAME)
  if(NOT folder)
    set(folder .)
  endif()
  file(SHA256 ${STAGE}/${file} hash)
  string(APPEND contents "${hash} ${file}\n")
  set(id file${number})
  if(file MATCHES "^(Kovra|KovraHost)\\.dll$")
    set(id ${file})
  endif()

  # wixl writes ASCII alone; other names are set afterwards.
  set(told "${name}")
  if(name MATCHES "[^ -~]")
    get_filename_component(extension "${name}" LAST_EXT)
    set(told "${id}${extension}")
    list(APPEND queries "UPDATE `File` SET `FileName` = '${told}|${name}' WHERE `File` = '${id}'")
  endif()
  # Windows compares the versions of programs at an upgrade and a repair.
  if(name MATCHES "\\.(exe|dll)$")
    list(APPEND queries "UPDATE `File` SET `Version` = '${VERSION}.0', `Language` = '2052' WHERE `File` = '${id}'")
  endif()

  kovra_guid(guid "${SIZE}/${file}")
  string(REPLACE "/" "_" key "in/${folder}")
  if(NOT DEFINED ${key})
    list(APPEND folders "${folder}")
  endif()
  string(APPEND ${key} "<Component Id=\"c${number}\" Guid=\"${guid}\" Win64=\"${win64}\">"
                       "<File Id=\"${id}\" Name=\"${told}\" Source=\"${file}\" KeyPath=\"yes\"/>\n${values_${file}}</Component>\n")

  set(of documents)
  foreach(feature server program host)
    if(file IN_LIST ${feature})
      set(of ${feature})
    endif()
  endforeach()
  # Whatever is installed, the licences are.
  if(folder STREQUAL "licences")
    set(of ${features})
  endif()
  foreach(feature ${of})
    string(APPEND references_${feature} "<ComponentRef Id=\"c${number}\"/>\n")
  endforeach()
endforeach()

# The folders' elements, a folder behind the one that it lies in.
set(directories "")
set(named "")
foreach(folder ${folders})
  set(path "")
  set(inside INSTALLDIR)
  string(REPLACE "/" ";" steps "${folder}")
  list(REMOVE_ITEM steps .)
  foreach(step ${steps})
    string(APPEND path "_${step}")
    string(REGEX REPLACE "[^A-Za-z0-9_]" "_" id "folder${path}")
    if(NOT id IN_LIST named)
      list(APPEND named ${id})
      string(APPEND directories "<DirectoryRef Id=\"${inside}\"><Directory Id=\"${id}\" Name=\"${step}\"/></DirectoryRef>\n")
    endif()
    set(inside ${id})
  endforeach()
  string(REPLACE "/" "_" key "in/${folder}")
  string(APPEND directories "<DirectoryRef Id=\"${inside}\">\n${${key}}</DirectoryRef>\n")
endforeach()

# A class's name stands in a part of the registry that both sizes share, so both installers know it by one identifier: it
# goes with the last of them.
kovra_guid(server_names_guid "names/Kovra")
kovra_guid(host_names_guid "names/KovraHost")
# The menu of each size.
kovra_guid(menu_guid "${SIZE}/menu")
kovra_guid(path_guid "${SIZE}/path")
kovra_guid(product "${SIZE}/product/${VERSION}")
kovra_guid(upgrade "${SIZE}/upgrade")

# A class's name that stands for another server's class is not taken: it is looked for, and refused where its feature is
# about to be installed.
set(secure "WIX_DOWNGRADE_DETECTED;WIX_UPGRADE_DETECTED")
set(order 1010)
foreach(feature server host)
  foreach(progid ${${feature}_PROGIDS})
    string(TOUPPER "FOUND_${progid}" property)
    string(REPLACE "." "_" property ${property})
    string(APPEND secure ";${property}")
    list(APPEND queries "INSERT INTO `RegLocator` (`Signature_`, `Root`, `Key`, `Type`) VALUES ('${property}', 2, 'Software\\Classes\\${progid}\\CLSID', ${locator})")
    list(APPEND queries "INSERT INTO `AppSearch` (`Property`, `Signature_`) VALUES ('${property}', '${property}')")
    list(APPEND queries "INSERT INTO `CustomAction` (`Action`, `Type`, `Target`) VALUES ('Refuse_${progid}', 19, '${progid} 已由另一组件 [${property}] 占用，没有安装。 ${progid} belongs to another component, [${property}]. Nothing was installed.')")
    list(APPEND queries "INSERT INTO `InstallExecuteSequence` (`Action`, `Condition`, `Sequence`) VALUES ('Refuse_${progid}', '&${feature} = 3 AND ${property} AND ${property} ~<> \"${${feature}_CLSID_${progid}}\"', ${order})")
    math(EXPR order "${order} + 1")
  endforeach()
endforeach()

# An upgrade installs the features that the version before has, as their files tell. Windows has an action of its own for
# that, which comes after the names are looked for, and which Wine leaves out.
set(file_server Kovra.dll)
set(file_program kovra.exe)
set(file_documents README.md)
set(file_host KovraHost.dll)
foreach(feature ${features})
  string(TOUPPER "FORMER_${feature}" property)
  string(APPEND secure ";${property}")
  kovra_guid(guid "${SIZE}/${file_${feature}}")
  list(APPEND queries "INSERT INTO `CompLocator` (`Signature_`, `ComponentId`, `Type`) VALUES ('${property}', '{${guid}}', 1)")
  list(APPEND queries "INSERT INTO `AppSearch` (`Property`, `Signature_`) VALUES ('${property}', '${property}')")
  list(APPEND queries "INSERT INTO `Condition` (`Feature_`, `Level`, `Condition`) VALUES ('${feature}', 1, 'WIX_UPGRADE_DETECTED AND ${property}')")
  list(APPEND queries "INSERT INTO `Condition` (`Feature_`, `Level`, `Condition`) VALUES ('${feature}', 1000, 'WIX_UPGRADE_DETECTED AND NOT ${property}')")
endforeach()

foreach(names server_NAMES host_NAMES)
  string(REGEX REPLACE "^<RegistryValue" "<RegistryValue KeyPath=\"yes\"" ${names} "${${names}}")
endforeach()
configure_file(${CMAKE_CURRENT_LIST_DIR}/kovra.wxs.in ${OUTPUT}.wxs @ONLY)
file(READ ${OUTPUT}.wxs text)
string(UUID package NAMESPACE ${namespace} NAME "${contents}${text}${queries}" TYPE SHA1 UPPER)
file(REMOVE ${OUTPUT})
execute_process(COMMAND wixl --arch ${SIZE} --output ${OUTPUT} ${OUTPUT}.wxs WORKING_DIRECTORY ${STAGE}
                COMMAND_ERROR_IS_FATAL ANY)

# What wixl does not know: texts beyond ASCII, the searches, conditions of features, the path, and the removal of an earlier
# version inside of the transaction.
file(WRITE ${OUTPUT}.idt "\r\n\r\n65001\t_ForceCodepage\r\n")
execute_process(COMMAND msibuild ${OUTPUT} -i ${OUTPUT}.idt COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND msibuild ${OUTPUT} -q
          "CREATE TABLE `CompLocator` (`Signature_` CHAR(72) NOT NULL, `ComponentId` CHAR(38) NOT NULL, `Type` SHORT PRIMARY KEY `Signature_`)"
          "CREATE TABLE `Condition` (`Feature_` CHAR(38) NOT NULL, `Level` SHORT NOT NULL, `Condition` CHAR(255) PRIMARY KEY `Feature_`, `Level`)"
          ${queries}
          "UPDATE `Property` SET `Value` = '${secure}' WHERE `Property` = 'SecureCustomProperties'"
          "INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('AppSearch', 50)"
          "UPDATE `InstallExecuteSequence` SET `Sequence` = 1501 WHERE `Action` = 'RemoveExistingProducts'"
          "UPDATE `LaunchCondition` SET `Description` = '已安装较新的 Kovra。 A newer version of Kovra is installed.'"
          "UPDATE `Shortcut` SET `Name` = 'KOVRA|导入工作簿 Import a workbook (${SIZE})', `Description` = '试导入、查看报告，确认后正式导入。 Test run, report, and import when you say so.'"
          "UPDATE `Feature` SET `Title` = '服务 Server', `Description` = 'Kovra.dll：供 ERP 和其他程序调用的六个类。 The six classes, for the ERP and other programs.' WHERE `Feature` = 'server'"
          "UPDATE `Feature` SET `Title` = '程序 Program', `Description` = 'kovra.exe，以及开始菜单中的导入。 kovra.exe, and the import in the Start menu.' WHERE `Feature` = 'program'"
          "UPDATE `Feature` SET `Title` = '文档和示例 Documents, examples' WHERE `Feature` = 'documents'"
          "UPDATE `Feature` SET `Title` = '不带 ERP 的组件 Components without the ERP', `Description` = 'KovraHost.dll：只用于没有安装 ERP 的计算机。 For machines without the ERP alone.' WHERE `Feature` = 'host'"
          "CREATE TABLE `Environment` (`Environment` CHAR(72) NOT NULL, `Name` CHAR(255) NOT NULL LOCALIZABLE, `Value` CHAR(255) LOCALIZABLE, `Component_` CHAR(72) NOT NULL PRIMARY KEY `Environment`)"
          "INSERT INTO `Environment` (`Environment`, `Name`, `Value`, `Component_`) VALUES ('Path', '=-*PATH', '[~];[INSTALLDIR]', 'Path')"
          "INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('RemoveEnvironmentStrings', 3300)"
          "INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('WriteEnvironmentStrings', 5200)"
          -s "Kovra ${VERSION}" Kovra "${machine};2052" {${package}}
  COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${OUTPUT}.wxs ${OUTPUT}.idt)
