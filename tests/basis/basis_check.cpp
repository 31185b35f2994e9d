// SPDX-License-Identifier: Apache-2.0

#include "basis/basis_check.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <set>
#include <utility>
#include <vector>

#include "basis/basis_private.h"
#include "support/allocation.h"
#include "support/basis_file.h"

namespace basis_check {

namespace basis = support::basis;
namespace direct = support::direct;

namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

/// A call of getImage and the blocks that it took and did not give back.
std::vector<support::Block> call(const vBasisImage& image, unsigned int level, unsigned int slice, int usage,
                                 unsigned char*& out, unsigned int& size, Got& got) {
    const support::AllocationRecorder recorder;
    try {
        got.result = image.getImage(level, slice, out, size, static_cast<EUsageFormat>(usage));
    } catch (const std::bad_alloc&) {
        got.thrown = true;
    }
    return recorder.left();
}

}  // namespace

unsigned char* new_copy(const Bytes& bytes) {
    auto* const copy = new unsigned char[bytes.size()];
    std::copy(bytes.begin(), bytes.end(), copy);
    return copy;
}

void hold(vBasisImage& image, const Bytes& file) {
    image.setBasisFileRawData(new_copy(file), static_cast<unsigned int>(file.size()));
}

Got get_image(const vBasisImage& image, unsigned int level, unsigned int slice, int usage) {
    constexpr unsigned int kUnwritten = 0xA5A5A5A5;
    unsigned char marker = 0;
    unsigned char* out = &marker;
    unsigned int size = kUnwritten;
    Got got;
    const std::vector<support::Block> left = call(image, level, slice, usage, out, size, got);
    got.image_written = out != &marker;
    got.size_written = size != kUnwritten;
    got.has_image = got.image_written && out != nullptr;
    got.size = got.size_written ? size : 0;

    if (got.thrown) {
        EXPECT_LE(left.size(), 1u);
        for (const support::Block& block : left) {
            EXPECT_EQ(block.size, direct::transcoder_size());
            direct::destroy_transcoder(block.address);
        }
        return got;
    }
    EXPECT_EQ(left.size(), got.image_written ? 1u : 0u);
    if (left.size() != 1) return got;
    EXPECT_EQ(left[0].size, got.size);
    if (got.has_image) {
        EXPECT_EQ(left[0].address, out);
        if (left[0].address == out && left[0].size == got.size) got.blocks.assign(out, out + got.size);
    }
    delete[] static_cast<unsigned char*>(left[0].address);
    return got;
}

AssertionResult refused(const Got& got) {
    if (got.result) return AssertionFailure() << "succeeded";
    if (got.thrown) return AssertionFailure() << "threw";
    if (got.image_written || got.size_written) return AssertionFailure() << "wrote an output";
    return AssertionSuccess();
}

AssertionResult not_transcoded(const Got& got, unsigned int size) {
    if (got.result) return AssertionFailure() << "succeeded";
    if (got.thrown) return AssertionFailure() << "threw";
    if (!got.image_written || !got.size_written) return AssertionFailure() << "did not write its outputs";
    if (got.has_image) return AssertionFailure() << "gave an image";
    if (got.size != size) return AssertionFailure() << "size " << got.size << " instead of " << size;
    return AssertionSuccess();
}

namespace {

AssertionResult transcoded(const Got& got, const direct::Image& expected) {
    if (got.thrown) return AssertionFailure() << "threw";
    if (!got.result || !got.has_image) return AssertionFailure() << "gave no image";
    if (got.size != expected.size)
        return AssertionFailure() << "size " << got.size << " instead of " << expected.size;
    for (std::size_t i = 0; i < expected.size; ++i) {
        const bool known = expected.known.empty() || expected.known[i] != 0;
        if (known && got.blocks.at(i) != expected.blocks[i])
            return AssertionFailure() << "byte " << i << " of " << expected.size << " differs";
    }
    return AssertionSuccess();
}

AssertionResult failed(const Got& got) {
    if (got.result || got.has_image) return AssertionFailure() << "gave an image";
    if (got.thrown) return AssertionFailure() << "threw";
    return AssertionSuccess();
}

AssertionResult compare(const Got& got, const direct::Image& expected) {
    switch (expected.end) {
        case direct::End::kRefused:
            return refused(got);
        case direct::End::kNotTranscoded:
            return not_transcoded(got, expected.size);
        case direct::End::kTranscoded:
            return transcoded(got, expected);
        case direct::End::kNegativeSize:
            return got.thrown ? AssertionSuccess() : AssertionFailure() << "did not throw";
        default:
            return failed(got);
    }
}

}  // namespace

AssertionResult like_direct_calls(const vBasisImage& image, const Bytes& file, unsigned int level,
                                  unsigned int slice, int usage) {
    const direct::Image expected = direct::image(file, level, slice, usage);
    const AssertionResult same = compare(get_image(image, level, slice, usage), expected);
    if (same) return same;
    return AssertionFailure() << same.message() << " (level " << level << ", slice " << slice << ", usage "
                              << usage << ", expected end " << static_cast<int>(expected.end) << ")";
}

AssertionResult fields_are(const vBasisImage& image, const direct::Analysis& analysis) {
    if (image.getWidth() == analysis.width && image.getHeight() == analysis.height &&
        image.getNumSlices() == analysis.slices && image.getNumMipLevels() == analysis.levels)
        return AssertionSuccess();
    return AssertionFailure() << image.getWidth() << " x " << image.getHeight() << ", "
                              << image.getNumSlices() << " slices, " << image.getNumMipLevels()
                              << " levels instead of " << analysis.width << " x " << analysis.height << ", "
                              << analysis.slices << " slices, " << analysis.levels << " levels";
}

void expect_like_direct_calls(const Bytes& file) {
    const direct::Analysis expected = direct::analyse(file);
    vBasisImage image;
    hold(image, file);
    EXPECT_TRUE(fields_are(image, expected));
    EXPECT_EQ((image.*basis_private::analysis())(), expected.result);
    EXPECT_TRUE(fields_are(image, expected));
    EXPECT_EQ(image.isValidHeader(), direct::is_valid_header(file));

    std::set<std::pair<unsigned int, unsigned int>> asked = {{0, 0}, {1, 0}, {0, 1}, {255, 0}, {256, 0}};
    const unsigned int levels = static_cast<unsigned int>(expected.levels);
    const unsigned int slices = static_cast<unsigned int>(expected.slices);
    asked.insert({{levels, 0}, {0, slices}, {0xFFFFFFFFu, 0}, {0, 0xFFFFFFFFu}});
    if (slices != 0) {
        for (std::size_t i = 0; i < basis::total_slices(file); ++i)
            asked.insert({basis::get(file, basis::of_slice(file, i, basis::slice::kLevel)),
                          basis::get(file, basis::of_slice(file, i, basis::slice::kImage))});
    }
    for (const auto& [level, slice] : asked) {
        for (const int usage : kUsages) EXPECT_TRUE(like_direct_calls(image, file, level, slice, usage));
    }
    EXPECT_TRUE(fields_are(image, expected)) << "after all the calls";
    EXPECT_EQ(Bytes(image.getBasisFileRawData(), image.getBasisFileRawData() + image.getBasisFileSize()),
              file);
}

}  // namespace basis_check
