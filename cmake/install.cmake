# What `cmake --install` installs, in three components: "command", "desktop" and "development".
include(CMakePackageConfigHelpers)

set(documents ${CMAKE_INSTALL_DATADIR}/doc/ostrand)

if(TARGET ostrand)
  install(TARGETS ostrand RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
  install(FILES docs/ostrand.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command)
  install(FILES README.md CHANGELOG.md LICENSE docs/user-guide.md docs/handbook.md docs/findings.md
    docs/screens.md docs/desktop.md docs/fleet.md docs/saving.md docs/project-file.md
    DESTINATION ${documents} COMPONENT command)
  install(DIRECTORY docs/pictures DESTINATION ${documents} COMPONENT command)
  install(DIRECTORY examples/ DESTINATION ${documents}/examples COMPONENT command
    FILES_MATCHING PATTERN "*.VKG" PATTERN "README.md" PATTERN "embedding" EXCLUDE)
  # The command writes its completions itself, from its table of options: `ostrand completions SHELL`.
  install(CODE [[
    set(places
      bash bash-completion/completions/ostrand
      zsh zsh/vendor-completions/_ostrand
      fish fish/vendor_completions.d/ostrand.fish)
    while(places)
      list(POP_FRONT places shell place)
      set(file ${CMAKE_CURRENT_LIST_DIR}/completions/${place})
      get_filename_component(folder ${place} DIRECTORY)
      file(MAKE_DIRECTORY ${CMAKE_CURRENT_LIST_DIR}/completions/${folder})
      execute_process(COMMAND $<TARGET_FILE:ostrand> completions ${shell}
        RESULT_VARIABLE failed OUTPUT_FILE ${file} ERROR_QUIET)
      if(failed)
        message(STATUS "No completions for ${shell}: this command has none")
      else()
        file(INSTALL ${file} DESTINATION ${CMAKE_INSTALL_PREFIX}/share/${folder})
      endif()
    endwhile()]]
    COMPONENT command)
endif()

if(TARGET ostrand-desktop)
  install(TARGETS ostrand-desktop RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desktop)
  install(FILES packaging/ostrand-desktop.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT desktop)
  install(FILES packaging/ostrand.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT desktop)
  install(FILES packaging/ostrand.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT desktop)
endif()

install(TARGETS ostrand_library EXPORT OstrandTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/ostrand DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(FILES docs/embedding.md DESTINATION ${documents} COMPONENT development)
install(DIRECTORY examples/embedding DESTINATION ${documents}/examples COMPONENT development)

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/Ostrand)
install(EXPORT OstrandTargets NAMESPACE Ostrand:: DESTINATION ${config} COMPONENT development)
configure_package_config_file(cmake/OstrandConfig.cmake.in
  ${PROJECT_BINARY_DIR}/OstrandConfig.cmake INSTALL_DESTINATION ${config})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OstrandConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OstrandConfig.cmake
  ${PROJECT_BINARY_DIR}/OstrandConfigVersion.cmake
  DESTINATION ${config} COMPONENT development)

# Relative to its place, so that an installed tree can be moved.
set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH to_prefix /root/${pkgconfig} /root)
configure_file(cmake/ostrand.pc.in ${PROJECT_BINARY_DIR}/ostrand.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ostrand.pc DESTINATION ${pkgconfig} COMPONENT development)
