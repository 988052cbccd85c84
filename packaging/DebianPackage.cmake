# The Debian package, made by scripts/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelpa)
set(CPACK_PACKAGE_CONTACT "The Kelpa authors <kelpa@kelpa.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "board of goals, todos and open windows")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Kelpa keeps a board of goals, each with its todos, and shows the windows of
other programs as cards with small live previews. A card that is dragged onto a
goal belongs to it, also after Kelpa was closed and started again. A click on a
card brings its window forward.
.
It runs on X11 with any window manager that follows the EWMH conventions, and
on sway and Wayland compositors of its family, there without previews. In other
Wayland sessions it shows the windows of X11 programs, and says what it lacks.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/package")
set(CPACK_STRIP_FILES ON)
# Only what is installed is built.
set(CPACK_CMAKE_GENERATOR Ninja)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# Shared libraries are found in the program. What is loaded by name at run time is not: QML modules
# and plugins, the toolkit's Wayland platform, the program that opens addresses.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(depends
    "default-dbus-session-bus | dbus-session-bus"
    qml6-module-qtqml
    qml6-module-qtqml-models
    qml6-module-qtqml-workerscript
    qml6-module-qtquick
    qml6-module-qtquick-templates
    qml6-module-qtquick-window
    qt6-wayland
    xdg-utils)
list(JOIN depends ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
# Without at-spi2-core windows have no document, and the board no screen reader; without the fonts
# some titles are boxes.
set(recommends
    at-spi2-core
    fonts-noto-cjk
    fonts-noto-color-emoji
    fonts-noto-core)
list(JOIN recommends ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)

include(CPack)
