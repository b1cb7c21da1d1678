#pragma once
// A shader program built from a vertex and a fragment source file, with a table of the uniforms
// its owner sets. Sources that are missing or fail to compile are logged and the program is built
// anyway (drawing with it then shows nothing). Setting a uniform that was never registered is a
// programming error and fails an assertion. The caller makes the program current (Use) before
// setting uniforms. Needs a current OpenGL context; the destructor deletes the program.
#include "Screen/Shader/VeUniformTable.h"

#include <glm/mat4x4.hpp>

#include <string>

class VeShader {
public:
    VeShader(const std::string& vertexPath, const std::string& fragmentPath);
    ~VeShader();
    VeShader(const VeShader&) = delete;
    VeShader& operator=(const VeShader&) = delete;

    static unsigned int LoadProgram(const std::string& vertexPath, const std::string& fragmentPath);

    void RegisterUniform(const std::string& name);
    void Use() const;
    void SetMat4(const std::string& name, const glm::mat4& value) const;
    void SetInt(const std::string& name, int32_t value) const;
    void SetFloat(const std::string& name, float value) const;
    void SetVec2(const std::string& name, float x, float y) const;
    void SetVec3(const std::string& name, float x, float y, float z) const;

    unsigned int program = 0;
    VeUniformTable uniforms;

private:
    int32_t Location(const std::string& name) const;
};
