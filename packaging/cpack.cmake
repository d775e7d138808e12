# Debian packages, made by `make package` in build/package (prefix /usr):
# libifcore1 (both shared libraries), libifcore-dev (headers, CMake package, pkg-config file), ifcore-tools (program).

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ifcore)
set(CPACK_PACKAGE_VENDOR "ifcore")
set(CPACK_PACKAGE_CONTACT "ifcore developers <ifcore@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET ifcore_tool)
    list(APPEND CPACK_COMPONENTS_ALL program)
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# dpkg-shlibdeps looks here for the libraries that the program needs and that no package brings yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")

set(runtime_package "libifcore${PROJECT_VERSION_MAJOR}")
set(same_version "(= ${PROJECT_VERSION})")

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Shared libraries libifcore and libifhost")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)

set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, CMake package and pkg-config file of libifcore")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libifcore-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} ${same_version}, libboost-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)

set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "Program that reads, shows and edits interface tables")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME ifcore-tools)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${runtime_package} ${same_version}")

include(CPack)
