# Runs the vcpkg port with functions that stand for vcpkg's, and checks what it asks of them:
# cmake -DSOURCES=dir -DVERSION=version -DWORK=dir -P vcpkg_port.cmake
cmake_minimum_required(VERSION 3.25)
set(port ${SOURCES}/packaging/vcpkg/zephyrconsole)

file(READ ${port}/vcpkg.json manifest)
string(JSON name GET ${manifest} name)
string(JSON version GET ${manifest} version)
if(NOT version STREQUAL VERSION)
  message(SEND_ERROR "The port is of version ${version}, not ${VERSION}.")
endif()

# Configures the tree as the port wants it, without building anything.
function(vcpkg_cmake_configure)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
  execute_process(COMMAND ${CMAKE_COMMAND} --fresh -S ${arg_SOURCE_PATH} -B ${WORK}/build ${arg_OPTIONS}
      -DCMAKE_INSTALL_PREFIX=${CURRENT_PACKAGES_DIR} -DCMAKE_INSTALL_LIBDIR=lib --warn-uninitialized --log-level=ERROR
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()
function(vcpkg_cmake_install)
endfunction()
function(vcpkg_cmake_config_fixup)
  cmake_parse_arguments(PARSE_ARGV 0 arg "DO_NOT_DELETE_PARENT_CONFIG_PATH" "PACKAGE_NAME;CONFIG_PATH" "")
  if(NOT EXISTS ${WORK}/build/cmake/${arg_PACKAGE_NAME}Config.cmake)
    message(SEND_ERROR "There is no CMake package ${arg_PACKAGE_NAME}.")
  endif()
endfunction()
function(vcpkg_fixup_pkgconfig)
endfunction()
function(vcpkg_copy_tools)
endfunction()
function(vcpkg_install_copyright)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
  foreach(file IN LISTS arg_FILE_LIST)
    if(NOT EXISTS ${file})
      message(SEND_ERROR "There is no ${file}.")
    endif()
  endforeach()
endfunction()

set(PORT ${name})
set(CURRENT_PACKAGES_DIR ${WORK}/packages)
include(${port}/portfile.cmake)
