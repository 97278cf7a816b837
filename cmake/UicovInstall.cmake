# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# What a project that builds against this one finds: find_package(uicov) with these targets.
#   uicov::model            the element model (uiabstraction/*.h), a static library
#   uicov::recordstream     its stream forms and the payloads of records (recordstream/*.h), the same
#   uicov::recordingformat  the layout of a recording (recordingformat/*.h)
#   uicov::vorskabi         the interface between host and extension (vorsk/*.h)
# Components of an installation: "device" (what an application is recorded with), "workstation" (the
# command), "development" (this).
include(CMakePackageConfigHelpers)

function(uicov_install_development_files)
    set(headers ${CMAKE_INSTALL_INCLUDEDIR}/uicov)
    set(package ${CMAKE_INSTALL_LIBDIR}/cmake/uicov)

    set_target_properties(uiabstraction PROPERTIES EXPORT_NAME model)
    set(targets uiabstraction recordstream recordingformat checksum) # linked with, but without headers
    set(folders uiabstraction recordstream recordingformat)
    list(TRANSFORM folders PREPEND ${PROJECT_SOURCE_DIR}/src/shared/)
    if(NOT UICOV_HOST_DIR) # a real host has its own headers
        list(APPEND targets vorskabi)
        list(APPEND folders ${PROJECT_SOURCE_DIR}/host/abi/vorsk)
    endif()
    foreach(target ${targets})
        target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${headers}>)
    endforeach()

    install(TARGETS ${targets} EXPORT uicovTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}/uicov COMPONENT development)
    install(DIRECTORY ${folders} DESTINATION ${headers} COMPONENT development
        FILES_MATCHING PATTERN "*.h")
    install(EXPORT uicovTargets NAMESPACE uicov:: DESTINATION ${package} COMPONENT development)

    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/uicovConfig.cmake.in
        ${PROJECT_BINARY_DIR}/uicovConfig.cmake INSTALL_DESTINATION ${package}
        NO_SET_AND_CHECK_MACRO)
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/uicovConfigVersion.cmake
        COMPATIBILITY SameMinorVersion)
    install(FILES ${PROJECT_BINARY_DIR}/uicovConfig.cmake ${PROJECT_BINARY_DIR}/uicovConfigVersion.cmake
        DESTINATION ${package} COMPONENT development)
endfunction()
