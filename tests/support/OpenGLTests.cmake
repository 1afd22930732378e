# Tests that draw with OpenGL, in software, each on a display of its own.
find_package(Qt6 6.4 REQUIRED COMPONENTS Test OpenGL OpenGLWidgets)

zephyr_find_test_program(XVFB_PROGRAM Xvfb xvfb)
zephyr_find_test_program(XDOTOOL_PROGRAM xdotool xdotool)
zephyr_find_test_program(SETXKBMAP_PROGRAM setxkbmap x11-xkb-utils)

# zephyr_opengl_environment(test [DESKTOP version ES version])
# Lets a test use the newest OpenGL that the driver in software has, or these versions, named as Mesa takes them.
function(zephyr_opengl_environment test)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESKTOP;ES" "")
  set(environment QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1)
  if(arg_DESKTOP)
    list(APPEND environment
      MESA_GL_VERSION_OVERRIDE=${arg_DESKTOP} EXPECTED_OPENGL=${arg_DESKTOP}
      MESA_GLES_VERSION_OVERRIDE=${arg_ES} EXPECTED_OPENGL_ES=${arg_ES})
  endif()
  set_tests_properties(${test} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 300)
  zephyr_uses_a_display(${test})
  zephyr_unloads_opengl(${test})
endfunction()

# zephyr_add_opengl_test(NAME name SOURCES file...)
# Adds a test program with a QApplication.
function(zephyr_add_opengl_test)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "SOURCES")
  zephyr_add_test(NAME ${arg_NAME} SOURCES ${arg_SOURCES}
    ${PROJECT_SOURCE_DIR}/tests/opengl/DisplayMain.cpp
    LIBRARIES Zephyr::ConsoleOpenGL Qt6::Test Qt6::OpenGL Qt6::OpenGLWidgets NO_APPLICATION)
  target_compile_definitions(${arg_NAME} PRIVATE
    XVFB_PROGRAM="${XVFB_PROGRAM}"
    XDOTOOL_PROGRAM="${XDOTOOL_PROGRAM}"
    SETXKBMAP_PROGRAM="${SETXKBMAP_PROGRAM}")
  zephyr_opengl_environment(${arg_NAME})
endfunction()
