# What every target of this project shares: warnings, include root, sanitizers.

set(ZEPHYX_SANITIZE "" CACHE STRING "Sanitizers, comma-separated, as -fsanitize takes them")

add_library(zephyx_options INTERFACE)
target_include_directories(zephyx_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(zephyx_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-qual -Wconversion -Wno-sign-conversion
  # On a Mac each newer compiler would end the build; `./dev check` holds these sources to the rule.
  $<$<NOT:$<PLATFORM_ID:Darwin>>:-Werror>
  # members that a designated initialiser leaves out have their defaults
  -Wno-missing-field-initializers)
if(CMAKE_UNITY_BUILD)
  # A name of one source may hide a neighbour's.
  target_compile_options(zephyx_options INTERFACE -Wno-shadow)
endif()
if(ZEPHYX_SANITIZE)
  target_compile_options(zephyx_options INTERFACE -fsanitize=${ZEPHYX_SANITIZE}
    -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(zephyx_options INTERFACE -fsanitize=${ZEPHYX_SANITIZE})
endif()

# zephyx_library(name [libraries...]): a static library of the sources in the calling folder.
function(zephyx_library name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC zephyx_options ${ARGN})
endfunction()
