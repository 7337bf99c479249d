# Compiler settings of all targets of the project, as one interface target.
add_library(mirvane-options INTERFACE)
target_compile_options(mirvane-options INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${MIRVANE_WERROR}>:-Werror>)

if(MIRVANE_SANITIZE)
  target_compile_options(mirvane-options INTERFACE -fsanitize=${MIRVANE_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(mirvane-options INTERFACE -fsanitize=${MIRVANE_SANITIZE})
else()
  target_compile_options(mirvane-options INTERFACE -fstack-protector-strong $<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2>)
  target_link_options(mirvane-options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack
                      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,-z,text,-z,defs>)
endif()

# Everything tells libFuzzer which of its edges were taken; only the targets under tests/fuzz link its main function.
if(MIRVANE_FUZZ)
  target_compile_options(mirvane-options INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(MIRVANE_LTO)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
