# Makes the Debian packages libzephyrconsole1, libzephyrconsole-dev and zephyr-sandbox with CPack. The preset "package" sets
# the rest: the prefix /usr, and no run paths, since the system's loader finds the libraries.
option(ZEPHYR_CONSOLE_DEBIAN_FILES "Install the copyright and changelog of the Debian packages" OFF)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zephyrconsole)
set(CPACK_PACKAGE_VENDOR "The ZephyrConsole authors")
set(CPACK_PACKAGE_CONTACT "The ZephyrConsole authors <zephyrconsole@lists.example.org>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL Runtime Development Sandbox)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "in-application command console for desktop simulations")
set(about "ZephyrConsole gives a Qt application a console over its running simulation: a
typed line reaches a command object, and what commands write stays in a log.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzephyrconsole1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${about}\n\nThis package holds the shared libraries.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzephyrconsole-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev (>= 6.4), libglm-dev (>= 0.9.9)")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "${about}\n\nThis package holds headers, CMake package, pkg-config files and guides.")

set(CPACK_DEBIAN_SANDBOX_PACKAGE_NAME zephyr-sandbox)
set(CPACK_DEBIAN_SANDBOX_PACKAGE_SECTION science)
set(CPACK_DEBIAN_SANDBOX_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/common ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/qt)
set(CPACK_DEBIAN_SANDBOX_DESCRIPTION
  "${about}\n\nThis package holds a wind simulation that is worked by typing.")

# zephyr_install_debian_files(COMPONENT package)
# Installs the copyright and changelog of a Debian package.
function(zephyr_install_debian_files component package)
  set(changelog ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/debian/copyright ${changelog}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endfunction()

if(ZEPHYR_CONSOLE_DEBIAN_FILES)
  set(changelog ${PROJECT_SOURCE_DIR}/packaging/debian/changelog)
  file(STRINGS ${changelog} newest LIMIT_COUNT 1)
  if(NOT newest MATCHES "\\(${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}\\)")
    message(FATAL_ERROR "The newest entry of ${changelog} is not of version ${PROJECT_VERSION}: ${newest}")
  endif()
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/debian)
  execute_process(COMMAND gzip -9nc ${changelog} OUTPUT_FILE ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz
    COMMAND_ERROR_IS_FATAL ANY)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} id)
    zephyr_install_debian_files(${component} ${CPACK_DEBIAN_${id}_PACKAGE_NAME})
  endforeach()
endif()

include(CPack)
cpack_add_component(Runtime)
cpack_add_component(Development DEPENDS Runtime)
cpack_add_component(Sandbox DEPENDS Runtime)
