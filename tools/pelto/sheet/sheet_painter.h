// SPDX-License-Identifier: Apache-2.0
// A contact sheet drawn into a PNG file.
#ifndef PELTO_TOOL_SHEET_SHEET_PAINTER_H
#define PELTO_TOOL_SHEET_SHEET_PAINTER_H

#include <string>

#include "sheet/CaptionFont.h"
#include "sheet/sheet_layout.h"

/// Draws the sheet from top to bottom; in memory are a few of its rows and the textures in them. A GLContext
/// must be current. Throws std::runtime_error where that fails; there is then no file.
void paint_sheet(const Sheet& sheet, const CaptionFont& font, double exposure, const std::string& path);

#endif
