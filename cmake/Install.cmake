# What `cmake --install` puts where, in components: each library and its development files, the tool.

include(CMakePackageConfigHelpers)

set(cmake_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/pagescan")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR
  BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" OUTPUT_VARIABLE include_from_pc)

# A library, its file for pkg-config (whose paths are told relative to it, so that the tree may be
# moved) and its CMake targets: pagescan_install_library(NAME COMPONENT-PREFIX TARGETS-FILE).
function(pagescan_install_library name component targets)
  string(REPLACE "-" "_" target "${name}")
  install(TARGETS ${target}
    EXPORT ${targets}
    LIBRARY COMPONENT ${component}library
    NAMELINK_COMPONENT ${component}development)
  install(TARGETS ${target}_static
    EXPORT ${targets}
    ARCHIVE COMPONENT ${component}development)
  install(EXPORT ${targets}
    NAMESPACE pagescan::
    DESTINATION "${cmake_package_dir}"
    COMPONENT ${component}development)
  configure_file(cmake/${name}.pc.in "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${name}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT ${component}development)
endfunction()

pagescan_install_library(pagescan "" pagescanTargets)
pagescan_install_library(pagescan-page page_ pagescanPageTargets)

# One folder of headers for both libraries: <pagescan/page.h> is in include/pagescan/ here, too; the
# classic headers are flat here, and in that folder once installed.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/pagescan"
  COMPONENT development
  FILES_MATCHING PATTERN "*.h"
  PATTERN "include/pagescan" EXCLUDE)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/pagescan/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/pagescan"
  COMPONENT page_development
  FILES_MATCHING PATTERN "*.h")

# find_package(pagescan CONFIG) finds the libraries whose development files are installed.
configure_package_config_file(cmake/pagescanConfig.cmake.in
  "${PROJECT_BINARY_DIR}/pagescanConfig.cmake"
  INSTALL_DESTINATION "${cmake_package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/pagescanConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/pagescanConfig.cmake" "${PROJECT_BINARY_DIR}/pagescanConfigVersion.cmake"
  DESTINATION "${cmake_package_dir}"
  COMPONENT development)

if(NOT TARGET pagescan_tool)
  return()
endif()

# Outside the system's own prefix the programs find the libraries by their own place.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
    BASE_DIRECTORY "${CMAKE_INSTALL_FULL_BINDIR}" OUTPUT_VARIABLE lib_from_bin)
  set_target_properties(pagescan_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${lib_from_bin}")
endif()
install(TARGETS pagescan_tool RUNTIME COMPONENT tool)
if(TARGET pagescan_saver)
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
      BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBEXECDIR}/pagescan" OUTPUT_VARIABLE lib_from_saver)
    set_target_properties(pagescan_saver PROPERTIES INSTALL_RPATH "$ORIGIN/${lib_from_saver}")
  endif()
  install(TARGETS pagescan_saver
    RUNTIME DESTINATION "${CMAKE_INSTALL_LIBEXECDIR}/pagescan" COMPONENT tool)
endif()

# Manual pages are installed compressed, as systems expect them.
pagescan_collect(man_pages "${PROJECT_SOURCE_DIR}/docs/man/*.1")
set(compressed_pages "")
foreach(page IN LISTS man_pages)
  cmake_path(GET page FILENAME name)
  set(compressed "${PROJECT_BINARY_DIR}/man/${name}.gz")
  add_custom_command(OUTPUT "${compressed}"
    COMMAND gzip -9nc "${page}" > "${compressed}"
    DEPENDS "${page}" VERBATIM)
  list(APPEND compressed_pages "${compressed}")
endforeach()
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/man")
add_custom_target(pagescan_man ALL DEPENDS ${compressed_pages})
install(FILES ${compressed_pages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)

# Debian's zsh looks for the completions of packages in a folder of their own.
set(zsh_functions zsh/site-functions)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(zsh_functions zsh/vendor-completions)
endif()
foreach(completion IN ITEMS
    "pagescan.bash:bash-completion/completions:pagescan"
    "_pagescan:${zsh_functions}:_pagescan"
    "pagescan.fish:fish/vendor_completions.d:pagescan.fish")
  string(REPLACE ":" ";" completion "${completion}")
  list(GET completion 0 file)
  list(GET completion 1 folder)
  list(GET completion 2 name)
  install(FILES "${PROJECT_SOURCE_DIR}/completions/${file}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/${folder}"
    RENAME "${name}"
    COMPONENT tool
    OPTIONAL)
endforeach()
