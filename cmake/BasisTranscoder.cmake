# SPDX-License-Identifier: Apache-2.0
# PeltoBasisTranscoder: the Basis Universal transcoder, compiled from its source.

# Where scripts/fetch_transcoder and scripts/fetch_packages put what they fetch.
if(DEFINED ENV{XDG_CACHE_HOME} AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
    set(PELTO_FETCHED "$ENV{XDG_CACHE_HOME}")
else()
    set(PELTO_FETCHED "$ENV{HOME}/.cache")
endif()
string(APPEND PELTO_FETCHED "/PeltoKernelTools")

set(BASISU_SOURCE_DIR "" CACHE PATH
    "Folder with the source of Basis Universal 2.0.2; where empty, what scripts/fetch_transcoder has fetched")
if(BASISU_SOURCE_DIR)
    set(PELTO_BASIS_SOURCE "${BASISU_SOURCE_DIR}")
else()
    set(PELTO_BASIS_SOURCE "${PELTO_FETCHED}/basis-universal-2.0.2")
endif()
if(NOT EXISTS "${PELTO_BASIS_SOURCE}/transcoder/basisu_transcoder.cpp")
    message(FATAL_ERROR
        "There is no source of the Basis Universal transcoder: ${PELTO_BASIS_SOURCE}/transcoder/basisu_transcoder.cpp "
        "is missing. Run scripts/fetch_transcoder, which fetches release 2.0.2, or unpack that release and configure "
        "with -DBASISU_SOURCE_DIR=FOLDER, FOLDER being the one that holds transcoder/.")
endif()

add_library(PeltoBasisTranscoder STATIC "${PELTO_BASIS_SOURCE}/transcoder/basisu_transcoder.cpp")
set_target_properties(PeltoBasisTranscoder PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON
    # Its functions rely on flags of their own, which are not to mix with ours.
    INTERPROCEDURAL_OPTIMIZATION OFF
    # Where a complete source has sample files; for tests and benchmarks.
    PELTO_SAMPLES "${PELTO_BASIS_SOURCE}/webgl")
target_compile_features(PeltoBasisTranscoder PUBLIC cxx_std_17)
target_include_directories(PeltoBasisTranscoder SYSTEM PUBLIC "${PELTO_BASIS_SOURCE}/transcoder")
# Its assertions do not hold on damaged files, nor on HDR files asked for LDR blocks: it refuses both by itself.
target_compile_definitions(PeltoBasisTranscoder PUBLIC
    NDEBUG BASISD_SUPPORT_KTX2=0 BASISD_SUPPORT_KTX2_ZSTD=0)
if(MSVC)
    target_compile_options(PeltoBasisTranscoder PRIVATE /w)
else()
    # It reads blocks where they lie, aligned or not; the other sanitizers stay on.
    target_compile_options(PeltoBasisTranscoder PRIVATE -w -fno-strict-aliasing -fno-sanitize=undefined)
endif()
pelto_harden(PeltoBasisTranscoder)
