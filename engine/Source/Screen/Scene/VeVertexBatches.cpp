#include "Screen/Scene/VeVertexBatches.h"

#include "Screen/Surface/VeTexture.h"

#include <GL/glew.h>

#include <array>

namespace {

// One vertex array with its four attribute buffers.
struct Batch {
    GLuint vertexArray = 0;
    std::array<GLuint, 4> buffers{};

    bool Ready() const { return vertexArray != 0; }

    void Create(const std::array<VeCorner, 6>& vertices, const std::array<float, 3>& normal,
                GLint faceNumber) {
        std::array<float, 18> positions{};
        std::array<float, 12> uvs{};
        std::array<float, 18> normals{};
        std::array<GLint, 6> faces{};
        for (size_t i = 0; i < 6; ++i) {
            positions[i * 3] = vertices[i].x;
            positions[i * 3 + 1] = vertices[i].y;
            positions[i * 3 + 2] = vertices[i].z;
            uvs[i * 2] = vertices[i].u;
            uvs[i * 2 + 1] = vertices[i].v;
            normals[i * 3] = normal[0];
            normals[i * 3 + 1] = normal[1];
            normals[i * 3 + 2] = normal[2];
            faces[i] = faceNumber;
        }
        glGenVertexArrays(1, &vertexArray);
        glBindVertexArray(vertexArray);
        glGenBuffers(4, buffers.data());
        auto upload = [&](int index, const void* data, GLsizeiptr size) {
            glBindBuffer(GL_ARRAY_BUFFER, buffers[index]);
            glBufferData(GL_ARRAY_BUFFER, size, data, GL_STATIC_DRAW);
        };
        upload(0, positions.data(), sizeof(positions));
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        upload(1, uvs.data(), sizeof(uvs));
        glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
        upload(2, normals.data(), sizeof(normals));
        glVertexAttribPointer(2, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        upload(3, faces.data(), sizeof(faces));
        glVertexAttribIPointer(3, 1, GL_INT, 0, nullptr);
        for (GLuint location = 0; location < 4; ++location) {
            glEnableVertexAttribArray(location);
        }
        glBindVertexArray(0);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }

    void Draw() const {
        glBindVertexArray(vertexArray);
        glDrawArrays(GL_TRIANGLES, 0, 6);
        glBindVertexArray(0);
    }

    void Destroy() {
        if (vertexArray != 0) {
            glDeleteBuffers(4, buffers.data());
            glDeleteVertexArrays(1, &vertexArray);
        }
        vertexArray = 0;
        buffers = {};
    }
};

// Process-lifetime geometry shared by every draw on the main thread's context.
Batch quad;
std::array<Batch, 6> blockFaces;

constexpr std::array<VeCorner, 6> kQuad{{
    {1, 1, 0, 1, 0},
    {-1, -1, 0, 0, 1},
    {-1, 1, 0, 0, 0},
    {1, 1, 0, 1, 0},
    {1, -1, 0, 1, 1},
    {-1, -1, 0, 0, 1},
}};

constexpr std::array<std::array<float, 3>, 6> kFaceNormals{{
    {0, 0, 1},
    {0, 0, -1},
    {-1, 0, 0},
    {1, 0, 0},
    {0, -1, 0},
    {0, 1, 0},
}};

constexpr std::array<std::array<VeCorner, 6>, 6> kFaces{{
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

} // namespace

const std::array<VeCorner, 6>& VeVertexBatches::QuadCorners() {
    return kQuad;
}

const std::array<VeCorner, 6>& VeVertexBatches::FaceCorners(int face) {
    return kFaces[static_cast<size_t>(face >= 0 && face < 6 ? face : 0)];
}

const std::array<float, 3>& VeVertexBatches::FaceNormal(int face) {
    return kFaceNormals[static_cast<size_t>(face >= 0 && face < 6 ? face : 0)];
}

void VeVertexBatches::PrepareQuad() {
    if (!quad.Ready()) {
        quad.Create(kQuad, {0, 0, 1}, 0);
    }
}

void VeVertexBatches::PrepareBlockFaces() {
    for (int face = 0; face < 6; ++face) {
        if (!blockFaces[face].Ready()) {
            blockFaces[face].Create(kFaces[face], kFaceNormals[face], face);
        }
    }
}

void VeVertexBatches::DrawQuad(const VeTexture* texture) {
    PrepareQuad();
    if (texture != nullptr) {
        glBindTexture(GL_TEXTURE_2D, texture->names[texture->faceMap.empty() ? 0 : texture->faceMap[0]]);
    }
    quad.Draw();
}

void VeVertexBatches::DrawBlockFace(int face, const VeTexture* texture) {
    if (face < 0 || face >= 6) {
        return;
    }
    PrepareBlockFaces();
    if (texture != nullptr) {
        glBindTexture(GL_TEXTURE_2D, texture->BlockFaceName(face));
    }
    blockFaces[face].Draw();
}

void VeVertexBatches::Release() {
    quad.Destroy();
    for (Batch& face : blockFaces) {
        face.Destroy();
    }
}
