# SPDX-License-Identifier: Apache-2.0
# The target basis_fixtures makes the .basis files of the tests in ${basis_fixtures}, with the encoder that
# scripts/build_encoder builds.
set(basis_fixtures "${CMAKE_CURRENT_BINARY_DIR}/basis_fixtures")

set(PELTO_BASIS_ENCODER "" CACHE FILEPATH
    "Upstream's command basisu of release 2.0.2; where empty, what scripts/build_encoder has built")
set(encoder "${PELTO_BASIS_ENCODER}")
if(NOT encoder)
    set(encoder "${PELTO_FETCHED}/basis-universal-2.0.2-encoder/basisu")
endif()
if(NOT EXISTS "${encoder}")
    message(FATAL_ERROR
        "The tests need the Basis Universal encoder, which is missing: ${encoder}. Run scripts/build_encoder, or "
        "configure with -DPELTO_BASIS_ENCODER=FILE, or without tests: -DPELTO_BUILD_TESTS=OFF.")
endif()

add_executable(make_basis_fixtures basis/make_fixtures.cpp)
pelto_target_defaults(make_basis_fixtures)
target_include_directories(make_basis_fixtures PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
add_custom_command(OUTPUT "${basis_fixtures}/complete"
    COMMAND make_basis_fixtures "${encoder}" "${basis_fixtures}"
    COMMAND "${CMAKE_COMMAND}" -E touch "${basis_fixtures}/complete"
    DEPENDS make_basis_fixtures "${encoder}"
    COMMENT "Making the .basis files of the tests"
    VERBATIM)
add_custom_target(basis_fixtures DEPENDS "${basis_fixtures}/complete")
