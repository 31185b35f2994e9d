// SPDX-License-Identifier: Apache-2.0
// What one document may cost. Each limit is far above what documents need, and keeps the worst of them to
// seconds.
#ifndef DOCUMENT_LIMITS_H
#define DOCUMENT_LIMITS_H

#include <cstddef>
#include <cstdint>

namespace sax {

/// Open elements: with namespaces, the parser's time grows with the square of the depth.
constexpr unsigned kElementDepth = 10'000;

/// The same for a schema, which the parser walks through recursively.
constexpr unsigned kSchemaDepth = 256;

/// UTF-16 code units in an entity's replacement text.
constexpr std::size_t kEntityLength = 65'536;

/// Expansions of entities, wherever they stand: text, attributes, defaults, the DTD.
constexpr std::size_t kExpansions = 100'000;

/// Expansions times the length of the longest entity, in code units.
constexpr std::size_t kExpandedLength = std::size_t{128} << 20;

/// What a DTD or schema may add to a document by expansions and defaults, in code units: this much, and for
/// each byte of the document so much more. Markup costs a length too.
constexpr std::uint64_t kAddedContent = std::uint64_t{64} << 20;
constexpr std::uint64_t kContentPerByte = 4;
constexpr std::uint64_t kMarkupCost = 16;

/// What the parser looks through from one end to the other: this much, and for each byte of the document so
/// much more.
constexpr std::uint64_t kSearch = std::uint64_t{512} << 20;
constexpr std::uint64_t kSearchPerByte = 16;

/// That is open elements and declarations of prefixes in scope, for the namespaces of all elements and
/// attributes. Below the small number in scope nothing counts.
constexpr std::size_t kSmallScope = 64;

/// And names of elements that no schema declares, each for so much. Short lists of them do not count.
constexpr std::uint64_t kElementSearch = 64;
constexpr std::size_t kShortElementList = 128;

/// And the attributes that a DTD declares for an element, each for so much, and the code units of their
/// types, where the values of an enumeration stand.
constexpr std::uint64_t kAttributeSearch = 4;

/// UTF-16 code units in the type of an attribute.
constexpr std::size_t kAttributeType = 16'384;

/// Errors and warnings that are reported: this many, and one for each byte of the document.
constexpr std::uint64_t kProblems = 100'000;

/// Names and operators in the content model of one element of a DTD, and in all content models together. The
/// parser builds a model recursively, in a time that grows with the square of its size.
constexpr std::size_t kContentModel = 10'000;
constexpr std::size_t kContentModels = 65'536;

/// Bytes of memory that the parser holds at one time, for a document and for its grammars each.
constexpr std::size_t kMemory = std::size_t{256} << 20;

/// Bytes that documents may leave in the memory of loaded schemas before these are made anew.
constexpr std::size_t kSchemaGrowth = std::size_t{32} << 20;

/// Bytes that the parser takes in all, given back or not: this much, and for each byte of the document so
/// much more. Building a hostile content model takes and gives back without end.
constexpr std::uint64_t kTakenMemory = std::uint64_t{2} << 30;
constexpr std::uint64_t kTakenMemoryPerByte = 256;

/// Files beside the document or schema itself, and their bytes together.
constexpr std::size_t kExternalFiles = 1'000;
constexpr std::size_t kExternalBytes = std::size_t{64} << 20;

}  // namespace sax

#endif
