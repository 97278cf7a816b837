# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# The only ways to make a library and a test here. All fail on arguments that they do not know, so that
# a misspelt keyword does not silently drop a source file or a dependency.

# Flags that every target of ours is compiled with.
add_library(uicov_flags INTERFACE)
target_compile_definitions(uicov_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_STRICT_ITERATORS
    QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Recordings grow beyond 2 GiB, and the number of a file in its file system beyond 32 bit at any size.
    target_compile_definitions(uicov_flags INTERFACE _FILE_OFFSET_BITS=64)
endif()
target_compile_options(uicov_flags INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${UICOV_WARNINGS_AS_ERRORS}>:-Werror>)
if(UICOV_SANITIZE)
    list(JOIN UICOV_SANITIZE "," _sanitizers)
    target_compile_options(uicov_flags INTERFACE
        -fsanitize=${_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(uicov_flags INTERFACE -fsanitize=${_sanitizers})
    if("thread" IN_LIST UICOV_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The one fence orders what other processes read, which the sanitizer does not look at.
        target_compile_options(uicov_flags INTERFACE -Wno-tsan)
    endif()
endif()

# Qt's headers, compiled once and shared by every target that says PCH; such a target links Qt5::Widgets.
add_library(uicov_pch STATIC ${CMAKE_CURRENT_LIST_DIR}/pch.cpp)
target_link_libraries(uicov_pch PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets PRIVATE uicov_flags)
target_precompile_headers(uicov_pch PRIVATE
    <QtCore/QtCore> <QtGui/QtGui> <QtWidgets/QtWidgets> <memory> <string> <vector> <functional>)
set_target_properties(uicov_pch PROPERTIES AUTOMOC OFF)

function(_uicov_reject_unknown caller)
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${caller}: unknown arguments: ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    if(ARG_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "${caller}: no values given for: ${ARG_KEYWORDS_MISSING_VALUES}")
    endif()
endfunction()

# uicov_add_library(NAME <target> TYPE <STATIC|OBJECT|SHARED|MODULE> SOURCES <files>
#                   [LINK <libraries>] [LINK_PRIVATE <libraries>] [INCLUDE <folders>] [VERSION_SCRIPT <file>]
#                   [OUTPUT_SUBDIR <folder below lib>] [PCH])
# SHARED and MODULE libraries must resolve every symbol and look for ours beside themselves.
function(uicov_add_library)
    cmake_parse_arguments(ARG "PCH" "NAME;TYPE;VERSION_SCRIPT;OUTPUT_SUBDIR" "SOURCES;LINK;LINK_PRIVATE;INCLUDE" ${ARGN})
    _uicov_reject_unknown(uicov_add_library)
    add_library(${ARG_NAME} ${ARG_TYPE} ${ARG_SOURCES})
    # Where it is installed, headers lie elsewhere and our flags are nobody's business.
    list(TRANSFORM ARG_INCLUDE REPLACE "(.+)" "$<BUILD_INTERFACE:\\1>")
    target_include_directories(${ARG_NAME} PUBLIC ${ARG_INCLUDE})
    target_link_libraries(${ARG_NAME} PUBLIC ${ARG_LINK}
        PRIVATE $<BUILD_INTERFACE:uicov_flags> ${ARG_LINK_PRIVATE})
    if(ARG_PCH)
        target_precompile_headers(${ARG_NAME} REUSE_FROM uicov_pch)
    endif()
    if(ARG_TYPE MATCHES "SHARED|MODULE")
        # A sanitizer's runtime is resolved from the executable, so that check is for plain builds.
        if(NOT UICOV_SANITIZE)
            target_link_options(${ARG_NAME} PRIVATE -Wl,--no-undefined)
        endif()
        set_target_properties(${ARG_NAME} PROPERTIES INSTALL_RPATH "$ORIGIN" BUILD_RPATH "$ORIGIN")
    endif()
    if(ARG_VERSION_SCRIPT)
        target_link_options(${ARG_NAME} PRIVATE -Wl,--version-script=${ARG_VERSION_SCRIPT})
        set_target_properties(${ARG_NAME} PROPERTIES LINK_DEPENDS ${ARG_VERSION_SCRIPT})
    endif()
    if(ARG_OUTPUT_SUBDIR)
        set_target_properties(${ARG_NAME} PROPERTIES
            LIBRARY_OUTPUT_DIRECTORY ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/${ARG_OUTPUT_SUBDIR})
    endif()
endfunction()

# uicov_add_room(NAME <target> TYPE <STATIC|OBJECT|SHARED|MODULE|INTERFACE> FOLDER <folder> SOURCES <files>
#                [LINK <libraries>] [LINK_PRIVATE <libraries>] [VERSION_SCRIPT <file>]
#                [OUTPUT_SUBDIR <folder below lib>] [PCH])
# The library of one folder. FOLDER is what stands before the header's name in an include ("store",
# "report/html"). The library's include root holds links to the headers in SOURCES and nothing else, so
# that the headers of a folder can be included only by what links its library: an include that the link
# list does not allow does not compile. scripts/structure reads what is noted here.
function(uicov_add_room)
    cmake_parse_arguments(ARG "PCH" "NAME;TYPE;FOLDER;VERSION_SCRIPT;OUTPUT_SUBDIR" "SOURCES;LINK;LINK_PRIVATE" ${ARGN})
    _uicov_reject_unknown(uicov_add_room)
    set(root ${CMAKE_BINARY_DIR}/includes/${ARG_NAME})
    set(wanted)
    foreach(header ${ARG_SOURCES})
        if(header MATCHES "\\.h$")
            get_filename_component(file ${header} ABSOLUTE)
            get_filename_component(name ${header} NAME)
            file(MAKE_DIRECTORY ${root}/${ARG_FOLDER})
            file(CREATE_LINK ${file} ${root}/${ARG_FOLDER}/${name} SYMBOLIC)
            list(APPEND wanted ${root}/${ARG_FOLDER}/${name})
        endif()
    endforeach()
    # Links of headers that have gone, or of the folder's former name.
    file(GLOB_RECURSE present ${root}/*)
    list(REMOVE_ITEM present ${wanted})
    if(present)
        file(REMOVE ${present})
    endif()

    if(ARG_TYPE STREQUAL "INTERFACE")
        add_library(${ARG_NAME} INTERFACE)
        target_include_directories(${ARG_NAME} INTERFACE $<BUILD_INTERFACE:${root}>)
        target_link_libraries(${ARG_NAME} INTERFACE ${ARG_LINK})
    else()
        set(pass)
        if(ARG_PCH)
            list(APPEND pass PCH)
        endif()
        foreach(key VERSION_SCRIPT OUTPUT_SUBDIR LINK LINK_PRIVATE)
            if(ARG_${key})
                list(APPEND pass ${key} ${ARG_${key}})
            endif()
        endforeach()
        uicov_add_library(NAME ${ARG_NAME} TYPE ${ARG_TYPE} SOURCES ${ARG_SOURCES} INCLUDE ${root} ${pass})
    endif()

    list(GET ARG_SOURCES 0 first)
    get_filename_component(place ${first} ABSOLUTE)
    get_filename_component(place ${place} DIRECTORY)
    file(RELATIVE_PATH place ${PROJECT_SOURCE_DIR} ${place})
    list(JOIN ARG_LINK "," public)
    list(JOIN ARG_LINK_PRIVATE "," private)
    set(files)
    foreach(source ${ARG_SOURCES})
        if(source MATCHES "\\.(cpp|h)$" AND NOT IS_ABSOLUTE ${source})
            get_filename_component(source ${source} NAME)
            list(APPEND files ${source})
        endif()
    endforeach()
    list(JOIN files "," files)
    set_property(GLOBAL APPEND_STRING PROPERTY UICOV_ROOMS
        "${ARG_NAME};${ARG_FOLDER};${place};${public};${private};${files}\n")
endfunction()

# uicov_write_rooms()
# Notes every room for scripts/structure, a line each: target, folder, place in the source tree, libraries
# linked publicly, libraries linked privately, sources.
function(uicov_write_rooms)
    get_property(rooms GLOBAL PROPERTY UICOV_ROOMS)
    file(WRITE ${CMAKE_BINARY_DIR}/rooms "${rooms}")
endfunction()

# uicov_let_fork(<target>)
# For a test, or a program that a test starts, that starts others by itself under emulation.
function(uicov_let_fork target)
    if(CMAKE_CROSSCOMPILING)
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/testlib/emulatedfork.cpp)
        target_link_libraries(${target} PRIVATE ${CMAKE_DL_LIBS})
    endif()
endfunction()

# uicov_add_test(NAME <tst_class> SOURCES <files> [LINK <libraries>] [ENVIRONMENT <VAR=value>...]
#                [DEFINITIONS <NAME=value>...] [LABELS <labels>] [TIMEOUT <seconds>] [NO_PCH] [ON_DISPLAY])
# A Qt Test program that is run by CTest on the offscreen platform, or on an X display of its own.
function(uicov_add_test)
    cmake_parse_arguments(ARG "NO_PCH;ON_DISPLAY" "NAME;TIMEOUT" "SOURCES;LINK;ENVIRONMENT;DEFINITIONS;LABELS" ${ARGN})
    _uicov_reject_unknown(uicov_add_test)
    add_executable(${ARG_NAME} ${ARG_SOURCES})
    target_link_libraries(${ARG_NAME} PRIVATE ${ARG_LINK} Qt5::Test uicov_flags)
    uicov_let_fork(${ARG_NAME})
    target_compile_definitions(${ARG_NAME} PRIVATE ${ARG_DEFINITIONS})
    set_target_properties(${ARG_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    if(NOT ARG_NO_PCH)
        target_link_libraries(${ARG_NAME} PRIVATE Qt5::Gui Qt5::Widgets)
        target_precompile_headers(${ARG_NAME} REUSE_FROM uicov_pch)
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    set(command ${ARG_NAME}) # a target, so that an emulator comes before it where one is needed
    if(ARG_ON_DISPLAY)
        set(command xvfb-run -a -s "-screen 0 1280x1024x24"
            ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${ARG_NAME}>)
        # The X libraries hand strndup() bytes that have no end, as they may.
        list(APPEND ARG_ENVIRONMENT QT_QPA_PLATFORM=xcb QT_XCB_GL_INTEGRATION=none
            "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=0:detect_stack_use_after_return=1")
    endif()
    uicov_register_test(NAME ${ARG_NAME} COMMAND ${command} TIMEOUT ${ARG_TIMEOUT}
        ENVIRONMENT ${ARG_ENVIRONMENT} LABELS ${ARG_LABELS})
endfunction()

# uicov_register_test(NAME <name> COMMAND <command> [TIMEOUT <seconds>] [ENVIRONMENT ...] [LABELS ...])
# Any command as a CTest test, with the environment that all tests share.
function(uicov_register_test)
    cmake_parse_arguments(ARG "" "NAME;TIMEOUT" "COMMAND;ENVIRONMENT;LABELS" ${ARGN})
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "uicov_register_test: unknown arguments: ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    add_test(NAME ${ARG_NAME} COMMAND ${ARG_COMMAND})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    if(CMAKE_CROSSCOMPILING)
        math(EXPR ARG_TIMEOUT "${ARG_TIMEOUT} * 5")
        # Where programs find their libraries when the kernel hands them to the emulator.
        # Qt looks for its own plugins by a call that the emulator does not redirect everywhere.
        set(qt_folder ${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/qt5)
        list(APPEND ARG_ENVIRONMENT QEMU_LD_PREFIX=${CMAKE_SYSROOT} QT_PLUGIN_PATH=${qt_folder}/plugins
            QML2_IMPORT_PATH=${qt_folder}/qml)
    endif()
    set(environment
        QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software LC_ALL=C.UTF-8 QT_LOGGING_RULES=
        # What tests count is the classic extension's, whose stream is fixed; those about the controls extension say so.
        UICOV_CLASSIC=1 VORSK_RECORDING_EXTENSION=classic
        "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1"
        "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/testlib/lsan.supp:print_suppressions=0"
        "UBSAN_OPTIONS=print_stacktrace=1"
        # Qt is not built with the sanitizer and locks with calls that it does not see, so what Qt's code does by
        # itself, as ending its threads, would be reported. Nothing of ours is left out, hence no suppressions.
        "TSAN_OPTIONS=ignore_noninstrumented_modules=1"
        ${ARG_ENVIRONMENT})
    set_tests_properties(${ARG_NAME} PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "${environment}"
        LABELS "${ARG_LABELS}")
endfunction()

# uicov_add_demo(NAME <program> SOURCES <files> LINK <libraries>)
# An application as users of this project have them: it knows nothing of coverage.
function(uicov_add_demo)
    cmake_parse_arguments(ARG "" "NAME" "SOURCES;LINK" ${ARGN})
    _uicov_reject_unknown(uicov_add_demo)
    add_executable(${ARG_NAME} ${ARG_SOURCES})
    target_link_libraries(${ARG_NAME} PRIVATE ${ARG_LINK} uicov_flags)
    set_target_properties(${ARG_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/demos)
endfunction()

function(uicov_print_summary)
    message(STATUS "uicov ${PROJECT_VERSION}: ${CMAKE_BUILD_TYPE}, Qt ${Qt5_VERSION}")
    if(CMAKE_CROSSCOMPILING)
        message(STATUS "  for ${CMAKE_SYSTEM_PROCESSOR}, tests run by ${CMAKE_CROSSCOMPILING_EMULATOR}")
    endif()
    message(STATUS "  UICOV_BUILD_TESTS        ${UICOV_BUILD_TESTS}")
    message(STATUS "  UICOV_BUILD_COMMAND      ${UICOV_BUILD_COMMAND}")
    message(STATUS "  UICOV_BUILD_BENCHMARKS   ${UICOV_BUILD_BENCHMARKS}")
    message(STATUS "  UICOV_WARNINGS_AS_ERRORS ${UICOV_WARNINGS_AS_ERRORS}")
    message(STATUS "  UICOV_SANITIZE           ${UICOV_SANITIZE}")
    if(UICOV_HOST_DIR)
        message(STATUS "  UICOV_HOST_DIR           ${UICOV_HOST_DIR}")
    else()
        message(STATUS "  UICOV_HOST_DIR           (the stand-in under host/)")
    endif()
endfunction()
