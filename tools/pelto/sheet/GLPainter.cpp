// SPDX-License-Identifier: Apache-2.0

#include "sheet/GLPainter.h"

#include <cmath>
#include <epoxy/gl.h>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "sheet/GLContext.h"

namespace {

// One triangle that covers everything.
constexpr char kVertexShader[] = R"(#version 330 core
void main() {
    gl_Position = vec4(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0, 0.0, 1.0);
}
)";

constexpr char kFragmentShader[] = R"(#version 330 core
uniform sampler2D image;
uniform int first_row;
uniform int view;
uniform float scale;
out vec4 shown;

// A comparison with NaN is false.
float within_0_and_1(float x) { return x > 0.0 ? min(x, 1.0) : 0.0; }

// 0 to infinity become 0 to 1.
float compressed(float light) { return light > 0.0 ? 1.0 / (1.0 + 1.0 / light) : 0.0; }

float srgb(float light) {
    return light <= 0.0031308 ? light * 12.92 : 1.055 * pow(light, 1.0 / 2.4) - 0.055;
}

float tone(float light) { return srgb(compressed(light * scale)); }

float ground(ivec2 texel) {
    int from_edge = min(texel.y, textureSize(image, 0).y - 1 - texel.y);
    return ((texel.x >> 3) + (from_edge >> 3)) % 2 == 0 ? 102.0 / 255.0 : 153.0 / 255.0;
}

void main() {
    ivec2 texel = ivec2(gl_FragCoord.xy) + ivec2(0, first_row);
    vec4 value = texelFetch(image, texel, 0);
    vec3 colour = value.rgb;
    if (view == 1) colour = colour * 0.5 + 0.5;
    if (view == 2) colour = vec3(tone(colour.r), tone(colour.g), tone(colour.b));
    shown = vec4(mix(vec3(ground(texel)), colour, within_0_and_1(value.a)), 1.0);
}
)";
static_assert(static_cast<int>(View::kSigned) == 1 && static_cast<int>(View::kHDR) == 2);

GLuint compiled(GLenum kind, const char* source) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
}

GLuint linked(std::initializer_list<GLuint> shaders) {
    const GLuint program = glCreateProgram();
    for (const GLuint shader : shaders) {
        glAttachShader(program, shader);
        glDeleteShader(shader);
    }
    glLinkProgram(program);
    GLint done = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &done);
    if (done) return program;
    char log[1024] = "";
    glGetProgramInfoLog(program, sizeof log, nullptr, log);
    throw std::runtime_error(std::string("OpenGL does not take the shaders: ") + log);
}

}  // namespace

GLPainter::GLPainter(int width, int rows, double exposure)
    : program_(
          linked({compiled(GL_VERTEX_SHADER, kVertexShader), compiled(GL_FRAGMENT_SHADER, kFragmentShader)})),
      scale_(static_cast<float>(std::exp2(exposure))) {
    glGenVertexArrays(1, &vertices_);
    glBindVertexArray(vertices_);
    glGenRenderbuffers(1, &target_);
    glBindRenderbuffer(GL_RENDERBUFFER, target_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width, rows);
    glGenFramebuffers(1, &framebuffer_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, target_);
    check_gl("nothing can be drawn " + std::to_string(width) + " pixels wide");
}

GLPainter::~GLPainter() {
    glDeleteFramebuffers(1, &framebuffer_);
    glDeleteRenderbuffers(1, &target_);
    glDeleteVertexArrays(1, &vertices_);
    glDeleteProgram(program_);
}

const std::vector<std::uint8_t>& GLPainter::draw(const GLTexture& texture, const PixelData& pixels,
                                                 int first_row, int rows) {
    glViewport(0, 0, pixels.width, rows);
    glUseProgram(program_);
    glUniform1i(glGetUniformLocation(program_, "first_row"), first_row);
    glUniform1i(glGetUniformLocation(program_, "view"), static_cast<int>(view_of(pixels.format)));
    glUniform1f(glGetUniformLocation(program_, "scale"), scale_);
    glBindTexture(GL_TEXTURE_2D, texture.name());
    glDrawArrays(GL_TRIANGLES, 0, 3);
    drawn_.resize(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(rows) * 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, pixels.width, rows, GL_RGBA, GL_UNSIGNED_BYTE, drawn_.data());
    check_gl("a texture cannot be drawn");
    return drawn_;
}
