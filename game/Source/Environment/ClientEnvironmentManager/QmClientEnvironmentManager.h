#pragma once
// The world model plus everything that draws the current map: the block art at every size, the
// static 2D layer (background and default blocks), the animated fire and the colour-cycling
// Finish, and, with option "3DGraphics", a lit 3D view of the same map with a shadow map, a
// backdrop and a border ring around it.
//
// Contract:
// - The coordinator runs the world frame in the editor and race scenes: Update once, then one pass
//   (two with 3D and shadows: the shadow pass first) of BeginPass, its own layer (the editor's
//   cursor, the race's entities through DrawBlock and DrawEntity), EndPass; then, with the default
//   framebuffer bound, ComposeWorld. WorldFrame does all of it around a layer callback.
// - 2D draws onto the screen's overlay; 3D draws into the scene target and leaves the picture on
//   texture unit 1 for the screen's composition. Without OpenGL (the software path) the world is
//   drawn in 2D whatever the option says, and nothing touches OpenGL.
// - Cubes of cells are placed once and reused: SetBlock, ClearMap, SetBlockSize, FillMap, OpenGates
//   and Reload forget the cached placements they affect.
// - The 2D static layer is rebuilt as the next frame begins once something marks it stale (editor
//   changes, OpenGates, entering the editor, a reload, a new block size).
// - What does not move is drawn once in 3D: the backdrop's light (with the shadows of the map's
//   blocks) is baked, and the map's blocks are kept in a shadow map of their own that every shadow
//   pass starts from; both are drawn again as a pass begins when the map's shadow-casting cells,
//   its size, the block size or the shadows option changed.
// - The racer (position, life, ground block), the flip, the options and the scene come from
//   QmWorldViewHost.
#include "Environment/ClientEnvironmentManager/QmCellCache.h"
#include "Environment/ClientEnvironmentManager/QmFinishColour.h"
#include "Environment/ClientEnvironmentManager/QmFireAnimation.h"
#include "Environment/ClientEnvironmentManager/QmPendingCubes.h"
#include "Environment/ClientEnvironmentManager/QmWorldArt.h"
#include "Environment/ClientEnvironmentManager/QmWorldViewHost.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Screen/Scene/VeRenderState.h"

#include <glm/mat4x4.hpp>
#include <glm/vec3.hpp>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class QmBackdrop;
class QmBlockShaders;
class VeScreen;
class VeShader;
class VeShadowMapTarget;
class VeTextureRenderer;
class QmWorldFrontEndLink;

// How a cell's id is drawn in the 3D view.
struct QmCellLook {
    const VeTexture* texture = nullptr;
    bool halfSize = false;
    bool flat = false;
    bool spinning = false;
    bool castsShadow = true;
    bool cacheable = true;
    bool overlay = false;
};

class QmClientEnvironmentManager : public QmCoreEnvironmentManager {
public:
    static constexpr uint32_t kWhite = 0xFFFFFF;
    static constexpr uint32_t kOpaqueWhite = 0xFFFFFFFF;
    static constexpr float kIntroZoom = 7.0f;
    static constexpr int kDefaultNameLine = 9;
    static constexpr int kDefaultTourLine = 117;

    // The stages of PrepareGraphics: the block shaders, the art's textures group by group, the
    // fire's textures, the shadow targets, the scene renderer, the backdrop.
    static constexpr int kGraphicsStages = QmWorldArt::kTextureGroups + 5;

    // Takes the default names from the language, runs InitWorld (the first map of the first tour),
    // takes the art (decoded beforehand when given, else loaded here) and makes the static layer.
    // The OpenGL side (shaders, textures, the off-screen targets) waits for PrepareGraphics.
    QmClientEnvironmentManager(VeScreen& screen, QmWorldViewHost& host,
                               QmWorldFrontEndLink* frontEnd = nullptr,
                               std::unique_ptr<QmWorldArt> decodedArt = nullptr);
    ~QmClientEnvironmentManager() override;

    // Makes the block shaders, the art's textures and the off-screen targets, once: every stage not
    // made yet. The first world pass does it when nothing did before; the game makes the stages
    // early, one a frame after its first (PrepareGraphicsStep), so that no frame waits long.
    void PrepareGraphics();
    // Makes the next stage; true while stages remain.
    bool PrepareGraphicsStep();
    bool GraphicsPrepared() const { return graphicsStage >= kGraphicsStages || !glAvailable; }

    // ---- Virtual operations ----
    void SaveMap(bool asNew) override;
    bool ScanWorld() override;
    void ClearMap() override;
    void SetBlockSize(int size) override;
    BlockId RandomColourBlock() override;
    void OpenGates() override;
    void ReportError(const std::string& message) override;
    void SetBlock(int x, int y, BlockId id) override;

    // ---- The world frame ----
    // Once per frame in the editor and race scenes: spin and intro zoom (3D), the finish colour,
    // the fire.
    void Update();
    // 3D is drawn this frame (the option, and OpenGL available); shadows too (not in the editor).
    bool ThreeDActive() const;
    bool ShadowsActive() const;
    int PassCount() const { return ThreeDActive() && ShadowsActive() ? 2 : 1; }
    // Steps 1 and 2 of a pass: targets, state and shader for 3D, then DrawWorld.
    void BeginPass(bool shadowPass);
    // Steps 4 and 5: the pending cubes face by face, then (2D) the decorations.
    void EndPass();
    // The final composition: in 3D the scene is resolved, optionally kept as a snapshot texture
    // and read into the picking image, and the picture to compose under the overlay is bound on
    // unit 1 (the snapshot in the editor after a picking read); in 2D a black texture.
    void ComposeWorld(bool captureSnapshot, bool readPicking);
    // Every pass with the layer drawn between BeginPass and EndPass, then ComposeWorld.
    void WorldFrame(const std::function<void(bool shadowPass)>& layer, bool captureSnapshot = false,
                    bool readPicking = false);

    // ---- Steps of a pass ----
    void ClearPending();
    void SetupPass();
    void PrepareShader();
    void BindShadowMap();
    void DrawWorld();
    void DrawPending();
    void DrawDecorations();
    // One cube (or with flat one square facing the camera) at (column, row) in cells of a grid of
    // placementSize cells (0 or less: mapSize). Flat items are drawn at once, cubes at EndPass.
    void DrawBlock(const VeTexture* texture, bool halfSize, float column, float row, int placementSize,
                   bool flat, bool spinning, bool castsShadow, bool cacheable, float alpha, bool overlay,
                   uint32_t drawColour);
    // An entity with its top-left corner at pixel (x, y): the image on the overlay in 2D (blended
    // when alpha is below 1), a cube with the texture in 3D, drawn in front when overlayWanted and
    // the racer is dead.
    void DrawEntity(const VeSurface* image, const VeTexture* texture, float x, float y, float alpha,
                    bool overlayWanted);
    // Loads map index of the current tour (or of the download cache) and resets the drawing state.
    void Reload(int index, bool fromCache);
    void UpdateFire(int size, bool force);

    // ---- For the coordinator, the editor and the race ----
    // The racer's images at 64, 32 and 16 pixels (with the faces for the cube's other sides) and
    // the cow's images; owned by the caller, kept until the renderer is destroyed.
    void RegisterRacerImages(int size, VeSurface* image, VeSurface* sides);
    void RegisterCowImage(int size, VeSurface* image);
    const VeSurface* RacerImage(int size) const;
    const VeTexture* RacerTexture(int blockSize) const;
    const VeSurface* CowImage(int size) const;
    const VeTexture* CowTexture(int blockSize) const;
    // The static layer is rebuilt on the next frame.
    void MarkStaticLayerStale() { staticLayerStale = true; }
    bool StaticLayerStale() const { return staticLayerStale; }
    // Entering the editor: its camera, and the static layer rebuilt.
    void PrepareEditorView();
    // The cell whose picking colour lies under pixel (x, y) of the last picking image.
    bool CellAtPixel(int x, int y, int& column, int& row) const;
    // The 2D art of a cell id at a block size (as the map shows it outside the race); null for none.
    const VeSurface* CellArt(BlockId id, int size) const;
    // How the 3D view draws a cell id (outside the race); false for ids it does not draw.
    bool CellLook(BlockId id, QmCellLook& look) const;
    // The model matrices computed since construction (cached cells are not counted again).
    int64_t PlacementsComputed() const { return placementsComputed; }
    bool CellCached(int x, int y) const { return cellCache.IsCellValid(x, y); }
    size_t PendingCount() const { return pending.Cubes().size(); }
    // The cubes of the map (border ring and cells) drawn into the kept shadow map at its last
    // drawing; every shadow pass starts from it and adds what moves.
    int64_t MapShadowCubes() const { return mapShadowCubes; }
    // How often the backdrop's light has been baked (when the map, its block size or the shadows
    // option changed).
    int64_t BackdropBakes() const { return backdropBakes; }
    int64_t DrawCalls() const { return drawCalls; }
    bool OpenGLAvailable() const { return glAvailable; }

    QmWorldArt art;
    QmFireAnimation fireFrames;
    QmFinishColour finishColour;
    float spinAngle = 0.0f;
    glm::mat4 spinMatrix{1.0f};
    const float lightAngle = 0.78539816f;
    float cameraZoom = kIntroZoom;
    glm::mat4 cameraViewProjection{1.0f};
    glm::mat4 lightViewProjection{1.0f};
    glm::mat4 shadowBias{1.0f};
    glm::vec3 worldPosition{0.0f, 0.0f, 5.0f};
    glm::vec3 lightPosition{0.0f};
    // Where the camera looks from this frame.
    glm::vec3 eyePosition{0.0f, 0.0f, 7.8f};
    bool confusion = false;
    uint32_t confusionColour = kWhite;
    bool picking = false;
    bool greyScale = false;
    const uint32_t white = kWhite;
    VeSurface staticLayer;
    VeSurface pickingImage;

protected:
    // Last touches to the overlay before the frame is composed; the base does nothing.
    virtual void ComposeOverlay() {}

    VeScreen& screen;
    QmWorldViewHost& host;

private:
    struct ListedDecoration {
        int x;
        int y;
        BlockId id;
    };

    void LoadArt(std::unique_ptr<QmWorldArt> decodedArt);
    void DrawWorld2D();
    void DrawWorld3D();
    void RebuildStaticLayer();
    void DrawBackgrounds();
    // Bakes the backdrop's light again when the map (or what casts shadows on it) changed.
    void BakeBackdrop();
    uint64_t CasterSignature();
    void DrawBackdrop();
    void DrawBorderRing();
    void DrawCells3D();
    // DrawBlock with the faces that lie against neighbouring opaque cubes.
    void PlaceBlock(const VeTexture* texture, bool halfSize, float column, float row, int placementSize,
                    bool flat, bool spinning, bool castsShadow, bool cacheable, float alpha, bool overlay,
                    uint32_t drawColour, uint8_t hiddenFaces);
    // Faces of a default block at map cell (x, y) that touch opaque neighbours or the border ring.
    uint8_t CoveredFaces(int x, int y);
    void RepaintFinish(uint32_t from, uint32_t to);
    uint32_t BackdropColour();
    const VeSurface* Tinted(const VeSurface& background);

    bool glAvailable = false;
    int graphicsStage = 0;
    bool threeDFrame = false;
    bool shadowPass = false;
    bool shadowsThisFrame = false;
    bool staticLayerStale = true;
    VeRenderState renderState;
    QmCellCache cellCache;
    QmPendingCubes pending;
    std::vector<ListedDecoration> listedDecorations;
    std::unique_ptr<QmBlockShaders> shaders;
    std::unique_ptr<VeShadowMapTarget> shadowMap;
    // The map's blocks alone, drawn when the backdrop is baked; shadow passes start from it.
    std::unique_ptr<VeShadowMapTarget> mapShadows;
    bool mapShadowsReady = false;
    // This shadow pass started from mapShadows.
    bool mapInShadowMap = false;
    // DrawWorld is placing the border ring and the map's cells.
    bool placingMap = false;
    int64_t mapShadowCubes = 0;
    int64_t backdropBakes = 0;
    std::unique_ptr<VeTextureRenderer> sceneRenderer;
    std::unique_ptr<VeSurface> blackSurface;
    std::unique_ptr<VeTexture> blackTexture;
    std::unique_ptr<QmBackdrop> backdrop;
    VeSurface snapshot;
    std::unique_ptr<VeTexture> snapshotTexture;
    VeSurface tintedBackground;
    uint32_t layerTint = kWhite;
    std::array<VeSurface*, 3> racerImages{};
    std::array<VeSurface*, 3> racerSides{};
    std::array<std::unique_ptr<VeTexture>, 2> racerTextures;
    std::array<VeSurface*, 3> cowImages{};
    std::array<std::unique_ptr<VeTexture>, 2> cowTextures;
    bool drawingForPicking = false;
    bool backdropPending = false;
    int64_t placementsComputed = 0;
    int64_t drawCalls = 0;
};
