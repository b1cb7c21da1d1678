#include "Screen/Scene/VeFaceBatch.h"

#include "Screen/Scene/VeVertexBatches.h"

#include <GL/glew.h>
#include <glm/mat3x3.hpp>

#include <algorithm>
#include <array>
#include <cstddef>

VeFaceBatch::~VeFaceBatch() {
    Release();
}

void VeFaceBatch::Release() {
    if (buffer != 0) {
        glDeleteBuffers(1, &buffer);
        buffer = 0;
    }
    if (vertexArray != 0) {
        glDeleteVertexArrays(1, &vertexArray);
        vertexArray = 0;
    }
}

void VeFaceBatch::Clear() {
    faces.clear();
    ranges.clear();
}

void VeFaceBatch::AddCubeFace(const glm::mat4& model, int face, unsigned int texture) {
    if (face < 0 || face >= 6) {
        return;
    }
    Add(model, face, texture, VeVertexBatches::FaceCorners(face));
}

void VeFaceBatch::AddSquare(const glm::mat4& model, unsigned int texture, int divisions) {
    const int n = std::max(divisions, 1);
    const float step = 2.0f / static_cast<float>(n);
    for (int row = 0; row < n; ++row) {
        for (int column = 0; column < n; ++column) {
            const float left = -1.0f + step * static_cast<float>(column);
            const float bottom = -1.0f + step * static_cast<float>(row);
            AddSquarePart(model, texture, left, bottom, left + step, bottom + step);
        }
    }
}

void VeFaceBatch::AddSquarePart(const glm::mat4& model, unsigned int texture, float left, float bottom,
                                float right, float top) {
    left = std::clamp(left, -1.0f, 1.0f);
    right = std::clamp(right, -1.0f, 1.0f);
    bottom = std::clamp(bottom, -1.0f, 1.0f);
    top = std::clamp(top, -1.0f, 1.0f);
    if (!(right > left && top > bottom)) {
        return;
    }
    // The quad's corners moved into the part; u and v follow x and y as on the whole quad.
    std::array<VeCorner, 6> corners = VeVertexBatches::QuadCorners();
    for (VeCorner& corner : corners) {
        corner.x = corner.x > 0.0f ? right : left;
        corner.y = corner.y > 0.0f ? top : bottom;
        corner.u = (corner.x + 1.0f) * 0.5f;
        corner.v = (1.0f - corner.y) * 0.5f;
    }
    Add(model, 0, texture, corners);
}

void VeFaceBatch::Add(const glm::mat4& model, int face, unsigned int texture,
                      const std::array<VeCorner, 6>& corners) {
    Face& added = faces.emplace_back();
    added.texture = texture;
    added.order = static_cast<uint32_t>(faces.size());
    const std::array<float, 3>& n = VeVertexBatches::FaceNormal(face);
    const glm::vec3 normal = glm::mat3(model) * glm::vec3(n[0], n[1], n[2]);
    for (size_t i = 0; i < 6; ++i) {
        const glm::vec4 p = model * glm::vec4(corners[i].x, corners[i].y, corners[i].z, 1.0f);
        added.vertices[i] = {
            {p.x, p.y, p.z}, {corners[i].u, corners[i].v}, {normal.x, normal.y, normal.z}, face};
    }
}

const std::vector<VeFaceBatch::Range>& VeFaceBatch::Upload() {
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

void VeFaceBatch::Draw(const Range& range) const {
    if (vertexArray == 0 || range.count <= 0) {
        return;
    }
    glBindTexture(GL_TEXTURE_2D, range.texture);
    glBindVertexArray(vertexArray);
    glDrawArrays(GL_TRIANGLES, range.first, range.count);
    glBindVertexArray(0);
}

int64_t VeFaceBatch::DrawAll() const {
    int64_t draws = 0;
    for (const Range& range : ranges) {
        Draw(range);
        ++draws;
    }
    return draws;
}
