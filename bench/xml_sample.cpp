// SPDX-License-Identifier: Apache-2.0

#include "xml_sample.h"

#include <charconv>
#include <cstdint>

namespace bench {
namespace {

std::to_chars_result write(char* first, char* last, float number, Numbers numbers) {
    switch (numbers) {
        case Numbers::kShort:
            return std::to_chars(first, last, number, std::chars_format::fixed, 3);
        case Numbers::kScientific:
            return std::to_chars(first, last, number, std::chars_format::scientific, 6);
        case Numbers::kFull:
            break;
    }
    return std::to_chars(first, last, number);
}

void append_array(std::string& xml, const std::string& index, NumberSource& source) {
    xml.append("  <positions id=\"p").append(index).append("\">");
    source.append(xml, kArrayLength, Numbers::kFull);
    xml.append("</positions>\n");
}

void append_small_elements(std::string& xml, const std::string& index, NumberSource& source) {
    xml.append("  <material id=\"m").append(index).append("\" name=\"steel\" two_sided=\"true\">\n");
    xml.append("    <shininess unit=\"percent\">");
    source.append(xml, 1, Numbers::kShort);
    xml.append("</shininess>\n    <texture file=\"steel.dds\" wrap=\"repeat\"/>\n  </material>\n");
}

}  // namespace

void NumberSource::append(std::string& text, std::size_t count, Numbers numbers) {
    for (std::size_t i = 0; i < count; ++i) {
        noise_ = noise_ * 1664525 + 1013904223;
        const float number = static_cast<float>(static_cast<std::int32_t>(noise_)) * 0x1p-20F;
        char digits[32];
        if (i > 0) text.push_back(' ');
        text.append(digits, write(digits, digits + sizeof digits, number, numbers).ptr);
    }
}

std::string make_document(Document document, std::size_t bytes) {
    NumberSource source;
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<scene>\n";
    for (std::size_t i = 0; xml.size() < bytes; ++i) {
        const auto append = document == Document::kArrays ? append_array : append_small_elements;
        append(xml, std::to_string(i), source);
    }
    xml.append("</scene>\n");
    return xml;
}

}  // namespace bench
