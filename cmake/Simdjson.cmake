# The target simdjson::simdjson. For a Mac it is compiled here, for both processors: as a package it is
# made for one of them, and is a library that the bundle would have to embed.
if(NOT APPLE)
  find_package(simdjson REQUIRED)
  return()
endif()

set(ZEPHYX_SIMDJSON ${CMAKE_SOURCE_DIR}/build/simdjson CACHE PATH
  "Folder with simdjson.h and simdjson.cpp, the single-file form of simdjson")
foreach(file simdjson.h simdjson.cpp)
  if(NOT EXISTS ${ZEPHYX_SIMDJSON}/${file})
    message(FATAL_ERROR "No ${file} in\n  ${ZEPHYX_SIMDJSON}\nPut both files of simdjson's singleheader "
      "folder there, or name their folder with -DZEPHYX_SIMDJSON=...")
  endif()
endforeach()
add_library(simdjson STATIC ${ZEPHYX_SIMDJSON}/simdjson.cpp)
target_include_directories(simdjson SYSTEM PUBLIC ${ZEPHYX_SIMDJSON})
add_library(simdjson::simdjson ALIAS simdjson)
