# The Debian package: the program folder under lib/tarvenix with links in bin/,
# the menu entry with its icon, the metainfo, the man pages and the example.
# `make package` checks the texts (tools/package/check-texts.sh) and runs CPack
# in build/; `make package-test` installs the result and removes it again.

set(TARVENIX_PACKAGE_DIR ${CMAKE_BINARY_DIR}/package)
set(TARVENIX_SHARE share)

# The links in bin/: the programs keep running from the program folder, where
# they look for their files (the desktop program follows the link to find it).
file(MAKE_DIRECTORY ${TARVENIX_PACKAGE_DIR}/bin)
foreach(program tarvenix tarvenix-cli tarvenix-simulate)
  file(CREATE_LINK ../${TARVENIX_PROGRAM_DIR}/${program} ${TARVENIX_PACKAGE_DIR}/bin/${program} SYMBOLIC)
  install(FILES ${TARVENIX_PACKAGE_DIR}/bin/${program} DESTINATION bin)
endforeach()

# The menu entry, the metainfo and the man pages carry the name and version.
configure_file(${PROJECT_SOURCE_DIR}/assets/desktop/Tarvenix.desktop.in
  ${TARVENIX_PACKAGE_DIR}/${TARVENIX_DESKTOP_ID}.desktop @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/assets/desktop/Tarvenix.metainfo.xml.in
  ${TARVENIX_PACKAGE_DIR}/${TARVENIX_DESKTOP_ID}.metainfo.xml @ONLY)
install(FILES ${TARVENIX_PACKAGE_DIR}/${TARVENIX_DESKTOP_ID}.desktop DESTINATION ${TARVENIX_SHARE}/applications)
install(FILES ${TARVENIX_PACKAGE_DIR}/${TARVENIX_DESKTOP_ID}.metainfo.xml DESTINATION ${TARVENIX_SHARE}/metainfo)

set(man_pages)
foreach(page tarvenix.1 tarvenix-cli.1)
  configure_file(${PROJECT_SOURCE_DIR}/assets/man/${page} ${TARVENIX_PACKAGE_DIR}/man/${page} @ONLY)
  # Compressed without a name or time inside, so the same page packs the same.
  add_custom_command(OUTPUT ${TARVENIX_PACKAGE_DIR}/man/${page}.gz
    COMMAND gzip -9nf -k ${TARVENIX_PACKAGE_DIR}/man/${page}
    DEPENDS ${TARVENIX_PACKAGE_DIR}/man/${page}
    VERBATIM)
  list(APPEND man_pages ${TARVENIX_PACKAGE_DIR}/man/${page}.gz)
endforeach()
install(FILES ${man_pages} DESTINATION ${TARVENIX_SHARE}/man/man1)

# The icon in the hicolor theme, from the about window's drawing.
add_custom_command(OUTPUT ${TARVENIX_PACKAGE_DIR}/icons/scalable/apps/${TARVENIX_DESKTOP_ID}.svg
  COMMAND tarvenix-icons ${TARVENIX_PACKAGE_DIR}/icons
  DEPENDS tarvenix-icons
  VERBATIM)
add_custom_target(package_files ALL DEPENDS ${man_pages}
  ${TARVENIX_PACKAGE_DIR}/icons/scalable/apps/${TARVENIX_DESKTOP_ID}.svg)
install(DIRECTORY ${TARVENIX_PACKAGE_DIR}/icons/ DESTINATION ${TARVENIX_SHARE}/icons/hicolor)

install(FILES ${PROJECT_SOURCE_DIR}/examples/board-32ch.txt ${PROJECT_SOURCE_DIR}/examples/board-32ch-channels.txt
  DESTINATION ${TARVENIX_SHARE}/doc/tarvenix/examples)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvenix)
set(CPACK_PACKAGE_VENDOR Quorvane)
set(CPACK_PACKAGE_CONTACT "Quorvane Tarvenix team <tarvenix@quorvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Weibull failure analysis of event-logger data")
# Debian's description: short lines, a lone "." between paragraphs.
string(JOIN "\n" CPACK_PACKAGE_DESCRIPTION
  "Tarvenix reads the data history file written by the Vorlantic event-detecting"
  "data logger during temperature- or mechanical-cycling tests, finds the cycle at"
  "which each chosen channel failed (its N-th event, or the IPC/JEDEC rule), fits a"
  "two-parameter Weibull line by least squares and reports beta, N50 or N63,"
  "R-squared and confidence ranges as text, as a report file, printed, and on a"
  "Weibull probability plot of up to five data sets."
  "."
  "The package holds the desktop program tarvenix, the batch tool tarvenix-cli and"
  "the data history simulator tarvenix-simulate.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
# The libraries the programs link, as dpkg-shlibdeps finds them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
