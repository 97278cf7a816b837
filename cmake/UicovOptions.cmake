# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# Everything that a person can choose about a build, and the settings that follow from it.

option(UICOV_BUILD_TESTS "Build the tests" ON)
option(UICOV_BUILD_COMMAND "Build the command uicov; a device that only records needs none" ON)
option(UICOV_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(UICOV_BUILD_FUZZERS "Build the fuzz targets with libFuzzer in place of the tests (clang only)" OFF)
option(UICOV_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)
set(UICOV_SANITIZE "" CACHE STRING "Sanitizers to build with, as in -fsanitize= (list)")
set(UICOV_HOST_DIR "" CACHE PATH
    "Folder with include/vorsk and lib of a real test-tool host, used in place of the stand-in under host/")

if(UICOV_BUILD_FUZZERS AND UICOV_BUILD_TESTS)
    message(FATAL_ERROR "UICOV_BUILD_FUZZERS needs UICOV_BUILD_TESTS=OFF; use the preset fuzz")
endif()

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_INCLUDE_CURRENT_DIR OFF)

# One folder each, so that a build tree runs as it lies: the libraries find one another beside themselves.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(UICOV_CCACHE ccache)
if(UICOV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The sloppiness is what ccache needs to cache units that use a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${UICOV_CCACHE})
endif()

include(UicovHostTools)
find_package(Qt5 5.9 REQUIRED COMPONENTS Core Gui Widgets Quick Qml)
if(UICOV_BUILD_TESTS)
    if(NOT UICOV_BUILD_COMMAND)
        message(FATAL_ERROR "The tests need the command: set UICOV_BUILD_TESTS to OFF, or UICOV_BUILD_COMMAND to ON")
    endif()
    find_package(Qt5 5.9 REQUIRED COMPONENTS Network Test QuickTest QuickWidgets)
endif()
if(UICOV_BUILD_TESTS OR UICOV_BUILD_FUZZERS)
    find_package(ZLIB REQUIRED) # what checksums are compared with
endif()
if(UICOV_BUILD_COMMAND)
    find_package(Qt5 5.9 REQUIRED COMPONENTS Sql)
    find_package(CLI11 REQUIRED)
    find_package(Nettle REQUIRED)
    find_package(tomlplusplus REQUIRED)
endif()
find_package(Threads REQUIRED)
