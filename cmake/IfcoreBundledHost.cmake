# The bundled host library, libifhost: target ifhost, alias ifcore::host.

file(GLOB ifhost_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/*.cpp")
if(NOT ifhost_sources)
    message(STATUS "host/ holds no sources: the bundled host is left out")
    return()
endif()

add_library(ifhost SHARED ${ifhost_sources})
add_library(ifcore::host ALIAS ifhost)
ifcore_configure_shared_library(ifhost)
# Only what IFHOST_API marks is exported.
set_target_properties(ifhost PROPERTIES
    EXPORT_NAME host
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_features(ifhost PUBLIC cxx_std_17)
# Installed, the headers are <ifhost/eArchive.hpp>; among themselves and to the library they are "eArchive.hpp".
target_include_directories(ifhost PUBLIC
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/common/include>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ifhost>")
