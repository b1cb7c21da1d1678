#pragma once
// Cube faces and flat squares gathered into one vertex buffer and drawn with one draw call per
// texture. Each face is placed in world units on the CPU (its model matrix applied to the shared
// cube and square geometry), so a whole pass of opaque cubes costs as many draws as it has
// textures instead of one per face; the shaders then take the identity as model matrix. The
// vertex layout is the engine's: position, texture coordinate, normal, face number.
// Needs the screen's OpenGL context; the buffers are made on first use.
#include <glm/mat4x4.hpp>

#include <cstdint>
#include <vector>

class QmFaceBatch {
public:
    struct Range {
        unsigned int texture = 0;
        int32_t first = 0;
        int32_t count = 0;
    };

    QmFaceBatch() = default;
    ~QmFaceBatch();
    QmFaceBatch(const QmFaceBatch&) = delete;
    QmFaceBatch& operator=(const QmFaceBatch&) = delete;

    void Clear();
    // Face 0 to 5 of the cube from -1 to 1 (front, back, left, right, bottom, top).
    void AddCubeFace(const glm::mat4& model, int face, unsigned int texture);
    // The square from -1 to 1 in the plane z = 0, facing +z.
    void AddSquare(const glm::mat4& model, unsigned int texture);
    bool Empty() const { return faces.empty(); }
    size_t FaceCount() const { return faces.size(); }

    // Uploads the faces sorted by texture and returns one range per texture.
    const std::vector<Range>& Upload();
    // Binds the range's texture on unit 0 and draws it.
    void Draw(const Range& range) const;
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

    void Add(const glm::mat4& model, int face, unsigned int texture, bool square);

    std::vector<Face> faces;
    std::vector<Vertex> staging;
    std::vector<Range> ranges;
    unsigned int vertexArray = 0;
    unsigned int buffer = 0;
};
