// SPDX-License-Identifier: Apache-2.0
// Counts what a document costs, against the limits.
#ifndef DOCUMENT_COST_H
#define DOCUMENT_COST_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "limits/document_limits.h"

namespace sax {

/// Each count returns null, or says which limit is exceeded; once it has, nothing counts any more: what the
/// parser does while it is unwound must go through.
class DocumentCost {
public:
    /// Of a content model, `most_in_model` names and operators are allowed.
    explicit DocumentCost(std::size_t most_in_model) : most_in_model_(most_in_model) {}

    void read(std::size_t bytes) { read_ += bytes; }

    /// Text of `length` code units, or as much for markup.
    const char* content(std::uint64_t length) {
        content_ += length;
        return check(content_ <= kAddedContent + kContentPerByte * read_,
                     "entities and defaults make the document too long");
    }

    /// An entity is declared with a text of `length` code units.
    const char* entity(std::size_t length) {
        longest_entity_ = std::max(longest_entity_, length);
        return check(length <= kEntityLength, "an entity is longer than 65536 characters");
    }

    /// An entity is expanded; then the parser holds `held` bytes in all.
    const char* expansion(std::size_t held) {
        ++expansions_;
        if (held > kMemory) return check(false, kTooMuchMemory);
        if (expansions_ > kExpansions) return check(false, "entities are expanded more than 100000 times");
        return check(expansions_ * longest_entity_ <= kExpandedLength,
                     "the expanded entities are too long together");
    }

    /// The namespaces of `names` names are looked up where `scope` elements and prefixes are open.
    const char* lookup(std::size_t scope, std::size_t names) {
        if (scope <= kSmallScope) return nullptr;
        return search(std::uint64_t{scope} * names,
                      "too many elements lie too deep or among too many namespace declarations");
    }

    /// An element is looked up among `names` names in a list.
    const char* element_lookup(std::size_t names) {
        if (names <= kShortElementList) return nullptr;
        return search(kElementSearch * names, "too many elements have too many different names");
    }

    /// An attribute is declared with a type of `length` code units.
    const char* attribute_type(std::size_t length) {
        return check(length <= kAttributeType, "an enumeration of values is longer than 16384 characters");
    }

    /// An element with `attributes` attributes is checked, whose DTD declares `declared` for it, the longest
    /// with a type of `longest_type` code units.
    const char* declared_attributes(std::size_t attributes, std::size_t declared, std::size_t longest_type) {
        return search(kAttributeSearch * declared + std::uint64_t{attributes} * longest_type,
                      "too many elements have too many declared attributes or values of attributes");
    }

    /// A problem is reported that does not end the parse.
    const char* problem() {
        return check(++problems_ <= kProblems + read_, "the document has too many errors");
    }

    /// A content model grows by one name or operator.
    const char* content_model_node() {
        ++model_nodes_;
        return check(model_nodes_ <= most_in_model_ && all_model_nodes_ + model_nodes_ <= kContentModels,
                     "a content model is too large");
    }

    /// What was counted for a model since the last call was one.
    void end_content_model() {
        all_model_nodes_ += model_nodes_;
        drop_content_model();
    }

    /// It was none: some texts take as much memory as a node does.
    void drop_content_model() { model_nodes_ = 0; }

    /// Memory of `bytes` is taken; then the parser holds `held` in all.
    const char* memory(std::size_t bytes, std::size_t held) {
        taken_ += bytes;
        return check(held <= kMemory && taken_ <= kTakenMemory + kTakenMemoryPerByte * read_, kTooMuchMemory);
    }

    /// A file of `bytes` bytes is read. A schema goes on without a file too many: the other limits hold.
    const char* external_file(std::size_t bytes) {
        external_bytes_ += bytes;
        if (++external_files_ > kExternalFiles) return "more than 1000 external files are read";
        return external_bytes_ > kExternalBytes ? "the external files are larger than 64 MiB together"
                                                : nullptr;
    }

private:
    static constexpr const char* kTooMuchMemory = "the document needs more memory than is allowed";

    const char* search(std::uint64_t cost, const char* message) {
        searched_ += cost;
        return check(searched_ <= kSearch + kSearchPerByte * read_, message);
    }

    const char* check(bool within, const char* message) {
        if (within || exceeded_) return nullptr;
        exceeded_ = true;
        return message;
    }

    std::uint64_t read_ = 0;
    std::uint64_t content_ = 0;
    std::uint64_t taken_ = 0;
    std::uint64_t searched_ = 0;
    std::uint64_t problems_ = 0;
    std::size_t most_in_model_;
    std::size_t model_nodes_ = 0;
    std::size_t all_model_nodes_ = 0;
    std::size_t longest_entity_ = 0;
    std::size_t expansions_ = 0;
    std::size_t external_files_ = 0;
    std::size_t external_bytes_ = 0;
    bool exceeded_ = false;
};

}  // namespace sax

#endif
