# Flags that every target of ours is built with; `kovra_flags` is linked by each.
add_library(kovra_flags INTERFACE)
target_include_directories(kovra_flags INTERFACE ${PROJECT_SOURCE_DIR})
if(WIN32)
  # Windows 7 and later.
  target_compile_definitions(kovra_flags INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
endif()
if(MSVC)
  target_compile_options(kovra_flags INTERFACE /W4 /WX /utf-8 /permissive- /Zc:__cplusplus)
else()
  target_compile_options(kovra_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                               -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
  if(CMAKE_UNITY_BUILD)
    # One file's own names are no matter of the next one's.
    target_compile_options(kovra_flags INTERFACE -Wno-shadow)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # A tenth of a bundle's time is the compiler's own memory being collected, which fits.
      target_compile_options(kovra_flags INTERFACE "SHELL:--param ggc-min-expand=1000"
                                                   "SHELL:--param ggc-min-heapsize=1048576")
    endif()
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 warns of its own std::string at -O2 (GCC bug 105651).
    target_compile_options(kovra_flags INTERFACE -Wno-restrict)
  endif()
endif()
if(KOVRA_SANITIZE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Under the sanitizers GCC 12 warns of its own std::regex (GCC bug 105562).
    target_compile_options(kovra_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_link_options(kovra_flags INTERFACE -fsanitize=${KOVRA_SANITIZE})
  # The checks make the programs large, and many are linked.
  find_program(KOVRA_GOLD ld.gold)
  if(KOVRA_GOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_link_options(kovra_flags INTERFACE -fuse-ld=gold)
  endif()
  # What the sanitizers say of each check holds addresses, 600,000 in all: a program at a fixed place starts without
  # moving them, in 28 ms instead of 39.
  target_link_options(kovra_flags INTERFACE $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-no-pie>)
endif()

# What the product is built with besides. The tests themselves are not instrumented: that would take most of the
# build's time and watch nothing of ours. Those of threads are, since the thread sanitizer must see both sides.
add_library(kovra_sanitize INTERFACE)
# Where the undefined-behaviour sanitizer would have other people's headers compiled for half a minute.
add_library(kovra_sanitize_memory INTERFACE)
if(KOVRA_SANITIZE)
  string(REPLACE ",undefined" "" memory ${KOVRA_SANITIZE})
  target_compile_options(kovra_sanitize INTERFACE -fsanitize=${KOVRA_SANITIZE} -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
  target_compile_options(kovra_sanitize_memory INTERFACE -fsanitize=${memory} -fno-omit-frame-pointer)
endif()
if(KOVRA_FUZZ)
  # Coverage for libFuzzer, which the targets themselves are linked with.
  target_compile_options(kovra_sanitize INTERFACE -fsanitize=fuzzer-no-link)
endif()
