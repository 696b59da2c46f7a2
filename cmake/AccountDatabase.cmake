# The embedded account database, the account's schema, and ADO's manners over them; on the targets `fmt::fmt`,
# `Boost::headers` and `kovra_sqlite`, which each platform defines.
kovra_library(refhost/ado ModPub fmt::fmt)
kovra_library(refhost/sql refhost-ado fmt::fmt Boost::headers kovra_sqlite)
kovra_embed_text(refhost-sql refhost_sql CollationOrder.h ${PROJECT_SOURCE_DIR}/refhost/sql/types/CollationOrder.txt)

kovra_library(refhost/account ModPub refhost-ado)
file(GLOB account_scripts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/refhost/account/*.sql)
kovra_embed_text(refhost-account refhost::account_scripts AccountScripts.h ${account_scripts})

add_library(refhost-database STATIC ${PROJECT_SOURCE_DIR}/refhost/OpenEmbeddedDatabase.cpp)
target_link_libraries(refhost-database PUBLIC refhost-ado refhost-sql refhost-account PRIVATE kovra_sanitize)
