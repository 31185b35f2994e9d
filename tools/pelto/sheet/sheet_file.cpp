#include "sheet/sheet_file.h"

#include <new>
#include <stdexcept>

#include "sheet/sheet_basis.h"
#include "sheet/sheet_dds.h"
#include "texture/basis_file.h"

SheetFile read_sheet_file(const std::string& path, const SheetChoice& choice, int max_extent) {
    try {
        return is_basis(path) ? read_sheet_basis(path, choice, max_extent)
                              : read_sheet_dds(path, choice, max_extent);
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("its pixels do not fit into memory");
    }
}
