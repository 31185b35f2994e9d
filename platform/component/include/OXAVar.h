// SPDX-License-Identifier: Apache-2.0
// The smart reference to a component.
#ifndef OXA_VAR_H
#define OXA_VAR_H

#include <stdexcept>
#include <type_traits>
#include <utility>

#include "OXABaseUnknown.h"
#include "OXAComponentExport.h"

/// Thrown when a null reference is used as an object.
class PELTO_COMPONENT_API OXANullVarError : public std::logic_error {
public:
    OXANullVarError();
    ~OXANullVarError() override;
};

/// Throws OXANullVarError.
[[noreturn]] PELTO_COMPONENT_API void ThrowErrorNullVar();

/// Refers to a component of class T, or to none, and holds one reference to it.
///
///     OXAISAXXMLReader_var reader;                  // null
///     OXAIXMLSchemaLoader_var loader(reader);       // an interface query; null if it has none
///     OXAVar<Mine> mine = OXAVar<Mine>::Adopt(new Mine);
///
/// Threads: distinct references are independent, even to the same component.
template <class T>
class OXAVar {
    template <class U>
    static constexpr bool _isUpcast = std::is_convertible_v<U*, T*>;

public:
    OXAVar() noexcept = default;

    /// Adds a reference; null gives a null reference.
    OXAVar(T* object) : _object(object) {
        if (_object) _object->AddRef();
    }

    OXAVar(const OXAVar& other) : OXAVar(other._object) {}
    OXAVar(OXAVar&& other) noexcept : _object(std::exchange(other._object, nullptr)) {}

    /// To a base class.
    template <class U, std::enable_if_t<_isUpcast<U>, int> = 0>
    OXAVar(const OXAVar<U>& other) : OXAVar(static_cast<T*>(other.Get())) {}

    /// To another interface, by a query: null if `other` is null or has no such interface.
    template <class U, std::enable_if_t<!_isUpcast<U>, int> = 0>
    explicit OXAVar(const OXAVar<U>& other) : OXAVar(other.Get()) {}

    /// The same for a plain pointer, whose reference stays the caller's.
    template <class U, std::enable_if_t<!_isUpcast<U>, int> = 0>
    explicit OXAVar(U* object) {
        void* found = nullptr;
        if (object && SUCCEEDED(object->QueryInterface(T::ClassId(), &found)))
            _object = static_cast<T*>(found);
    }

    /// Takes over the reference that the caller holds; null gives a null reference.
    static OXAVar Adopt(T* object) noexcept {
        OXAVar adopted;
        adopted._object = object;
        return adopted;
    }

    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): a copy is swapped in
    OXAVar& operator=(const OXAVar& other) {
        OXAVar(other)._Swap(*this);
        return *this;
    }
    OXAVar& operator=(OXAVar&& other) noexcept {
        OXAVar(std::move(other))._Swap(*this);
        return *this;
    }

    ~OXAVar() { Reset(); }

    /// Throws OXANullVarError if the reference is null.
    T* operator->() const {
        if (!_object) ThrowErrorNullVar();
        return _object;
    }

    /// The component, or null. Adds no reference: the pointer is valid while someone holds a reference.
    T* Get() const noexcept { return _object; }

    bool IsNull() const noexcept { return !_object; }
    explicit operator bool() const noexcept { return _object != nullptr; }

    /// Becomes null, then releases the reference: that may destroy the component, which may read this
    /// reference as it goes.
    void Reset() {
        if (T* object = std::exchange(_object, nullptr)) object->Release();
    }

private:
    void _Swap(OXAVar& other) noexcept { std::swap(_object, other._object); }

    T* _object = nullptr;
};

// References are equal if they refer to the same object, null included. Ask OXABaseUnknown::IsEqual whether
// two interfaces belong to one component.
template <class T, class U>
bool operator==(const OXAVar<T>& a, const OXAVar<U>& b) noexcept {
    return a.Get() == b.Get();
}
template <class T, class U>
bool operator!=(const OXAVar<T>& a, const OXAVar<U>& b) noexcept {
    return a.Get() != b.Get();
}
template <class T>
bool operator==(const OXAVar<T>& a, std::nullptr_t) noexcept {
    return a.IsNull();
}
template <class T>
bool operator!=(const OXAVar<T>& a, std::nullptr_t) noexcept {
    return !a.IsNull();
}

#endif
