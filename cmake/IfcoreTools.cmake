# The program `ifcore`: target ifcore_tool. All of it but main.cpp is also ifcore_tool_parts, which its tests link.

file(GLOB tool_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tools/ifcore/*.cpp")
if(NOT tool_sources)
    message(STATUS "tools/ifcore/ holds no sources: the program is left out")
    return()
endif()
set(tool_main "${PROJECT_SOURCE_DIR}/tools/ifcore/main.cpp")
list(REMOVE_ITEM tool_sources "${tool_main}")

find_package(PkgConfig REQUIRED)
pkg_check_modules(libmnl REQUIRED IMPORTED_TARGET libmnl)
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(ZLIB REQUIRED)

if(tool_sources)
    add_library(ifcore_tool_parts STATIC ${tool_sources})
    ifcore_configure_target(ifcore_tool_parts)
    target_include_directories(ifcore_tool_parts PUBLIC "${PROJECT_SOURCE_DIR}/tools/ifcore")
    target_link_libraries(ifcore_tool_parts PUBLIC
        ifcore::ifcore ifcore::host CLI11::CLI11 PkgConfig::libmnl nlohmann_json::nlohmann_json ZLIB::ZLIB)
    target_compile_definitions(ifcore_tool_parts PUBLIC IFCORE_VERSION="${PROJECT_VERSION}")
endif()

if(EXISTS "${tool_main}")
    add_executable(ifcore_tool "${tool_main}")
    ifcore_configure_target(ifcore_tool)
    set_target_properties(ifcore_tool PROPERTIES
        OUTPUT_NAME ifcore
        RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
    if(TARGET ifcore_tool_parts)
        target_link_libraries(ifcore_tool PRIVATE ifcore_tool_parts)
    else()
        target_link_libraries(ifcore_tool PRIVATE ifcore::ifcore ifcore::host CLI11::CLI11)
    endif()
endif()
