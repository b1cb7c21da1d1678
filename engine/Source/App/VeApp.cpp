#include "App/VeApp.h"

#include "App/VeConsole.h"
#include "App/VeRegistry.h"
#include "Audio/VeAudioManager.h"
#include "Input/VeInput.h"
#include "Platform/VeLog.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeScreen.h"

#include <SDL.h>

namespace {
VeApp* currentApp = nullptr;
}

VeApp::VeApp() : registry(new VeRegistry()) {
    currentApp = this;
}

VeApp::~VeApp() {
    VeApp::Shutdown();
    if (currentApp == this) {
        currentApp = nullptr;
    }
}

VeApp* VeApp::Current() {
    return currentApp;
}

void VeApp::Init() {
    Log("App Fingerprint: %s\n", kEngineFingerprint);
    const bool debugInfo = registry->IsOn("VE_DEBUG_INFO");
    quitRequested = false;

    if (registry->IsOn("VE_USE_CONSOLE")) {
        if (debugInfo) {
            Log("Creating Console..\n");
        }
        console = new VeConsole();
    }

    if (registry->IsOn("VE_USE_TIMER")) {
        if (debugInfo) {
            Log("Initializing Timer..\n");
        }
        timerStarted = SDL_InitSubSystem(SDL_INIT_TIMER) == 0;
        lastTicks = 0.0;
    }
    frameDelta = 0.0f;

    if (registry->IsOn("VE_USE_SCREEN")) {
        if (debugInfo) {
            Log("Creating Screen..\n");
        }
        const bool fullscreen = registry->IsOn("VE_LAUNCH_FULLSCREEN");
        const bool centered = registry->IsOn("VE_LAUNCH_CENTERED");
        VeScreen::DeferShaders(registry->IsOn("VE_DEFER_SHADERS"));
        screen = new VeScreen(windowWidth, windowHeight, registry->IsOn("VE_REQUIRE_OPENGL"), fullscreen,
                              centered, registry->GetString("VE_WINDOW_ICON"),
                              registry->GetString("VE_ERROR_MESSAGE_SUFFIX"));
        VeScreen::DeferShaders(false);
        screen->SetFpsTextDrawer(&VeText::DrawFpsText);
        if (registry->IsOn("VE_USE_INPUT")) {
            if (debugInfo) {
                Log("Initializing Input..\n");
            }
            input = new VeInput(screen);
            screen->input = input;
        }
    }

    if (registry->IsOn("VE_USE_AUDIO")) {
        if (debugInfo) {
            Log("Initializing Audio..\n");
        }
        audio = new VeAudioManager(registry->GetString("VE_ERROR_MESSAGE_SUFFIX"),
                                   registry->IsOn("VE_DEBUG_AUDIO"));
    }
}

void VeApp::Run() {
    Init();
    CreateManagers();
    while (!ShouldQuit()) {
        Frame();
    }
    Shutdown();
}

bool VeApp::ShouldQuit() const {
    if (quitRequested) {
        return true;
    }
    return registry != nullptr && registry->IsOn("VE_USE_INPUT") && input != nullptr &&
           input->QuitRequested();
}

void VeApp::Shutdown() {
    if (registry == nullptr) {
        return; // already shut down
    }
    const bool debugInfo = registry->IsOn("VE_DEBUG_INFO");
    if (registry->IsOn("VE_USE_AUDIO")) {
        if (debugInfo) {
            Log("Shutting down Audio..\n");
        }
        delete audio;
        audio = nullptr;
    }
    if (registry->IsOn("VE_USE_INPUT")) {
        if (debugInfo) {
            Log("Shutting down Input..\n");
        }
        if (screen != nullptr) {
            screen->input = nullptr;
        }
        delete input;
        input = nullptr;
    }
    if (registry->IsOn("VE_USE_SCREEN")) {
        if (debugInfo) {
            Log("Shutting down Screen..\n");
        }
        delete screen; // ends SDL
        screen = nullptr;
    }
    if (timerStarted) {
        SDL_QuitSubSystem(SDL_INIT_TIMER);
        timerStarted = false;
    }
    if (registry->IsOn("VE_USE_CONSOLE")) {
        if (debugInfo) {
            Log("Shutting down Console..\n");
        }
        delete console;
        console = nullptr;
    }
    if (debugInfo) {
        Log("Shutting down Registry..\n");
    }
    delete registry;
    registry = nullptr;
}
