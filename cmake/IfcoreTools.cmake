# The program `ifcore`: target ifcore_tool. All of it but main.cpp is also ifcore_tool_parts, which its tests link.
#
# ifcore_add_tool_parts(<name> <library>): the same, to be linked with another variant of the library.

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
    set(tool_packages CLI11::CLI11 PkgConfig::libmnl nlohmann_json::nlohmann_json ZLIB::ZLIB)
    add_library(ifcore_tool_objects OBJECT ${tool_sources}) # compiled once for all variants
    ifcore_configure_target(ifcore_tool_objects)
    target_include_directories(ifcore_tool_objects PRIVATE "${PROJECT_SOURCE_DIR}/tools/ifcore")
    target_link_libraries(ifcore_tool_objects PRIVATE ifcore::ifcore ifcore::host ${tool_packages})
    target_compile_definitions(ifcore_tool_objects PRIVATE IFCORE_VERSION="${PROJECT_VERSION}")

    function(ifcore_add_tool_parts name library)
        add_library(${name} STATIC $<TARGET_OBJECTS:ifcore_tool_objects>)
        set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
        target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/tools/ifcore")
        target_link_libraries(${name} PUBLIC ${library} ifcore::host ${tool_packages})
        target_compile_definitions(${name} PUBLIC IFCORE_VERSION="${PROJECT_VERSION}")
    endfunction()
    ifcore_add_tool_parts(ifcore_tool_parts ifcore::ifcore)
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
