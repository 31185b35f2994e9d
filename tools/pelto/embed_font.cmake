# cmake -D FONT=FILE.ttf -D SOURCE=FILE.cpp -P embed_font.cmake: a source file that holds the font's bytes.
file(READ "${FONT}" bytes HEX)
string(REGEX REPLACE "(................................................................)" "\\1\n" bytes "${bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
file(WRITE "${SOURCE}" "#include \"caption_font_data.h\"\n\nconst unsigned char caption_font_data[] = {\n${bytes}};\n")
