# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# Installs the development files into an empty folder, moves that, and builds and runs a project with nothing
# but them. Variables: BUILD, WORK (folders), VERSION, and TOOLCHAIN (file) in a cross build.
file(REMOVE_RECURSE ${WORK})

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}: ${status}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first --component development)
file(RENAME ${WORK}/first ${WORK}/moved)

# Nothing in it may lead back to where it was built.
file(GLOB_RECURSE files ${WORK}/moved/*.cmake ${WORK}/moved/*.h)
foreach(file ${files})
    file(READ ${file} text)
    foreach(folder ${BUILD} ${WORK})
        string(FIND "${text}" ${folder} position)
        if(NOT position EQUAL -1)
            message(FATAL_ERROR "${file} names ${folder}")
        endif()
    endforeach()
endforeach()

set(configure ${CMAKE_COMMAND} -G Ninja -S ${CMAKE_CURRENT_LIST_DIR}/consumer)
if(TOOLCHAIN)
    list(APPEND configure -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
endif()
set(package -Duicov_ROOT=${WORK}/moved -DCMAKE_FIND_ROOT_PATH=${WORK}/moved)

run(${configure} -B ${WORK}/build ${package} -DWANTED=${VERSION})
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${CMAKE_COMMAND} --build ${WORK}/build --target check)
if(NOT output MATCHES "an element of [0-9]+ bytes came back; recordings have version 2")
    message(FATAL_ERROR "the consumer said: ${output}")
endif()

# A program made for a later version must not build against this one.
execute_process(COMMAND ${configure} -B ${WORK}/later ${package} -DWANTED=99.0
    RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
if(status EQUAL 0 OR NOT errors MATCHES "99.0")
    message(FATAL_ERROR "version 99.0 was found: ${status} ${errors}")
endif()
