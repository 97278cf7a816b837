# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# In a cross build: Qt's code generators of the build machine, in place of those that Qt's packages for
# the target name. Included before Qt is looked for. A toolchain that brings its own leaves
# UICOV_QT_HOST_TOOLS empty.
if(NOT CMAKE_CROSSCOMPILING OR NOT UICOV_QT_HOST_TOOLS)
    return()
endif()
foreach(tool moc rcc uic qmake)
    find_program(UICOV_HOST_${tool} ${tool} PATHS ${UICOV_QT_HOST_TOOLS}
        NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    if(NOT UICOV_HOST_${tool})
        message(FATAL_ERROR "Qt's ${tool} of the build machine is not in ${UICOV_QT_HOST_TOOLS}; "
            "install it (scripts/bootstrap) or set UICOV_QT_HOST_TOOLS")
    endif()
    add_executable(Qt5::${tool} IMPORTED GLOBAL)
    set_target_properties(Qt5::${tool} PROPERTIES IMPORTED_LOCATION ${UICOV_HOST_${tool}})
endforeach()
