# Finds frameworks in a folder as Flutter's tools and Sparkle's archive leave them: NAME.framework, or
# the macOS slice inside NAME.xcframework.

# zephyx_frameworks_in(out folder [name]): their full paths; with a name that one only. Empty when
# there are none.
function(zephyx_frameworks_in out folder)
  set(name "*")
  if(ARGC GREATER 2)
    set(name "${ARGV2}")
  endif()
  file(GLOB found LIST_DIRECTORIES true
    "${folder}/${name}.framework"
    "${folder}/native_assets/${name}.framework"
    "${folder}/${name}.xcframework/macos-*/${name}.framework")
  # "*" stands for any name before ".framework", so also for another one than the xcframework's.
  list(REMOVE_DUPLICATES found)
  set(${out} "${found}" PARENT_SCOPE)
endfunction()

# zephyx_need_framework(out folder name advice): the one framework, or the end of the configuration.
function(zephyx_need_framework out folder name advice)
  zephyx_frameworks_in(found "${folder}" "${name}")
  list(LENGTH found count)
  if(count EQUAL 0)
    message(FATAL_ERROR "No ${name}.framework and no ${name}.xcframework for macOS in\n"
      "  ${folder}\n${advice}")
  elseif(count GREATER 1)
    list(JOIN found "\n  " places)
    message(FATAL_ERROR "More than one ${name}.framework:\n  ${places}\nLeave only one of them there.")
  endif()
  set(${out} "${found}" PARENT_SCOPE)
endfunction()

# zephyx_check_registrant(registrant frameworks): every module that the generated plug-in registrant
# imports must be among the frameworks, or belong to the system.
function(zephyx_check_registrant registrant frameworks)
  file(STRINGS "${registrant}" imports REGEX "^import ")
  foreach(import ${imports})
    string(REGEX REPLACE "^import +([A-Za-z0-9_]+).*" "\\1" module "${import}")
    if(module STREQUAL "Foundation" OR module STREQUAL "Cocoa" OR module STREQUAL "AppKit")
      continue()
    endif()
    set(matching ${frameworks})
    list(FILTER matching INCLUDE REGEX "/${module}\\.framework$")
    if(NOT matching)
      message(FATAL_ERROR "${registrant}\nregisters the plug-in \"${module}\", but its framework is not "
        "in ZEPHYX_FLUTTER_OUTPUT.\n\"flutter build macos-framework\" builds the plug-ins' frameworks too; "
        "\"flutter assemble\" does not.")
    endif()
  endforeach()
endfunction()
