# Installation and the package a host finds with find_package(Bravik):
#
#   find_package(Bravik REQUIRED)
#   target_link_libraries(myhost PRIVATE Bravik::bravik)
#
# Bravik::bravik is the module; it brings the host libraries it is written
# against (Bravik::bravik_records, Bravik::bravik_toolkit,
# Bravik::bravik_platform). Bravik::bravik_archive, the SQLite back end, is
# there for hosts that want it. Headers go to include/bravik: the host
# libraries' flat, the module's by area ("boundary/bravikapp.h").
include(CMakePackageConfigHelpers)

set(_bravik_install_targets)
foreach(t bravik_platform bravik_records bravik_toolkit bravik_archive bravik)
  if(TARGET ${t})
    list(APPEND _bravik_install_targets ${t})
  endif()
endforeach()

if(NOT TARGET bravik)
  return()
endif()

set(_bravik_incdir "${CMAKE_INSTALL_INCLUDEDIR}/bravik")
set(_bravik_cmakedir "${CMAKE_INSTALL_LIBDIR}/cmake/Bravik")

# Installed libraries find each other next to themselves, wherever the prefix is.
set_target_properties(${_bravik_install_targets} PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS ${_bravik_install_targets}
  EXPORT BravikTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  INCLUDES DESTINATION "${_bravik_incdir}")

# Host libraries: flat headers.
foreach(dir host/platform host/toolkit src/boundary/records host/archive)
  if(EXISTS "${PROJECT_SOURCE_DIR}/${dir}")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${dir}/"
      DESTINATION "${_bravik_incdir}"
      FILES_MATCHING PATTERN "*.h")
  endif()
endforeach()

# The module: one folder per area.
foreach(area boundary duplicates mergelink patient exam reasons)
  if(EXISTS "${PROJECT_SOURCE_DIR}/src/${area}")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/src/${area}/"
      DESTINATION "${_bravik_incdir}/${area}"
      FILES_MATCHING PATTERN "*.h"
      PATTERN "records" EXCLUDE
      PATTERN "res" EXCLUDE)
  endif()
endforeach()

# The generated export headers.
foreach(t IN LISTS _bravik_install_targets)
  get_target_property(_bin ${t} BINARY_DIR)
  install(FILES "${_bin}/${t}_export.h" DESTINATION "${_bravik_incdir}")
endforeach()

# The programs.
foreach(exe bravik-workstation bravik-archive)
  if(TARGET ${exe})
    set_target_properties(${exe} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS ${exe} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  endif()
endforeach()

install(EXPORT BravikTargets NAMESPACE Bravik:: DESTINATION "${_bravik_cmakedir}")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/BravikConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/BravikConfig.cmake"
  INSTALL_DESTINATION "${_bravik_cmakedir}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/BravikConfigVersion.cmake"
  VERSION "${PROJECT_VERSION}"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/BravikConfig.cmake"
  "${PROJECT_BINARY_DIR}/BravikConfigVersion.cmake"
  DESTINATION "${_bravik_cmakedir}")
