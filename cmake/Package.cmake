# The Debian package: what the program links to is found by itself; here stands what it opens as it runs.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvane)
set(CPACK_PACKAGE_CONTACT "Corvane developers <support@corvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "workspace manager for the desktop")
set(CPACK_PACKAGE_DESCRIPTION
"A workspace is a named, ordered group of what one task needs: applications,
files, folders, web addresses and terminal commands. One press opens all of
it, another one closes it again.

Layouts put the windows back where they stood, and Focus Mode quits what a
workspace doesn't need.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_DEPENDS
  # modules that the views import, and those that these import
  qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick
  qml6-module-qtquick-layouts qml6-module-qtquick-templates
  qml6-module-qtquick-window
  # Wayland
  qt6-wayland
  # pictures in vectors, which were a part of their library before; icons by name, the icons' folders
  "qt6-svg-plugins | libqt6svg6 (<< 6.7.2-5~)" adwaita-icon-theme hicolor-icon-theme
  # the letters, the symbols, and the signs in titles
  fonts-inter fonts-material-design-icons-iconfont fonts-symbola
  # which file is of which type
  shared-mime-info)
# Terminal commands, the session's services, and a graphics processor's driver, where there is one.
string(JOIN ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "xterm | x-terminal-emulator" "default-dbus-session-bus | dbus-session-bus"
  "dunst | notification-daemon" at-spi2-core libgl1-mesa-dri)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xdg-desktop-portal")

# SOURCE_DATE_EPOCH says which day it is. Debian tells its own changes from the program's.
string(TIMESTAMP day "%a, %d %b %Y 00:00:00 +0000" UTC)
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
file(CONFIGURE OUTPUT changelog.Debian @ONLY CONTENT
"corvane (@version@) unstable; urgency=medium

  * Version @PROJECT_VERSION@; changelog.gz tells what is new in it.

 -- @CPACK_PACKAGE_CONTACT@  @day@
")
made_paper(changelog.Debian ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES ${CMAKE_SOURCE_DIR}/data/lintian-overrides
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME corvane COMPONENT debian EXCLUDE_FROM_ALL)
set(CPACK_COMPONENTS_ALL Unspecified debian)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
include(CPack)
