# Installs the module as a library: the shared library, its public headers and
# a package config, so that a host project needs find_package(Aurivox) and
# target_link_libraries(host PRIVATE Aurivox::aurivox).
if(NOT TARGET aurivox)
  return()
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Aurivox)
# The public headers name these framework types (strings, audio formats,
# files) and the module links them publicly, so they install beside it.
set(_public_frameworks orxcore orxmediatypes ZUMFoundation)

# Include folders point into the source and build trees while building and
# at the installed include folder for a host.
foreach(_target aurivox_headers ${_public_frameworks})
  get_target_property(_folders ${_target} INTERFACE_INCLUDE_DIRECTORIES)
  list(TRANSFORM _folders PREPEND "$<BUILD_INTERFACE:")
  list(TRANSFORM _folders APPEND ">")
  set_property(TARGET ${_target} PROPERTY INTERFACE_INCLUDE_DIRECTORIES
    ${_folders} "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
endforeach()
# Header-only libraries used inside the framework's static libraries are
# needed only while building them.
get_target_property(_links orxcore INTERFACE_LINK_LIBRARIES)
list(TRANSFORM _links REPLACE "^\\$<LINK_ONLY:aurivox_header_deps>$" "$<BUILD_INTERFACE:\\0>")
set_property(TARGET orxcore PROPERTY INTERFACE_LINK_LIBRARIES ${_links})

install(TARGETS aurivox aurivox_headers ${_public_frameworks} EXPORT AurivoxTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/aurivox ${CMAKE_BINARY_DIR}/generated/aurivox
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(_framework ${_public_frameworks})
  install(DIRECTORY framework/${_framework}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endforeach()

install(EXPORT AurivoxTargets NAMESPACE Aurivox:: DESTINATION ${_config_dir})
configure_package_config_file(cmake/AurivoxConfig.cmake.in
  ${CMAKE_BINARY_DIR}/AurivoxConfig.cmake INSTALL_DESTINATION ${_config_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/AurivoxConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/AurivoxConfig.cmake ${CMAKE_BINARY_DIR}/AurivoxConfigVersion.cmake
  DESTINATION ${_config_dir})
