#pragma once
// The game's single owner of everything above the engine: the options, the language, the game's
// controls, the shared text styles, images and sounds, the music channel and the play state, the
// world (environment) manager and the race (gameplay) manager. Its construction is the game's
// start-up and its destruction the release in a fixed order (with the download cache emptied at
// the end). Engine services the settings did not switch on are null; every step that needs one is
// skipped without it, so the coordinator also runs headless (without a screen there is no world
// and no race).
//
// GameFrame runs once per frame: it resets the overlay and its factors, dispatches on the scene
// (the race scene runs the world frame, one pass or a shadow pass and a normal pass, with the race
// drawn into it and updated last), restarts the race on R, the pad's Y or the race's own request,
// quits on Escape on the intro page, leaves the race when it asked to, runs the first matching
// global hotkey, composes the world, draws the in-race menu, applies the display options ("VSYNC",
// "FPS") and moves the shared pulse and blink animations.
//
// The coordinator is the world's view host (options, scene, racer, flip), the race's host (play
// mode, music option, language lines, the in-race menu, what happens at the finish) and the world's
// link to the front end (language lines, notices, sounds). A finished run goes to the after-race
// scene (QmResultsFlow: the top ten with the name entry, or the party's ranking). The menu scene
// runs the front end's frame (QmFrontEnd: the intro, the menu pages and the notice dialog, where
// every notice goes); without a screen there is no front end and notices go to the console.
#include "Audio/VeAudioChannel.h"
#include "Coordinator/QmInRaceMenu.h"
#include "Coordinator/QmStartupWork.h"
#include "Coordinator/VaAppCommander.h"
#include "Editor/QmEditorHost.h"
#include "Environment/ClientEnvironmentManager/QmWorldViewHost.h"
#include "Environment/CoreEnvironmentManager/QmWorldFrontEndLink.h"
#include "Gameplay/QmRaceHost.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class ArEnvironmentManager;
class QmClientGameplayManager;
class QmResultsFlow;
class QmControls;
class QmEditor;
class QmFrontEnd;
class QmLanguage;
class QmOptions;
class QmRaceAudio;
class QmRaceControls;
class QmWorldArt;
class VaApp;
class VeImage;
class VeTextStyle;

class VaCoordinator : public VaAppCommander,
                      public QmWorldViewHost,
                      public QmRaceHost,
                      public QmWorldFrontEndLink,
                      public QmEditorHost {
public:
    enum PlayModeValue : int32_t { PlayTour = 0, PlayParty = 1, PlayRandomRun = 3 };
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
    // Language lines of the in-race menu, the random-level run's panel, the missing-OpenGL notice
    // and the default player name.
    static constexpr int kResumeLine = 11;
    static constexpr int kPausedLine = 14;
    static constexpr int kLevelLine = 15;
    static constexpr int kPlayerLine = 40;
    static constexpr int kNoOpenGLTextLine = 171;
    static constexpr int kNoOpenGLTitleLine = 172;

    explicit VaCoordinator(VaApp* app);
    ~VaCoordinator() override;
    VaCoordinator(const VaCoordinator&) = delete;
    VaCoordinator& operator=(const VaCoordinator&) = delete;

    void GameFrame();
    // Leaves the race for the menu scene with a fresh race on the reloaded current map (the random
    // level stays as it is).
    void ReturnToMenu();
    // Begins a race in the current play mode on the world's current map: tour play, or the next
    // random level of the random-level run (the same one again when retry is set). The scene
    // becomes the race. False when the race could not begin (no world, or party play, whose
    // players are prepared by its page).
    bool StartPlay(bool retry);
    // Tour play of map `map` of tour `tour` (both from 0) of the game folder; false with the
    // reason when there is no such tour or map.
    bool PlayMap(int tour, int map, std::string& error);
    // The editor on map `map` of tour `tour` (both from 0); false with the reason when there is no
    // such tour or map.
    bool OpenEditor(int tour, int map, std::string& error);
    // The editor scene's editor (null before the editor was first opened).
    QmEditor* Editor() { return editor.get(); }

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
    int32_t CurrentMenuPage() const;
    // Does at once what start-up left for after the first frame (with a quick start the world
    // itself, then its shaders and textures, the race's sounds, the music); races, the editor and
    // the music switch do it themselves.
    void FinishStartup();
    void SetMenuPage(int32_t page);

    QmOptions& Options() { return *options; }
    const std::string& Option(const std::string& key) const;
    void SetOption(const std::string& key, const std::string& value);
    bool OptionOn(const std::string& key) const;
    QmLanguage& Language() { return *language; }
    QmControls& Controls() { return *controls; }
    const QmInRaceMenu& InRaceMenu() const { return inRaceMenu; }
    // The name a qualifying time is kept under: the option "Username", else the language's word
    // for a player.
    std::string PlayerName() const;

    // ---- QmWorldViewHost ----
    bool ThreeDEnabled() const override;
    bool ShadowsEnabled() const override;
    bool InEditor() const override;
    bool InRace() const override;
    bool Flipped() const override;
    QmRacerView Racer() const override;
    float FrameTime() const override;

    // ---- QmRaceHost ----
    int PlayMode() const override { return playMode; }
    int64_t RandomRunTime() const override { return randomRunTime; }
    void SetRandomRunTime(int64_t milliseconds) override { randomRunTime = milliseconds; }
    void AddRandomRunLevel() override { ++randomRunLevels; }
    bool MusicEnabled() const override;
    std::string LanguageLine(int line) const override;
    bool MenuOpen() const override { return inRaceMenu.IsOpen(); }
    void OpenMenu(int languageLine, const std::string& command) override;
    std::string UpdateMenu() override;
    void RaceFinished(int64_t finalTime, int rank) override;
    void ReturnToPages() override { returnToMenuRequested = true; }

    // ---- QmEditorHost ----
    std::string EditorLine(int number) override;
    void EditorSound(const std::string& name, float volume) override { PlaySound(name, volume); }
    void MapListsChanged() override;
    void PlayFromEditor() override;
    void LeaveEditor() override;
    bool OpenCopyPage() override;
    void AskEditorQuestion(const std::string& action, const std::string& title,
                           const std::string& text) override;
    bool EditorDialogOpen() const override;
    void EditorDialogFrame() override;
    bool EditorQuestionConfirmed(const std::string& action) const override;
    void CloseEditorDialog() override;

    // ---- QmWorldFrontEndLink ----
    std::string GetLine(int number) override;
    void ShowNotice(const std::string& title, const std::string& text) override;
    void PlaySound(const std::string& name, float volume) override;

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
    // Shared images, released at the end (the racer's three sizes with their side faces).
    std::vector<std::unique_ptr<VeImage>> images;
    int32_t randomRunLevels = 0;
    int64_t randomRunTime = 0;
    bool loggedIn = false;
    int32_t userId = -1;
    std::string sessionText;
    int32_t version = -1;
    std::unique_ptr<VeImage> cow16;
    std::unique_ptr<VeImage> cow32;
    std::unique_ptr<VeImage> cow64;
    std::unique_ptr<QmControls> controls;
    // The race's sounds and controls when the player's devices do not steer it (see MakeGameplay);
    // declared before the race, which uses them, so that they outlive it.
    std::unique_ptr<QmRaceAudio> scriptedAudio;
    std::unique_ptr<QmRaceControls> playerRaceControls;
    std::unique_ptr<QmRaceControls> scriptedControls;
    std::unique_ptr<ArEnvironmentManager> environment;
    std::unique_ptr<QmClientGameplayManager> gameplay;

    // The after-race scene, the highscores, character and party pages (made on first use).
    QmResultsFlow& Results();
    // The intro, the menu pages and the notice dialog (made with the world; a headless run has
    // none, and asking for it then is a programming error).
    QmFrontEnd& FrontEnd();
    bool HasFrontEnd() const { return frontEnd != nullptr; }
    // Made when the editor is first opened; the race started from it returns to it.
    std::unique_ptr<QmEditor> editor;
    bool raceFromEditor = false;

private:
    friend class QmResultsFlow; // makes the party's races (MakeGameplay)

    struct Finish {
        bool pending = false;
        int64_t time = 0;
        int rank = -1;
    };

    void LoadOptionsAndLanguage();
    void LoadCharacterImages();
    // A first start puts the shipped tours into the game folder (a step of its own before the world).
    void SeedTours();
    // The world with its art, decoded beforehand when given.
    void CreateWorld(std::unique_ptr<QmWorldArt> art = nullptr);
    // Sets up the listener and loads the pages' sounds; the race's sounds wait in startupWork and
    // the musics are read on its worker (the menu's starts once there when "Music" is on).
    void StartAudio();
    // Replaces the race by a fresh one on the world's current map: the game's own race on the
    // player's devices, or one steered by the command line's recording, or one without sound.
    void MakeGameplay();
    // The world frame of the race and editor scenes: the world's update and its passes, with the
    // race drawn in each and updated in the last.
    void WorldFrame(bool race);
    // The random-level run shows the level it has reached and its carried time.
    void DrawRandomRunHud();
    // R, the pad's Y or the race asked for a new attempt.
    void RestartIfAsked();
    // The finish the race reported: unlocks what follows and keeps a qualifying time.
    void CompleteFinish();
    void ToggleMusic();
    void ToggleOption(const char* key);

    int32_t menuPage = 0;
    bool threeDAtStart = false;
    // The race's own game-pad latch, when it keeps one (the game's race on the player's devices).
    QmControls* raceControls = nullptr;
    QmInRaceMenu inRaceMenu;
    QmStartupWork startupWork;
    Finish finish;
    std::unique_ptr<QmResultsFlow> results;
    std::unique_ptr<QmFrontEnd> frontEnd;
};
