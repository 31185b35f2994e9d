# SPDX-License-Identifier: Apache-2.0
# What all targets of this project share.

# A release may break the binary interface when its major number changes, before 1.0 with each minor one.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(PELTO_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
    set(PELTO_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

# An installed library or program finds the libraries beside it from its own place.
if(APPLE)
    set(PELTO_ORIGIN "@loader_path")
else()
    set(PELTO_ORIGIN "$ORIGIN")
endif()

# A program is loaded at an address that nobody can foretell, where the compiler can link so.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Checked standard calls, guarded stack frames, and tables of addresses that are read-only once loaded.
# Sanitizers check more by themselves, and do not go along with the first.
if(NOT PELTO_HARDENING OR MSVC OR CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(PELTO_HARDENED OFF)
else()
    set(PELTO_HARDENED ON)
endif()
function(pelto_harden target)
    if(NOT PELTO_HARDENED)
        return()
    endif()
    target_compile_options(${target} PRIVATE -fstack-protector-strong
        "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    get_target_property(type ${target} TYPE)
    if(NOT APPLE AND type MATCHES "^(SHARED_LIBRARY|MODULE_LIBRARY|EXECUTABLE)$")
        target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now)
    endif()
endfunction()

# Language level, hidden symbols and warnings, for this project's own sources alone.
function(pelto_target_defaults target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /wd4324)
        target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
    else()
        # Reports name their source file by its place in the project, wherever that was built.
        target_compile_options(${target} PRIVATE "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
        # Calls inside a library are not for others to intercept, which lets the compiler inline them.
        target_compile_options(${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -fno-semantic-interposition)
        target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64)
    endif()
    pelto_harden(${target})
endfunction()

# An installed library with its public headers, which work as <header.h> and <PeltoKernelTools/header.h>,
# in the build tree and once installed. `macro` is defined while the library itself is compiled.
function(pelto_library target macro)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "INCLUDE" "SOURCES;HEADERS")
    add_library(${target} ${arg_SOURCES})
    add_library(PeltoKernelTools::${target} ALIAS ${target})
    pelto_target_defaults(${target})
    target_compile_features(${target} INTERFACE cxx_std_17)
    target_compile_definitions(${target} PRIVATE ${macro})
    if(NOT BUILD_SHARED_LIBS)
        target_compile_definitions(${target} PUBLIC PELTO_STATIC)
    endif()
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PELTO_SOVERSION}
        INSTALL_RPATH "${PELTO_ORIGIN}")

    set(prefixed "${PROJECT_BINARY_DIR}/include/PeltoKernelTools")
    file(MAKE_DIRECTORY "${prefixed}")
    foreach(header IN LISTS arg_HEADERS)
        file(CREATE_LINK "${arg_INCLUDE}/${header}" "${prefixed}/${header}" COPY_ON_ERROR SYMBOLIC)
    endforeach()
    list(TRANSFORM arg_HEADERS PREPEND "${arg_INCLUDE}/")
    target_include_directories(${target} PUBLIC
        "$<BUILD_INTERFACE:${arg_INCLUDE}>"
        "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/PeltoKernelTools>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")

    if(PELTO_INSTALL)
        install(TARGETS ${target} EXPORT PeltoKernelToolsTargets)
        install(FILES ${arg_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/PeltoKernelTools)
    endif()
endfunction()
