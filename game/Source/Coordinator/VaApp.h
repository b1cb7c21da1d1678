#pragma once
// The game's application object. It fills the engine settings, creates the coordinator once the
// engine's services run, and runs one Frame per main-loop iteration:
//   time (the tick difference, or the fixed frame delta when one is set), input update, clear,
//   prepare, the coordinator's GameFrame, sceneChanged cleared and this frame's presses dropped,
//   present.
// Scenes: switching sets previousScene and scene together and raises sceneChanged when the scene
// really changed; Frame lowers it after the game frame, so pages see it for exactly one frame.
// The command line can limit the number of frames and ask for a screenshot of the last one,
// which is written when the loop has ended, before the game's managers are released; with a fixed
// frame time the game's clock moves by exactly that time a frame (a scripted run); and it can start
// a race at once (a map that does not exist ends the run with a message and exit status 2).
#include "App/VeApp.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/QmFrameClock.h"

#include <cstdint>
#include <string>

class VaCoordinator;
class QmNetworkManager;

enum VaScene : int32_t {
    SceneNone = 0, // before the coordinator is initialised
    SceneMenu = 1,
    SceneEditor = 2,
    SceneRace = 3,
    SceneAfterRace = 4,
};

class VaApp : public VeApp {
public:
    static constexpr const char* kAppFingerprint = "[PRJ0028::VELNOS::v1.0]";
    static constexpr const char* kErrorSuffix =
        "\n\nPlease download the latest version or contact Velnosoft.";

    VaApp();
    ~VaApp() override;

    // The engine settings of the game, in their order.
    void FillSettings();
    // Takes over what the command line asks for; call before Init.
    void UseCommandLine(const QmCommandLine& line);
    // A quick start shows the intro's first frame before the world is made (the program's own
    // start); without it, as for a coordinator made directly, the world exists once it is made.
    // The screen's shaders wait too; call before Init.
    void SetQuickStart(bool on);
    bool QuickStart() const { return quickStart; }

    // Creates the coordinator, then starts the race the command line asked for.
    void CreateManagers() override;
    void Frame() override;
    // Writes the asked-for screenshot, then releases the game's managers (not the engine's
    // services: the destructor stops those). Runs once.
    void Shutdown() override;
    void SwitchScene(int32_t newScene);
    // False when a screenshot was asked for and could not be written.
    bool ScreenshotWritten() const { return screenshotWritten; }
    // What the program ends with: 0, 2 when the command line asked for a race that cannot be run,
    // 1 when the screenshot could not be written.
    int ExitCode() const;

    VaCoordinator* coordinator = nullptr;
    QmNetworkManager* network = nullptr; // the online service's client, polled after each game frame
    int32_t scene = SceneNone;
    int32_t previousScene = SceneNone;
    bool sceneChanged = false;
    QmCommandLine commandLine;
    int64_t framesRun = 0;

private:
    void WriteScreenshot();

    bool screenshotWritten = true;
    bool gameShutDown = false;
    bool playRefused = false;
    bool quickStart = false;
    QmFrameClock frameClock;
};
