// SPDX-License-Identifier: Apache-2.0
// Which files a document or schema may read beside itself.
#ifndef EXTERNAL_FILE_H
#define EXTERNAL_FILE_H

#include <string>

namespace sax {

/// The path that the system identifier means in the file at `base`: a path, absolute or relative to that of
/// `base`, or a URL of a local file. Throws InputError for any other URL.
std::string path_of(const std::string& system_id, const std::string& base);

/// The path without symbolic links. Throws InputError unless it names something below the folder of
/// the file `document`, links resolved there too; an empty `document` is in no folder.
std::string path_below(const std::string& document, const std::string& path);

}  // namespace sax

#endif
