// SPDX-License-Identifier: Apache-2.0
// Texts of numbers, and XML documents of given kind and size, made in memory.
#ifndef BENCH_XML_SAMPLE_H
#define BENCH_XML_SAMPLE_H

#include <cstddef>
#include <string>

namespace bench {

/// Three decimals; as many digits as a float needs; six decimals and an exponent.
enum class Numbers { kShort, kFull, kScientific };

/// Random numbers with a space between each two.
class NumberSource {
public:
    /// Appends `count` numbers to `text`.
    void append(std::string& text, std::size_t count, Numbers numbers);

private:
    unsigned noise_ = 1;
};

/// Numbers in each element of Document::kArrays.
constexpr std::size_t kArrayLength = 300;

/// Elements that hold kArrayLength numbers each; or elements of few characters, some nested, with attributes.
enum class Document { kArrays, kSmallElements };

/// About `bytes` bytes of ASCII.
std::string make_document(Document document, std::size_t bytes);

}  // namespace bench

#endif
