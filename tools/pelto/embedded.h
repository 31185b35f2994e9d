// SPDX-License-Identifier: Apache-2.0
// Files that are part of the command: their bytes, with a zero behind them.
#ifndef PELTO_TOOL_EMBEDDED_H
#define PELTO_TOOL_EMBEDDED_H

extern const unsigned char caption_font_data[];  // a TrueType font
extern const unsigned char library_schema[];     // schemas/texture-library.xsd

#endif
