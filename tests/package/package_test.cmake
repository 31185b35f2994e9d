# SPDX-License-Identifier: Apache-2.0
# Takes the library into the project in consumer/ in the given way, builds its program and runs it.
cmake_minimum_required(VERSION 3.25)

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${work}")
# What is compiled here, in some ways the whole library, is linked and run: it need not be fast.
set(options
    -G "${generator}"
    -D "CMAKE_BUILD_TYPE=Debug"
    -D "CMAKE_CXX_COMPILER=${compiler}"
    -D "CMAKE_CXX_FLAGS=${flags}"
    -D "PELTO_WAY=${way}"
    -D "PELTO_SOURCE=${source}"
    -D "PELTO_VERSION=${version}")
if(way MATCHES "find_package|pkg_config")
    run(${CMAKE_COMMAND} --install "${build}" --prefix "${work}/first" --config "${config}")
    # Packages move: nothing in one may point to where it was installed first.
    file(RENAME "${work}/first" "${work}/prefix")
    list(APPEND options -D "CMAKE_PREFIX_PATH=${work}/prefix")
endif()
if(way STREQUAL "own_platform")
    # A customer's platform: a package that provides the same targets.
    file(WRITE "${work}/platform/PeltoPlatformConfig.cmake" "
        set(platform [==[${source}/platform]==])
        function(platform_library name file folder)
            add_library(PeltoKernelTools::\${name} SHARED IMPORTED GLOBAL)
            set_target_properties(PeltoKernelTools::\${name} PROPERTIES
                IMPORTED_LOCATION \${file}
                INTERFACE_INCLUDE_DIRECTORIES \"\${platform}/\${folder}/include\")
        endfunction()
        platform_library(PeltoKernel [==[${kernel}]==] kernel)
        platform_library(PeltoComponent [==[${component}]==] component)
        platform_library(PeltoXML [==[${xml}]==] xml)
        target_link_libraries(PeltoKernelTools::PeltoXML INTERFACE PeltoKernelTools::PeltoComponent)")
    list(APPEND options -D PELTO_BUNDLED_PLATFORM=OFF -D "PeltoPlatform_DIR=${work}/platform")
endif()
run(${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}/consumer" -B "${work}/build" ${options})
run(${CMAKE_COMMAND} --build "${work}/build")
run("${work}/build/consumer")

if(way STREQUAL "find_package")
    foreach(paper IN ITEMS LICENSE NOTICE)
        run(${CMAKE_COMMAND} -E compare_files "${source}/${paper}" "${work}/prefix/share/doc/PeltoKernelTools/${paper}")
    endforeach()
    run("${work}/build/loader")
    run("${work}/prefix/bin/pelto" --version)
    run("${work}/prefix/bin/pelto" library "${source}/samples/library/library.xml")
    run(${CMAKE_COMMAND} -E compare_files "${source}/schemas/texture-library.xsd"
        "${work}/prefix/share/PeltoKernelTools/schemas/texture-library.xsd")

    # The sample that the documents show, as a project of its own.
    run(${CMAKE_COMMAND} -S "${source}/samples/outline" -B "${work}/outline" ${options})
    run(${CMAKE_COMMAND} --build "${work}/outline")
    file(WRITE "${work}/car.xml" "<car doors='5'>\n<wheel> left </wheel></car>")
    execute_process(COMMAND "${work}/outline/outline" "${work}/car.xml"
        OUTPUT_VARIABLE tree COMMAND_ERROR_IS_FATAL ANY)
    if(NOT tree STREQUAL "car doors=\"5\"\n  wheel: left\n")
        message(FATAL_ERROR "The sample outline printed:\n${tree}")
    endif()
endif()
file(REMOVE_RECURSE "${work}")
