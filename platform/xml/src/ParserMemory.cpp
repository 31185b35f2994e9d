#include "ParserMemory.h"

#include <new>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "Refusal.h"

namespace sax {
namespace {

/// Stands before each block and keeps its alignment.
struct alignas(std::max_align_t) BlockHeader {
    std::size_t size;
};

/// What the parser asks for when it makes a T: before each object stands a pointer to its memory manager.
template <class T>
std::size_t size_of_new() {
    return sizeof(T) +
           xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*));
}

}  // namespace

void ParserMemory::begin(DocumentCost& cost, const ParseLocator& locator) {
    cost_ = &cost;
    locator_ = &locator;
}

void ParserMemory::end() { cost_ = nullptr; }

xercesc::MemoryManager* ParserMemory::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

void* ParserMemory::allocate(XMLSize_t size) {
    if (const char* exceeded = cost_ ? count(size) : nullptr) throw Refusal{exceeded, locator_->position()};
    auto* header = ::new (::operator new(sizeof(BlockHeader) + size)) BlockHeader{size};
    held_ += size;
    return header + 1;
}

void ParserMemory::deallocate(void* block) {
    if (!block) return;
    auto* header = static_cast<BlockHeader*>(block) - 1;
    held_ -= header->size;
    ::operator delete(header);
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
