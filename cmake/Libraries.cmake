include(CMakePackageConfigHelpers)
include(GenerateExportHeader)

# Linux and most other systems; not Windows or macOS, which have other kinds of libraries.
if(UNIX AND NOT APPLE)
  set(ZEPHYR_ELF ON)
endif()
# What a run path calls the folder of the file that it is in. Windows has no run paths.
set(ZEPHYR_ORIGIN $ORIGIN)
if(APPLE)
  set(ZEPHYR_ORIGIN @loader_path)
endif()

# zephyr_compile_settings(TARGET)
# Sets the language level, visibility, warnings, instrumentation, hardening and arithmetic of all code in this project.
function(zephyr_compile_settings target)
  target_compile_features(${target} PUBLIC cxx_std_17 PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON
    UNITY_BUILD_MODE BATCH
    UNITY_BUILD_BATCH_SIZE 8) # whatever a product sets, so that sources are combined in no other groups than here
  target_link_libraries(${target} PRIVATE
    $<BUILD_INTERFACE:zephyr_warnings> $<BUILD_INTERFACE:zephyr_instrumentation>
    $<BUILD_INTERFACE:zephyr_hardening> $<BUILD_INTERFACE:zephyr_floating_point>)
endfunction()

# zephyr_add_library(TARGET ALIAS name PACKAGE package EXPORT_HEADER path MACRO prefix HEADERS dir LINKS target...
#   SOURCES file... [COMPONENT component] [QML_MODULE])
# Adds a versioned library TARGET with the alias Zephyr::name, shared or static as BUILD_SHARED_LIBS has it, and installs it
# with its headers in the CMake package `package`. COMPONENT names what is installed by itself, so that a program without it
# pulls nothing of what it links; without it, the library is installed as a part of "Runtime".
#
# The library's objects are compiled once, as TARGETObjects, so that tests of symbols that aren't exported link the same
# code. With QML_MODULE they are compiled as TARGET itself, where qt_add_qml_module() looks for them.
function(zephyr_add_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "QML_MODULE" "ALIAS;PACKAGE;EXPORT_HEADER;MACRO;HEADERS;COMPONENT" "SOURCES;LINKS")
  if(arg_QML_MODULE)
    set(compiled ${target})
    add_library(${target} ${arg_SOURCES})
  else()
    set(compiled ${target}Objects ${target})
    add_library(${target}Objects OBJECT ${arg_SOURCES})
    add_library(${target} $<TARGET_OBJECTS:${target}Objects>)
  endif()
  add_library(Zephyr::${arg_ALIAS} ALIAS ${target})

  generate_export_header(${target} BASE_NAME ${arg_MACRO}
    EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/include/${arg_EXPORT_HEADER})

  set(exports_nothing "")
  if(NOT BUILD_SHARED_LIBS)
    set(exports_nothing ${arg_MACRO}_STATIC_DEFINE)
  endif()
  foreach(built IN LISTS compiled)
    target_compile_definitions(${built} PRIVATE ${target}_EXPORTS PUBLIC ${exports_nothing})
    zephyr_compile_settings(${built})
    target_include_directories(${built} PUBLIC
      $<BUILD_INTERFACE:${arg_HEADERS}>
      $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}/include>
      $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${built} PUBLIC ${arg_LINKS})
  endforeach()

  if(BUILD_SHARED_LIBS AND ZEPHYR_ELF)
    zephyr_limit_exports(${target})
  endif()
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME ${arg_ALIAS})
  if(NOT arg_COMPONENT)
    set(arg_COMPONENT Runtime)
  endif()
  zephyr_install_library(${target} ${arg_PACKAGE} ${arg_COMPONENT} ${arg_HEADERS} ${CMAKE_CURRENT_BINARY_DIR}/include)
  if(BUILD_SHARED_LIBS OR NOT arg_QML_MODULE) # pkg-config can't name the object libraries of a static QML module
    zephyr_install_pkgconfig_file(${target} ${exports_nothing})
  endif()
endfunction()

# zephyr_limit_exports(TARGET)
# Templates of the standard library are instantiated with default visibility. The version script limits the exports to this
# project's own names. Windows exports only what is marked, and Apple's linker takes no such script.
function(zephyr_limit_exports target)
  set(version_script ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(${target} PRIVATE LINKER:--version-script=${version_script})
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${version_script})
  if(NOT ZEPHYR_CONSOLE_SANITIZERS) # a sanitizer's runtime may be linked by the program only
    target_link_options(${target} PRIVATE LINKER:--no-undefined)
  endif()
endfunction()

# zephyr_install_library(TARGET package component headers...)
# Installs TARGET as a part of `component` and in the CMake package `package`, and the headers below each folder.
function(zephyr_install_library target package component)
  install(TARGETS ${target} EXPORT ${target}Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component} NAMELINK_COMPONENT Development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component} # a DLL
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development) # and what links it, or a static library
  set_target_properties(${target} PROPERTIES INSTALL_RPATH ${ZEPHYR_ORIGIN})
  foreach(headers IN LISTS ARGN)
    install(DIRECTORY ${headers}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development
      FILES_MATCHING PATTERN *.h)
  endforeach()
  install(EXPORT ${target}Targets NAMESPACE Zephyr:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/${package}
    COMPONENT Development)
endfunction()

# zephyr_install_pkgconfig_file(TARGET [definition])
# Installs a pkg-config file for TARGET, made from cmake/TARGET.pc.in. What includes its headers is compiled with `definition`.
function(zephyr_install_pkgconfig_file target)
  set(definition "")
  if(ARGN)
    set(definition " -D${ARGN}")
  endif()
  # An installation may be moved, so its paths are relative to the file that holds them.
  set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir}
    OUTPUT_VARIABLE prefix_from_pkgconfig)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${target}.pc.in ${PROJECT_BINARY_DIR}/cmake/${target}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/cmake/${target}.pc DESTINATION ${pkgconfig_dir} COMPONENT Development)
endfunction()

set(ZEPHYR_CONSOLE_QML_DIR ${CMAKE_INSTALL_LIBDIR}/qt6/qml CACHE STRING
  "Where QML modules are installed, below the prefix; Qt's own folder makes imports work without QML_IMPORT_PATH")

# zephyr_install_qml_module(LIBRARY PLUGIN path [object_library...])
# Installs the QML module of LIBRARY: the target PLUGIN, by which QML loads the library, and what tools read of the types.
# Where the libraries are static, a program that links LIBRARY gets PLUGIN with it, and the object libraries, which hold what
# nobody refers to by name.
function(zephyr_install_qml_module library plugin path)
  set(dir ${ZEPHYR_CONSOLE_QML_DIR}/${path})
  zephyr_compile_settings(${plugin})
  get_target_property(built_dir ${plugin} LIBRARY_OUTPUT_DIRECTORY)
  install(FILES ${built_dir}/qmldir ${built_dir}/${library}.qmltypes DESTINATION ${dir} COMPONENT QmlModule)
  if(NOT BUILD_SHARED_LIBS)
    target_link_libraries(${library} INTERFACE ${plugin})
    install(TARGETS ${plugin} ${ARGN} EXPORT ${library}Targets
      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
      OBJECTS DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
    return()
  endif()
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
    BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${dir} OUTPUT_VARIABLE libraries_from_plugin)
  set_target_properties(${plugin} PROPERTIES INSTALL_RPATH "${ZEPHYR_ORIGIN}/${libraries_from_plugin}")
  install(TARGETS ${plugin}
    LIBRARY DESTINATION ${dir} COMPONENT QmlModule
    RUNTIME DESTINATION ${dir} COMPONENT QmlModule)
endfunction()

# zephyr_install_package(PACKAGE)
# Installs the CMake package PACKAGE, made from cmake/PACKAGEConfig.cmake.in, with the project's version.
function(zephyr_install_package package)
  set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
  set(config ${PROJECT_BINARY_DIR}/cmake/${package}Config.cmake)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/${package}Config.cmake.in ${config}
    INSTALL_DESTINATION ${package_dir})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/${package}ConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
  install(FILES ${config} ${PROJECT_BINARY_DIR}/cmake/${package}ConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT Development)
endfunction()
