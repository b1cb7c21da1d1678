#pragma once
// Cube faces and flat squares gathered into one vertex buffer and drawn with one draw call per
// texture. Each face is placed in world units on the CPU (its model matrix applied to the shared
// geometry of VeVertexBatches: the cube from -1 to 1 and the square in the plane z = 0), so a
// pass of many cubes costs as many draws as it has textures instead of one per face; the shaders
// then take the identity as model matrix. Vertex layout: position, texture coordinate, normal (the
// face's, turned by the model matrix but not normalised), face number.
// A batch may be drawn any number of times after Upload until it is cleared.
// Needs the screen's OpenGL context; the buffers are made by the first Upload.
#include "Screen/Scene/VeVertexBatches.h"

#include <glm/mat4x4.hpp>

#include <array>
#include <cstdint>
#include <vector>

class VeFaceBatch {
public:
    struct Range {
        unsigned int texture = 0;
        int32_t first = 0;
        int32_t count = 0;
    };

    VeFaceBatch() = default;
    ~VeFaceBatch();
    VeFaceBatch(const VeFaceBatch&) = delete;
    VeFaceBatch& operator=(const VeFaceBatch&) = delete;

    void Clear();
    // Face 0 to 5 of the cube (front, back, left, right, bottom, top); other numbers add nothing.
    void AddCubeFace(const glm::mat4& model, int face, unsigned int texture);
    // The square from -1 to 1 in the plane z = 0, facing +z, cut into divisions x divisions equal
    // squares that share its texture (so that what the shaders work out per vertex follows a large
    // square closely).
    void AddSquare(const glm::mat4& model, unsigned int texture, int divisions = 1);
    // The part of that square from (left, bottom) to (right, top), in its own coordinates (kept
    // within -1 to 1), with the texture coordinates it has there; nothing when the part is empty.
    void AddSquarePart(const glm::mat4& model, unsigned int texture, float left, float bottom, float right,
                       float top);
    bool Empty() const { return faces.empty(); }
    size_t FaceCount() const { return faces.size(); }

    // Uploads the faces sorted by texture (in the order they were added within a texture) and
    // returns one range per texture.
    const std::vector<Range>& Upload();
    // Binds the range's texture on the active unit and draws it.
    void Draw(const Range& range) const;
    // Draws every range; returns the draw calls made.
    int64_t DrawAll() const;
    void Release();

private:
    struct Vertex {
        float position[3];
        float uv[2];
        float normal[3];
        int32_t face;
    };
    struct Face {
        unsigned int texture;
        uint32_t order;
        Vertex vertices[6];
    };
    void Add(const glm::mat4& model, int face, unsigned int texture, const std::array<VeCorner, 6>& corners);

    std::vector<Face> faces;
    std::vector<Vertex> staging;
    std::vector<Range> ranges;
    unsigned int vertexArray = 0;
    unsigned int buffer = 0;
};
