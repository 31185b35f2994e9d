#include "vTextureCheck.h"

#include <algorithm>
#include <array>
#include <memory>

#include "info/basis_table.h"
#include "info/check_words.h"
#include "info/dds_table.h"
#include "info/other_kinds.h"
#include "info/regular_file.h"
#include "vBasisImage.h"

using pelto::info::failure;
using pelto::info::length_fault;
using pelto::info::RegularFile;

namespace {

// An image that holds bytes which stay their owner's.
class BorrowingImage {
public:
    BorrowingImage(const unsigned char* data, std::uint64_t size) {
        try {
            image_.setBasisFileRawData(data, static_cast<unsigned int>(size));
        } catch (...) {
            give_back();
            throw;
        }
    }
    ~BorrowingImage() { give_back(); }
    BorrowingImage(const BorrowingImage&) = delete;
    BorrowingImage& operator=(const BorrowingImage&) = delete;

    bool is_taken() const { return image_.getNumMipLevels() > 0 && image_.isValidHeader(); }

private:
    void give_back() { image_ = TOZ::vBasisImage(); }

    TOZ::vBasisImage image_;
};

}  // namespace

vTextureCheck::Result vTextureCheck::CheckDDSFile(const std::string& path, const vTextureLimits& limits) {
    RegularFile file(path);
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    std::array<unsigned char, pelto::info::kStartSize> start{};
    const std::size_t available = file.read(start.data(), start.size());
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    return pelto::info::read_dds_table(start.data(), available, file.length(), limits).result;
}

vTextureCheck::Result vTextureCheck::CheckDDSBuffer(const void* data, std::uint64_t size,
                                                    const vTextureLimits& limits) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    return pelto::info::read_dds_table(bytes, size, size, limits).result;
}

vTextureCheck::Result vTextureCheck::CheckBasisFile(const std::string& path, const vTextureLimits& limits) {
    RegularFile file(path);
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    if (const auto fault = length_fault(file.length(), limits)) return *fault;
    std::array<unsigned char, pelto::info::kBasisHeaderSize> header{};
    const std::size_t header_bytes = file.read(header.data(), header.size());
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    const std::uint64_t length = header_bytes < header.size() ? header_bytes : file.length();
    if (const auto fault = pelto::info::basis_header_fault(header.data(), length)) return *fault;

    const auto bytes = std::make_unique_for_overwrite<unsigned char[]>(file.length());
    const std::size_t available = file.read(bytes.get(), file.length());
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    return CheckBasisBuffer(bytes.get(), available, limits);
}

vTextureCheck::Result vTextureCheck::CheckBasisBuffer(const void* data, std::uint64_t size,
                                                      const vTextureLimits& limits) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    Result result = pelto::info::check_basis_table(bytes, size, limits);
    if (!result.ok() || BorrowingImage(bytes, size).is_taken()) return result;
    result.status = eMalformedTable;
    result.sentence = "is damaged: its codebooks cannot be decoded";
    return result;
}
