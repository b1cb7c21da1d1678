#include "Environment/ClientEnvironmentManager/QmFaceBatch.h"

#include <GL/glew.h>
#include <glm/mat3x3.hpp>

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

struct Corner {
    float x, y, z, u, v;
};

// The engine's block faces and screen square, vertex for vertex.
constexpr std::array<std::array<float, 3>, 6> kNormals{{
    {0, 0, 1},
    {0, 0, -1},
    {-1, 0, 0},
    {1, 0, 0},
    {0, -1, 0},
    {0, 1, 0},
}};

constexpr std::array<std::array<Corner, 6>, 6> kCube{{
    {{{-1, 1, 1, 0, 0},
      {-1, -1, 1, 0, 1},
      {1, -1, 1, 1, 1},
      {1, 1, 1, 1, 0},
      {-1, 1, 1, 0, 0},
      {1, -1, 1, 1, 1}}},
    {{{1, 1, -1, 1, 0},
      {-1, -1, -1, 0, 1},
      {-1, 1, -1, 0, 0},
      {1, 1, -1, 1, 0},
      {1, -1, -1, 1, 1},
      {-1, -1, -1, 0, 1}}},
    {{{-1, -1, -1, 0, 1},
      {-1, -1, 1, 1, 1},
      {-1, 1, 1, 1, 0},
      {-1, -1, -1, 0, 1},
      {-1, 1, 1, 1, 0},
      {-1, 1, -1, 0, 0}}},
    {{{1, 1, 1, 1, 0},
      {1, -1, -1, 0, 1},
      {1, 1, -1, 0, 0},
      {1, -1, -1, 0, 1},
      {1, 1, 1, 1, 0},
      {1, -1, 1, 1, 1}}},
    {{{1, -1, 1, 1, 0},
      {-1, -1, -1, 0, 1},
      {1, -1, -1, 1, 1},
      {1, -1, 1, 1, 0},
      {-1, -1, 1, 0, 0},
      {-1, -1, -1, 0, 1}}},
    {{{1, 1, 1, 1, 1},
      {1, 1, -1, 1, 0},
      {-1, 1, -1, 0, 0},
      {1, 1, 1, 1, 1},
      {-1, 1, -1, 0, 0},
      {-1, 1, 1, 0, 1}}},
}};

constexpr std::array<Corner, 6> kSquare{{
    {1, 1, 0, 1, 0},
    {-1, -1, 0, 0, 1},
    {-1, 1, 0, 0, 0},
    {1, 1, 0, 1, 0},
    {1, -1, 0, 1, 1},
    {-1, -1, 0, 0, 1},
}};

} // namespace

QmFaceBatch::~QmFaceBatch() {
    Release();
}

void QmFaceBatch::Release() {
    if (buffer != 0) {
        glDeleteBuffers(1, &buffer);
        buffer = 0;
    }
    if (vertexArray != 0) {
        glDeleteVertexArrays(1, &vertexArray);
        vertexArray = 0;
    }
}

void QmFaceBatch::Clear() {
    faces.clear();
    ranges.clear();
}

void QmFaceBatch::AddCubeFace(const glm::mat4& model, int face, unsigned int texture) {
    if (face >= 0 && face < 6) {
        Add(model, face, texture, false);
    }
}

void QmFaceBatch::AddSquare(const glm::mat4& model, unsigned int texture) {
    Add(model, 0, texture, true);
}

void QmFaceBatch::Add(const glm::mat4& model, int face, unsigned int texture, bool square) {
    Face& added = faces.emplace_back();
    added.texture = texture;
    added.order = static_cast<uint32_t>(faces.size());
    const std::array<Corner, 6>& corners = square ? kSquare : kCube[static_cast<size_t>(face)];
    const std::array<float, 3>& n = kNormals[static_cast<size_t>(face)];
    const glm::vec3 normal = glm::mat3(model) * glm::vec3(n[0], n[1], n[2]);
    for (size_t i = 0; i < corners.size(); ++i) {
        const glm::vec4 p = model * glm::vec4(corners[i].x, corners[i].y, corners[i].z, 1.0f);
        added.vertices[i] = {
            {p.x, p.y, p.z}, {corners[i].u, corners[i].v}, {normal.x, normal.y, normal.z}, face};
    }
}

const std::vector<QmFaceBatch::Range>& QmFaceBatch::Upload() {
    ranges.clear();
    if (faces.empty()) {
        return ranges;
    }
    std::sort(faces.begin(), faces.end(), [](const Face& a, const Face& b) {
        return a.texture != b.texture ? a.texture < b.texture : a.order < b.order;
    });
    staging.clear();
    staging.reserve(faces.size() * 6);
    for (const Face& face : faces) {
        if (ranges.empty() || ranges.back().texture != face.texture) {
            ranges.push_back({face.texture, static_cast<int32_t>(staging.size()), 0});
        }
        staging.insert(staging.end(), std::begin(face.vertices), std::end(face.vertices));
        ranges.back().count += 6;
    }
    if (vertexArray == 0) {
        glGenVertexArrays(1, &vertexArray);
        glGenBuffers(1, &buffer);
        glBindVertexArray(vertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, buffer);
        const GLsizei stride = sizeof(Vertex);
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride,
                              reinterpret_cast<void*>(offsetof(Vertex, position)));
        glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride,
                              reinterpret_cast<void*>(offsetof(Vertex, uv)));
        glVertexAttribPointer(2, 3, GL_FLOAT, GL_FALSE, stride,
                              reinterpret_cast<void*>(offsetof(Vertex, normal)));
        glVertexAttribIPointer(3, 1, GL_INT, stride, reinterpret_cast<void*>(offsetof(Vertex, face)));
        for (GLuint location = 0; location < 4; ++location) {
            glEnableVertexAttribArray(location);
        }
        glBindVertexArray(0);
    }
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(staging.size() * sizeof(Vertex)), staging.data(),
                 GL_STREAM_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    return ranges;
}

void QmFaceBatch::Draw(const Range& range) const {
    if (vertexArray == 0 || range.count <= 0) {
        return;
    }
    glBindTexture(GL_TEXTURE_2D, range.texture);
    glBindVertexArray(vertexArray);
    glDrawArrays(GL_TRIANGLES, range.first, range.count);
    glBindVertexArray(0);
}
