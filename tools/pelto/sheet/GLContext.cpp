// SPDX-License-Identifier: Apache-2.0

#include "sheet/GLContext.h"

#include <cstdio>
#include <dlfcn.h>
#include <epoxy/egl.h>
#include <epoxy/gl.h>
#include <initializer_list>
#include <stdexcept>

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error("there is no OpenGL to draw with: " + what +
                             ". On Debian, install libegl1, libopengl0 and libgl1-mesa-dri");
}

// libepoxy ends the process where it finds none of the libraries.
void require_one_of(std::initializer_list<const char*> libraries) {
    for (const char* const library : libraries) {
        void* const handle = ::dlopen(library, RTLD_LAZY | RTLD_LOCAL);
        if (!handle) continue;
        ::dlclose(handle);
        return;
    }
    fail(std::string(*libraries.begin()) + " cannot be loaded");
}

EGLDisplay display_without_a_window_system() {
    if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless")) {
        fail("EGL has no driver that draws without a display");
    }
    return eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
}

EGLContext make_context(EGLDisplay display) {
    constexpr EGLint kConfig[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                  EGL_NONE};
    constexpr EGLint kContext[] = {EGL_CONTEXT_MAJOR_VERSION,
                                   3,
                                   EGL_CONTEXT_MINOR_VERSION,
                                   3,
                                   EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                   EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                   EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglBindAPI(EGL_OPENGL_API) || !eglChooseConfig(display, kConfig, &config, 1, &count) || count == 0) {
        return EGL_NO_CONTEXT;
    }
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, kContext);
    if (context == EGL_NO_CONTEXT) return context;
    if (eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) return context;
    eglDestroyContext(display, context);
    return EGL_NO_CONTEXT;
}

}  // namespace

GLContext::GLContext() {
    require_one_of({"libEGL.so.1"});
    require_one_of({"libOpenGL.so.0", "libGL.so.1"});
    display_ = display_without_a_window_system();
    if (!eglInitialize(display_, nullptr, nullptr)) fail("EGL finds no driver");
    context_ = make_context(display_);
    if (context_ == EGL_NO_CONTEXT) fail("the driver offers no OpenGL 3.3");
}

// The display is left to the process: Mesa's driver, unloaded, would leave memory behind.
GLContext::~GLContext() {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
}

int GLContext::max_texture_size() const {
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return size;
}

void check_gl(const std::string& what) {
    const GLenum error = glGetError();
    if (error == GL_NO_ERROR) return;
    char number[16];
    std::snprintf(number, sizeof number, "0x%04X", error);
    throw std::runtime_error(what + (error == GL_OUT_OF_MEMORY ? ": OpenGL is out of memory"
                                                               : ": OpenGL's error " + std::string(number)));
}
