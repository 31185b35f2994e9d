// SPDX-License-Identifier: Apache-2.0
// The images of a .basis file that go onto a sheet.
#ifndef PELTO_TOOL_SHEET_SHEET_BASIS_H
#define PELTO_TOOL_SHEET_SHEET_BASIS_H

#include "sheet/SheetFile.h"

/// As read_sheet_file. Memory that cannot be had is left to std::bad_alloc.
SheetFile read_sheet_basis(TextureFile& file, const SheetChoice& choice, int max_extent);

#endif
