#pragma once
// The engine's application object, one per process. The entry stores the arguments, fills the
// registry, then runs: Init (the services), CreateManagers (the game's), Frame until ShouldQuit,
// the game's Shutdown, and finally destroys the object, whose destructor stops the engine's
// services in reverse order with the registry last.
//
// Which services exist is decided by the registry switches, each on only when exactly 1:
// VE_USE_CONSOLE, VE_USE_TIMER, VE_USE_SCREEN, VE_USE_INPUT (only together with the screen) and
// VE_USE_AUDIO. A service that is not switched on stays null, and code above the engine copes
// with its absence. Start-up and shutdown progress lines are logged when VE_DEBUG_INFO is 1; the
// engine's fingerprint line always is. VE_DEFER_SHADERS lets the screen show its first frames before
// compiling its shaders (see VeScreen::DeferShaders).
#include <cstdint>
#include <string>
#include <vector>

class VeAudioManager;
class VeConsole;
class VeInput;
class VeRegistry;
class VeScreen;

class VeApp {
public:
    static constexpr const char* kEngineFingerprint = "[PRJ0019::VELNOS::v1.0]";

    // Creates the registry; every other field starts empty. The object becomes Current().
    VeApp();
    // Runs the engine's own Shutdown (not an override).
    virtual ~VeApp();
    VeApp(const VeApp&) = delete;
    VeApp& operator=(const VeApp&) = delete;

    virtual void CreateManagers() = 0;
    virtual void Frame() = 0;
    // The engine's services, audio first and the registry last; runs once.
    virtual void Shutdown();

    // Starts the services the registry switches on.
    void Init();
    // Init, CreateManagers, Frame until ShouldQuit, then the (overridden) Shutdown.
    void Run();
    // quitRequested, or the input manager's quit request (the window's close button, a signal).
    bool ShouldQuit() const;

    static VeApp* Current();

    VeScreen* screen = nullptr;
    VeInput* input = nullptr;
    VeAudioManager* audio = nullptr;
    VeRegistry* registry = nullptr;
    VeConsole* console = nullptr;
    bool quitRequested = false;
    int32_t windowWidth = 0;
    int32_t windowHeight = 0;
    // The tick count of the previous frame in milliseconds (0 at start) and the seconds since it.
    double lastTicks = 0.0;
    float frameDelta = 0.0f;
    std::vector<std::string> arguments;

private:
    bool timerStarted = false;
};
