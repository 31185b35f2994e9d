// SPDX-License-Identifier: Apache-2.0
// Vectors of three components.
#ifndef V_TVEC3_H
#define V_TVEC3_H

#include <cassert>

namespace TOZ {

/// Three components of an arithmetic type. `Tag` keeps vectors of different meaning apart: vectors with
/// different tags are different types and neither convert nor compare.
template <class T, int Tag>
class vTVec3 {
public:
    /// All components 0.
    constexpr vTVec3() : _components{} {}

    constexpr vTVec3(T x, T y, T z) : _components{x, y, z} {}

    /// Component `index`, which must be 0, 1 or 2.
    constexpr T& operator[](int index) { return _components[_Checked(index)]; }
    constexpr const T& operator[](int index) const { return _components[_Checked(index)]; }

    friend constexpr bool operator==(const vTVec3& a, const vTVec3& b) {
        return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
    }
    friend constexpr bool operator!=(const vTVec3& a, const vTVec3& b) { return !(a == b); }

private:
    static constexpr int _Checked(int index) {
        assert(index >= 0 && index < 3);
        return index;
    }

    T _components[3];
};

}  // namespace TOZ

#endif
