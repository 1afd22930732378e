# The warnings that every target of this project must compile without.
add_library(zephyr_warnings INTERFACE)
target_compile_options(zephyr_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
