// SPDX-License-Identifier: Apache-2.0

#include "sheet/SheetFile.h"

#include <new>
#include <stdexcept>

#include "sheet/sheet_basis.h"
#include "sheet/sheet_dds.h"
#include "sheet/sheet_loaded.h"

namespace {

// Of a kind that is not shown.
[[noreturn]] void refuse(TextureFile& file) {
    const TextureBytes bytes = file.bytes();
    const vTextureInfo info = vTextureInfo::ReadBuffer(bytes->data(), bytes->size());
    throw std::runtime_error(info.Described() ? info.check.sentence : info.problem.sentence);
}

}  // namespace

SheetFile read_sheet_file(TextureFile& file, const SheetChoice& choice, int max_extent) {
    try {
        switch (file.promise().container) {
            case vTextureInfo::eBasis:
                return read_sheet_basis(file, choice, max_extent);
            case vTextureInfo::eDDS:
                return choice.as_loaded || choice.flip ? read_sheet_loaded(file, choice, max_extent)
                                                       : read_sheet_dds(file, choice, max_extent);
            case vTextureInfo::eKTX2:
            case vTextureInfo::eNoContainer:
                break;
        }
        refuse(file);
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("its pixels do not fit into memory");
    }
}
