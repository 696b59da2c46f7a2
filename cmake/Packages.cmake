# The Debian package: `cmake --build BUILD --target package` makes it in the build folder. Where SOURCE_DATE_EPOCH is set,
# the same files give the same bytes.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kovra)
set(CPACK_PACKAGE_VENDOR Kovra)
set(CPACK_PACKAGE_CONTACT "The Kovra authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "import documents into the inventory accounting of an ERP")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"kovra imports account settings, opening balances, price-decline provisions and
price adjustment vouchers from spreadsheets and XML documents into the account
of an ERP on SQL Server, or into an account database of its own.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded when a workbook is written, which no header of the program tells.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libxlsxwriter4)
# What reaches a server, and what the completions complete.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "tdsodbc, bash-completion, zsh")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/linux/Staged.cmake)
include(CPack)
