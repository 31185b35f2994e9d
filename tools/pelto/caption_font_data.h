// A TrueType font; the build makes the source from the font's file.
#ifndef PELTO_TOOL_CAPTION_FONT_DATA_H
#define PELTO_TOOL_CAPTION_FONT_DATA_H

extern const unsigned char caption_font_data[];

#endif
