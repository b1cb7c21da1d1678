# Installation (`make install PREFIX=...`) and the Debian package (`make package`): the programs in
# bin/, the read-only data under share/quillmaze/ (the game finds it there from bin/../share), a
# desktop entry, the icon, and manual pages made from each program's --help.
include(GNUInstallDirs)

set(QM_PROGRAMS quillmaze quillmaze-map quillmaze-sim quillmaze-route)
if(TARGET quillmaze-server)
  list(APPEND QM_PROGRAMS quillmaze-server)
endif()

install(TARGETS ${QM_PROGRAMS} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY Assets Audio Shaders Lang Maps DESTINATION ${CMAKE_INSTALL_DATADIR}/quillmaze)
install(FILES packaging/quillmaze.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES Assets/Icon.png DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/64x64/apps
  RENAME quillmaze.png)

# Manual pages from the programs' own --help, so they never drift from what the programs accept.
find_program(QM_HELP2MAN help2man)
if(QM_HELP2MAN)
  set(qm_pages "")
  foreach(program ${QM_PROGRAMS})
    if(program STREQUAL "quillmaze")
      set(section 6)
      set(summary "a racing platformer: race a square through block mazes against the clock")
    elseif(program STREQUAL "quillmaze-server")
      set(section 8)
      set(summary "the web service where players share their maps")
    else()
      set(section 1)
      set(summary "a command-line tool for the maps and races of the game")
    endif()
    set(page ${CMAKE_BINARY_DIR}/man/${program}.${section})
    add_custom_command(OUTPUT ${page}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
      COMMAND ${QM_HELP2MAN} --no-info --no-discard-stderr --section=${section} --version-string=1.0.6
              "--name=${summary}" --output=${page} $<TARGET_FILE:${program}>
      DEPENDS ${program}
      COMMENT "Manual page of ${program}")
    list(APPEND qm_pages ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
  endforeach()
  add_custom_target(man-pages ALL DEPENDS ${qm_pages})
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillmaze)
set(CPACK_PACKAGE_VERSION 1.0.6)
set(CPACK_PACKAGE_VENDOR "Quillmaze")
set(CPACK_PACKAGE_CONTACT "Quillmaze developers <developers@quillmaze.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "racing platformer: race a square through block mazes against the clock")
set(CPACK_PACKAGE_DESCRIPTION "Steer a square racer from Start to Finish through maps of square blocks against the clock: tours that unlock in order, a top ten per map with the best run raced as a ghost, an endless random-level run, party play on one machine, a map editor and map sharing through the game's web service (quillmaze-server).")
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The game loads libcurl on its first transfer rather than linking it, so the library scan cannot
# find it (CURLOPT_PROTOCOLS_STR needs 7.85).
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libcurl4 (>= 7.85)")
# The OpenGL driver is found at run time, so the library scan cannot name it.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libgl1-mesa-dri, libglx-mesa0")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
