#include "sheet_file.h"

#include <new>
#include <stdexcept>

#include "basis_file.h"
#include "sheet_basis.h"
#include "sheet_dds.h"

SheetFile read_sheet_file(const std::string& path, const SheetChoice& choice, int max_extent) {
    try {
        return is_basis(path) ? read_sheet_basis(path, choice, max_extent)
                              : read_sheet_dds(path, choice, max_extent);
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("its pixels do not fit into memory");
    }
}
