# Where an installed Zephyx lies on Linux, and the Debian package of it. The screens are linked in.

include(GNUInstallDirs)
# Packaging needs the program only, not the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(package ${CMAKE_SOURCE_DIR}/Platform/Linux/Package)
set(icon ${CMAKE_SOURCE_DIR}/Platform/macOS/Icon)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/zephyx)

install(TARGETS zephyx RUNTIME)
install(FILES ${package}/com.zephyx.app.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${icon}/Icon.svg DESTINATION ${icons}/scalable/apps RENAME com.zephyx.app.svg)
foreach(size 16 32 128 256 512)
  install(FILES ${icon}/Zephyx.iconset/icon_${size}x${size}.png
    DESTINATION ${icons}/${size}x${size}/apps RENAME com.zephyx.app.png)
endforeach()
install(FILES ${icon}/Zephyx.iconset/icon_32x32@2x.png
  DESTINATION ${icons}/64x64/apps RENAME com.zephyx.app.png)

install(FILES ${package}/copyright DESTINATION ${documents})
execute_process(COMMAND gzip --best --no-name INPUT_FILE ${package}/changelog
  OUTPUT_FILE ${CMAKE_BINARY_DIR}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${package}/changelog)
install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${documents})

# Sessions look for what starts at log-in in one folder of the system, whatever the prefix.
install(CODE "
  if(CMAKE_INSTALL_PREFIX MATCHES \"^/usr(/local)?/?$\")
    file(INSTALL DESTINATION /etc/xdg/autostart TYPE FILE RENAME com.zephyx.app.desktop
      FILES \"${package}/com.zephyx.app.login.desktop\")
  endif()")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zephyx)
set(CPACK_PACKAGE_CONTACT "Zephyx <developers@zephyx.app>")
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${package}/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "clipboard history and AI actions in the menu bar")
set(CPACK_PACKAGE_DESCRIPTION
"Zephyx keeps what you copy: text, links, images and files from every program.
One keystroke brings the history up where the pointer is, and what you pick is
pasted into the program that you came from. Selected text is translated or
corrected in its place by a chat server of your choice. The menu shows how busy
the machine is, dims external displays, mutes the microphone and locks the
keyboard for cleaning.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What the linker cannot see: modules of the screens' language, which are loaded by their names.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtquick, qml6-module-qtqml, \
qml6-module-qtqml-models, qml6-module-qtqml-workerscript")
# Looked for while it runs: the sound server, the keeper of secrets, more kinds of pictures, the
# icons of other programs, the desktop's own programs, a letter to draw with.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libpulse0, gnome-keyring | libkf5wallet-bin | keepassxc, \
default-dbus-session-bus | dbus-session-bus, qt6-image-formats-plugins, libqt6svg6, xdg-utils, \
fonts-dejavu-core | fonts-noto-core")
include(CPack)
