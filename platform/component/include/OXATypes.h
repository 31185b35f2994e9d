// SPDX-License-Identifier: Apache-2.0
// Results and identifiers of the component runtime.
#ifndef OXA_TYPES_H
#define OXA_TYPES_H

#include <cstdint>

/// The result of an operation: negative means that it failed.
using HRESULT = std::int32_t;

constexpr HRESULT S_OK = 0;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001U);      ///< not offered by this object
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002U);  ///< the object has no such interface
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003U);      ///< a pointer must not be null
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);         ///< any other failure

constexpr bool SUCCEEDED(HRESULT result) noexcept { return result >= 0; }
constexpr bool FAILED(HRESULT result) noexcept { return result < 0; }

/// Names a class or interface: 16 bytes, compared as a whole.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
static_assert(sizeof(GUID) == 16);

constexpr bool operator==(const GUID& a, const GUID& b) noexcept {
    if (a.Data1 != b.Data1 || a.Data2 != b.Data2 || a.Data3 != b.Data3) return false;
    for (int i = 0; i < 8; ++i) {
        if (a.Data4[i] != b.Data4[i]) return false;
    }
    return true;
}

constexpr bool operator!=(const GUID& a, const GUID& b) noexcept { return !(a == b); }

#endif
