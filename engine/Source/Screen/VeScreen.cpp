#include "Screen/VeScreen.h"

#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"
#include "Platform/VeTime.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Surface/VePNGFile.h"
#include "Screen/VeCursor.h"
#include "Screen/VeOverlayComposer.h"

#include <GL/glew.h>
#include <SDL.h>
#include <SDL_syswm.h>
#include <glm/gtc/matrix_transform.hpp>

#include <dlfcn.h>
#include <link.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double kPacedFrameMs = 1000.0 / 60.0;

// Set before the screen exists (the command line's --software, a quick start); read by the
// constructor.
bool softwarePathForced = false;
bool shadersDeferred = false;

int FollowWindowEvents(void* /*screen*/, SDL_Event* event) {
    VeCursor::OnEvent(*event);
    return 0;
}

// Keeps a loaded shared library loaded until the process ends.
int PinLibrary(dl_phdr_info* info, size_t /*size*/, void* /*data*/) {
    if (info->dlpi_name != nullptr && info->dlpi_name[0] != '\0') {
        dlopen(info->dlpi_name, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    }
    return 0;
}

// The overlay's top rows as the texture needs them, in one pass: the same as copying them and
// applying the colour key without clearing (the key keeps alpha 0, other pixels without alpha
// become opaque, blended pixels keep theirs).
void CopyKeyed(const VeSurface& from, VeSurface& to) {
    const uint32_t* source = from.Pixels();
    uint32_t* target = to.Pixels();
    const int32_t count = to.pixelCount;
    for (int32_t i = 0; i < count; ++i) {
        uint32_t c = source[i];
        target[i] = c | ((c >> 24) == 0 && c != kColourKey ? 0xFF000000u : 0u);
    }
}

// Whether a window system is there to show the window: SDL falls back to its invisible offscreen
// driver by itself when it cannot reach one.
bool WindowSystemExpected() {
    const char* display = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    const char* forced = std::getenv("SDL_VIDEODRIVER");
    bool expected = (display != nullptr && *display != '\0') || (wayland != nullptr && *wayland != '\0');
    return expected && (forced == nullptr || *forced == '\0');
}

bool ParseVersion(const char* text, int& major, int& minor) {
    return text != nullptr && std::sscanf(text, "%d.%d", &major, &minor) == 2;
}

// Copies bottom-up BGRA rows into top-down 0x00RRGGBB pixels.
void FlipRows(const std::vector<uint32_t>& bottomUp, int32_t w, int32_t h, std::vector<uint32_t>& out) {
    out.resize(static_cast<size_t>(w) * h);
    for (int32_t y = 0; y < h; ++y) {
        const uint32_t* from = bottomUp.data() + static_cast<size_t>(h - 1 - y) * w;
        uint32_t* to = out.data() + static_cast<size_t>(y) * w;
        for (int32_t x = 0; x < w; ++x) {
            to[x] = from[x] & 0xFFFFFFu;
        }
    }
}

} // namespace

VeScreen::VeScreen(int32_t screenWidth, int32_t screenHeight, bool needOpenGL, bool startFullscreen,
                   bool centerWindow, const std::string& icon, const std::string& suffix)
    : width(screenWidth), height(screenHeight), pixelCount(screenWidth * screenHeight),
      fullscreen(startFullscreen), centered(centerWindow), iconPath(icon), requireOpenGL(needOpenGL),
      errorSuffix(suffix) {
    Init();
}

void VeScreen::ForceSoftwarePath(bool on) {
    softwarePathForced = on;
}

bool VeScreen::SoftwarePathForced() {
    return softwarePathForced;
}

void VeScreen::DeferShaders(bool on) {
    shadersDeferred = on;
}

bool VeScreen::PrepareShaders() {
    if (!glEnabled) {
        return true;
    }
    MakeContextCurrent();
    if (!basicShader) {
        basicShader = std::make_unique<VeShader>("Shaders/BasicShader/BasicShader.vert",
                                                 "Shaders/BasicShader/BasicShader.frag");
        for (const char* name :
             {"MVP", "textureID", "useTexture", "renderedSceneTextureID", "screenDisplaySize",
              "renderToTexture", "pixelSizeX", "pixelSizeY", "screenColorMultiplier", "greyScale"}) {
            basicShader->RegisterUniform(name);
        }
        basicShader->Use();
        basicShader->SetMat4("MVP", mvp);
        glUseProgram(0);
        return false;
    }
    if (!shadowMapShader) {
        shadowMapShader = std::make_unique<VeShader>("Shaders/ShadowMapShader/ShadowMapShader.vert",
                                                     "Shaders/ShadowMapShader/ShadowMapShader.frag");
        shadowMapShader->RegisterUniform("MVP");
        shadowMapShader->RegisterUniform("textureID");
        shadowMapShader->Use();
        shadowMapShader->SetMat4("MVP", mvp);
        glUseProgram(0);
    }
    return true;
}

void VeScreen::FailWindow(const std::string& what) const {
    Halt("Error: Could not create the window",
         "Unable to " + what + ": " + std::string(SDL_GetError()) + "." + errorSuffix);
}

void VeScreen::StartVideo() {
    // A busy X server can refuse a connection for a moment ("Resource temporarily unavailable");
    // SDL would then quietly choose the offscreen driver and the game would run unseen. Try again
    // a few times before accepting that.
    constexpr int kAttempts = 10;
    for (int attempt = 1;; ++attempt) {
        bool started = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
        const char* driver = started ? SDL_GetCurrentVideoDriver() : nullptr;
        bool invisible =
            driver != nullptr && (std::strcmp(driver, "offscreen") == 0 || std::strcmp(driver, "dummy") == 0);
        if (started && !(invisible && WindowSystemExpected())) {
            return;
        }
        if (attempt == kAttempts) {
            if (started) {
                Log("No window system could be reached; the window is not shown.\n");
                return;
            }
            FailWindow("start the video system");
        }
        if (started) {
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
        }
        SleepMs(20);
    }
}

void VeScreen::Init() {
    VeSurface::SetOverlayFormat(VeOverlayFormat{});
    StartVideo();
    if (softwarePathForced) {
        glEnabled = false;
    }
    CreateWindow(width, height, fullscreen, iconPath);
    if (glEnabled) {
        InitGL();
    }
    if (!iconPath.empty()) {
        SetIcon(iconPath);
    }
    SDL_SetCursor(nullptr);
    int bits = 0;
    Uint32 red = 0;
    Uint32 green = 0;
    Uint32 blue = 0;
    Uint32 alpha = 0;
    // Only the 0xAARRGGBB layout the drawing code is written for is taken over from the window.
    if (SDL_PixelFormatEnumToMasks(SDL_GetWindowPixelFormat(window), &bits, &red, &green, &blue, &alpha) &&
        red == 0x00FF0000u && green == 0x0000FF00u && blue == 0x000000FFu) {
        VeSurface::SetOverlayFormat(VeOverlayFormat{32, red, green, blue});
    }
    SDL_AddEventWatch(FollowWindowEvents, this);
    // The OpenGL and windowing libraries SDL has loaded stay loaded after the screen closes:
    // graphics drivers are not made to be unloaded and loaded again within one process.
    dl_iterate_phdr(PinLibrary, nullptr);
}

void VeScreen::CreateWindow(int32_t windowWidth, int32_t windowHeight, bool startFullscreen,
                            const std::string& /*icon*/) {
    overlay.Free();
    const int position = centered ? SDL_WINDOWPOS_CENTERED : SDL_WINDOWPOS_UNDEFINED;
    // Full screen keeps the desktop's mode; the logical size letterboxes the picture into it.
    const Uint32 flags = startFullscreen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0;
    // An OpenGL window on the software path too: SDL's OpenGL renderer would otherwise destroy the
    // window and make it again, a flash on the screen.
    window = SDL_CreateWindow("", position, position, windowWidth, windowHeight, flags | SDL_WINDOW_OPENGL);
    if (window == nullptr && glEnabled) {
        Log("No OpenGL window: %s\n", SDL_GetError());
        glEnabled = false;
    }
    if (window == nullptr) {
        window = SDL_CreateWindow("", position, position, windowWidth, windowHeight, flags);
    }
    if (window == nullptr) {
        FailWindow("create the window");
    }
    fullscreen = startFullscreen;
    if (glEnabled) {
        glContext = SDL_GL_CreateContext(window);
        if (glContext == nullptr) {
            Log("No OpenGL context: %s\n", SDL_GetError());
            glEnabled = false;
            if (requireOpenGL) {
                Halt("OpenGL Initialization failed",
                     "OpenGL version (none) detected.\n\nThis application requires "
                     "version 3.3 or higher. Try updating your graphic card driver.");
            }
        }
    }
    // On the OpenGL path the renderer only keeps the logical size and the letterbox and never draws,
    // so it need not compile shaders of its own (a tenth of a second at start on a software driver).
    SDL_SetHint(SDL_HINT_RENDER_OPENGL_SHADERS, glEnabled ? "0" : "1");
    renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED);
    if (renderer == nullptr) {
        renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
    }
    if (renderer == nullptr) {
        FailWindow("create a renderer");
    }
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "best");
    SDL_RenderSetLogicalSize(renderer, windowWidth, windowHeight);
    overlay.Create(windowWidth, windowHeight);
    // The software path's frame texture is made by its first frame: the OpenGL path never needs it.
    if (streamTexture != nullptr) {
        SDL_DestroyTexture(streamTexture);
        streamTexture = nullptr;
    }
    if (glEnabled) {
        // Set only now: both contexts are made with the platform's defaults (the version check
        // looks at what we got), and SDL's OpenGL renderer makes the window again when it finds
        // other attributes asked for. These matter only for contexts made later.
        SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
        SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
        SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
        SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    }
    // The renderer made its own context current; the game draws with ours.
    MakeContextCurrent();
    SetVSync();
}

bool VeScreen::InitGL() {
    MakeContextCurrent();
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glewExperimental = GL_TRUE;
    GLenum result = glewInit();
    // Under EGL (no X display) GLEW's GLX part fails while the OpenGL entry points are loaded.
    if (result != GLEW_OK && result != GLEW_ERROR_NO_GLX_DISPLAY) {
        Halt("GLEW Initialization failed",
             std::string("There was an error trying to initialize GLEW. Error: ") +
                 reinterpret_cast<const char*>(glewGetErrorString(result)));
    }
    while (glGetError() != GL_NO_ERROR) {
    }
    const char* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    std::string versionText = version != nullptr ? version : "(unknown)";
    Log("OpenGL version supported by this platform: %s\n\n", versionText.c_str());
    const char* rendererName = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    softwareRasteriser = rendererName != nullptr && (std::strstr(rendererName, "llvmpipe") != nullptr ||
                                                     std::strstr(rendererName, "softpipe") != nullptr);
    int major = 0;
    int minor = 0;
    if (!ParseVersion(version, major, minor)) {
        major = 0;
        minor = 0;
    }
    if (!(major > 3 || (major == 3 && minor >= 3))) {
        glEnabled = false;
        if (requireOpenGL) {
            Halt("OpenGL Initialization failed", "OpenGL version " + versionText +
                                                     " detected.\n\nThis application requires version 3.3 or "
                                                     "higher. Try updating your graphic card driver.");
        }
        return true;
    }
    glm::mat4 projection = glm::ortho(-1.0f, 1.0f, -1.0f, 1.0f, 1.0f, 2.0f);
    glm::mat4 view = glm::lookAt(glm::vec3(0, 0, 1), glm::vec3(0, 0, 0), glm::vec3(0, 1, 0));
    glm::mat4 model = glm::scale(glm::translate(glm::mat4(1.0f), glm::vec3(0.0f)), glm::vec3(1.0f));
    mvp = projection * view * model;
    if (!shadersDeferred) {
        while (!PrepareShaders()) {
        }
    }
    if (overlayEnabled) {
        VeVertexBatches::PrepareQuad();
    }
    return true;
}

void VeScreen::SetIcon(const std::string& path) {
    VeImage image(path);
    VeSurface keyed(image.width, image.height);
    keyed.CopyFrom(image);
    keyed.ApplyColourKey(kColourKey, true);
    SDL_SetWindowIcon(window, keyed.sdlSurface);
}

void VeScreen::SetVSync() {
    if (vsync || vsyncRefused) {
        return;
    }
    if (!glEnabled) {
        vsync = true;
        return;
    }
    MakeContextCurrent();
    if (SDL_GL_SetSwapInterval(1) == 0) {
        vsync = true;
        swapIntervalActive = true;
        return;
    }
    vsyncRefused = true;
    Log("Vertical synchronization is not available (%s); frames are paced to 60 a second instead.\n",
        SDL_GetError());
}

void VeScreen::SetFpsDisplay(bool show, const std::array<uint32_t, 4>& colours, float frameDelta) {
    fpsShown = show;
    if (show) {
        fpsColours = colours;
    } else {
        frameRate.Restart(frameDelta, GetTimeMs());
    }
}

void VeScreen::SetFullscreen(bool on, VeInput* inputManager) {
    if (on == fullscreen) {
        return;
    }
    SDL_SetWindowFullscreen(window, on ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    fullscreen = on;
    ResetViewport();
    if (inputManager != nullptr && viewportListener) {
        viewportListener(GetViewportMapping());
    }
}

void VeScreen::SetTitle(const std::string& text) {
    SDL_SetWindowTitle(window, text.c_str());
}

void VeScreen::ResetViewport() {
    if (!glEnabled) {
        return;
    }
    SDL_Rect viewport{};
    float scaleX = 1.0f;
    float scaleY = 1.0f;
    SDL_RenderGetViewport(renderer, &viewport);
    SDL_RenderGetScale(renderer, &scaleX, &scaleY);
    MakeContextCurrent();
    int drawableWidth = 0;
    int drawableHeight = 0;
    SDL_GL_GetDrawableSize(window, &drawableWidth, &drawableHeight);
    glViewport(0, 0, drawableWidth, drawableHeight);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glViewport(static_cast<GLint>(static_cast<float>(viewport.x) * scaleX),
               static_cast<GLint>(static_cast<float>(viewport.y) * scaleY),
               static_cast<GLsizei>(static_cast<float>(width) * scaleX),
               static_cast<GLsizei>(static_cast<float>(height) * scaleY));
}

void VeScreen::ApplyCursor() {
    VeCursor::Apply();
}

void VeScreen::Clear() {
    if (glEnabled) {
        MakeContextCurrent();
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
}

void VeScreen::DrawFpsText() {
    if (!fpsTextDrawer) {
        return;
    }
    VeFpsText text;
    text.text = std::string(vsync ? "VSYNC + " : "") + "FPS: " + std::to_string(frameRate.fps);
    text.centreX = width / 2;
    text.top = 10;
    text.colour = fpsColours[vsync ? 2 : 0];
    text.secondColour = fpsColours[vsync ? 3 : 1];
    fpsTextDrawer(overlay, text);
}

void VeScreen::Present(float frameDelta) {
    if (!framePrepared) {
        Log("Warning: Screen not prepared for frame!\n");
        VE_ASSERT(false);
    }
    framePrepared = false;
    if (fpsShown) {
        DrawFpsText();
        frameRate.Count(frameDelta, GetTimeMs());
    }
    if (!VeCursor::MouseOutside()) {
        ApplyCursor();
    }
    if (glEnabled) {
        PresentGL();
    } else {
        PresentSoftware();
    }
    PaceFrame();
}

void VeScreen::PresentGL() {
    MakeContextCurrent();
    // A rasteriser on the CPU spends several times more on drawing the overlay as a texture than
    // composing it directly costs, so a frame without the 3D scene skips it there.
    if ((!shadowMapShader || (softwareRasteriser && !threeD)) && PresentCopied()) {
        return;
    }
    while (!PrepareShaders()) {
    }
    lastFrameCopied = false;
    const int32_t rows = VeOverlayComposer::VisibleRows(height, screenDisplaySize);
    if (uploadSurface.width != width || uploadSurface.height != rows) {
        uploadSurface.Create(width, rows);
    }
    CopyKeyed(overlay, uploadSurface);
    ComposeGL(frameCapture);
    SDL_GL_SwapWindow(window);
}

// The window system's own copy of a software picture into the window, where the window system
// offers one (SDL's window surface; not through a renderer) and the window shows the logical
// screen 1:1.
SDL_Surface* VeScreen::CopySurface() {
    if (copyRefused || !overlayEnabled) {
        return nullptr;
    }
    int drawableWidth = 0;
    int drawableHeight = 0;
    SDL_GL_GetDrawableSize(window, &drawableWidth, &drawableHeight);
    if (drawableWidth != width || drawableHeight != height) {
        return nullptr;
    }
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_Surface* surface = SDL_GetWindowSurface(window);
    if (surface == nullptr || surface->w != width || surface->h != height ||
        surface->format->BytesPerPixel != 4 || surface->format->Rmask != 0x00FF0000u ||
        surface->format->Gmask != 0x0000FF00u || surface->format->Bmask != 0x000000FFu ||
        SDL_MUSTLOCK(surface)) {
        copyRefused = true; // asked once: the shaders will do
        return nullptr;
    }
    return surface;
}

bool VeScreen::PresentCopied() {
    SDL_Surface* surface = CopySurface();
    if (surface == nullptr) {
        return false;
    }
    VeOverlayComposer::Compose(overlay, static_cast<uint32_t*>(surface->pixels), surface->pitch / 4,
                               screenDisplaySize, screenColorMultiplier, greyScale);
    if (SDL_UpdateWindowSurface(window) != 0) {
        copyRefused = true;
        return false;
    }
    lastFrameCopied = true;
    if (frameCapture) {
        CaptureCopied(surface);
    }
    return true;
}

void VeScreen::CaptureCopied(const SDL_Surface* surface) {
    lastFrame.resize(static_cast<size_t>(pixelCount));
    for (int32_t y = 0; y < height; ++y) {
        const uint32_t* from =
            static_cast<const uint32_t*>(surface->pixels) + static_cast<size_t>(surface->pitch / 4) * y;
        uint32_t* to = lastFrame.data() + static_cast<size_t>(width) * y;
        for (int32_t x = 0; x < width; ++x) {
            to[x] = from[x] & 0xFFFFFFu;
        }
    }
    lastFrameWidth = width;
    lastFrameHeight = height;
}

void VeScreen::ComposeGL(bool capture) {
    GLuint texture = uploadSurface.UploadTexture(GL_NEAREST);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    if (overlayEnabled) {
        DrawOverlay();
    }
    if (capture) {
        CaptureWindow();
    }
    glDeleteTextures(1, &texture);
}

void VeScreen::PresentSoftware() {
    if (streamTexture == nullptr) {
        streamTexture =
            SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, width, height);
        if (streamTexture == nullptr) {
            FailWindow("create the frame texture");
        }
    }
    void* pixels = nullptr;
    int pitch = 0;
    if (SDL_LockTexture(streamTexture, nullptr, &pixels, &pitch) == 0) {
        VeOverlayComposer::Compose(overlay, static_cast<uint32_t*>(pixels), pitch / 4, screenDisplaySize,
                                   screenColorMultiplier, greyScale);
        SDL_UnlockTexture(streamTexture);
    }
    SDL_RenderClear(renderer);
    SDL_RenderCopy(renderer, streamTexture, nullptr, nullptr);
    if (frameCapture) {
        CaptureWindow();
    }
    SDL_RenderPresent(renderer);
    MakeContextCurrent();
}

void VeScreen::DrawOverlay() {
    while (!PrepareShaders()) {
    }
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT);
    basicShader->Use();
    basicShader->SetMat4("MVP", mvp);
    basicShader->SetInt("textureID", 0);
    basicShader->SetInt("renderedSceneTextureID", 1);
    basicShader->SetFloat("screenDisplaySize", screenDisplaySize);
    basicShader->SetFloat("pixelSizeX", 1.0f / static_cast<float>(width));
    basicShader->SetFloat("pixelSizeY", 1.0f / static_cast<float>(height));
    basicShader->SetFloat("screenColorMultiplier", screenColorMultiplier);
    basicShader->SetInt("renderToTexture", threeD ? 1 : 0);
    basicShader->SetInt("useTexture", 1);
    basicShader->SetInt("greyScale", greyScale ? 1 : 0);
    VeVertexBatches::DrawQuad(nullptr);
}

void VeScreen::BindDefaultFramebuffer() {
    if (glEnabled) {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    }
}

void VeScreen::PaceFrame() {
    if (!framePacing || swapIntervalActive) {
        nextFrameDue = 0.0;
        return;
    }
    const double now = static_cast<double>(GetTimeMs());
    // After a stall the pace starts again from now instead of rushing to catch up.
    if (nextFrameDue == 0.0 || now > nextFrameDue + kPacedFrameMs) {
        nextFrameDue = now;
    }
    nextFrameDue += kPacedFrameMs;
    const double wait = nextFrameDue - now;
    if (wait >= 1.0) {
        SleepMs(static_cast<uint32_t>(wait));
    }
}

bool VeScreen::WindowSize(int32_t& w, int32_t& h) const {
    int outW = 0;
    int outH = 0;
    if (glEnabled) {
        SDL_GL_GetDrawableSize(window, &outW, &outH);
    } else if (SDL_GetRendererOutputSize(renderer, &outW, &outH) != 0) {
        return false;
    }
    w = outW;
    h = outH;
    return w > 0 && h > 0;
}

void VeScreen::CaptureWindow() {
    int32_t w = 0;
    int32_t h = 0;
    if (!WindowSize(w, h)) {
        return;
    }
    std::vector<uint32_t> raw(static_cast<size_t>(w) * h);
    if (glEnabled) {
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glReadPixels(0, 0, w, h, GL_BGRA, GL_UNSIGNED_BYTE, raw.data());
        FlipRows(raw, w, h, lastFrame);
    } else {
        // The renderer reads what it drew this frame: the whole window, bars included.
        SDL_RenderSetLogicalSize(renderer, 0, 0);
        SDL_Rect all{0, 0, w, h};
        int read = SDL_RenderReadPixels(renderer, &all, SDL_PIXELFORMAT_ARGB8888, raw.data(), w * 4);
        SDL_RenderSetLogicalSize(renderer, width, height);
        if (read != 0) {
            Log("Could not read the frame back: %s\n", SDL_GetError());
            return;
        }
        lastFrame.resize(raw.size());
        for (size_t i = 0; i < raw.size(); ++i) {
            lastFrame[i] = raw[i] & 0xFFFFFFu;
        }
    }
    lastFrameWidth = w;
    lastFrameHeight = h;
}

bool VeScreen::ReadLastFrame(std::vector<uint32_t>& pixels, int32_t& frameWidth, int32_t& frameHeight) {
    if (!frameCapture || lastFrame.empty()) {
        if (glEnabled) {
            // What was shown is gone from the back buffer after the swap, and the front buffer
            // cannot be read everywhere: compose the last frame again from the same overlay rows
            // and scene texture, without showing it.
            MakeContextCurrent();
            SDL_Surface* surface = lastFrameCopied ? SDL_GetWindowSurface(window) : nullptr;
            if (surface != nullptr) {
                CaptureCopied(surface);
            } else {
                ResetViewport();
                ComposeGL(true);
            }
        } else {
            CaptureWindow();
        }
    }
    if (lastFrame.empty()) {
        return false;
    }
    pixels = lastFrame;
    frameWidth = lastFrameWidth;
    frameHeight = lastFrameHeight;
    return true;
}

bool VeScreen::SaveScreenshot(const std::string& path) {
    std::vector<uint32_t> pixels;
    int32_t w = 0;
    int32_t h = 0;
    if (!ReadLastFrame(pixels, w, h)) {
        Log("No frame to write to %s.\n", path.c_str());
        return false;
    }
    return VePNGFile::Save(path, w, h, pixels.data(), w);
}

void* VeScreen::GetNativeWindow() const {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (window == nullptr || !SDL_GetWindowWMInfo(window, &info)) {
        return nullptr;
    }
#if defined(SDL_VIDEO_DRIVER_X11)
    if (info.subsystem == SDL_SYSWM_X11) {
        return reinterpret_cast<void*>(static_cast<uintptr_t>(info.info.x11.window));
    }
#endif
#if defined(SDL_VIDEO_DRIVER_WAYLAND)
    if (info.subsystem == SDL_SYSWM_WAYLAND) {
        return info.info.wl.surface;
    }
#endif
    return nullptr;
}

void VeScreen::GetScale(float& scaleX, float& scaleY) const {
    SDL_RenderGetScale(renderer, &scaleX, &scaleY);
}

void VeScreen::GetViewport(int32_t& x, int32_t& y, int32_t& w, int32_t& h) const {
    SDL_Rect viewport{};
    SDL_RenderGetViewport(renderer, &viewport);
    x = viewport.x;
    y = viewport.y;
    w = viewport.w;
    h = viewport.h;
}

VeViewportMapping VeScreen::GetViewportMapping() const {
    VeViewportMapping mapping;
    int32_t w = 0;
    int32_t h = 0;
    GetViewport(mapping.x, mapping.y, w, h);
    GetScale(mapping.scaleX, mapping.scaleY);
    return mapping;
}

void VeScreen::SetViewportListener(std::function<void(const VeViewportMapping&)> listener) {
    viewportListener = std::move(listener);
}

void VeScreen::SetFpsTextDrawer(VeFpsTextDrawer drawer) {
    fpsTextDrawer = std::move(drawer);
}

void VeScreen::MakeContextCurrent() const {
    if (glContext != nullptr && SDL_GL_GetCurrentContext() != glContext) {
        SDL_GL_MakeCurrent(window, glContext);
    }
}

VeScreen::~VeScreen() {
    SDL_DelEventWatch(FollowWindowEvents, this);
    if (glContext != nullptr) {
        MakeContextCurrent();
        basicShader.reset();
        shadowMapShader.reset();
        VeVertexBatches::Release();
    }
    uploadSurface.Free();
    overlay.Free();
    VeCursor::Release();
    if (streamTexture != nullptr) {
        SDL_DestroyTexture(streamTexture);
    }
    if (renderer != nullptr) {
        SDL_DestroyRenderer(renderer);
    }
    if (glContext != nullptr) {
        SDL_GL_DeleteContext(glContext);
    }
    if (window != nullptr) {
        SDL_DestroyWindow(window);
    }
    SDL_Quit();
}
