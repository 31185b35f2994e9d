// SPDX-License-Identifier: Apache-2.0

#include "limits/ParserMemory.h"

#include <new>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "limits/Refusal.h"

namespace sax {
namespace {

/// What the parser asks for when it makes a T: before each object stands a pointer to its memory manager.
template <class T>
std::size_t size_of_new() {
    return sizeof(T) +
           xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*));
}

}  // namespace

ParserMemory::ParserMemory() : ring_{&ring_, &ring_, 0} {}

ParserMemory::~ParserMemory() {
    while (ring_.after != &ring_) deallocate(ring_.after + 1);
}

ParserMemory::Counting::Counting(ParserMemory& memory, DocumentCost& cost, const ParseLocator& locator)
    : memory_(memory) {
    memory_.cost_ = &cost;
    memory_.locator_ = &locator;
}

xercesc::MemoryManager* ParserMemory::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

void* ParserMemory::allocate(XMLSize_t size) {
    if (const char* exceeded = cost_ ? count(size) : nullptr) throw Refusal{exceeded, locator_->position()};
    auto* block = ::new (::operator new(sizeof(Block) + size)) Block{&ring_, ring_.after, size};
    block->after->before = block;
    ring_.after = block;
    held_ += size;
    return block + 1;
}

void ParserMemory::deallocate(void* content) {
    if (!content) return;
    auto* block = static_cast<Block*>(content) - 1;
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): the analyzer does not follow the ring
    block->before->after = block->after;
    block->after->before = block->before;
    held_ -= block->size;
    ::operator delete(block);
}

/// The parser gives no sign of some of its work but the objects that it makes: a reader for each expansion of
/// an entity, in text, attributes, defaults and the DTD alike, and a node for each part of a content model.
const char* ParserMemory::count(std::size_t size) {
    if (size == size_of_new<xercesc::XMLReader>()) return cost_->expansion(held_ + size);
    if (size == size_of_new<xercesc::ContentSpecNode>()) {
        if (const char* exceeded = cost_->content_model_node()) return exceeded;
    }
    return cost_->memory(size, held_ + size);
}

}  // namespace sax
