#pragma once
// The one window and how each frame reaches it. Pages, texts and the 2D world draw into the
// overlay, a software surface of the logical size (640 by 640). Present shows a frame:
//  - OpenGL path: the overlay (its top screenDisplaySize part) becomes a texture and the basic
//    shader composes it over the 3D scene the world renderer left on texture unit 1 (when threeD),
//    scaled by screenColorMultiplier and grey when greyScale is set;
//  - software path (OpenGL below 3.3, or forced): the overlay goes through an SDL streaming
//    texture with the same colour effects.
// The logical screen is letterboxed into the window by the SDL renderer's logical size; SDL mouse
// events therefore arrive in logical coordinates, while SDL_GetMouseState reports window pixels
// (map those with GetViewport and GetScale).
// With shaders deferred (a quick start), the OpenGL path compiles nothing before the first frame
// (a software driver's first shader costs a tenth of a second): until PrepareShaders has made
// them, a frame the window shows 1:1 is composed in software (as the software path does) and handed
// to the window system as a plain picture, without OpenGL. Where that cannot be done (another
// size, no such service) or anything else needs a shader, the shaders are made on the spot. The 3D
// scene needs them, so it cannot have been drawn while they wait. On a driver that rasterises on
// the CPU, frames without the 3D scene (threeD off: the menus, the 2D race) are shown that way too,
// for a fraction of what drawing the overlay through the driver costs.
// Vertical synchronisation that the driver refuses is logged once and left off; frames are then
// paced to about 60 a second by sleeping, so the loop never spins a core.
// Main thread only.
#include "Screen/Surface/VeSurface.h"
#include "Screen/VeFpsText.h"
#include "Screen/VeFrameRate.h"

#include <glm/mat4x4.hpp>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct SDL_Window;
struct SDL_Renderer;
struct SDL_Texture;
struct SDL_Surface;
class VeInput;
class VeShader;

// Where the logical screen lies in the window: origin in logical units and the scale from logical
// to window pixels, as the renderer keeps them.
struct VeViewportMapping {
    int32_t x = 0;
    int32_t y = 0;
    float scaleX = 1.0f;
    float scaleY = 1.0f;
};

class VeScreen {
public:
    VeScreen(int32_t width, int32_t height, bool requireOpenGL, bool fullscreen, bool centered,
             const std::string& iconPath, const std::string& errorSuffix);
    ~VeScreen();
    VeScreen(const VeScreen&) = delete;
    VeScreen& operator=(const VeScreen&) = delete;

    // Screens constructed afterwards skip OpenGL and present through the software path.
    static void ForceSoftwarePath(bool on);
    static bool SoftwarePathForced();
    // Screens constructed afterwards leave their shaders for PrepareShaders (or the first need).
    static void DeferShaders(bool on);
    // Makes the next shader still waiting, one a call; true once every shader is ready.
    bool PrepareShaders();

    void Init();
    void CreateWindow(int32_t windowWidth, int32_t windowHeight, bool startFullscreen,
                      const std::string& icon);
    bool InitGL();
    // Loads the image (a missing or broken file halts), keys out magenta and makes it the
    // window's icon; the image itself is not kept.
    void SetIcon(const std::string& path);
    // Switches vertical synchronisation on; it is never switched off.
    void SetVSync();
    void SetFpsDisplay(bool show, const std::array<uint32_t, 4>& colours, float frameDelta);
    void SetFullscreen(bool on, VeInput* inputManager);
    void SetTitle(const std::string& text);
    // Sets the OpenGL viewport to the letterboxed logical screen and blackens the bars.
    void ResetViewport();
    void ApplyCursor();
    // Marks the frame as prepared; the main loop calls it before drawing (Present checks it).
    void PrepareFrame() { framePrepared = true; }
    // Clears the colour and depth buffers of the window (OpenGL path only).
    void Clear();
    void Present(float frameDelta);
    void DrawOverlay();
    void BindDefaultFramebuffer();

    // The native window (an X11 window id or similar), null when the system cannot tell it.
    void* GetNativeWindow() const;
    void GetScale(float& scaleX, float& scaleY) const;
    void GetViewport(int32_t& x, int32_t& y, int32_t& w, int32_t& h) const;
    VeViewportMapping GetViewportMapping() const;
    // Told the new mapping whenever SetFullscreen is given an input manager.
    void SetViewportListener(std::function<void(const VeViewportMapping&)> listener);
    void SetFpsTextDrawer(VeFpsTextDrawer drawer);

    // Pacing of frames when vertical synchronisation is not in effect (on by default).
    void SetFramePacing(bool on) { framePacing = on; }
    // Keeps a copy of every presented frame, read back from the window just before it is shown,
    // for SaveScreenshot.
    void SetFrameCapture(bool on) { frameCapture = on; }
    // Writes the last presented frame as a PNG. With frame capture off, the OpenGL path composes
    // the last frame again into the window's hidden buffer and reads that, and the software path
    // reads the renderer. Returns false (and logs why) when there is nothing to write or the file
    // fails.
    bool SaveScreenshot(const std::string& path);
    // The pixels SaveScreenshot would write (0x00RRGGBB, top row first) and their size.
    bool ReadLastFrame(std::vector<uint32_t>& pixels, int32_t& frameWidth, int32_t& frameHeight);

    VeSurface overlay;
    int32_t width;
    int32_t height;
    int32_t pixelCount;
    bool fullscreen = false;
    bool centered;
    SDL_Texture* streamTexture = nullptr;
    SDL_Window* window = nullptr;
    void* glContext = nullptr;
    SDL_Renderer* renderer = nullptr;
    std::string iconPath;
    VeInput* input = nullptr;
    bool framePrepared = false;
    bool glEnabled = true;
    bool overlayEnabled = true;
    std::unique_ptr<VeShader> basicShader;
    std::unique_ptr<VeShader> shadowMapShader;
    glm::mat4 mvp{1.0f};
    float screenDisplaySize = 1.0f;
    float screenColorMultiplier = 1.0f;
    bool greyScale = false;
    bool threeD = false;
    bool vsync = false;
    bool fpsShown = false;
    std::array<uint32_t, 4> fpsColours{};
    bool requireOpenGL;
    std::string errorSuffix;
    VeFrameRate frameRate;

private:
    void StartVideo();
    bool WindowSize(int32_t& w, int32_t& h) const;
    void DrawFpsText();
    void PresentGL();
    SDL_Surface* CopySurface();
    bool PresentCopied();
    void CaptureCopied(const SDL_Surface* surface);
    void ComposeGL(bool capture);
    void PresentSoftware();
    void CaptureWindow();
    void PaceFrame();
    void MakeContextCurrent() const;
    void FailWindow(const std::string& what) const;

    bool vsyncRefused = false;
    bool swapIntervalActive = false;
    bool framePacing = true;
    double nextFrameDue = 0.0;
    bool frameCapture = false;
    std::vector<uint32_t> lastFrame;
    int32_t lastFrameWidth = 0;
    int32_t lastFrameHeight = 0;
    VeSurface uploadSurface;
    bool lastFrameCopied = false;
    bool copyRefused = false;
    // The OpenGL driver rasterises on the CPU (Mesa's llvmpipe or softpipe).
    bool softwareRasteriser = false;
    VeFpsTextDrawer fpsTextDrawer;
    std::function<void(const VeViewportMapping&)> viewportListener;
};
