# The port builds the tree that it is in. VCPKG_LIBRARY_LINKAGE sets BUILD_SHARED_LIBS.
cmake_path(SET SOURCE_PATH NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../../..")

vcpkg_cmake_configure(SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS -DZEPHYR_CONSOLE_BUILD_TESTS=OFF -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF -DCMAKE_INSTALL_DOCDIR=share/${PORT}/doc)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME ZephyrCommon CONFIG_PATH lib/cmake/ZephyrCommon DO_NOT_DELETE_PARENT_CONFIG_PATH)
vcpkg_cmake_config_fixup(PACKAGE_NAME ZephyrConsole CONFIG_PATH lib/cmake/ZephyrConsole)
vcpkg_fixup_pkgconfig()
if(EXISTS "${CURRENT_PACKAGES_DIR}/bin/zephyr-attach")
  vcpkg_copy_tools(TOOL_NAMES zephyr-attach AUTO_CLEAN)
endif()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
