# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installation. Both programs look for orvex/ beside their executable, so they
# live together in lib/orvex-config-manager with orvex/ beside them; bin/ holds
# relative symbolic links to them, which still find orvex/ because the
# programs take their directory from the resolved executable.
set(ORVEX_INSTALL_APPDIR lib/orvex-config-manager)

install(TARGETS orvex-config-manager orvexctl RUNTIME DESTINATION ${ORVEX_INSTALL_APPDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/data/orvex/ DESTINATION ${ORVEX_INSTALL_APPDIR}/orvex)

set(ORVEX_LAUNCHER_DIR ${CMAKE_BINARY_DIR}/packaging/bin)
file(MAKE_DIRECTORY ${ORVEX_LAUNCHER_DIR})
foreach(program orvex-config-manager orvexctl)
  file(CREATE_LINK ../${ORVEX_INSTALL_APPDIR}/${program} ${ORVEX_LAUNCHER_DIR}/${program} SYMBOLIC)
  install(FILES ${ORVEX_LAUNCHER_DIR}/${program} DESTINATION bin) # installed as a link
endforeach()

# The menu entry and its icon, converted at build time from the compiled-in one.
add_executable(orvex_icon2png ${CMAKE_SOURCE_DIR}/packaging/icon2png.cpp)
target_link_libraries(orvex_icon2png PRIVATE Qt5::Gui) # QImage and its ICO reader
set(ORVEX_ICON_PNG ${CMAKE_BINARY_DIR}/packaging/orvex-config-manager.png)
add_custom_command(OUTPUT ${ORVEX_ICON_PNG}
  # A sanitized build would fail on the leak report of a tool that only converts.
  COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0
          $<TARGET_FILE:orvex_icon2png> ${CMAKE_SOURCE_DIR}/src/graphics/icon.ico ${ORVEX_ICON_PNG}
  DEPENDS orvex_icon2png ${CMAKE_SOURCE_DIR}/src/graphics/icon.ico
  COMMENT "Converting the icon to PNG")
add_custom_target(orvex_icon ALL DEPENDS ${ORVEX_ICON_PNG})

install(FILES ${CMAKE_SOURCE_DIR}/packaging/orvex-config-manager.desktop
        DESTINATION share/applications)
install(FILES ${ORVEX_ICON_PNG} DESTINATION share/icons/hicolor/32x32/apps)
install(FILES ${CMAKE_SOURCE_DIR}/docs/schema-guide.md ${CMAKE_SOURCE_DIR}/docs/orvexctl.md
        DESTINATION share/doc/orvex-config-manager)

# orvexctl's manual page, made by help2man from its --help and --version and
# the sections that scripts need (JSON fields, exit status), compressed as
# Debian keeps manual pages.
find_program(ORVEX_HELP2MAN help2man REQUIRED)
find_program(ORVEX_GZIP gzip REQUIRED)
set(ORVEX_MANPAGE ${CMAKE_BINARY_DIR}/packaging/orvexctl.1)
add_custom_command(OUTPUT ${ORVEX_MANPAGE}.gz
  COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0
          ${ORVEX_HELP2MAN} --no-info --section=1 --name "command-line companion of Orvex Config Manager"
          --include ${CMAKE_SOURCE_DIR}/packaging/orvexctl.h2m --output ${ORVEX_MANPAGE}
          $<TARGET_FILE:orvexctl>
  COMMAND ${ORVEX_GZIP} -9nf ${ORVEX_MANPAGE}
  DEPENDS orvexctl ${CMAKE_SOURCE_DIR}/packaging/orvexctl.h2m
  COMMENT "Making the manual page of orvexctl")
add_custom_target(orvex_manpage ALL DEPENDS ${ORVEX_MANPAGE}.gz)
install(FILES ${ORVEX_MANPAGE}.gz DESTINATION share/man/man1)
