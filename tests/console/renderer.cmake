zephyr_add_test(NAME console_renderer SOURCES
  ConsoleRendererTest.cpp
  ConsoleRendererBlinkTest.cpp
  ConsoleRendererLayoutTest.cpp
  ConsoleRendererPropertyTest.cpp
  ${PROJECT_SOURCE_DIR}/tests/support/PlainRenderer.cpp ONE_THREAD)
zephyr_add_test(NAME console_renderer_values SOURCES
  BlinkClockTest.cpp LineCacheTest.cpp LowerEdgeTest.cpp LIBRARIES zephyr_console_inside ONE_THREAD)
