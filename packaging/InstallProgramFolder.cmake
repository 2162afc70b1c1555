# Run at install time: the program folder from the built template (never
# build/app, which runs may have used), the executable, the mark that makes
# it an installed copy, and the command in the binary folder.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(appdir /opt/kelvary)
else()
  set(appdir "${CMAKE_INSTALL_PREFIX}/lib/kelvary")
endif()

file(INSTALL "${KELVARY_TEMPLATE_DIR}/" DESTINATION "${appdir}"
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
  DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                        WORLD_READ WORLD_EXECUTE
  PATTERN "Temp" EXCLUDE)
file(INSTALL "${KELVARY_EXECUTABLE}" DESTINATION "${appdir}" TYPE EXECUTABLE)
file(INSTALL "${KELVARY_MARK_FILE}" DESTINATION "${appdir}" RENAME .kelvary-installed)

set(bindir "${CMAKE_INSTALL_PREFIX}/${KELVARY_BINDIR}")
file(RELATIVE_PATH target "${bindir}" "${appdir}/kelvary")
file(MAKE_DIRECTORY "$ENV{DESTDIR}${bindir}")
message(STATUS "Installing: $ENV{DESTDIR}${bindir}/kelvary -> ${target}")
file(CREATE_LINK "${target}" "$ENV{DESTDIR}${bindir}/kelvary" SYMBOLIC)
