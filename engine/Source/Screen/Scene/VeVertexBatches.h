#pragma once
// The fixed geometry every OpenGL draw uses: the screen quad (-1 to 1 in x and y, z 0, v 0 at the
// top row of a surface) and the six faces of the cube from -1 to 1. Attribute locations: 0
// position (3 floats), 1 texture coordinate (2 floats), 2 normal (3 floats), 3 face number (one
// integer). The buffers are made on first use and live until Release, which the screen calls
// before its OpenGL context goes away.
#include <array>

class VeTexture;

// One vertex of the fixed geometry: position and texture coordinate.
struct VeCorner {
    float x, y, z, u, v;
};

class VeVertexBatches {
public:
    // The geometry itself, for batches that place copies of it (VeFaceBatch).
    static const std::array<VeCorner, 6>& QuadCorners();
    static const std::array<VeCorner, 6>& FaceCorners(int face);
    static const std::array<float, 3>& FaceNormal(int face);

    // Draws the quad as two triangles, with the texture's first face-map entry bound when given.
    static void DrawQuad(const VeTexture* texture);
    // Draws one cube face (0 to 5); a texture is bound through its face map (VeTexture::SlotForFace).
    static void DrawBlockFace(int face, const VeTexture* texture);
    static void PrepareQuad();
    static void PrepareBlockFaces();
    static void Release();
};
