# The warnings that every target of this project must compile without.
add_library(zephyr_warnings INTERFACE)
if(MSVC)
  target_compile_options(zephyr_warnings INTERFACE /W4 /utf-8)
else()
  target_compile_options(zephyr_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()
