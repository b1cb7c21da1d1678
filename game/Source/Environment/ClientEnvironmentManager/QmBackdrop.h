#pragma once
// The backdrop of the 3D view: the background tiles, one tile per block and lined up with the
// map's cells, on a square 29 units wide behind the map. Its light never changes while the map
// stays the same, so it is baked into a picture of it (with the shadows the map's blocks cast on
// it) and drawn from that picture each frame without a shadow lookup. Only where a moving cube (the
// racer, the ghost, a cow) may throw a shadow on it is a small patch drawn just in front of it with
// the block shader, which looks the shadow up; both give the same colours, so the patches do not
// show as such. The glow, the tint (the confusion colour) and grey apply as everywhere else.
// Needs the screen's OpenGL context.
#include "Environment/ClientEnvironmentManager/QmBlockShaders.h"
#include "Environment/ClientEnvironmentManager/QmWorldArt.h"
#include "Screen/Scene/TextureRenderer/VeColourTarget.h"
#include "Screen/Scene/VeFaceBatch.h"
#include "Screen/Scene/VeRenderState.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Surface/VeTexture.h"

#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

#include <cstdint>
#include <memory>

class QmBackdrop {
public:
    // What the baked picture depends on.
    struct Look {
        int mapSize = 0;
        int blockSize = 0;
        bool shadows = false;
        // Tells apart the arrangements of the cubes that cast shadows on it.
        uint64_t casters = 0;
        bool operator==(const Look&) const = default;
    };
    // The light as the bake sees it; with shadows, the map's blocks alone must be in the shadow
    // map bound on texture unit 1.
    struct Light {
        glm::vec3 position{0.0f};
        // The shadow bias times the light's view-projection.
        glm::mat4 biasedViewProjection{1.0f};
        glm::vec2 shadowMapSize{0.0f};
    };
    // How it is drawn this pass.
    struct Pass {
        glm::mat4 viewProjection{1.0f};
        glm::mat4 biasedLight{1.0f};
        uint32_t drawColour = 0xFFFFFFFFu;
        // Untextured, in the draw colour (the editor's picking image).
        bool untextured = false;
    };

    bool Stale(const Look& look) const { return !baked || look != bakedLook; }
    bool Baked() const { return baked; }
    // Makes the tiled art when the map or block size changed, then draws it with its light into
    // the baked picture. Leaves the picture's framebuffer bound.
    void Bake(const QmWorldArt& art, const Look& look, const Light& light, QmBlockShaders& shaders,
              VeRenderState& state);

    void ClearShadowPatches() { patches.Clear(); }
    // A patch over the part of the backdrop where a cube (its model matrix, not turned) lit from
    // the light's position may throw its shadow.
    void AddShadowPatch(const glm::mat4& cubeModel, const glm::vec3& light);
    size_t ShadowPatchCount() const { return patches.FaceCount(); }
    // The patches with the block shader, then the backdrop from its picture with the unshadowed
    // shader (which the patches hide by lying in front); returns the draw calls made.
    int64_t Draw(const Pass& pass, QmBlockShaders& shaders, VeRenderState& state);

private:
    void MakeArt(const QmWorldArt& art, int mapSize);

    VeSurface art;
    std::unique_ptr<VeTexture> artTexture;
    int artMapSize = 0;
    int artBlockSize = 0;
    VeColourTarget picture;
    bool baked = false;
    Look bakedLook;
    glm::mat4 model{1.0f};
    // The square in its own units with the art (for the bake), in world units with the picture.
    VeFaceBatch bakeSquares;
    VeFaceBatch squares;
    VeFaceBatch patches;
};
