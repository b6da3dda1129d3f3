# What every target of this project has in common.

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

set(PAGESCAN_SANITIZED OFF)
if("${CMAKE_CXX_FLAGS} ${PAGESCAN_LIBRARY_FLAGS}" MATCHES "-fsanitize=")
  set(PAGESCAN_SANITIZED ON)
endif()

# A library with checks or counts built in is no library to install.
set(PAGESCAN_INSTRUMENTED OFF)
if(PAGESCAN_SANITIZED OR PAGESCAN_LIBRARY_FLAGS OR CMAKE_CXX_FLAGS MATCHES "--coverage")
  set(PAGESCAN_INSTRUMENTED ON)
endif()

# Sources and programs are found by folder, so that a new file needs no edit here.
macro(pagescan_collect variable)
  file(GLOB ${variable} CONFIGURE_DEPENDS LIST_DIRECTORIES false ${ARGN})
endmacro()

# Language (C++20, or the standard given), warnings and bounds checks of our own targets; never
# imposed on a host.
function(pagescan_own_target target)
  set(standard 20)
  if(ARGC GREATER 1)
    set(standard "${ARGV1}")
  endif()
  target_compile_features(${target} PRIVATE cxx_std_${standard})
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  # Bytes compare as they do on x86-64, where char is signed, on every machine.
  target_compile_options(${target} PRIVATE -fsigned-char -Wall -Wextra -Wconversion -Wshadow)
  # With -O3, g++ 12 warns of overlapping copies in its own std::string that cannot happen.
  target_compile_options(${target} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>")
  if(PAGESCAN_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  if(PAGESCAN_SANITIZED)
    # g++ sees uninitialised reads in its own headers once they are instrumented.
    target_compile_options(${target} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>")
  else()
    target_compile_options(${target} PRIVATE
      -fstack-protector-strong
      "$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now)
  endif()
endfunction()

# Has the large headers that most sources of a target include compiled once. A source still includes
# what it uses: builds without PAGESCAN_PRECOMPILED_HEADERS show it.
function(pagescan_precompile target)
  if(PAGESCAN_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# A library of helper code that may have no sources yet, only headers.
function(pagescan_helper_library target)
  cmake_parse_arguments(ARG "" "" "SOURCES;INCLUDES;LIBRARIES" ${ARGN})
  if(ARG_SOURCES)
    add_library(${target} STATIC ${ARG_SOURCES})
    pagescan_own_target(${target})
    set(scope PUBLIC)
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${target} ${scope} ${ARG_INCLUDES})
  target_link_libraries(${target} ${scope} ${ARG_LIBRARIES})
endfunction()
