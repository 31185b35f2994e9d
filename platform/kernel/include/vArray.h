// SPDX-License-Identifier: Apache-2.0
// The kernel's growable array.
#ifndef V_ARRAY_H
#define V_ARRAY_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "vAllocator.h"

namespace TOZ::vArrayDetail {

/// The capacity after `capacity` elements of `elementSize` bytes: twice as many, within what a block can
/// hold (PTRDIFF_MAX bytes, so that positions in it can be subtracted). Throws std::bad_alloc at that limit.
constexpr std::size_t grown_capacity(std::size_t capacity, std::size_t elementSize) {
    constexpr std::size_t smallest = 4;
    const std::size_t limit = static_cast<std::size_t>(PTRDIFF_MAX) / elementSize;
    if (capacity >= limit) throw std::bad_alloc();
    const std::size_t doubled = capacity > limit / 2 ? limit : capacity * 2;
    if (doubled >= smallest) return doubled;
    return smallest < limit ? smallest : limit;
}

}  // namespace TOZ::vArrayDetail

/// A sequence of elements in one block of memory.
///
/// Memory comes from TOZ::DefaultAllocator() and goes back to the allocator that it came from. The only
/// exceptions are the allocator's std::bad_alloc and what T's operations throw; T's destructor must not
/// throw. A failed assignment changes nothing.
///
/// References, pointers and iterators to elements are valid until the array grows, is cleared, assigned,
/// moved from or destroyed.
///
/// Threads: distinct arrays are independent; several threads may read one array while none changes it.
template <class T>
class vArray {
public:
    /// An empty array, without memory.
    vArray() noexcept = default;

    vArray(const vArray& other) : _storage(other._size) {
        std::uninitialized_copy(other.begin(), other.end(), begin());
        _size = other._size;
    }

    /// Takes the elements and leaves `other` empty.
    vArray(vArray&& other) noexcept { _Swap(other); }

    vArray& operator=(const vArray& other) {
        vArray(other)._Swap(*this);
        return *this;
    }

    /// Takes the elements over and leaves `other` empty.
    vArray& operator=(vArray&& other) noexcept {
        vArray(std::move(other))._Swap(*this);
        return *this;
    }

    ~vArray() { Clear(); }

    /// Adds a copy of `element`, which may be one of the array's own, at the end.
    ///
    /// If it throws, the array is unchanged; only elements that cannot be copied, and whose move throws, may
    /// have been moved from.
    void Append(const T& element) { _Append(element); }

    /// As above, but moves `element`; a failed call leaves it unchanged, unless T's move may throw.
    void Append(T&& element) { _Append(std::move(element)); }

    /// Number of elements.
    std::size_t Size() const noexcept { return _size; }

    /// Element `index`, which must be below Size().
    T& operator[](std::size_t index) {
        assert(index < _size);
        return _storage.elements[index];
    }
    const T& operator[](std::size_t index) const {
        assert(index < _size);
        return _storage.elements[index];
    }

    T* begin() noexcept { return _storage.elements; }
    T* end() noexcept { return begin() + _size; }
    const T* begin() const noexcept { return _storage.elements; }
    const T* end() const noexcept { return begin() + _size; }

    /// Destroys the elements and keeps the memory for the next ones.
    void Clear() noexcept {
        std::destroy(begin(), end());
        _size = 0;
    }

private:
    /// A block for `capacity` elements and the allocator that it goes back to; knows of no elements.
    struct _Storage {
        _Storage() noexcept = default;

        explicit _Storage(std::size_t count) {
            static_assert(alignof(T) <= alignof(std::max_align_t),
                          "vArray: T needs a stricter alignment than TOZ::vAllocator gives its blocks");
            if (count == 0) return;
            allocator = &TOZ::DefaultAllocator();
            elements = static_cast<T*>(allocator->Allocate(count * sizeof(T)));
            capacity = count;
        }

        _Storage(const _Storage&) = delete;
        _Storage& operator=(const _Storage&) = delete;

        ~_Storage() {
            if (elements) allocator->Release(elements);
        }

        void Swap(_Storage& other) noexcept {
            std::swap(allocator, other.allocator);
            std::swap(elements, other.elements);
            std::swap(capacity, other.capacity);
        }

        TOZ::vAllocator* allocator = nullptr;
        T* elements = nullptr;
        std::size_t capacity = 0;
    };

    template <class Element>
    void _Append(Element&& element) {
        if (_size < _storage.capacity) {
            _Construct(end(), std::forward<Element>(element));
        } else {
            _GrowAndAppend(std::forward<Element>(element));
        }
        ++_size;
    }

    template <class Element>
    void _GrowAndAppend(Element&& element) {
        _Storage grown(TOZ::vArrayDetail::grown_capacity(_storage.capacity, sizeof(T)));
        // The new element comes first: it may be a copy of one that is about to move.
        T* last = _Construct(grown.elements + _size, std::forward<Element>(element));
        try {
            _MoveElements(grown.elements);
        } catch (...) {
            std::destroy_at(last);
            throw;
        }
        std::destroy(begin(), end());
        _storage.Swap(grown);
    }

    template <class Element>
    static T* _Construct(T* place, Element&& element) {
        return ::new (static_cast<void*>(place)) T(std::forward<Element>(element));
    }

    /// Elements whose move may throw are copied where they can be, so that a failure leaves them whole.
    void _MoveElements(T* target) {
        if constexpr (std::is_nothrow_move_constructible_v<T> || !std::is_copy_constructible_v<T>) {
            std::uninitialized_move(begin(), end(), target);
        } else {
            std::uninitialized_copy(begin(), end(), target);
        }
    }

    void _Swap(vArray& other) noexcept {
        _storage.Swap(other._storage);
        std::swap(_size, other._size);
    }

    _Storage _storage;
    std::size_t _size = 0;
};

#endif
