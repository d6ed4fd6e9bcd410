# The Debian packages ostrand, ostrand-desktop and libostrand-dev: `cpack -G DEB` in the build folder,
# or tools/packages, which tries them too.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ostrand)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Ostrand developers <ostrand@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian_documents.cmake)

set(CPACK_COMPONENTS_ALL development)
if(TARGET ostrand)
  list(APPEND CPACK_COMPONENTS_ALL command)
endif()
if(TARGET ostrand-desktop)
  list(APPEND CPACK_COMPONENTS_ALL desktop)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)

set(what "Ostrand turns a project, the description of a measurement set-up, into the program of a
VK7300 data logger, with a table description and a wiring diagram.
.
")
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME ostrand)
set(CPACK_DEBIAN_COMMAND_DESCRIPTION
  "${what}This package has the command, its manual and example projects.")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME ostrand-desktop)
set(CPACK_DEBIAN_DESKTOP_DESCRIPTION "${what}This package has the windows.")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "ostrand (= ${PROJECT_VERSION}), qt6-wayland")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libostrand-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "${what}This package has the static library, its headers and the files for CMake and pkg-config.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkgconf")
include(CPack)
