# Instrumentation for the checking presets; empty for what is shipped.
set(ZEPHYR_CONSOLE_SANITIZERS "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
option(ZEPHYR_CONSOLE_COVERAGE "Count the lines and branches that run, with Clang" OFF)

add_library(zephyr_instrumentation INTERFACE)
if(ZEPHYR_CONSOLE_SANITIZERS)
  target_compile_options(zephyr_instrumentation INTERFACE
    -fsanitize=${ZEPHYR_CONSOLE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # The tests' own arithmetic is not looked at, which would take a third of the time that they compile.
    $<$<BOOL:$<TARGET_PROPERTY:ZEPHYR_IS_TEST>>:-fno-sanitize=undefined>)
  target_link_options(zephyr_instrumentation INTERFACE -fsanitize=${ZEPHYR_CONSOLE_SANITIZERS})
endif()
if(ZEPHYR_CONSOLE_COVERAGE)
  # Counted in the sources, by Clang, into files that are mapped, so that a program that dies has counted too.
  target_compile_options(zephyr_instrumentation INTERFACE
    -fprofile-instr-generate -fcoverage-mapping -fprofile-update=atomic "SHELL:-mllvm -runtime-counter-relocation")
  target_link_options(zephyr_instrumentation INTERFACE -fprofile-instr-generate)
endif()
