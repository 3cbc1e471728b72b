# Every dependency comes from Debian: packages for the native build, source for the Windows one.

if(CMAKE_CROSSCOMPILING AND WIN32)
    # TinyXML from Debian's source package, unpacked by scripts/setup-deps.sh.
    file(GLOB _tinyxml_dirs ${PROJECT_SOURCE_DIR}/build/deps/tinyxml/tinyxml-*)
    list(GET _tinyxml_dirs 0 _tinyxml_default)
    set(KELCORE_TINYXML_SOURCE_DIR "${_tinyxml_default}" CACHE PATH "TinyXML source folder")
    if(NOT EXISTS "${KELCORE_TINYXML_SOURCE_DIR}/tinyxml.cpp")
        message(FATAL_ERROR "TinyXML source not found; run scripts/setup-deps.sh windows")
    endif()
    add_library(kelcore_tinyxml STATIC
        ${KELCORE_TINYXML_SOURCE_DIR}/tinyxml.cpp
        ${KELCORE_TINYXML_SOURCE_DIR}/tinystr.cpp
        ${KELCORE_TINYXML_SOURCE_DIR}/tinyxmlerror.cpp
        ${KELCORE_TINYXML_SOURCE_DIR}/tinyxmlparser.cpp)
    target_compile_definitions(kelcore_tinyxml PUBLIC TIXML_USE_STL)
    target_compile_options(kelcore_tinyxml PRIVATE -w)
    target_include_directories(kelcore_tinyxml SYSTEM PUBLIC ${KELCORE_TINYXML_SOURCE_DIR})
    set_target_properties(kelcore_tinyxml PROPERTIES POSITION_INDEPENDENT_CODE ON)
    add_library(kelcore::tinyxml ALIAS kelcore_tinyxml)

    # The MinGW runtime DLLs, for Wine to find beside our own.
    foreach(_dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${_dll}
                        OUTPUT_VARIABLE _path OUTPUT_STRIP_TRAILING_WHITESPACE)
        get_filename_component(_dir "${_path}" DIRECTORY)
        list(APPEND KELCORE_WINE_PATH "${_dir}")
    endforeach()
    list(REMOVE_DUPLICATES KELCORE_WINE_PATH)
else()
    find_path(KELCORE_TINYXML_INCLUDE_DIR tinyxml.h REQUIRED)
    find_library(KELCORE_TINYXML_LIBRARY tinyxml REQUIRED)
    add_library(kelcore::tinyxml UNKNOWN IMPORTED)
    set_target_properties(kelcore::tinyxml PROPERTIES
        IMPORTED_LOCATION "${KELCORE_TINYXML_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${KELCORE_TINYXML_INCLUDE_DIR}"
        INTERFACE_COMPILE_DEFINITIONS TIXML_USE_STL)
endif()

if(KELCORE_BUILD_TESTS)
    if(CMAKE_CROSSCOMPILING)
        set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
        set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
        # GoogleTest's own build defines the GTest:: aliases.
        add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    else()
        find_package(GTest REQUIRED)
    endif()
endif()

if(KELCORE_BUILD_BENCH)
    find_package(benchmark REQUIRED)
endif()
