#pragma once
// The game's single owner of everything above the engine: the options, the language, the game's
// controls, the shared text styles and sounds, the music channel and the play state, and the
// managers of the world, the front end, the editor and the race as they are created. Its
// construction is the game's start-up and its destruction the release in a fixed order (with the
// download cache emptied at the end). Engine services the settings did not switch on are null;
// every step that needs one is skipped without it, so the coordinator also runs headless.
//
// GameFrame runs once per frame: it resets the overlay and its factors, dispatches on the scene,
// quits on Escape on the intro page, runs the first matching global hotkey, applies the display
// options ("VSYNC", "FPS") and moves the shared pulse and blink animations.
#include "Audio/VeAudioChannel.h"
#include "Coordinator/VaAppCommander.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

class QmControls;
class QmLanguage;
class QmOptions;
class VaApp;
class VeTextStyle;

class VaCoordinator : public VaAppCommander {
public:
    enum PlayMode : int32_t { PlayTour = 0, PlayParty = 1, PlayRandomRun = 3 };
    enum PartyType : int32_t { PartyVersus = 0, PartyMarathon = 1 };
    enum class Hotkey { None, Fullscreen, Music, Hud, Ui, FpsWithVsync, FpsWithoutVsync };

    // What the hotkeys look at in a frame: Ctrl held (either key), the others pressed.
    struct HotkeyKeys {
        bool ctrl = false;
        bool f = false;
        bool m = false;
        bool h = false;
        bool u = false;
        bool f8 = false;
        bool f10 = false;
    };

    // The frame-rate display's text and outline colours without, then with, vertical sync.
    static constexpr std::array<uint32_t, 4> kFpsColours{0xFF0000, 0x000000, 0x00FF00, 0x000000};

    explicit VaCoordinator(VaApp* app);
    ~VaCoordinator() override;
    VaCoordinator(const VaCoordinator&) = delete;
    VaCoordinator& operator=(const VaCoordinator&) = delete;

    void GameFrame();
    // Leaves the race (or the after-race screen) for the menu scene.
    void ReturnToMenu();

    // The keys of this frame from the input manager (none without one).
    HotkeyKeys ReadHotkeys() const;
    // Runs the first hotkey that matches and says which.
    Hotkey HandleHotkeys(const HotkeyKeys& keys);
    // "VSYNC" asks the screen for vertical synchronisation; "FPS" shows the frame-rate display.
    void ApplyDisplayOptions();
    // pulse swings between 0.8 and 1.1 at 0.2 a second, blink between 0 and 1 at 1 a second.
    void AnimatePulseBlink(float step);
    // A colour brightened and darkened with the pulse (pure green three times as strongly); white
    // stays white.
    uint32_t ScaleColour(uint32_t colour) const;
    // The front end's current menu page: 0 the intro, 1 the main menu.
    int32_t CurrentMenuPage() const { return menuPage; }
    void SetMenuPage(int32_t page) { menuPage = page; }

    QmOptions& Options() { return *options; }
    const std::string& Option(const std::string& key) const;
    void SetOption(const std::string& key, const std::string& value);
    bool OptionOn(const std::string& key) const;
    QmLanguage& Language() { return *language; }
    QmControls& Controls() { return *controls; }

    VaApp* app;
    std::unique_ptr<QmLanguage> language;
    std::unique_ptr<QmOptions> options;
    VeAudioHandle musicChannel;
    int32_t playMode = PlayTour;
    int32_t partyType = PartyVersus;
    bool returnToMenuRequested = false;
    bool restartRequested = false;
    std::unique_ptr<VeTextStyle> textWhite;
    std::unique_ptr<VeTextStyle> textBlack;
    float pulse = 1.0f;
    bool pulseRising = true;
    float blink = 0.0f;
    bool blinkRising = true;
    bool shadowPass = false;
    int32_t randomRunLevels = 0;
    int64_t randomRunTime = 0;
    bool loggedIn = false;
    int32_t userId = -1;
    std::string sessionText;
    int32_t version = -1;
    std::unique_ptr<QmControls> controls;

private:
    void LoadOptionsAndLanguage();
    void StartAudio();
    void ToggleMusic();
    void ToggleOption(const char* key);

    int32_t menuPage = 0;
};
