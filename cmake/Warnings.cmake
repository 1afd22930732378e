# The warnings that every target of this project compiles without.
add_library(zephyr_warnings INTERFACE)
target_compile_options(zephyr_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
