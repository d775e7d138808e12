# Language, warnings, sanitizers and the compiler cache, for every target of the project.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(IFCORE_CCACHE ccache)
    mark_as_advanced(IFCORE_CCACHE)
    if(IFCORE_CCACHE)
        # Without the hash of the directory, clones of the project share what they compiled.
        set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_NOHASHDIR=1 ${IFCORE_CCACHE})
    endif()
endif()

# ifcore_configure_target(<target>): what every compiled target of the project gets.
function(ifcore_configure_target target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor)
    if(IFCORE_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(IFCORE_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${IFCORE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        # libFuzzer brings a main of its own: only the fuzz targets link it.
        string(REPLACE "fuzzer-no-link," "" linked "${IFCORE_SANITIZE}")
        target_link_options(${target} PRIVATE -fsanitize=${linked})
    endif()
    if(IFCORE_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# ifcore_configure_shared_library(<target>): nothing may stay undefined, so that the layers stay layers.
function(ifcore_configure_shared_library target)
    ifcore_configure_target(${target})
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        POSITION_INDEPENDENT_CODE ON
        LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/exports.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map")
    if(NOT IFCORE_SANITIZE)
        target_link_options(${target} PRIVATE LINKER:-z,defs)
    endif()
endfunction()
