# Makes the Debian packages with CPack: one of libraries for each COMPONENT that zephyr_add_library() was given,
# qml6-module-zephyr-console, libzephyrconsole-dev, zephyr-attach and zephyr-sandbox. The preset "package" sets the rest:
# the prefix /usr, and no run paths, since the system's loader finds the libraries.
option(ZEPHYR_CONSOLE_DEBIAN_FILES "Install the copyright and changelog of the Debian packages" OFF)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zephyrconsole)
set(CPACK_PACKAGE_VENDOR "The ZephyrConsole authors")
set(CPACK_PACKAGE_CONTACT "The ZephyrConsole authors <zephyrconsole@lists.example.org>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
get_property(library_components GLOBAL PROPERTY ZEPHYR_RUNTIME_COMPONENTS)
list(REMOVE_DUPLICATES library_components)
set(CPACK_COMPONENTS_ALL ${library_components} Development Sandbox)
if("Quick" IN_LIST library_components)
  list(APPEND CPACK_COMPONENTS_ALL QmlModule)
endif()
if(TARGET zephyr-attach)
  list(APPEND CPACK_COMPONENTS_ALL Attach)
endif()
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

set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
get_property(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS GLOBAL PROPERTY ZEPHYR_LIBRARY_DIRS)
set(holds_Runtime "the shared libraries that every program with a console needs")
set(holds_Commands "the shared library that makes console commands of functions")
set(holds_Remote "the shared library that serves a console to other programs")
set(holds_Widgets "the shared library that shows the console over Qt widgets")
set(holds_OpenGL "the shared library that draws the console with OpenGL")
set(holds_Quick "the shared library that shows the console in Qt Quick")
foreach(component IN LISTS library_components)
  string(TOUPPER ${component} id)
  string(TOLOWER -${component} suffix)
  if(component STREQUAL Runtime)
    set(suffix "")
  endif()
  set(CPACK_DEBIAN_${id}_PACKAGE_NAME libzephyrconsole${suffix}1)
  set(CPACK_DEBIAN_${id}_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_${id}_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_${id}_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
  set(CPACK_DEBIAN_${id}_DESCRIPTION "${about}\n\nThis package holds ${holds_${component}}.")
endforeach()

set(CPACK_DEBIAN_QMLMODULE_PACKAGE_NAME qml6-module-zephyr-console)
set(CPACK_DEBIAN_QMLMODULE_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_QMLMODULE_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_QMLMODULE_PACKAGE_DEPENDS
  "qml6-module-qtquick, qml6-module-qtqml, qml6-module-qtqml-models, qml6-module-qtqml-workerscript")
set(CPACK_DEBIAN_QMLMODULE_DESCRIPTION "${about}\n\nThis package holds the QML module Zephyr.Console.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzephyrconsole-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev (>= 6.4), libglm-dev (>= 0.9.9)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "qt6-declarative-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "${about}\n\nThis package holds headers, CMake package, pkg-config files and guides.")

set(CPACK_DEBIAN_SANDBOX_PACKAGE_NAME zephyr-sandbox)
set(CPACK_DEBIAN_SANDBOX_PACKAGE_SECTION science)
set(CPACK_DEBIAN_SANDBOX_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_SANDBOX_DESCRIPTION
  "${about}\n\nThis package holds a wind simulation that is worked by typing.")

# It needs no library of the project.
set(CPACK_DEBIAN_ATTACH_PACKAGE_NAME zephyr-attach)
set(CPACK_DEBIAN_ATTACH_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_ATTACH_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ATTACH_DESCRIPTION
  "${about}\n\nThis package holds a program that works such a console from elsewhere.")

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
foreach(component IN LISTS library_components)
  if(component STREQUAL Runtime)
    cpack_add_component(Runtime)
  else()
    cpack_add_component(${component} DEPENDS Runtime)
  endif()
endforeach()
cpack_add_component(Sandbox DEPENDS Runtime)
if("Attach" IN_LIST CPACK_COMPONENTS_ALL)
  cpack_add_component(Attach)
endif()
set(needed_for_development ${library_components})
if("QmlModule" IN_LIST CPACK_COMPONENTS_ALL)
  cpack_add_component(QmlModule DEPENDS Quick)
  list(APPEND needed_for_development QmlModule)
endif()
cpack_add_component(Development DEPENDS ${needed_for_development})
