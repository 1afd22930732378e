# Instrumentation for the checking presets. Empty in other builds.
set(ZEPHYR_CONSOLE_SANITIZERS "" CACHE STRING "Sanitizers to build with, as for -fsanitize")
option(ZEPHYR_CONSOLE_COVERAGE "Count the lines and branches that run, with Clang" OFF)

add_library(zephyr_instrumentation INTERFACE)
if(ZEPHYR_CONSOLE_SANITIZERS)
  target_compile_options(zephyr_instrumentation INTERFACE
    -fsanitize=${ZEPHYR_CONSOLE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # The tests' own code does without this check, which would take a third of their compile time.
    $<$<BOOL:$<TARGET_PROPERTY:ZEPHYR_IS_TEST>>:-fno-sanitize=undefined>)
  target_link_options(zephyr_instrumentation INTERFACE -fsanitize=${ZEPHYR_CONSOLE_SANITIZERS})
endif()
if(ZEPHYR_CONSOLE_COVERAGE)
  # Clang counts in the sources, into mapped files, so that a program that crashes has also counted.
  target_compile_options(zephyr_instrumentation INTERFACE
    -fprofile-instr-generate -fcoverage-mapping -fprofile-update=atomic "SHELL:-mllvm -runtime-counter-relocation")
  target_link_options(zephyr_instrumentation INTERFACE -fprofile-instr-generate)
endif()
