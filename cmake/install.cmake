# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installation. Both programs look for orvex/ beside their executable, so they
# live together in lib/orvex-config-manager with orvex/ beside them; bin/ holds
# relative symbolic links to them, which still find orvex/ because the
# programs take their directory from the resolved executable.
set(ORVEX_INSTALL_APPDIR lib/orvex-config-manager)
set(ORVEX_INSTALL_DOCDIR share/doc/orvex-config-manager)
# The reverse-DNS name of the desktop entry and of the AppStream metainfo.
set(ORVEX_APP_ID org.orvex_observatory.ConfigManager)
set(ORVEX_PACKAGING_SOURCE ${CMAKE_SOURCE_DIR}/packaging)
set(ORVEX_PACKAGING_BUILD ${CMAKE_BINARY_DIR}/packaging)
# Directories made by the installation get 755 whatever the umask says.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

find_program(ORVEX_GZIP gzip REQUIRED)
find_program(ORVEX_HELP2MAN help2man REQUIRED)
find_program(ORVEX_SCDOC scdoc REQUIRED)
find_program(ORVEX_RSVG_CONVERT rsvg-convert REQUIRED)

install(TARGETS orvex-config-manager orvexctl RUNTIME DESTINATION ${ORVEX_INSTALL_APPDIR})
# A stripped installation (cpack, "cmake --install --strip") also drops the
# compiler's .comment and .note sections, as Debian's own stripping does.
install(CODE "
  if(CMAKE_INSTALL_DO_STRIP)
    foreach(program orvex-config-manager orvexctl)
      execute_process(COMMAND \"${CMAKE_OBJCOPY}\" --remove-section=.comment --remove-section=.note
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${ORVEX_INSTALL_APPDIR}/\${program}\"
        COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
  endif()")
# Symbols bound at start, so that the read-only relocations cover the whole
# offset table (Debian's "bindnow" hardening).
foreach(program orvex-config-manager orvexctl)
  target_link_options(${program} PRIVATE LINKER:-z,now)
endforeach()
# The installed orvex/conf is read-only, and opening a file of an older version
# writes it back in place: only examples at the newest version go there, the
# older one goes to the documentation, to be copied first.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/data/orvex/ DESTINATION ${ORVEX_INSTALL_APPDIR}/orvex
        REGEX "/conf/(example\\.conf|README\\.md)$" EXCLUDE)
install(FILES ${CMAKE_SOURCE_DIR}/data/orvex/conf/example.conf
        DESTINATION ${ORVEX_INSTALL_DOCDIR}/examples)

set(ORVEX_LAUNCHER_DIR ${ORVEX_PACKAGING_BUILD}/bin)
file(MAKE_DIRECTORY ${ORVEX_LAUNCHER_DIR})
foreach(program orvex-config-manager orvexctl)
  file(CREATE_LINK ../${ORVEX_INSTALL_APPDIR}/${program} ${ORVEX_LAUNCHER_DIR}/${program} SYMBOLIC)
  install(FILES ${ORVEX_LAUNCHER_DIR}/${program} DESTINATION bin) # installed as a link
endforeach()

# What the build makes for the installation. orvexctl runs here as a tool; a
# sanitized build would fail on the leak report of a run that only prints.
set(ORVEX_RUN_CTL ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0 $<TARGET_FILE:orvexctl>)
set(ORVEX_GENERATED)

# Manual pages. orvexctl's is made from its own --help and from the --help of
# each command it lists, so that it names every command and option the program
# has; the desktop program has no --help and its page is written in scdoc.
set(man ${ORVEX_PACKAGING_BUILD}/man)
file(MAKE_DIRECTORY ${man})
add_custom_command(OUTPUT ${man}/orvexctl.1.gz
  COMMAND sh ${ORVEX_PACKAGING_SOURCE}/man/orvexctl-commands.sh
          ${man}/orvexctl-commands.h2m ${ORVEX_RUN_CTL}
  COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0
          ${ORVEX_HELP2MAN} --no-info --section=1 --manual "User Commands"
          --source "Orvex Config Manager ${PROJECT_VERSION}"
          --include ${ORVEX_PACKAGING_SOURCE}/man/orvexctl.h2m
          --include ${man}/orvexctl-commands.h2m
          --output ${man}/orvexctl.1 $<TARGET_FILE:orvexctl>
  COMMAND ${ORVEX_GZIP} -9nf ${man}/orvexctl.1
  DEPENDS orvexctl ${ORVEX_PACKAGING_SOURCE}/man/orvexctl.h2m
          ${ORVEX_PACKAGING_SOURCE}/man/orvexctl-commands.sh
  COMMENT "Generating the orvexctl manual page from its --help"
  VERBATIM)
add_custom_command(OUTPUT ${man}/orvex-config-manager.1.gz
  COMMAND sh -c "\"$1\" < \"$2\" | \"$3\" -9n > \"$4\"" sh
          ${ORVEX_SCDOC} ${ORVEX_PACKAGING_SOURCE}/man/orvex-config-manager.1.scd
          ${ORVEX_GZIP} ${man}/orvex-config-manager.1.gz
  DEPENDS ${ORVEX_PACKAGING_SOURCE}/man/orvex-config-manager.1.scd
  COMMENT "Generating the orvex-config-manager manual page"
  VERBATIM)
list(APPEND ORVEX_GENERATED ${man}/orvexctl.1.gz ${man}/orvex-config-manager.1.gz)
install(FILES ${man}/orvexctl.1.gz ${man}/orvex-config-manager.1.gz DESTINATION share/man/man1)

# The bash completion, as the program prints it.
set(completion ${ORVEX_PACKAGING_BUILD}/orvexctl.bash)
add_custom_command(OUTPUT ${completion}
  COMMAND sh -c "\"$@\" > \"${completion}\"" sh ${ORVEX_RUN_CTL} completion bash
  DEPENDS orvexctl
  COMMENT "Writing the bash completion of orvexctl"
  VERBATIM)
list(APPEND ORVEX_GENERATED ${completion})
install(FILES ${completion} DESTINATION share/bash-completion/completions RENAME orvexctl)

# The menu icon, drawn as SVG and rendered at the sizes of the hicolor theme.
# The window's own icon, compiled in, is another picture and stays as it is.
set(icon_svg ${ORVEX_PACKAGING_SOURCE}/icons/orvex-config-manager.svg)
foreach(size 16 32 48 64 128 256)
  set(png ${ORVEX_PACKAGING_BUILD}/icons/${size}x${size}/orvex-config-manager.png)
  add_custom_command(OUTPUT ${png}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ORVEX_PACKAGING_BUILD}/icons/${size}x${size}
    COMMAND ${ORVEX_RSVG_CONVERT} --width ${size} --height ${size} --output ${png} ${icon_svg}
    DEPENDS ${icon_svg}
    COMMENT "Rendering the ${size}x${size} icon"
    VERBATIM)
  list(APPEND ORVEX_GENERATED ${png})
  install(FILES ${png} DESTINATION share/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES ${icon_svg} DESTINATION share/icons/hicolor/scalable/apps)

# The changelog of the package, which is its own upstream, gzipped as Debian
# wants it.
configure_file(${ORVEX_PACKAGING_SOURCE}/changelog.in ${ORVEX_PACKAGING_BUILD}/changelog @ONLY)
add_custom_command(OUTPUT ${ORVEX_PACKAGING_BUILD}/changelog.gz
  COMMAND ${ORVEX_GZIP} -9nkf ${ORVEX_PACKAGING_BUILD}/changelog
  DEPENDS ${ORVEX_PACKAGING_BUILD}/changelog
  VERBATIM)
list(APPEND ORVEX_GENERATED ${ORVEX_PACKAGING_BUILD}/changelog.gz)

add_custom_target(orvex_packaging ALL DEPENDS ${ORVEX_GENERATED})

# Desktop integration: the menu entry, the type of the configuration files and
# the AppStream description, all under the one reverse-DNS name.
configure_file(${ORVEX_PACKAGING_SOURCE}/${ORVEX_APP_ID}.metainfo.xml
               ${ORVEX_PACKAGING_BUILD}/${ORVEX_APP_ID}.metainfo.xml @ONLY)
install(FILES ${ORVEX_PACKAGING_SOURCE}/${ORVEX_APP_ID}.desktop DESTINATION share/applications)
install(FILES ${ORVEX_PACKAGING_BUILD}/${ORVEX_APP_ID}.metainfo.xml DESTINATION share/metainfo)
install(FILES ${ORVEX_PACKAGING_SOURCE}/orvex-config-manager.xml DESTINATION share/mime/packages)

install(FILES ${ORVEX_PACKAGING_SOURCE}/copyright ${ORVEX_PACKAGING_BUILD}/changelog.gz
              ${CMAKE_SOURCE_DIR}/docs/user-guide.md ${CMAKE_SOURCE_DIR}/docs/schema-guide.md
              ${CMAKE_SOURCE_DIR}/docs/orvexctl.md
        DESTINATION ${ORVEX_INSTALL_DOCDIR})
