# Shared helpers for the project's targets.

# bravik_library(NAME <target> TYPE SHARED|STATIC SOURCES ... [PUBLIC_LIBS ...] [PRIVATE_LIBS ...])
# Creates a library with a generated export header <target>_export.h and the
# folder above the target's source dir on its include path.
function(bravik_library)
  cmake_parse_arguments(A "" "NAME;TYPE" "SOURCES;PUBLIC_LIBS;PRIVATE_LIBS" ${ARGN})
  add_library(${A_NAME} ${A_TYPE} ${A_SOURCES})
  string(TOUPPER "${A_NAME}" _upper)
  generate_export_header(${A_NAME}
    BASE_NAME ${A_NAME}
    EXPORT_FILE_NAME "${CMAKE_CURRENT_BINARY_DIR}/${A_NAME}_export.h")
  target_include_directories(${A_NAME} PUBLIC
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>"
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/bravik>")
  if(A_PUBLIC_LIBS)
    target_link_libraries(${A_NAME} PUBLIC ${A_PUBLIC_LIBS})
  endif()
  if(A_PRIVATE_LIBS)
    target_link_libraries(${A_NAME} PRIVATE ${A_PRIVATE_LIBS})
  endif()
endfunction()

# bravik_test(NAME <exe> LABEL <area> SOURCES ... [LIBS ...])
# One GoogleTest executable whose tests carry the area label. Discovery runs
# before the tests, not at build time, so a build never needs a display.
function(bravik_test)
  cmake_parse_arguments(A "" "NAME;LABEL" "SOURCES;LIBS" ${ARGN})
  add_executable(${A_NAME} ${A_SOURCES})
  target_link_libraries(${A_NAME} PRIVATE bravik_testkit ${A_LIBS})
  gtest_discover_tests(${A_NAME}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES
      LABELS ${A_LABEL}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;ASAN_OPTIONS=detect_leaks=0;UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
endfunction()
