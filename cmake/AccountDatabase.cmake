# The embedded account database, the account's schema, and ADO's manners over them; on the targets `fmt::fmt` and
# `kovra_sqlite`, which each platform defines.
kovra_library(refhost/sql ModPub fmt::fmt kovra_sqlite)

kovra_library(refhost/account ModPub)
file(GLOB account_scripts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/refhost/account/*.sql)
kovra_embed_text(refhost-account refhost::account_scripts AccountScripts.h ${account_scripts})

# What is left out here needs libxml2 and ODBC.
set(KOVRA_NATIVE_HOST ${PROJECT_SOURCE_DIR}/refhost/Environment.cpp ${PROJECT_SOURCE_DIR}/refhost/OpenDatabase.cpp)
file(GLOB database_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/refhost/*.cpp)
list(REMOVE_ITEM database_sources ${KOVRA_NATIVE_HOST})
add_library(refhost-database STATIC ${database_sources})
target_link_libraries(refhost-database PUBLIC kovra_flags ModPub refhost-sql refhost-account fmt::fmt
                                       PRIVATE kovra_sanitize)
