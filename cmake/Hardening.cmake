# The hardening that distributions build with: checked calls of the C library, stack protectors, and relocation tables that
# are read-only once a program runs. Sanitizers check more, and do without it.
add_library(zephyr_hardening INTERFACE)
if(NOT ZEPHYR_CONSOLE_SANITIZERS AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(zephyr_hardening INTERFACE -fstack-protector-strong)
  string(TOUPPER "${CMAKE_BUILD_TYPE}" config)
  if(NOT "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${config}}" MATCHES _FORTIFY_SOURCE) # a distribution's may be higher
    target_compile_options(zephyr_hardening INTERFACE
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  endif()
  if(UNIX AND NOT APPLE) # whose linkers have relocation tables
    target_link_options(zephyr_hardening INTERFACE LINKER:-z,relro LINKER:-z,now)
  endif()
endif()
