// SPDX-License-Identifier: Apache-2.0
// OpenGL without a window.
#ifndef PELTO_TOOL_SHEET_GL_CONTEXT_H
#define PELTO_TOOL_SHEET_GL_CONTEXT_H

#include <string>

/// An OpenGL 3.3 context without a display, current in the thread that made it, for as long as it lives.
class GLContext {
public:
    /// Throws std::runtime_error, which says what is missing and what to install.
    GLContext();
    ~GLContext();
    GLContext(const GLContext&) = delete;
    GLContext& operator=(const GLContext&) = delete;

    /// The most texels across and down a texture.
    int max_texture_size() const;

private:
    void* display_;
    void* context_;
};

/// Throws std::runtime_error with `what` where OpenGL has found an error since the last call.
void check_gl(const std::string& what);

#endif
