#include "Environment/ClientEnvironmentManager/QmClientEnvironmentManager.h"

#include "Environment/ClientEnvironmentManager/QmBackdrop.h"
#include "Environment/ClientEnvironmentManager/QmBlockShaders.h"
#include "Environment/ClientEnvironmentManager/QmWorldSpace.h"
#include "Environment/CoreEnvironmentManager/QmWorldFrontEndLink.h"
#include "Platform/VeMessageBox.h"
#include "Platform/VeRandom.h"
#include "Screen/Scene/TextureRenderer/VeShadowMapTarget.h"
#include "Screen/Scene/TextureRenderer/VeTextureRenderer.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr float kFullTurn = 6.2831855f;
constexpr float kSpinSpeed = 3.0f;
// The colours of the coloured blocks 1 to 5, which a confused backdrop takes on.
constexpr std::array<uint32_t, 5> kBlockColours = {0xE99209, 0x1678D6, 0x1ADE0C, 0xE6D514, 0xE1120C};

// The stages of PrepareGraphics in order, the art's texture groups after the shaders. On the
// software renderer each takes at most some 70 ms, the scene renderer's multisampled target most.
enum GraphicsStage : int {
    kShaderStage,
    kFirstArtStage,
    kFireStage = kFirstArtStage + QmWorldArt::kTextureGroups,
    kShadowStage,
    kSceneStage,
    kBackdropStage,
    kStageCount
};
static_assert(kStageCount == QmClientEnvironmentManager::kGraphicsStages);

// Slot of a registered image for a size: 64, 32, 16.
int SizeSlot(int size) {
    return size == 32 ? 1 : (size == 16 ? 2 : 0);
}

int32_t PickingColour(int column, int row) {
    return static_cast<int32_t>(0xFF000000u | static_cast<uint32_t>(10 * column) << 16 |
                                static_cast<uint32_t>(10 * row) << 8);
}

uint32_t Multiply(uint32_t pixel, uint32_t tint) {
    uint32_t result = pixel & 0xFF000000u;
    for (int shift : {16, 8, 0}) {
        const uint32_t channel = ((pixel >> shift) & 0xFF) * ((tint >> shift) & 0xFF) / 255;
        result |= channel << shift;
    }
    return result;
}

} // namespace

QmClientEnvironmentManager::QmClientEnvironmentManager(VeScreen& screenToDrawOn, QmWorldViewHost& viewHost,
                                                       QmWorldFrontEndLink* frontEndLink,
                                                       std::unique_ptr<QmWorldArt> decodedArt)
    : screen(screenToDrawOn), host(viewHost) {
    SetFrontEndLink(frontEndLink);
    if (frontEndLink != nullptr) {
        const std::string tour = frontEndLink->GetLine(kDefaultTourLine);
        const std::string map = frontEndLink->GetLine(kDefaultNameLine);
        if (!tour.empty()) {
            defaultTourName = tour;
        }
        if (!map.empty()) {
            defaultMapName = map;
        }
    }
    InitWorld();
    shadowBias = QmWorldSpace::ShadowBias();
    glAvailable = screen.glEnabled;
    LoadArt(std::move(decodedArt));
    staticLayer.Create(screen.width, screen.height);
    DrawBackgrounds();
    staticLayerStale = true;
    blackSurface = std::make_unique<VeSurface>(1, 1);
    blackSurface->Fill(0);
    if (glAvailable) {
        blackTexture = std::make_unique<VeTexture>(blackSurface.get(), VeFilterNearest);
    }
}

QmClientEnvironmentManager::~QmClientEnvironmentManager() = default;

void QmClientEnvironmentManager::LoadArt(std::unique_ptr<QmWorldArt> decodedArt) {
    if (decodedArt) {
        art = std::move(*decodedArt);
    } else {
        art.Load();
    }
    fireFrames.DrawAll();
}

void QmClientEnvironmentManager::PrepareGraphics() {
    while (PrepareGraphicsStep()) {
    }
}

bool QmClientEnvironmentManager::PrepareGraphicsStep() {
    if (GraphicsPrepared()) {
        return false;
    }
    const int stage = graphicsStage++;
    switch (stage) {
    case kShaderStage:
        shaders = std::make_unique<QmBlockShaders>();
        break;
    case kFireStage:
        fireFrames.MakeTextures();
        break;
    case kShadowStage:
        shadowMap = std::make_unique<VeShadowMapTarget>();
        shadowMap->Create(screen.width, screen.height);
        mapShadows = std::make_unique<VeShadowMapTarget>();
        mapShadows->Create(screen.width, screen.height);
        break;
    case kSceneStage:
        sceneRenderer = std::make_unique<VeTextureRenderer>(screen.width, screen.height, 1.0f);
        break;
    case kBackdropStage:
        backdrop = std::make_unique<QmBackdrop>();
        break;
    default:
        art.MakeTextures(stage - kFirstArtStage);
        break;
    }
    return !GraphicsPrepared();
}

// ---- Virtual operations ----

void QmClientEnvironmentManager::SaveMap(bool asNew) {
    SaveMapToTour(asNew);
}

bool QmClientEnvironmentManager::ScanWorld() {
    const bool found = QmCoreEnvironmentManager::ScanWorld();
    if (!found) {
        Halt("Halt: Tour data not found", "Critical error: Tour data was not found.");
    }
    return found;
}

void QmClientEnvironmentManager::ClearMap() {
    QmCoreEnvironmentManager::ClearMap();
    cellCache.InvalidateAll();
}

void QmClientEnvironmentManager::SetBlockSize(int size) {
    if (size != blockSize) {
        staticLayerStale = true;
    }
    QmCoreEnvironmentManager::SetBlockSize(size);
    cellCache.InvalidateAll();
}

BlockId QmClientEnvironmentManager::RandomColourBlock() {
    const int colours = art.coloured.empty() ? 6 : static_cast<int>(art.coloured.size());
    return Rand() % (colours - 1) + 1;
}

void QmClientEnvironmentManager::OpenGates() {
    const int size = std::min(mapSize, kGridSize);
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            if (blocks[x * kGridSize + y] == Block::RedGate) {
                cellCache.Invalidate(x, y);
            }
        }
    }
    QmCoreEnvironmentManager::OpenGates();
    staticLayerStale = true;
}

void QmClientEnvironmentManager::ReportError(const std::string& message) {
    VeMessageBox("Critical Error", message, VeMessageBox::Error);
}

void QmClientEnvironmentManager::SetBlock(int x, int y, BlockId id) {
    QmCoreEnvironmentManager::SetBlock(x, y, id);
    cellCache.Invalidate(x, y);
}

// ---- The world frame ----

bool QmClientEnvironmentManager::ThreeDActive() const {
    return glAvailable && host.ThreeDEnabled();
}

bool QmClientEnvironmentManager::ShadowsActive() const {
    return host.ShadowsEnabled() && !host.InEditor();
}

void QmClientEnvironmentManager::Update() {
    const float frameTime = std::max(host.FrameTime(), 0.0f);
    if (ThreeDActive()) {
        spinAngle += kSpinSpeed * frameTime;
        if (spinAngle > kFullTurn) {
            spinAngle = 0.0f;
        }
        cameraZoom = std::max(cameraZoom - 2.0f * cameraZoom * frameTime, 0.0f);
    }
    const uint32_t previous = finishColour.Step(frameTime);
    if (previous != finishColour.colour) {
        RepaintFinish(previous, finishColour.colour);
    }
    UpdateFire(blockSize, false);
}

void QmClientEnvironmentManager::RepaintFinish(uint32_t from, uint32_t to) {
    for (int size : {64, 32, 16, 3}) {
        if (VeSurface* surface = art.finish->Surface(size)) {
            surface->ReplaceColour(from, to);
        }
    }
    art.finish->RefreshFirstTexture();
}

void QmClientEnvironmentManager::UpdateFire(int size, bool force) {
    const QmRacerView racer = host.Racer();
    const bool held = host.InRace() && racer.exists && !racer.active;
    fireFrames.Update(size, force, held);
}

void QmClientEnvironmentManager::BeginPass(bool shadow) {
    PrepareGraphics();
    shadowPass = shadow;
    threeDFrame = ThreeDActive();
    shadowsThisFrame = threeDFrame && ShadowsActive();
    if (threeDFrame) {
        BakeBackdrop();
        mapInShadowMap = shadowPass && mapShadowsReady;
        if (mapInShadowMap) {
            // The map's blocks are there already; only what moves is drawn into it.
            shadowMap->BeginShadowPassFrom(*mapShadows);
        } else if (shadowPass) {
            shadowMap->BeginShadowPass();
        } else {
            // The scene starts from the key colour, which the backdrop covers everywhere (so it is
            // left uncleared once the backdrop is there).
            VeRenderState::SetClearColour(kColourKey);
            sceneRenderer->BeginScene(backdrop->Baked());
            VeRenderState::SetClearColour(0);
            // The overlay shows the scene wherever nothing is drawn on it.
            screen.overlay.Fill(kColourKey);
        }
        ClearPending();
        SetupPass();
        renderState.SetCulling(shadowPass ? VeRenderState::CullFrontFaces : VeRenderState::CullBackFaces);
        if (shadowPass) {
            screen.shadowMapShader->Use();
        } else {
            PrepareShader();
            if (shadowsThisFrame) {
                BindShadowMap();
            }
            shaders->block.Use();
        }
    }
    DrawWorld();
}

void QmClientEnvironmentManager::BakeBackdrop() {
    const QmBackdrop::Look look{mapSize, blockSize, shadowsThisFrame,
                                shadowsThisFrame ? CasterSignature() : 0};
    if (!backdrop->Stale(look)) {
        return;
    }
    QmBackdrop::Light light;
    light.position = QmWorldSpace::LightPosition(mapSize);
    light.biasedViewProjection = shadowBias * QmWorldSpace::LightViewProjection(light.position);
    light.shadowMapSize =
        glm::vec2(static_cast<float>(shadowMap->width), static_cast<float>(shadowMap->height));
    mapShadowsReady = false;
    if (shadowsThisFrame) {
        // A shadow pass of the map's blocks alone, without what the layers add, kept for the
        // shadow passes that follow.
        const bool pass = shadowPass;
        shadowPass = true;
        mapInShadowMap = false;
        mapShadows->BeginShadowPass();
        ClearPending();
        SetupPass();
        renderState.SetCulling(VeRenderState::CullFrontFaces);
        screen.shadowMapShader->Use();
        DrawWorld();
        mapShadowCubes = static_cast<int64_t>(pending.Cubes().size());
        DrawPending();
        shadowPass = pass;
        mapShadowsReady = true;
        VeRenderState::BindShadowMap(mapShadows->depthTexture);
    }
    backdrop->Bake(art, look, light, *shaders, renderState);
    ++backdropBakes;
}

uint64_t QmClientEnvironmentManager::CasterSignature() {
    const bool race = host.InRace();
    uint64_t signature = 14695981039346656037ull ^ static_cast<uint64_t>(mapSize);
    for (int x = 0; x < mapSize; ++x) {
        for (int y = 0; y < mapSize; ++y) {
            const BlockId id = GetBlock(x, y);
            QmCellLook look;
            const bool drawn = !(race && (id == Block::Start || id == Block::Enemy));
            const bool caster = drawn && CellLook(id, look) && !look.flat && look.castsShadow;
            signature = (signature ^ (caster ? static_cast<uint64_t>(id) + 1 : 0)) * 1099511628211ull;
        }
    }
    return signature;
}

void QmClientEnvironmentManager::EndPass() {
    DrawPending();
    if (!threeDFrame) {
        DrawDecorations();
    }
}

void QmClientEnvironmentManager::WorldFrame(const std::function<void(bool shadowPass)>& layer,
                                            bool captureSnapshot, bool readPicking) {
    const int passes = PassCount();
    for (int pass = 0; pass < passes; ++pass) {
        const bool shadow = passes == 2 && pass == 0;
        BeginPass(shadow);
        if (layer) {
            layer(shadow);
        }
        EndPass();
    }
    screen.BindDefaultFramebuffer();
    ComposeWorld(captureSnapshot, readPicking);
}

void QmClientEnvironmentManager::ComposeWorld(bool captureSnapshot, bool readPicking) {
    ComposeOverlay();
    if (!glAvailable) {
        return;
    }
    if (!threeDFrame) {
        VeRenderState::BindTexture(1, blackTexture->names[0]);
        return;
    }
    sceneRenderer->ResolveScene(screen);
    if (captureSnapshot) {
        snapshot = sceneRenderer->ReadSceneToSurface();
        // The screen samples the scene bottom row first, as OpenGL keeps it.
        snapshot.Rotate180();
        snapshot.MirrorHorizontal();
        if (snapshotTexture) {
            snapshotTexture->Replace(&snapshot);
        } else {
            snapshotTexture = std::make_unique<VeTexture>(&snapshot, VeFilterNearest);
        }
    }
    if (readPicking) {
        pickingImage = sceneRenderer->ReadSceneToSurface();
    }
    sceneRenderer->BindSceneTexture();
    if (readPicking && host.InEditor() && snapshotTexture) {
        VeRenderState::BindTexture(1, snapshotTexture->names[0]);
    }
}

// ---- Steps of a pass ----

void QmClientEnvironmentManager::ClearPending() {
    pending.Clear();
    if (backdrop) {
        backdrop->ClearShadowPatches();
    }
}

void QmClientEnvironmentManager::SetupPass() {
    renderState.SetupPass();
}

void QmClientEnvironmentManager::PrepareShader() {
    const QmRacerView racer = host.Racer();
    greyScale = racer.exists && !racer.active;
    shaders->SetIntOnAll("greyScale", greyScale ? 1 : 0);
    shaders->SetIntOnAll("shadowTextureID", 1);
    shaders->SetVec2OnAll("shadowMapSize", static_cast<float>(shadowMap->width),
                          static_cast<float>(shadowMap->height));
    shaders->SetIntOnAll("useTexture", 1);
}

void QmClientEnvironmentManager::BindShadowMap() {
    renderState.BindShadowMap(shadowMap->depthTexture);
}

void QmClientEnvironmentManager::DrawWorld() {
    if (threeDFrame) {
        DrawWorld3D();
    } else {
        DrawWorld2D();
    }
}

// ---- 2D ----

const VeSurface* QmClientEnvironmentManager::Tinted(const VeSurface& background) {
    if (layerTint == kWhite) {
        return &background;
    }
    tintedBackground.Create(background.width, background.height);
    for (int32_t y = 0; y < background.height; ++y) {
        for (int32_t x = 0; x < background.width; ++x) {
            const uint32_t pixel = background.GetXY(x, y);
            tintedBackground.SetPixel(tintedBackground.RowLength() * y + x,
                                      pixel == kColourKey ? pixel : Multiply(pixel, layerTint));
        }
    }
    return &tintedBackground;
}

void QmClientEnvironmentManager::DrawBackgrounds() {
    const VeSurface* background = Tinted(art.Background(blockSize));
    for (int x = 0; x < mapSize; ++x) {
        for (int y = 0; y < mapSize; ++y) {
            staticLayer.BlitKeyed(*background, x * blockSize, y * blockSize);
        }
    }
}

void QmClientEnvironmentManager::RebuildStaticLayer() {
    DrawBackgrounds();
    for (int x = 0; x < mapSize; ++x) {
        for (int y = 0; y < mapSize; ++y) {
            if (const QmBlockArt* block = art.DefaultBlock(GetBlock(x, y))) {
                staticLayer.BlitKeyed(*block->Surface(blockSize), x * blockSize, y * blockSize);
            }
        }
    }
}

void QmClientEnvironmentManager::DrawWorld2D() {
    // A confused view tints the background in the colour of the block the racer stands on.
    const uint32_t tint = confusion ? BackdropColour() & 0xFFFFFF : kWhite;
    if (tint != layerTint) {
        layerTint = tint;
        staticLayerStale = true;
    }
    if (staticLayerStale) {
        RebuildStaticLayer();
        staticLayerStale = false;
    }
    VeSurface& overlay = screen.overlay;
    overlay.CopyFrom(staticLayer);
    listedDecorations.clear();
    const bool race = host.InRace();
    for (int x = 0; x < mapSize; ++x) {
        for (int y = 0; y < mapSize; ++y) {
            const BlockId id = GetBlock(x, y);
            if (id == Block::Blank || art.DefaultBlock(id) != nullptr) {
                continue;
            }
            if (art.Decoration(id) != nullptr) {
                listedDecorations.push_back({x, y, id});
                continue;
            }
            const VeSurface* image = nullptr;
            if (id == Block::Fire) {
                image = fireFrames.Frame(QmFireAnimation::FrameForCell(mapSize, x, y)).Surface(blockSize);
            } else if (id == Block::Start || id == Block::Enemy) {
                image = race ? nullptr : CellArt(id, blockSize);
            } else {
                image = CellArt(id, blockSize);
            }
            if (image != nullptr) {
                overlay.BlitKeyed(*image, x * blockSize, y * blockSize);
            }
        }
    }
}

void QmClientEnvironmentManager::DrawDecorations() {
    for (const ListedDecoration& listed : listedDecorations) {
        if (const QmBlockArt* decoration = art.Decoration(listed.id)) {
            if (const VeSurface* image = decoration->Surface(blockSize)) {
                screen.overlay.BlitKeyed(*image, listed.x * blockSize, listed.y * blockSize);
            }
        }
    }
}

// ---- 3D ----

void QmClientEnvironmentManager::DrawWorld3D() {
    // The target was cleared to the key colour as the pass began.
    const QmRacerView racer = host.Racer();
    if (racer.exists) {
        worldPosition = QmWorldSpace::WorldPosition(racer.x, racer.y, blockSize, mapSize);
    }
    const bool editor = host.InEditor();
    const float distance = QmWorldSpace::CameraDistance(editor, cameraZoom);
    if (editor) {
        cameraViewProjection = QmWorldSpace::EditorViewProjection(
            distance, static_cast<float>(screen.width) / static_cast<float>(std::max(screen.height, 1)));
        eyePosition = glm::vec3(0.0f, 0.0f, QmWorldSpace::EyeDepth(QmWorldSpace::kWorldZ, distance));
    } else {
        eyePosition =
            glm::vec3(worldPosition.x, worldPosition.y, QmWorldSpace::EyeDepth(worldPosition.z, distance));
        const float aspect = static_cast<float>(std::max(screen.width / std::max(screen.height, 1), 1));
        cameraViewProjection =
            QmWorldSpace::GameViewProjection(worldPosition, distance, host.Flipped(), aspect);
    }
    lightPosition = QmWorldSpace::LightPosition(mapSize);
    lightViewProjection = QmWorldSpace::LightViewProjection(lightPosition);
    if (!shadowPass) {
        shaders->SetVec3OnAll("lightPos", lightPosition.x, lightPosition.y, lightPosition.z);
        shaders->SetVec3OnAll("worldPos", worldPosition.x, worldPosition.y, worldPosition.z);
    }
    spinMatrix = QmWorldSpace::SpinMatrix(spinAngle);
    const bool pickingNow = picking && editor;
    if (!pickingNow) {
        placingMap = true;
        DrawBorderRing();
        placingMap = false;
    }
    if (!shadowPass) {
        shaders->SetIntOnAll("useShadowMap", shadowsThisFrame ? 1 : 0);
        // Drawn with the pending cubes, after the opaque ones: the depth test then skips the parts
        // they cover, and translucent cubes still blend over it.
        backdropPending = true;
    }
    placingMap = true;
    DrawCells3D();
    placingMap = false;
    if (staticLayerStale) {
        RebuildStaticLayer();
        staticLayerStale = false;
    }
}

void QmClientEnvironmentManager::DrawBorderRing() {
    const VeTexture* texture = art.border->Texture(64);
    // Faces: 2 left, 3 right, 4 bottom, 5 top. Cubes of the ring hide each other's touching faces.
    for (int column = -1; column <= 10; ++column) {
        for (int row : {-1, 10}) {
            uint8_t hidden = 0;
            hidden |= column > -1 ? 1 << 2 : 0;
            hidden |= column < 10 ? 1 << 3 : 0;
            if (column == -1 || column == 10) {
                hidden |= row == -1 ? 1 << 4 : 1 << 5;
            }
            PlaceBlock(texture, false, static_cast<float>(column), static_cast<float>(row), 10, false, false,
                       true, true, 1.0f, false, kOpaqueWhite, hidden);
        }
    }
    for (int row = 0; row <= 9; ++row) {
        for (int column : {-1, 10}) {
            PlaceBlock(texture, false, static_cast<float>(column), static_cast<float>(row), 10, false, false,
                       true, true, 1.0f, false, kOpaqueWhite, 1 << 4 | 1 << 5);
        }
    }
}

uint8_t QmClientEnvironmentManager::CoveredFaces(int x, int y) {
    const auto opaque = [this](int column, int row) {
        // Outside the map lies the border ring.
        if (column < 0 || row < 0 || column >= mapSize || row >= mapSize) {
            return true;
        }
        return art.DefaultBlock(GetBlock(column, row)) != nullptr;
    };
    uint8_t hidden = 0;
    hidden |= opaque(x - 1, y) ? 1 << 2 : 0;
    hidden |= opaque(x + 1, y) ? 1 << 3 : 0;
    hidden |= opaque(x, y + 1) ? 1 << 4 : 0;
    hidden |= opaque(x, y - 1) ? 1 << 5 : 0;
    return hidden;
}

uint32_t QmClientEnvironmentManager::BackdropColour() {
    if (!confusion) {
        return kOpaqueWhite;
    }
    const QmRacerView racer = host.Racer();
    if (racer.exists && racer.groundBlock >= 1 && racer.groundBlock <= 5) {
        confusionColour = kBlockColours[static_cast<size_t>(racer.groundBlock - 1)];
    }
    return 0xFF000000u | confusionColour;
}

void QmClientEnvironmentManager::DrawBackdrop() {
    QmBackdrop::Pass pass;
    pass.viewProjection = cameraViewProjection;
    pass.biasedLight = shadowBias * lightViewProjection;
    pass.untextured = picking && host.InEditor();
    pass.drawColour = pass.untextured ? kOpaqueWhite : BackdropColour();
    drawCalls += backdrop->Draw(pass, *shaders, renderState);
}

bool QmClientEnvironmentManager::CellLook(BlockId id, QmCellLook& look) const {
    look = QmCellLook();
    const int size = blockSize;
    if (const QmBlockArt* block = art.DefaultBlock(id)) {
        look.texture = block->Texture(size);
        return true;
    }
    if (const QmBlockArt* decoration = art.Decoration(id)) {
        look.texture = decoration->Texture(size);
        look.flat = true;
        look.castsShadow = false;
        look.cacheable = false;
        look.overlay = true;
        return true;
    }
    switch (id) {
    case Block::RedGate:
        look.texture = art.redGate->Texture(size);
        return true;
    case Block::Finish:
        look.texture = art.finish->first.get();
        look.halfSize = true;
        return true;
    case Block::Start:
        look.texture = RacerTexture(size);
        return true;
    case Block::Enemy:
        look.texture = CowTexture(size);
        return true;
    case Block::Fire:
        look.texture = fireFrames.Frame(0).Texture(size);
        look.flat = true;
        look.castsShadow = false;
        return true;
    case Block::JumpImpulse:
    case Block::SpeedUp:
    case Block::FlipVision:
    case Block::RedGateKey:
    case Block::DiscoConfusion:
        look.texture = art.ForId(id)->Texture(size);
        look.flat = true;
        look.spinning = true;
        look.castsShadow = false;
        look.cacheable = false;
        return true;
    default:
        return false;
    }
}

void QmClientEnvironmentManager::DrawCells3D() {
    const bool race = host.InRace();
    const bool pickingNow = picking && host.InEditor();
    for (int x = 0; x < mapSize; ++x) {
        for (int y = 0; y < mapSize; ++y) {
            const float column = static_cast<float>(x);
            const float row = static_cast<float>(y);
            if (pickingNow) {
                drawingForPicking = true;
                DrawBlock(nullptr, false, column, row, mapSize, false, false, true, false, 1.0f, false,
                          static_cast<uint32_t>(PickingColour(x, y)));
                drawingForPicking = false;
                continue;
            }
            const BlockId id = GetBlock(x, y);
            if (id == Block::Blank || (race && (id == Block::Start || id == Block::Enemy))) {
                continue;
            }
            QmCellLook look;
            if (!CellLook(id, look)) {
                continue;
            }
            if (id == Block::Fire) {
                look.texture =
                    fireFrames.Frame(QmFireAnimation::FrameForCell(mapSize, x, y)).Texture(blockSize);
            }
            const uint8_t hidden = art.DefaultBlock(id) != nullptr ? CoveredFaces(x, y) : 0;
            PlaceBlock(look.texture, look.halfSize, column, row, mapSize, look.flat, look.spinning,
                       look.castsShadow, look.cacheable, 1.0f, look.overlay, kOpaqueWhite, hidden);
        }
    }
}

void QmClientEnvironmentManager::DrawBlock(const VeTexture* texture, bool halfSize, float column, float row,
                                           int placementSize, bool flat, bool spinning, bool castsShadow,
                                           bool cacheable, float alpha, bool overlay, uint32_t drawColour) {
    PlaceBlock(texture, halfSize, column, row, placementSize, flat, spinning, castsShadow, cacheable, alpha,
               overlay, drawColour, 0);
}

void QmClientEnvironmentManager::PlaceBlock(const VeTexture* texture, bool halfSize, float column, float row,
                                            int placementSize, bool flat, bool spinning, bool castsShadow,
                                            bool cacheable, float alpha, bool overlay, uint32_t drawColour,
                                            uint8_t hiddenFaces) {
    if (!threeDFrame || (shadowPass && (flat || !castsShadow || (placingMap && mapInShadowMap)))) {
        return;
    }
    const int placement = placementSize > 0 ? placementSize : mapSize;
    const bool cursor = art.IsCursorTexture(texture);
    const bool turning = spinning && flat && !host.InEditor();
    const bool cached = cacheable && !spinning && !cursor && !drawingForPicking;
    const int index =
        cached ? QmCellCache::Index(static_cast<int>(column), static_cast<int>(row), placement, mapSize) : -1;
    glm::mat4 model;
    if (index < 0 || !cellCache.Lookup(index, model)) {
        model = QmWorldSpace::BlockModel(column, row, placement, halfSize, flat, overlay, cursor,
                                         turning ? spinMatrix : glm::mat4(1.0f));
        ++placementsComputed;
        if (index >= 0) {
            cellCache.Store(index, model);
        }
    }
    const glm::mat4 lightMvp = lightViewProjection * model;
    const glm::mat4 mvp = shadowPass ? lightMvp : cameraViewProjection * model;
    if (!flat) {
        if (!shadowPass && shadowsThisFrame && castsShadow && !placingMap) {
            // Not one of the map's blocks: the backdrop's baked light does not know its shadow.
            backdrop->AddShadowPatch(model, lightPosition);
        }
        pending.AddCube({model, mvp, shadowBias * lightMvp, texture, alpha, static_cast<int32_t>(drawColour),
                         spinning || cursor, hiddenFaces});
        return;
    }
    // Plain opaque squares join the pass's batch of flat items; others are drawn at once.
    if (texture != nullptr && alpha >= 1.0f && drawColour == kOpaqueWhite) {
        pending.AddSquare(model,
                          texture->names[static_cast<size_t>(VeTexture::SlotForFace(texture->faceMap, 0))]);
        return;
    }
    renderState.SetCulling(VeRenderState::CullNothing);
    renderState.SetBlending(QmPendingCubes::Translucent(alpha, static_cast<int32_t>(drawColour)));
    VeShader& blockShader = shaders->block;
    blockShader.Use();
    blockShader.SetMat4("MVP", mvp);
    blockShader.SetMat4("lightMVP", shadowBias * lightMvp);
    blockShader.SetInt("useTexture", texture != nullptr ? 1 : 0);
    blockShader.SetInt("textureID", 0);
    blockShader.SetFloat("alpha", alpha);
    blockShader.SetInt("drawColor", static_cast<int32_t>(drawColour));
    blockShader.SetVec3("worldPos", worldPosition.x, worldPosition.y, worldPosition.z);
    blockShader.SetMat4("ModelMatrix", model);
    VeVertexBatches::DrawQuad(texture);
    ++drawCalls;
    renderState.SetCulling(VeRenderState::CullBackFaces);
}

void QmClientEnvironmentManager::DrawPending() {
    if (!threeDFrame) {
        return;
    }
    QmPendingCubes::Pass pass;
    pass.shadow = shadowPass;
    pass.shader = shadowPass ? screen.shadowMapShader.get() : &shaders->block;
    pass.unshadowed = shadowPass ? nullptr : &shaders->unshadowed;
    pass.viewProjection = shadowPass ? lightViewProjection : cameraViewProjection;
    pass.biasedLight = shadowBias * lightViewProjection;
    pass.viewer = shadowPass ? lightPosition : eyePosition;
    pass.light = lightPosition;
    // Flat items and opaque cubes, the backdrop behind them, then translucent cubes over both.
    drawCalls += pending.DrawOpaque(pass, renderState);
    if (backdropPending) {
        DrawBackdrop();
        backdropPending = false;
    }
    drawCalls += pending.DrawTranslucent(pass, renderState);
}

// ---- Entities ----

void QmClientEnvironmentManager::DrawEntity(const VeSurface* image, const VeTexture* texture, float x,
                                            float y, float alpha, bool overlayWanted) {
    if (!threeDFrame) {
        if (image != nullptr) {
            screen.overlay.DrawImage(*image, static_cast<int32_t>(std::trunc(x + 0.5f)),
                                     static_cast<int32_t>(std::trunc(y + 0.5f)), false, kColourKey, 1.0f,
                                     alpha);
        }
        return;
    }
    const QmRacerView racer = host.Racer();
    const bool overlay = overlayWanted && racer.exists && !racer.active;
    const float size = static_cast<float>(blockSize);
    DrawBlock(texture, false, x / size, y / size, mapSize, false, false, true, false, alpha, overlay,
              kOpaqueWhite);
}

// ---- Reload and registration ----

void QmClientEnvironmentManager::Reload(int index, bool fromCache) {
    staticLayerStale = false;
    cellCache.InvalidateAll();
    confusion = false;
    confusionColour = kWhite;
    LoadLevel(index, fromCache);
    if (!ThreeDActive()) {
        DrawBackgrounds();
    }
    // The new map's blocks join the layer on the next frame.
    staticLayerStale = true;
}

void QmClientEnvironmentManager::PrepareEditorView() {
    staticLayerStale = true;
    picking = false;
}

void QmClientEnvironmentManager::RegisterRacerImages(int size, VeSurface* image, VeSurface* sides) {
    const int slot = SizeSlot(size);
    racerImages[static_cast<size_t>(slot)] = image;
    racerSides[static_cast<size_t>(slot)] = sides;
    if (!glAvailable || slot > 1 || image == nullptr) {
        return;
    }
    auto texture = std::make_unique<VeTexture>(image, VeFilterNearestMipmapNearest);
    if (sides != nullptr) {
        texture->SetFace(sides, 1);
        texture->SetFaceMap({0, 1, 1, 1, 1, 1});
    }
    racerTextures[static_cast<size_t>(slot)] = std::move(texture);
}

void QmClientEnvironmentManager::RegisterCowImage(int size, VeSurface* image) {
    const int slot = SizeSlot(size);
    cowImages[static_cast<size_t>(slot)] = image;
    if (glAvailable && slot <= 1 && image != nullptr) {
        cowTextures[static_cast<size_t>(slot)] =
            std::make_unique<VeTexture>(image, VeFilterNearestMipmapNearest);
    }
}

const VeSurface* QmClientEnvironmentManager::RacerImage(int size) const {
    const VeSurface* image = racerImages[static_cast<size_t>(SizeSlot(size))];
    return image != nullptr ? image : art.racer->Surface(size);
}

const VeTexture* QmClientEnvironmentManager::RacerTexture(int size) const {
    const VeTexture* texture = racerTextures[static_cast<size_t>(SizeSlot(size) == 1 ? 1 : 0)].get();
    return texture != nullptr ? texture : art.racer->Texture(size);
}

const VeSurface* QmClientEnvironmentManager::CowImage(int size) const {
    return cowImages[static_cast<size_t>(SizeSlot(size))];
}

const VeTexture* QmClientEnvironmentManager::CowTexture(int size) const {
    return cowTextures[static_cast<size_t>(SizeSlot(size) == 1 ? 1 : 0)].get();
}

const VeSurface* QmClientEnvironmentManager::CellArt(BlockId id, int size) const {
    if (id == Block::Start) {
        return RacerImage(size);
    }
    if (id == Block::Enemy) {
        return CowImage(size);
    }
    const QmBlockArt* record = art.ForId(id);
    return record != nullptr ? record->Surface(size) : nullptr;
}

bool QmClientEnvironmentManager::CellAtPixel(int x, int y, int& column, int& row) const {
    if (!pickingImage.Inside(x, y)) {
        return false;
    }
    const uint32_t colour = pickingImage.GetXY(x, y) & 0xFFFFFF;
    if (colour == 0xFFFFFF || (colour & 0xFF) != 0) {
        return false;
    }
    // Edges of cells are blended by multisampling: the nearest multiple of 10 is the cell.
    column = static_cast<int>((((colour >> 16) & 0xFF) + 5) / 10);
    row = static_cast<int>((((colour >> 8) & 0xFF) + 5) / 10);
    return column >= 0 && row >= 0 && column < mapSize && row < mapSize;
}
