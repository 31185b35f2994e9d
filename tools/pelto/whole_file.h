// Files that appear whole or not at all.
#ifndef PELTO_TOOL_WHOLE_FILE_H
#define PELTO_TOOL_WHOLE_FILE_H

#include <string>

/// Writes `bytes` beside `path` and gives the complete file that name; a file of that name is replaced.
/// Throws std::runtime_error, which says what went wrong; the file of that name is then as it was.
void write_whole_file(const std::string& path, const std::string& bytes);

#endif
