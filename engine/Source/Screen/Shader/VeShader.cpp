#include "Screen/Shader/VeShader.h"

#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

#include <GL/glew.h>
#include <glm/gtc/type_ptr.hpp>

#include <algorithm>
#include <vector>

namespace {


std::string ReadSource(const std::string& path, const char* missingMessage) {
    std::vector<std::string> lines;
    if (!IsDirectory(path) && ReadTextLines(path, lines)) {
        std::string text;
        for (const auto& line : lines) {
            text += line + "\n";
        }
        return text;
    }
    Log(missingMessage, path.c_str());
    return std::string();
}

void Compile(GLuint shader, const std::string& path, const std::string& source) {
    Log("Compiling shader : %s\n", path.c_str());
    const char* text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint status = GL_FALSE;
    GLint logLength = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &status);
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &logLength);
    if (status != GL_TRUE) {
        std::string log(static_cast<size_t>(std::max(logLength, 1)), '\0');
        glGetShaderInfoLog(shader, static_cast<GLsizei>(log.size()), nullptr, log.data());
        Log("%s", log.c_str());
    }
}

} // namespace

unsigned int VeShader::LoadProgram(const std::string& vertexPath, const std::string& fragmentPath) {
    GLuint vertexShader = glCreateShader(GL_VERTEX_SHADER);
    GLuint fragmentShader = glCreateShader(GL_FRAGMENT_SHADER);
    std::string vertexSource = ReadSource(vertexPath, "Vertex Shader not found: %s\n");
    std::string fragmentSource = ReadSource(fragmentPath, "Fragment Shader not found: %s\n");
    Compile(vertexShader, vertexPath, vertexSource);
    Compile(fragmentShader, fragmentPath, fragmentSource);

    Log("Linking program\n");
    GLuint program = glCreateProgram();
    glAttachShader(program, vertexShader);
    glAttachShader(program, fragmentShader);
    glLinkProgram(program);
    GLint status = GL_FALSE;
    GLint logLength = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &logLength);
    std::string log(static_cast<size_t>(std::max(logLength, 1)), '\0');
    glGetProgramInfoLog(program, static_cast<GLsizei>(log.size()), nullptr, log.data());
    Log("%s\n", log.c_str());
    glDetachShader(program, vertexShader);
    glDetachShader(program, fragmentShader);
    glDeleteShader(vertexShader);
    glDeleteShader(fragmentShader);
    return program;
}

VeShader::VeShader(const std::string& vertexPath, const std::string& fragmentPath)
    : program(LoadProgram(vertexPath, fragmentPath)) {}

VeShader::~VeShader() {
    if (program != 0) {
        glDeleteProgram(program);
    }
}

void VeShader::RegisterUniform(const std::string& name) {
    uniforms.Register(name, [this](const std::string& uniform) {
        return static_cast<int32_t>(glGetUniformLocation(program, uniform.c_str()));
    });
}

void VeShader::Use() const {
    glUseProgram(program);
}

int32_t VeShader::Location(const std::string& name) const {
    int32_t location = uniforms.Find(name);
    VE_ASSERT(location != VeUniformTable::kUnregistered);
    return location;
}

void VeShader::SetMat4(const std::string& name, const glm::mat4& value) const {
    glUniformMatrix4fv(Location(name), 1, GL_FALSE, glm::value_ptr(value));
}

void VeShader::SetInt(const std::string& name, int32_t value) const {
    glUniform1i(Location(name), value);
}

void VeShader::SetFloat(const std::string& name, float value) const {
    glUniform1f(Location(name), value);
}

void VeShader::SetVec2(const std::string& name, float x, float y) const {
    glUniform2f(Location(name), x, y);
}

void VeShader::SetVec3(const std::string& name, float x, float y, float z) const {
    glUniform3f(Location(name), x, y, z);
}
