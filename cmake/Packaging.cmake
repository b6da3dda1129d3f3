# Debian packages by `cpack -G DEB`: libpagescan1, libpagescan-dev, pagescan.

set(library_package "libpagescan${PROJECT_VERSION_MAJOR}")
set(maintainer "pagescan developers <pagescan@localhost.localdomain>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "HTML and URL text utilities for web clients
 pagescan finds the links of pages and style sheets with their byte offsets,
 resolves them, encodes and decodes URLs and character references, and blanks
 out scripts and comments without moving a byte.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libpagescan-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "HTML and URL text utilities, development files
 Headers, the static library and the CMake and pkg-config files of pagescan.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME pagescan)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION web)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/src")
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "finds and resolves the links of pages on the command line
 pagescan lists the links of pages and style sheets with byte offsets and
 resolved URLs, and encodes, decodes, converts and scrubs text in a pipe.")

# Every package brings its licence and a changelog.
set(doc_dir "${PROJECT_BINARY_DIR}/package-doc")
configure_file(cmake/debian-copyright.in "${doc_dir}/copyright" @ONLY)
configure_file(cmake/debian-changelog.in "${doc_dir}/changelog.Debian" @ONLY)
add_custom_command(OUTPUT "${doc_dir}/changelog.Debian.gz"
  COMMAND gzip -9nkf "${doc_dir}/changelog.Debian"
  DEPENDS "${doc_dir}/changelog.Debian" VERBATIM)
add_custom_target(pagescan_package_doc ALL DEPENDS "${doc_dir}/changelog.Debian.gz")
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  foreach(component IN ITEMS LIBRARY DEVELOPMENT TOOL)
    string(TOLOWER ${component} name)
    install(FILES "${doc_dir}/copyright" "${doc_dir}/changelog.Debian.gz"
      DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}"
      COMPONENT ${name})
  endforeach()
endif()

include(CPack)
