# What an installation consists of: the program, on Linux with its manual page and completions, on Windows with the COM
# servers, flat in one folder; the documents, the examples and the third parties' licences on both.
if(WIN32)
  set(KOVRA_DOCUMENTS .)
  install(TARGETS Kovra KovraHost kovra RUNTIME DESTINATION .)
  install(FILES ${PROJECT_BINARY_DIR}/Kovra.X.manifest ${PROJECT_BINARY_DIR}/client.manifest ${KOVRA_IDL_DIR}/Kovra.tlb
                packaging/windows/kovra-import.cmd DESTINATION .)
else()
  include(GNUInstallDirs)
  set(KOVRA_DOCUMENTS ${CMAKE_INSTALL_DATADIR}/doc/kovra)
  install(TARGETS kovra RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES cli/shell/kovra.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kovra)
  install(FILES cli/shell/kovra.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _kovra)
  install(FILES packaging/linux/copyright DESTINATION ${KOVRA_DOCUMENTS})

  # The manual page is made from the program's own help.
  find_program(KOVRA_HELP2MAN help2man)
  if(KOVRA_HELP2MAN)
    set(manual ${PROJECT_BINARY_DIR}/kovra.1)
    find_program(KOVRA_GZIP gzip REQUIRED)
    add_custom_command(
      OUTPUT ${manual}
      COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C ${PROJECT_SOURCE_DIR}/cli/shell/make-manual $<TARGET_FILE:kovra>
              ${KOVRA_HELP2MAN} ${manual}
      DEPENDS kovra cli/shell/make-manual cli/shell/kovra.h2m VERBATIM)
    add_custom_command(OUTPUT ${manual}.gz COMMAND ${KOVRA_GZIP} -9nkf ${manual} DEPENDS ${manual} VERBATIM)
    add_custom_target(manual ALL DEPENDS ${manual}.gz)
    install(FILES ${manual}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endif()
endif()

install(FILES README.md README.zh-CN.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${KOVRA_DOCUMENTS})
install(DIRECTORY docs schemas examples DESTINATION ${KOVRA_DOCUMENTS}
        PATTERN "opening-5000" EXCLUDE PATTERN "Kovra.psd1.in" EXCLUDE)

# The PowerShell module tells the version.
configure_file(examples/clients/Kovra/Kovra.psd1.in ${PROJECT_BINARY_DIR}/Kovra.psd1 @ONLY NEWLINE_STYLE DOS)
install(FILES ${PROJECT_BINARY_DIR}/Kovra.psd1 DESTINATION ${KOVRA_DOCUMENTS}/examples/clients/Kovra)

# What of other people's work the programs hold: on Debian alone, whose packages tell it.
find_program(KOVRA_DPKG dpkg)
if(KOVRA_DPKG)
  add_custom_target(licences COMMAND ${PROJECT_SOURCE_DIR}/packaging/linked-in ${PROJECT_BINARY_DIR}
                    ${PROJECT_BINARY_DIR}/licences VERBATIM)
  add_dependencies(licences kovra)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/licences DESTINATION ${KOVRA_DOCUMENTS} OPTIONAL)
endif()
