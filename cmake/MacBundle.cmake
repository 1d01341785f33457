# The application bundle Zephyx.app: its property lists, what it embeds, its signature.

set(ZEPHYX_SIGNING_IDENTITY "-" CACHE STRING "Code-signing identity; \"-\" signs for this Mac only")

# zephyx_append_entry(variable key type value): one entry of a property list; `true` has no value.
function(zephyx_append_entry variable key type value)
  if(type STREQUAL "true")
    set(element "<true/>")
  else()
    string(REPLACE "&" "&amp;" value "${value}")
    string(REPLACE "<" "&lt;" value "${value}")
    set(element "<${type}>${value}</${type}>")
  endif()
  set(${variable} "${${variable}}\t<key>${key}</key>\n\t${element}\n" PARENT_SCOPE)
endfunction()

# zephyx_write_property_lists(templates folder flutterApp): Info.plist and Zephyx.entitlements.
function(zephyx_write_property_lists templates folder flutterApp)
  set(ZEPHYX_UPDATE_ENTRIES "")
  if(NOT ZEPHYX_UPDATE_FEED STREQUAL "")
    zephyx_append_entry(ZEPHYX_UPDATE_ENTRIES SUFeedURL string "${ZEPHYX_UPDATE_FEED}")
    zephyx_append_entry(ZEPHYX_UPDATE_ENTRIES SUScheduledCheckInterval integer
      ${ZEPHYX_UPDATE_INTERVAL})
  endif()
  if(NOT ZEPHYX_UPDATE_KEY STREQUAL "")
    zephyx_append_entry(ZEPHYX_UPDATE_ENTRIES SUPublicEDKey string "${ZEPHYX_UPDATE_KEY}")
  endif()
  configure_file(${templates}/Info.plist.in ${folder}/Info.plist @ONLY)

  set(ZEPHYX_ENTITLEMENTS "")
  if(ZEPHYX_SIGNING_IDENTITY STREQUAL "-")
    # Without a team nothing is signed by the same one, and the hardened runtime loads no framework.
    zephyx_append_entry(ZEPHYX_ENTITLEMENTS com.apple.security.cs.disable-library-validation true "")
  endif()
  file(GLOB_RECURSE kernel "${flutterApp}/kernel_blob.bin")
  if(kernel)
    # A debug build of the screens is compiled while it runs.
    zephyx_append_entry(ZEPHYX_ENTITLEMENTS com.apple.security.cs.allow-jit true "")
  endif()
  configure_file(${templates}/Entitlements.plist.in ${folder}/Zephyx.entitlements @ONLY)
endfunction()

# zephyx_mac_bundle(target): makes the executable the bundle. Its parts were found with the platform.
function(zephyx_mac_bundle target)
  set(templates ${CMAKE_SOURCE_DIR}/Platform/macOS)
  set(folder ${CMAKE_BINARY_DIR}/bundle)
  get_property(flutterApp GLOBAL PROPERTY ZEPHYX_FLUTTER_APP)
  get_property(embedded GLOBAL PROPERTY ZEPHYX_EMBEDDED)
  zephyx_write_property_lists(${templates} ${folder} ${flutterApp})

  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME Zephyx
    LINKER_LANGUAGE CXX  # for the other one no run path is known without the C dialect of it
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${folder}/Info.plist
    BUILD_WITH_INSTALL_RPATH ON
    INSTALL_RPATH "@executable_path/../Frameworks")

  # The signature covers all of these, so a new one of any means a new bundle.
  set(parts ${folder}/Info.plist ${folder}/Zephyx.entitlements)
  foreach(part ${embedded})
    if(IS_DIRECTORY ${part})
      cmake_path(GET part STEM name)
      list(APPEND parts ${part}/${name})
    else()
      list(APPEND parts ${part})
    endif()
  endforeach()
  file(GLOB icons CONFIGURE_DEPENDS ${templates}/Icon/Zephyx.iconset/*.png)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${parts} ${icons})
  add_custom_command(TARGET ${target} POST_BUILD VERBATIM
    COMMENT "Embedding and signing"
    COMMAND ${CMAKE_SOURCE_DIR}/Tools/finish-bundle.sh $<TARGET_BUNDLE_DIR:${target}>
      ${templates}/Icon/Zephyx.iconset "${ZEPHYX_SIGNING_IDENTITY}" ${folder}/Zephyx.entitlements
      ${embedded})
endfunction()
