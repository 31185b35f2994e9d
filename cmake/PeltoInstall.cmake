# The CMake package PeltoKernelTools and the pkg-config file.
include(CMakePackageConfigHelpers)

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

# Relocatable: the prefix is found from the file's own place.
file(RELATIVE_PATH PELTO_PC_PREFIX
    "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" PELTO_PC_PREFIX "${PELTO_PC_PREFIX}")
set(PELTO_PC_LIBS "-lPeltoKernelTools")
if(PELTO_BUNDLED_PLATFORM)
    string(APPEND PELTO_PC_LIBS " -lPeltoKernel")
endif()
if(NOT BUILD_SHARED_LIBS)
    set(PELTO_PC_CFLAGS " -DPELTO_STATIC")
    set(PELTO_PC_REQUIRES "libhwy")
endif()
configure_file(cmake/PeltoKernelTools.pc.in "${PROJECT_BINARY_DIR}/PeltoKernelTools.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/PeltoKernelTools.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
