# What an installation of the program consists of: the program, its manual page and its completion for bash.
include(GNUInstallDirs)
install(TARGETS kovra RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES cli/shell/kovra.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kovra)

# The manual page is made from the program's own help.
find_program(KOVRA_HELP2MAN help2man)
if(KOVRA_HELP2MAN)
  set(manual ${PROJECT_BINARY_DIR}/kovra.1)
  add_custom_command(
    OUTPUT ${manual}
    COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C ${PROJECT_SOURCE_DIR}/cli/shell/make-manual $<TARGET_FILE:kovra>
            ${KOVRA_HELP2MAN} ${manual}
    DEPENDS kovra cli/shell/make-manual cli/shell/kovra.h2m VERBATIM)
  add_custom_target(manual ALL DEPENDS ${manual})
  install(FILES ${manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
