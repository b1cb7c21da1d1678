#pragma once
// The cubes a pass gathers before drawing them, and the flat items that wait with them. Cubes are
// drawn face by face across all of them; each face is skipped when it lies against another opaque
// cube or is turned away from the viewer (the camera, or in the shadow pass the light, whose side
// is culled). Opaque white textured cubes, and flat squares, are gathered into batches drawn with
// one call per texture; the others (untextured, tinted, two-sided or translucent) are drawn one
// face at a time with their own matrices. Opaque draws are made without blending; translucent
// cubes are drawn last, blended and without depth writes.
// Faces that no shadow reaches (on the cubes' front plane, or turned away from the light) and flat
// squares facing the camera there are drawn with the pass's unshadowed shader when it has one.
#include "Screen/Scene/VeFaceBatch.h"
#include "Screen/Scene/VeRenderState.h"

#include <glm/mat4x4.hpp>
#include <glm/vec3.hpp>

#include <cstdint>
#include <vector>

class VeShader;
class VeTexture;

// One cube waiting to be drawn face by face at the end of the pass.
struct QmPendingBlock {
    glm::mat4 model;
    glm::mat4 mvp;
    glm::mat4 lightMvp;
    const VeTexture* texture = nullptr;
    float alpha = 1.0f;
    int32_t drawColour = -1;
    // Both sides show (the editor cursor).
    bool twoSided = false;
    // Faces known to lie against another opaque cube (bit n: face n), never drawn.
    uint8_t hiddenFaces = 0;
};

class QmPendingCubes {
public:
    // What a pass draws with: the shader in use (the block shader, or in the shadow pass the
    // shadow-map shader, which takes only "MVP" and "textureID"), the view-projection the batches
    // use, the light's (biased for lookups) and where the faces are seen from.
    struct Pass {
        bool shadow = false;
        VeShader* shader = nullptr;
        // The same lighting without the shadow lookup; none in the shadow pass.
        VeShader* unshadowed = nullptr;
        glm::mat4 viewProjection{1.0f};
        glm::mat4 biasedLight{1.0f};
        glm::vec3 viewer{0.0f};
        glm::vec3 light{0.0f};
    };

    void Clear();
    void AddCube(const QmPendingBlock& block) { cubes.push_back(block); }
    void AddSquare(const glm::mat4& model, unsigned int texture);
    // The flat items, then the opaque cubes; returns the draw calls made.
    int64_t DrawOpaque(const Pass& pass, VeRenderState& state);
    int64_t DrawTranslucent(const Pass& pass, VeRenderState& state);
    // Whether a draw with that alpha and colour (0xAARRGGBB) blends with what lies behind it;
    // opaque draws are made without blending.
    static bool Translucent(float alpha, int32_t drawColour) {
        return alpha < 1.0f || (static_cast<uint32_t>(drawColour) >> 24) != 0xFF;
    }
    // Whether no shadow can fall on a face of a one-sided cube: it lies on the front plane, or it is
    // turned away from the pass's light.
    static bool Unshadowed(const QmPendingBlock& block, int face, const Pass& pass);
    // Whether a face of a one-sided cube shows from the pass's viewer.
    static bool FaceShows(const QmPendingBlock& block, int face, const Pass& pass);

    const std::vector<QmPendingBlock>& Cubes() const { return cubes; }

private:
    // Whether a face of a cube is turned to a point (lies in front of the face's plane).
    static bool Faces(const QmPendingBlock& block, int face, const glm::vec3& point);
    static bool Batchable(const QmPendingBlock& block);
    static int64_t DrawBatch(VeFaceBatch& batch, VeShader& shader, const Pass& pass);
    int64_t DrawCubes(const Pass& pass, VeRenderState& state, bool translucent);
    static void UploadUniforms(const QmPendingBlock& block, const Pass& pass);

    std::vector<QmPendingBlock> cubes;
    VeFaceBatch cubeBatch;
    VeFaceBatch frontBatch;
    VeFaceBatch squares;
    VeFaceBatch frontSquares;
};
