// SPDX-License-Identifier: Apache-2.0
// Memory beside pages that end the process when they are touched.
#ifndef TESTS_SUPPORT_GUARDED_MEMORY_H
#define TESTS_SUPPORT_GUARDED_MEMORY_H

#include <algorithm>
#include <cstddef>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

#include "support/bytes.h"

namespace support {

/// `size` bytes between two guard pages, the memory starting right behind the first of them or ending right
/// before the second one.
class GuardedMemory {
public:
    enum class Side { kStart, kEnd };

    GuardedMemory(std::size_t size, Side side) : size_(size) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t room = (size + page - 1) / page * page;
        mapped_ = room + 2 * page;
        void* const memory = mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::bad_alloc();
        start_ = static_cast<unsigned char*>(memory);
        if (room > 0 && mprotect(start_ + page, room, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
        data_ = side == Side::kStart ? start_ + page : start_ + page + room - size;
    }
    ~GuardedMemory() { munmap(start_, mapped_); }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    unsigned char* data() { return data_; }
    void fill(const Bytes& bytes) { std::copy(bytes.begin(), bytes.end(), data_); }
    Bytes bytes() const { return Bytes(data_, data_ + size_); }

private:
    std::size_t size_;
    std::size_t mapped_;
    unsigned char* start_;
    unsigned char* data_;
};

}  // namespace support

#endif
