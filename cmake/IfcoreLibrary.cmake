# ifcore_add_library(<name> <host target> [STATIC])
#
# Defines the library as target <name>, compiled and linked against the host interface that <host target> supplies.
# The only way it is made: for libifcore itself, for other hosts, and STATIC (of the objects of libifcore, all symbols
# reachable) for tests of internals.

find_package(Boost REQUIRED)

function(ifcore_add_library name host)
    cmake_parse_arguments(PARSE_ARGV 2 arg "STATIC" "" "")
    file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/common/ifcore/*.cpp")
    if(NOT sources)
        message(STATUS "common/ifcore/ holds no sources: ${name} is left out")
        return()
    endif()

    if(arg_STATIC)
        add_library(${name} STATIC $<TARGET_OBJECTS:ifcore>) # compiled once
        set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    else()
        add_library(${name} SHARED ${sources})
        ifcore_configure_shared_library(${name})
    endif()
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/common>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    target_link_libraries(${name} PUBLIC ${host} Boost::headers)
endfunction()
