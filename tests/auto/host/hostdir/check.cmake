# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# Configures the project against a folder that looks like a real host's, made from the stand-in, and
# sees that a folder with something missing is refused with a message that names it.
# Variables: SOURCE_DIR, WORK_DIR, HEADERS (folder), HOOK and WRAPPER (files).

set(host_dir ${WORK_DIR}/host)
file(REMOVE_RECURSE ${WORK_DIR})
file(COPY ${HEADERS}/ DESTINATION ${host_dir}/include/vorsk)
file(COPY ${HOOK} ${WRAPPER} DESTINATION ${host_dir}/lib)

function(configure)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -G Ninja -S ${SOURCE_DIR} -B ${WORK_DIR}/build
            -DUICOV_HOST_DIR=${host_dir} -DUICOV_BUILD_TESTS=ON
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    set(status ${status} PARENT_SCOPE)
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_refusal missing)
    configure()
    if(status EQUAL 0 OR NOT output MATCHES "UICOV_HOST_DIR: [^ ]*/${missing} is not there")
        message(FATAL_ERROR "without ${missing}: status ${status}: ${output}")
    endif()
endfunction()

configure()
if(NOT status EQUAL 0)
    message(FATAL_ERROR "the folder was refused: ${output}")
endif()
string(FIND "${output}" "UICOV_HOST_DIR ${host_dir}" position)
if(position EQUAL -1)
    message(FATAL_ERROR "the summary does not name the host: ${output}")
endif()
file(READ ${WORK_DIR}/build/build.ninja rules)
if(rules MATCHES "vorskstarter")
    message(FATAL_ERROR "the stand-in is built in spite of a real host")
endif()

file(RENAME ${host_dir}/lib/libvorskhook.so ${host_dir}/lib/elsewhere)
expect_refusal(libvorskhook.so)
file(RENAME ${host_dir}/include/vorsk/hook.h ${host_dir}/elsewhere.h)
expect_refusal(hook.h)
