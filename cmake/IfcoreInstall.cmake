# Installation: libraries, headers, the program, the CMake package and the pkg-config file.
# Components: runtime (the shared libraries), development, program.

include(CMakePackageConfigHelpers)

set(IFCORE_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/ifcore")
set(ifcore_installed_libraries ifcore)
if(IFCORE_BUNDLED_HOST)
    list(APPEND ifcore_installed_libraries ifhost)
endif()

# A tree that was installed anywhere, or moved, finds its own libraries.
set_target_properties(${ifcore_installed_libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
if(NOT IFCORE_BUNDLED_HOST)
    set_target_properties(ifcore PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON) # the other host may be anywhere
endif()
install(TARGETS ${ifcore_installed_libraries} EXPORT ifcore
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)

# What only the library's sources include stays here.
set(private_headers eAddressFamily eArchiveLayout eAtmEncapsulationIds eDiscoveredOperation eDiscoveredRecord eFCoEShared
    eRecord eTLVParserMap eTLVWire)
list(JOIN private_headers "|" private_headers)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/common/ifcore/"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ifcore" COMPONENT development
    FILES_MATCHING PATTERN "*.hpp" PATTERN "*.def"
    REGEX "/(${private_headers})\\.hpp$" EXCLUDE)
if(IFCORE_BUNDLED_HOST)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/common/include/"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ifhost" COMPONENT development
        FILES_MATCHING PATTERN "*.hpp" PATTERN "*.def")
endif()

if(TARGET ifcore_tool)
    file(RELATIVE_PATH libraries_from_program "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(ifcore_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries_from_program}")
    install(TARGETS ifcore_tool RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT program)
endif()

install(EXPORT ifcore NAMESPACE ifcore:: FILE ifcoreTargets.cmake
    DESTINATION "${IFCORE_CMAKE_DIR}" COMPONENT development)
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/ifcoreConfig.cmake.in" "${PROJECT_BINARY_DIR}/ifcoreConfig.cmake"
    INSTALL_DESTINATION "${IFCORE_CMAKE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ifcoreConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ifcoreConfig.cmake" "${PROJECT_BINARY_DIR}/ifcoreConfigVersion.cmake"
    DESTINATION "${IFCORE_CMAKE_DIR}" COMPONENT development)

# With another host than the bundled one, that host's own file names its library and headers.
if(IFCORE_BUNDLED_HOST)
    set(IFCORE_PC_LIBS "-lifcore -lifhost")
    set(IFCORE_PC_CFLAGS "-I\${includedir} -I\${includedir}/ifhost")
else()
    set(IFCORE_PC_LIBS "-lifcore")
    set(IFCORE_PC_CFLAGS "-I\${includedir}")
endif()
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(IFCORE_PC_PREFIX /usr) # pkg-config leaves out the folders of the system
else()
    file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(REGEX REPLACE "/$" "" up "${up}")
    set(IFCORE_PC_PREFIX "\${pcfiledir}/${up}")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/ifcore.pc.in" "${PROJECT_BINARY_DIR}/ifcore.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/ifcore.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
