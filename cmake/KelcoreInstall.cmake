# cmake --install: headers, the library, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(KELCORE_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/kelcore)

install(TARGETS kelcore EXPORT kelcoreTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

# Public headers only: the platform layer and internal helpers stay inside the library, and the
# native menu binding ships with the Windows build alone.
if(WIN32)
    set(KELCORE_NATIVE_MENU_HEADERS)
else()
    set(KELCORE_NATIVE_MENU_HEADERS PATTERN "win32" EXCLUDE)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/kelcore/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelcore
    FILES_MATCHING PATTERN "*.h"
    PATTERN "platform" EXCLUDE
    PATTERN "internal" EXCLUDE
    ${KELCORE_NATIVE_MENU_HEADERS})

install(EXPORT kelcoreTargets NAMESPACE kelcore:: DESTINATION ${KELCORE_CMAKE_DIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/kelcoreConfig.cmake.in
    ${PROJECT_BINARY_DIR}/kelcoreConfig.cmake
    INSTALL_DESTINATION ${KELCORE_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kelcoreConfigVersion.cmake
    VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kelcoreConfig.cmake
              ${PROJECT_BINARY_DIR}/kelcoreConfigVersion.cmake
        DESTINATION ${KELCORE_CMAKE_DIR})

file(RELATIVE_PATH KELCORE_PC_TO_PREFIX
     ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/kelcore.pc.in ${PROJECT_BINARY_DIR}/kelcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kelcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
