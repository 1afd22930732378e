# The arithmetic that this project counts on: doubles of 64 bits at each step. The x87 unit of 32-bit x86 keeps more
# digits until a value is stored, so that a cursor's phase exactly at a boundary, or a shade of a palette, would come out
# differently there. SSE2, which came with the Pentium 4 and the Athlon 64, rounds as all other machines do. MSVC uses it by
# itself.
add_library(zephyr_floating_point INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND CMAKE_SIZEOF_VOID_P EQUAL 4
    AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(i[3-6]86|x86|x86_64|AMD64|amd64)$") # a 64-bit kernel may have a 32-bit system
  target_compile_options(zephyr_floating_point INTERFACE -msse2 -mfpmath=sse)
endif()
