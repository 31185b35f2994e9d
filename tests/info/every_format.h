// SPDX-License-Identifier: Apache-2.0
// A small DDS file of every format that the loader takes.
#ifndef TESTS_INFO_EVERY_FORMAT_H
#define TESTS_INFO_EVERY_FORMAT_H

#include <vector>

#include "support/dds_check.h"
#include "support/plain_formats.h"

namespace support {

inline std::vector<FileHeader> every_format() {
    std::vector<FileHeader> headers;
    for (const plain::FormatRow& row : plain::dxgi_rows()) headers.push_back(dxgi_header(row.number));
    for (const plain::FormatRow& row : plain::fourcc_rows()) headers.push_back(fourcc_header(row.number));
    for (const plain::PlainRow& row : plain::plain_rows()) {
        headers.push_back(plain_header(row.flags, row.bit_count));
    }
    for (FileHeader& header : headers) header = header.sized(6, 5).with_mips(3);
    return headers;
}

inline std::size_t headers_size(const FileHeader& header) { return header_bytes(header).size(); }

}  // namespace support

#endif
