# Debian packages by `cpack -G DEB`: libpagescan1, libpagescan-dev, libpagescan-page0.1,
# libpagescan-page-dev, pagescan.

set(library_package "libpagescan${PROJECT_VERSION_MAJOR}")
set(page_library_package "libpagescan-page${PAGESCAN_PAGE_ABI}")
set(PAGESCAN_MAINTAINER "pagescan developers <pagescan@example.org>" CACHE STRING
  "Who answers for the Debian packages: a name and a mail address")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "${PAGESCAN_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each description below opens with its own
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development page_library page_development tool)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/triggers")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "HTML and URL text utilities for web clients
pagescan finds the links of pages and style sheets with their byte offsets,
resolves them, encodes and decodes URLs and character references, and blanks
out scripts and comments without moving a byte.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libpagescan-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "HTML and URL text utilities for web clients, development files
Headers, the static library and the CMake and pkg-config files of pagescan.")

set(CPACK_DEBIAN_PAGE_LIBRARY_PACKAGE_NAME ${page_library_package})
set(CPACK_DEBIAN_PAGE_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PAGE_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PAGE_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/triggers")
set(CPACK_COMPONENT_PAGE_LIBRARY_DESCRIPTION "every URL of web pages, with the bytes that spell it
libpagescan-page reads pages and style sheets as browsers do: it finds every
URL that they carry, with its bytes, what its place is for, and the absolute
URL that a browser makes of it.")

set(CPACK_DEBIAN_PAGE_DEVELOPMENT_PACKAGE_NAME libpagescan-page-dev)
set(CPACK_DEBIAN_PAGE_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PAGE_DEVELOPMENT_PACKAGE_DEPENDS
  "${page_library_package} (= ${PROJECT_VERSION}-1), libpagescan-dev (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_PAGE_DEVELOPMENT_DESCRIPTION "every URL of web pages, development files
Headers, the static library and the CMake and pkg-config files of
libpagescan-page.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME pagescan)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION web)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/src")
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS
  "${library_package} (= ${PROJECT_VERSION}-1), ${page_library_package} (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "lister of the links of web pages, with offsets and resolved URLs
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
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES "${doc_dir}/copyright" "${doc_dir}/changelog.Debian.gz"
      DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}"
      COMPONENT ${component})
  endforeach()
endif()

include(CPack)
