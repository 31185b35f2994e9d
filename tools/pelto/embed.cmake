# SPDX-License-Identifier: Apache-2.0
# cmake -D FILE=... -D NAME=... -D SOURCE=FILE.cpp -P embed.cmake: a source file with the bytes of a file, and a zero
# behind them, as the array NAME of embedded.h.
file(READ "${FILE}" bytes HEX)
string(REGEX REPLACE "(................................................................)" "\\1\n" bytes "${bytes}00")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
file(WRITE "${SOURCE}" "#include \"embedded.h\"\n\nconst unsigned char ${NAME}[] = {\n${bytes}};\n")
