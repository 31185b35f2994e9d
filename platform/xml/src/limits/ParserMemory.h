// SPDX-License-Identifier: Apache-2.0
// The memory of the parser, within limits.
#ifndef PARSER_MEMORY_H
#define PARSER_MEMORY_H

#include <cstddef>
#include <xercesc/framework/MemoryManager.hpp>

#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"

namespace sax {

/// Takes blocks from the global allocation functions. A block over a limit throws Refusal, with the place
/// where the parse is. Blocks that are left at the end are released: the parser does not give back all that
/// it takes, least of all when an exception ends its work.
class ParserMemory final : public xercesc::MemoryManager {
public:
    ParserMemory();
    ~ParserMemory() override;

    /// As long as it lives, the blocks that are taken count for the document of `cost`.
    class Counting {
    public:
        Counting(ParserMemory& memory, DocumentCost& cost, const ParseLocator& locator);
        ~Counting() { memory_.cost_ = nullptr; }
        Counting(const Counting&) = delete;
        Counting& operator=(const Counting&) = delete;

    private:
        ParserMemory& memory_;
    };

    /// Bytes in all blocks now.
    std::size_t held() const { return held_; }

    xercesc::MemoryManager* getExceptionMemoryManager() override;
    void* allocate(XMLSize_t size) override;
    void deallocate(void* content) override;

private:
    /// Stands before each block, keeps its alignment, and is part of a ring of all blocks.
    struct alignas(std::max_align_t) Block {
        Block* before;
        Block* after;
        std::size_t size;
    };

    const char* count(std::size_t size);

    DocumentCost* cost_ = nullptr;
    const ParseLocator* locator_ = nullptr;
    std::size_t held_ = 0;
    Block ring_;  // begins and ends it
};

}  // namespace sax

#endif
