# SPDX-License-Identifier: Apache-2.0
# The licence, the CMake package PeltoKernelTools and the pkg-config file.
include(CMakePackageConfigHelpers)

install(FILES LICENSE NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/PeltoKernelTools)
configure_package_config_file(cmake/PeltoKernelToolsConfig.cmake.in
    "${PROJECT_BINARY_DIR}/PeltoKernelToolsConfig.cmake" INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/PeltoKernelToolsConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/PeltoKernelToolsConfig.cmake"
    "${PROJECT_BINARY_DIR}/PeltoKernelToolsConfigVersion.cmake"
    DESTINATION ${package_dir})
install(EXPORT PeltoKernelToolsTargets NAMESPACE PeltoKernelTools:: DESTINATION ${package_dir})

# pkg-config has no name for a platform that is not ours.
if(PELTO_BUNDLED_PLATFORM)
    # Relocatable, the prefix being found from the file's own place, unless the folders are absolute.
    if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
        set(PELTO_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
        set(PELTO_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
        set(PELTO_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
    else()
        file(RELATIVE_PATH to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
        string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
        set(PELTO_PC_PREFIX "\${pcfiledir}/${to_prefix}")
        set(PELTO_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
        set(PELTO_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
    endif()
    if(NOT BUILD_SHARED_LIBS)
        set(PELTO_PC_CFLAGS " -DPELTO_STATIC")
        set(PELTO_PC_REQUIRES "libhwy xerces-c")
    endif()
    configure_file(cmake/PeltoKernelTools.pc.in "${PROJECT_BINARY_DIR}/PeltoKernelTools.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/PeltoKernelTools.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
