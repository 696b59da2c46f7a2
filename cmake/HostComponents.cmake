# The trace, and the reference host's components, on every platform: the program uses them, and so does KovraHost.dll.
kovra_library(refhost/trace text os)
kovra_library(refhost/eai ModPub refhost-trace)
file(GLOB mapping_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/refhost/eai/mappings/*.Xml)
kovra_embed_text(refhost-eai refhost::mappings Mappings.h ${mapping_files})
kovra_library(refhost/ia ModPub refhost-trace)
