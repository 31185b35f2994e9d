// SPDX-License-Identifier: Apache-2.0
// The images of a DDS file, as vDDSImage gives them, that go onto a sheet.
#ifndef PELTO_TOOL_SHEET_SHEET_LOADED_H
#define PELTO_TOOL_SHEET_SHEET_LOADED_H

#include "sheet/SheetFile.h"

/// As read_sheet_file. Memory that cannot be had is left to std::bad_alloc.
SheetFile read_sheet_loaded(TextureFile& file, const SheetChoice& choice, int max_extent);

#endif
