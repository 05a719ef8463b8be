# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# A Debian package of the installed layout under /usr, on Debian's Qt 5
# runtime: "cpack -G DEB" in the build directory, then
# "apt install ./orvex-config-manager_*.deb". scripts/check-package.sh runs
# lintian and the desktop validators on it.
set(CPACK_PACKAGE_NAME orvex-config-manager)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Orvex Observatory")
set(CPACK_PACKAGE_CONTACT "Orvex Config Manager maintainers <config-manager@orvex-observatory.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "editor for the XML configuration files of the observatory services")
# Debian shows the description as it stands: lines of at most 80 columns.
set(CPACK_PACKAGE_DESCRIPTION [[
Orvex Config Manager builds its window from an annotated XML Schema and
edits the configuration files of the observatory services with typed
editors, TLE sets included.
.
orvexctl, its command-line companion, checks schemas, reads, changes,
creates and updates configuration files, and checks TLE files.]])
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://orvex-observatory.org/config-manager/")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The runtime libraries only, never their -dev packages.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libc6, libstdc++6, libgcc-s1, libqt5core5a (>= 5.15.0), libqt5gui5 (>= 5.15.0) | libqt5gui5-gles (>= 5.15.0), libqt5widgets5 (>= 5.15.0), libqt5xml5 (>= 5.15.0), libqt5xmlpatterns5 (>= 5.15.0), libqt5network5 (>= 5.15.0)")

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "/\\\\.git/" "/build[^/]*/")

include(CPack)
