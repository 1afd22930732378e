# The hardening that distributions build with: checked calls of the C library, stack protectors, and relocation tables that
# are read-only once a program runs. Sanitizers check more, and do without it.
add_library(zephyr_hardening INTERFACE)
if(NOT ZEPHYR_CONSOLE_SANITIZERS AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(zephyr_hardening INTERFACE
    -fstack-protector-strong $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  if(UNIX AND NOT APPLE) # whose linkers have relocation tables
    target_link_options(zephyr_hardening INTERFACE LINKER:-z,relro LINKER:-z,now)
  endif()
endif()
