# zephyr_console_add_test(NAME name FILE file EXPECTED transcript COMMAND program [argument...] [STATUS status])
# Adds a test that runs the console file `file` by the program, which gets the file's path as its last argument and prints
# the transcript to standard output, as runBatch() does. What it prints must be what the file `transcript` holds, and it must end
# with `status`, 0 if left out. `program` is a target or a path.
#
# With ZEPHYR_CONSOLE_TEST_UPDATE set in the environment, the test writes what was printed to the file `transcript` instead.
function(zephyr_console_add_test)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;FILE;EXPECTED;STATUS" "COMMAND")
  foreach(needed IN ITEMS NAME FILE EXPECTED COMMAND)
    if(NOT arg_${needed})
      message(FATAL_ERROR "zephyr_console_add_test() needs ${needed}.")
    endif()
  endforeach()
  if(NOT DEFINED arg_STATUS)
    set(arg_STATUS 0)
  endif()
  list(GET arg_COMMAND 0 program)
  if(TARGET ${program})
    # As a text: what lists are made of would lose a semicolon in an argument.
    string(REGEX REPLACE "^[^;]+" "$<TARGET_FILE:${program}>" arg_COMMAND "${arg_COMMAND}")
  endif()
  cmake_path(ABSOLUTE_PATH arg_FILE)
  cmake_path(ABSOLUTE_PATH arg_EXPECTED)
  add_test(NAME ${arg_NAME}
    COMMAND ${CMAKE_COMMAND} -DEXPECTED=${arg_EXPECTED} -DSTATUS=${arg_STATUS}
      -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/ZephyrConsoleTestRun.cmake
      -- ${arg_COMMAND} ${arg_FILE})
endfunction()
