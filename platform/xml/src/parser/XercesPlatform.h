// SPDX-License-Identifier: Apache-2.0
// The parser's process-wide state.
#ifndef XERCES_PLATFORM_H
#define XERCES_PLATFORM_H

#include <memory>

namespace sax {

/// Keeps Xerces-C initialised.
class XercesPlatform {
public:
    /// The one of the process, made on first use. It ends when the library is unloaded, or later when the
    /// last user does. Throws std::runtime_error when Xerces-C cannot be initialised. Any thread may call it.
    static std::shared_ptr<const XercesPlatform> acquire();

    ~XercesPlatform();
    XercesPlatform(const XercesPlatform&) = delete;
    XercesPlatform& operator=(const XercesPlatform&) = delete;

private:
    XercesPlatform();
};

}  // namespace sax

#endif
