#include "Coordinator/VaCoordinator.h"

#include "Audio/VeAudioManager.h"
#include "Controls/QmControls.h"
#include "Coordinator/QmResultsFlow.h"
#include "Coordinator/QmScriptedRaceControls.h"
#include "Coordinator/QmSharedSounds.h"
#include "Coordinator/VaApp.h"
#include "Editor/QmEditor.h"
#include "Environment/ArEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmTourSeeder.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmManagementPage.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmPlayPage.h"
#include "Gameplay/ArGameplayManager.h"
#include "Gameplay/QmMixerRaceAudio.h"
#include "Gameplay/QmPlayerRaceControls.h"
#include "Gameplay/QmRecordedControls.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeTextStyle.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {
constexpr float kPulseLow = 0.8f;
constexpr float kPulseHigh = 1.1f;
constexpr float kPulseRate = 0.2f;
constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kGreen = 0x00FF00;
// The shipped tours beside the program.
constexpr const char* kShippedMaps = "Maps";

// The racer's art at 64, 32 and 16 pixels, each with the faces of the cube's other sides.
constexpr int kRacerSizes[3] = {64, 32, 16};
constexpr const char* kRacerFiles[3][2] = {
    {"Assets/Characters/Default.png", "Assets/Characters/Default_Sides.png"},
    {"Assets/Characters/Default_32.png", "Assets/Characters/Default_32_Sides.png"},
    {"Assets/Characters/Default_16.png", "Assets/Characters/Default_16_Sides.png"}};
} // namespace

VaCoordinator::VaCoordinator(VaApp* owner) : app(owner) {
    Log("Initializing Coordinator.\n");
    VeScreen* screen = app->screen;
    if (screen != nullptr) {
        screen->errorSuffix = VaApp::kErrorSuffix;
        screen->SetTitle("Quillmaze");
    }
    Register(this);
    CreateFolder(GetGameFolder());

    LoadOptionsAndLanguage();
    LoadCharacterImages();

    controls = std::make_unique<QmControls>(app->input);
    // The screen's own shaders first (one a frame): the world's drawing needs them.
    if (screen != nullptr) {
        startupWork.Add([screen] { screen->PrepareShaders(); });
        startupWork.Add([screen] { screen->PrepareShaders(); });
    }
    // The world (the tours, the first map, the art, the race) waits for the intro's first frame
    // when the app asks for a quick start: the intro does not show it, the pages read it only
    // once they are opened, and whatever needs it at once runs the start-up work first. Its art
    // is decoded a frame before it is made.
    if (app->QuickStart()) {
        startupWork.Add([this] { SeedTours(); });
        auto art = std::make_shared<std::unique_ptr<QmWorldArt>>();
        if (screen != nullptr) {
            startupWork.Add([art] { (*art = std::make_unique<QmWorldArt>())->Load(); });
        }
        startupWork.Add([this, art] { CreateWorld(std::move(*art)); });
    } else {
        SeedTours();
        CreateWorld();
    }
    if (screen != nullptr) {
        for (int stage = 0; stage < QmClientEnvironmentManager::kGraphicsStages; ++stage) {
            startupWork.Add([this] {
                if (environment) {
                    environment->PrepareGraphicsStep();
                }
            });
        }
        frontEnd = std::make_unique<QmFrontEnd>();
        frontEnd->MenuPages();
    }
    if (screen != nullptr && !screen->glEnabled && threeDAtStart) {
        ShowNotice(language->GetLine(kNoOpenGLTitleLine), language->GetLine(kNoOpenGLTextLine));
    }

    app->SwitchScene(SceneMenu);
    SetMenuPage(0);

    textBlack = std::make_unique<VeTextStyle>();
    textBlack->Colour(0x000000);
    textWhite = std::make_unique<VeTextStyle>();
    textWhite->Colour(0xFFFFFF);

    StartAudio();

    pulse = 1.0f;
    pulseRising = true;
    blink = 0.0f;
    blinkRising = true;
    Log("Coordinator initialized.\n");
}

void VaCoordinator::LoadOptionsAndLanguage() {
    VeScreen* screen = app->screen;
    const QmCommandLine& line = app->commandLine;
    options = std::make_unique<QmOptions>();
    options->LoadOptions();
    // Written back at once: a first start leaves the defaults on disk, a damaged file is replaced.
    options->SaveOptions();
    if (line.fps) {
        options->Set(QmOptions::kFps, "1");
    }
    // --2d and --3d choose the view of this run only; nothing below saves them (without OpenGL
    // the 2D view is stored, as it would be anyway).
    if (line.threeD.has_value()) {
        options->SetOn(QmOptions::k3DGraphics, *line.threeD);
    }
    options->Set(QmOptions::kShadowsEnabled, "1");
    threeDAtStart = options->IsOn(QmOptions::k3DGraphics);
    if (screen != nullptr && !screen->glEnabled) {
        Log("OpenGL Disabled.\n");
        options->Set(QmOptions::k3DGraphics, "0");
        options->SaveOptions();
    }
    if (screen != nullptr) {
        screen->SetFullscreen(options->IsOn(QmOptions::kFullscreen), app->input);
    }
    SeedRand(line.seed.has_value() ? *line.seed : static_cast<uint32_t>(std::time(nullptr)));
    language = std::make_unique<QmLanguage>("Lang");
    language->SetLanguage(*options);
}

void VaCoordinator::LoadCharacterImages() {
    if (app->screen == nullptr) {
        return; // nothing draws them
    }
    for (const auto& files : kRacerFiles) {
        images.push_back(std::make_unique<VeImage>(files[0]));
        images.push_back(std::make_unique<VeImage>(files[1]));
    }
    cow16 = std::make_unique<VeImage>("Assets/Characters/Cow/Cow_16.png");
    cow32 = std::make_unique<VeImage>("Assets/Characters/Cow/Cow_32.png");
    cow64 = std::make_unique<VeImage>("Assets/Characters/Cow/Cow_64.png");
}

void VaCoordinator::SeedTours() {
    if (app->screen == nullptr) {
        return; // no world to play them in
    }
    // A first start: a game folder with no tour list gets the shipped tours (make run does the same
    // on every run; a folder in use is left to it, so a tour the player deleted stays deleted).
    if (!FileExists(GetGameFolder() + "/Maps/tours.dat") && IsDirectory(kShippedMaps)) {
        QmSeedReport report;
        std::string error;
        if (!QmTourSeeder::Seed(kShippedMaps, GetGameFolder(), report, error)) {
            Log("The shipped tours could not be put into the game folder: %s.\n", error.c_str());
        }
        for (const std::string& tour : report.copiedTours) {
            Log("Added the shipped tour %s to the game folder.\n", tour.c_str());
        }
    }
}

void VaCoordinator::CreateWorld(std::unique_ptr<QmWorldArt> art) {
    if (app->screen == nullptr) {
        return;
    }
    environment = std::make_unique<ArEnvironmentManager>(*app->screen, *this, this, std::move(art));
    for (size_t i = 0; i < 3; ++i) {
        environment->RegisterRacerImages(kRacerSizes[i], images[2 * i].get(), images[2 * i + 1].get());
    }
    environment->RegisterCowImage(16, cow16.get());
    environment->RegisterCowImage(32, cow32.get());
    environment->RegisterCowImage(64, cow64.get());
    // The front end and the editor come next once they exist; then the race.
    MakeGameplay();
}

void VaCoordinator::StartAudio() {
    VeAudioManager* audio = app->audio;
    musicChannel.Clear();
    if (audio == nullptr) {
        return;
    }
    audio->SetErrorSuffix(VaApp::kErrorSuffix);
    audio->SetListenerPosition(0.5f, 0.5f, 0.0f);
    audio->SetListenerForward(0.0f, 0.0f, -1.0f);
    audio->SetListenerUp(0.0f, 1.0f, 0.0f);
    QmSharedSounds::LoadForStartup(*audio, startupWork, [this, audio] {
        if (options->IsOn(QmOptions::kMusic)) {
            musicChannel = audio->Play("Music", true);
        }
    });
}

void VaCoordinator::FinishStartup() {
    startupWork.RunAll();
}

VaCoordinator::~VaCoordinator() {
    if (app->audio != nullptr) {
        app->audio->StopAll();
    }
    // The pages refer to the race and the world, and the race to the world (it is the world's
    // racer link): the front end goes first, then the race.
    frontEnd.reset();
    results.reset();
    editor.reset();
    gameplay.reset();
    raceControls = nullptr;
    scriptedControls.reset();
    playerRaceControls.reset();
    scriptedAudio.reset();
    environment.reset();
    options.reset();
    images.clear();
    cow16.reset();
    cow32.reset();
    cow64.reset();
    textBlack.reset();
    textWhite.reset();
    language.reset();
    controls.reset();
    const std::string cache = GetGameFolder() + "/Cache";
    DeleteFolder(cache);
    CreateFolder(cache);
    if (Registered() && C() == this) {
        Register(nullptr);
    }
}

const std::string& VaCoordinator::Option(const std::string& key) const {
    return options->Get(key);
}

void VaCoordinator::SetOption(const std::string& key, const std::string& value) {
    options->Set(key, value);
}

bool VaCoordinator::OptionOn(const std::string& key) const {
    return options->IsOn(key);
}

// ---- The race ----

void VaCoordinator::MakeGameplay() {
    gameplay.reset();
    raceControls = nullptr;
    scriptedControls.reset();
    scriptedAudio.reset();
    if (!environment) {
        return;
    }
    VeInput* input = app->input;
    VeAudioManager* audio = app->audio;
    const QmCommandLine& line = app->commandLine;
    if (input != nullptr && audio != nullptr && !line.autoplay.has_value()) {
        auto race = std::make_unique<ArGameplayManager>(*environment, *input, *audio, musicChannel, *this,
                                                        *environment);
        raceControls = &race->Controls();
        gameplay = std::move(race);
        return;
    }
    if (input != nullptr && !playerRaceControls) {
        playerRaceControls = std::make_unique<QmPlayerRaceControls>(*controls, *input);
    }
    std::unique_ptr<QmRecordedControls> recorded;
    if (line.autoplay.has_value()) {
        recorded = std::make_unique<QmRecordedControls>(
            *line.autoplay, [this] { return gameplay ? gameplay->RaceTime() : 0; });
    }
    scriptedControls =
        std::make_unique<QmScriptedRaceControls>(playerRaceControls.get(), std::move(recorded));
    if (audio != nullptr) {
        scriptedAudio = std::make_unique<QmMixerRaceAudio>(*audio, musicChannel);
    } else {
        scriptedAudio = std::make_unique<QmRaceAudio>();
    }
    gameplay = std::make_unique<QmClientGameplayManager>(*environment, *scriptedAudio, *this,
                                                         *scriptedControls, *environment);
}

bool VaCoordinator::StartPlay(bool retry) {
    FinishStartup();
    if (!environment) {
        return false; // no window, no race
    }
    app->SwitchScene(SceneRace);
    gameplay.reset();
    switch (playMode) {
    case PlayRandomRun:
        if (!retry) {
            if (Rand() % 3 == 0) {
                environment->SetBlockSize(environment->blockSize == 32 ? 64 : 32);
            }
            environment->GenerateLevel();
            environment->MarkStaticLayerStale();
            // A generated level is no stored map: it has no scores to race against, and whatever
            // map was loaded before (the tutorial, say) lends it neither its name nor its rules.
            environment->mapName = language->GetLine(kLevelLine) + " " + std::to_string(randomRunLevels + 1);
            environment->mapUid.clear();
        }
        MakeGameplay();
        gameplay->StartRace(false, true);
        return true;
    case PlayParty:
        return Results().StartPartyRace(retry);
    default:
        MakeGameplay();
        gameplay->StartRace(!retry, true);
        return true;
    }
}

bool VaCoordinator::PlayMap(int tour, int map, std::string& error) {
    FinishStartup();
    if (!environment) {
        error = "a race needs the game's window";
        return false;
    }
    const int tours = static_cast<int>(environment->tours.size());
    if (tour < 0 || tour >= tours) {
        error = "the game folder has no tour " + std::to_string(tour) + " (it has " + std::to_string(tours) +
                (tours == 1 ? " tour, numbered from 0)" : " tours, numbered from 0)");
        return false;
    }
    const int maps = static_cast<int>(environment->tourLevels[static_cast<size_t>(tour)].size());
    if (map < 0 || map >= maps) {
        error = "tour " + std::to_string(tour) + " (" + environment->tourFolders[static_cast<size_t>(tour)] +
                ") has no map " + std::to_string(map) + " (it has " + std::to_string(maps) +
                (maps == 1 ? " map, numbered from 0)" : " maps, numbered from 0)");
        return false;
    }
    playMode = PlayTour;
    raceFromEditor = false;
    gameplay.reset();
    environment->tourIndex = tour;
    environment->Reload(map, false);
    return StartPlay(false);
}

bool VaCoordinator::OpenEditor(int tour, int map, std::string& error) {
    FinishStartup();
    if (!environment) {
        error = "the editor needs the game's window";
        return false;
    }
    const int tours = static_cast<int>(environment->tours.size());
    if (tour < 0 || tour >= tours) {
        error = "the game folder has no tour " + std::to_string(tour);
        return false;
    }
    const int maps = static_cast<int>(environment->tourLevels[static_cast<size_t>(tour)].size());
    if (map < 0 || map >= maps) {
        error = "tour " + std::to_string(tour) + " has no map " + std::to_string(map);
        return false;
    }
    playMode = PlayTour;
    raceFromEditor = false;
    inRaceMenu.Close();
    environment->tourIndex = tour;
    environment->Reload(map, false);
    MakeGameplay();
    if (!editor) {
        editor = std::make_unique<QmEditor>(*environment, *this, app->input, controls.get());
    }
    app->SwitchScene(SceneEditor);
    editor->Enter(true);
    return true;
}

void VaCoordinator::PlayFromEditor() {
    raceFromEditor = true;
    environment->Reload(environment->levelIndex, false);
    StartPlay(false);
}

void VaCoordinator::LeaveEditor() {
    raceFromEditor = false;
    environment->Reload(environment->levelIndex, false);
    MakeGameplay();
    app->SwitchScene(SceneMenu);
}

std::string VaCoordinator::EditorLine(int number) {
    return language->GetLine(number);
}

void VaCoordinator::MapListsChanged() {
    if (frontEnd) {
        // Reading the lists makes the listed tour the world's current one: the edited map's stays
        // (its blocks in memory are untouched).
        const int32_t tour = environment ? environment->tourIndex : 0;
        frontEnd->MenuPages().PlayPage().RebuildLists();
        frontEnd->MenuPages().ManagementPage().RebuildLists();
        if (environment) {
            environment->tourIndex = tour;
        }
    }
}

bool VaCoordinator::OpenCopyPage() {
    if (!frontEnd || !environment) {
        return false;
    }
    frontEnd->MenuPages().SetPage(QmMenuPages::kPlay);
    frontEnd->MenuPages().PlayPage().BeginCopyChoice(environment->tourIndex, environment->levelIndex);
    app->SwitchScene(SceneMenu);
    return true;
}

void VaCoordinator::AskEditorQuestion(const std::string& action, const std::string& title,
                                      const std::string& text) {
    if (frontEnd) {
        frontEnd->Dialog().Show(QmNoticeDialog::kTwoButtons, false, 0, action, text, title);
    }
}

bool VaCoordinator::EditorDialogOpen() const {
    return frontEnd && frontEnd->Dialog().Visible();
}

void VaCoordinator::EditorDialogFrame() {
    if (EditorDialogOpen()) {
        frontEnd->Dialog().Draw();
        frontEnd->Dialog().Update();
    }
}

bool VaCoordinator::EditorQuestionConfirmed(const std::string& action) const {
    return frontEnd && frontEnd->Dialog().Action() == action &&
           frontEnd->Dialog().AnsweredLine(QmNoticeDialog::kYesLine);
}

void VaCoordinator::CloseEditorDialog() {
    if (frontEnd) {
        frontEnd->Dialog().Hide();
    }
}

void VaCoordinator::ReturnToMenu() {
    // A test run from the editor goes back to the editor.
    inRaceMenu.Close();
    MakeGameplay();
    if (environment && playMode != PlayRandomRun) {
        environment->Reload(environment->levelIndex, false);
    }
    if (raceFromEditor && editor && playMode == PlayTour) {
        app->SwitchScene(SceneEditor);
        editor->Enter(false);
        return;
    }
    if (playMode == PlayRandomRun) {
        SetMenuPage(1);
    } else if (playMode == PlayParty) {
        SetMenuPage(Results().PageAfterLeavingParty());
    }
    app->SwitchScene(SceneMenu);
}

void VaCoordinator::RestartIfAsked() {
    if (app->scene != SceneRace || !gameplay) {
        return;
    }
    const VeInput* input = app->input;
    const bool keyRetry = (input != nullptr && input->pressed[VeKey::R] != 0) || controls->PadYPressed();
    if (!keyRetry && gameplay->retryRequested == 0) {
        return;
    }
    ReturnToMenu();
    app->SwitchScene(SceneRace);
    if (playMode == PlayRandomRun) {
        StartPlay(keyRetry);
    } else if (gameplay) {
        gameplay->StartRace(false, true);
    }
}

void VaCoordinator::RaceFinished(int64_t finalTime, int rank) {
    // Completed at the end of the frame: the after-race scene, or the Marathon's next map.
    finish.pending = true;
    finish.time = finalTime;
    finish.rank = rank;
}

QmResultsFlow& VaCoordinator::Results() {
    if (!results) {
        results = std::make_unique<QmResultsFlow>(*this);
    }
    return *results;
}

void VaCoordinator::CompleteFinish() {
    if (!finish.pending) {
        return;
    }
    finish.pending = false;
    Log("Finished %s in %lld ms.\n", environment ? environment->mapName.c_str() : "",
        static_cast<long long>(finish.time));
    if (!environment || !gameplay) {
        return;
    }
    Results().CompleteFinish(finish.time, finish.rank);
}

std::string VaCoordinator::PlayerName() const {
    const std::string& name = Option(QmOptions::kUsername);
    return name.empty() ? language->GetLine(kPlayerLine) : name;
}

void VaCoordinator::OpenMenu(int languageLine, const std::string& command) {
    inRaceMenu.Open(language->GetLine(kPausedLine), language->GetLine(kResumeLine),
                    language->GetLine(languageLine), command);
    if (app->input != nullptr) {
        app->input->BlockRepeats(); // a held Escape does not close it again at once
    }
}

std::string VaCoordinator::UpdateMenu() {
    const VeScreen* screen = app->screen;
    const std::string chosen =
        inRaceMenu.Update(*controls, app->input, screen != nullptr ? screen->width : 640,
                          screen != nullptr ? screen->height : 640);
    if (!inRaceMenu.IsOpen() && app->input != nullptr) {
        app->input->BlockRepeats();
    }
    return chosen;
}

// ---- The frame ----

void VaCoordinator::GameFrame() {
    VeScreen* screen = app->screen;
    VeInput* input = app->input;
    if (screen != nullptr) {
        screen->overlay.Fill(0);
        screen->screenDisplaySize = 1.0f;
        screen->screenColorMultiplier = 1.0f;
    }
    QmControls::RefreshPadState();
    // What the first frame did not need: a step a frame while the intro shows, all of it at once
    // anywhere else.
    if (app->scene == SceneMenu && CurrentMenuPage() == 0) {
        if (app->framesRun > 0) {
            startupWork.RunNext();
        }
    } else {
        FinishStartup();
    }

    const bool is3D = OptionOn(QmOptions::k3DGraphics);

    bool worldDrawn = false;
    switch (app->scene) {
    case SceneAfterRace:
    case SceneMenu:
        if (screen != nullptr) {
            screen->ResetViewport();
        }
        if (frontEnd) {
            frontEnd->MenuPages().MenuFrame();
        }
        if (app->scene == SceneAfterRace) {
            Results().AfterRaceFrame();
        } else if (!frontEnd) {
            Results().PageFrame(menuPage);
        }
        break;
    case SceneEditor:
        if (environment && editor) {
            editor->Frame(GetTimeMs(), screen != nullptr ? &screen->overlay : nullptr);
            worldDrawn = true;
        }
        break;
    case SceneRace:
        if (environment) {
            WorldFrame(app->scene == SceneRace);
            worldDrawn = true;
        }
        break;
    default:
        break;
    }

    RestartIfAsked();

    if (input != nullptr && input->pressed[VeKey::Escape] != 0 && app->scene == SceneMenu &&
        CurrentMenuPage() == 0) {
        app->quitRequested = true;
    }

    CompleteFinish();
    if (returnToMenuRequested) {
        const bool restart = restartRequested;
        returnToMenuRequested = false;
        restartRequested = false;
        ReturnToMenu();
        if (restart) {
            StartPlay(true);
        }
    }

    HandleHotkeys(ReadHotkeys());

    if (is3D && screen != nullptr) {
        screen->BindDefaultFramebuffer();
    }
    if (worldDrawn) {
        environment->ComposeWorld(false, false);
    }
    if (screen != nullptr) { // the pages cover the whole screen: no 3D scene under them
        screen->threeD = is3D && screen->glEnabled && worldDrawn;
    }
    // What stands over the race comes after the world is composed, so the flipped or grey world
    // never turns or greys it.
    if (screen != nullptr && app->scene == SceneRace) {
        Results().DrawRaceOverlay();
        inRaceMenu.Draw(screen->overlay, pulse);
    }

    ApplyDisplayOptions();
    AnimatePulseBlink(app->frameDelta);
    controls->UpdateLatch();
    if (raceControls != nullptr) {
        raceControls->UpdateLatch();
    }
}

void VaCoordinator::WorldFrame(bool race) {
    environment->hudShown = OptionOn(QmOptions::kHud);
    environment->Update();
    const int passes = environment->PassCount();
    for (int pass = 0; pass < passes; ++pass) {
        shadowPass = passes == 2 && pass == 0;
        environment->BeginPass(shadowPass);
        if (race && gameplay) {
            if (shadowPass) {
                gameplay->DrawEntities();
            } else {
                gameplay->Update(app->frameDelta);
                if (playMode == PlayRandomRun) {
                    DrawRandomRunHud();
                }
            }
        }
        environment->EndPass();
    }
    shadowPass = false;
}

void VaCoordinator::DrawRandomRunHud() {
    char time[32];
    std::snprintf(time, sizeof(time), "%.2f", static_cast<double>(gameplay->RaceTime()) / 1000.0);
    environment->DrawRunHud(language->GetLine(kLevelLine) + " " + std::to_string(randomRunLevels + 1), time);
}

// ---- Hosts ----

bool VaCoordinator::ThreeDEnabled() const {
    return OptionOn(QmOptions::k3DGraphics);
}

bool VaCoordinator::ShadowsEnabled() const {
    return OptionOn(QmOptions::kShadowsEnabled);
}

bool VaCoordinator::InEditor() const {
    return app->scene == SceneEditor;
}

bool VaCoordinator::InRace() const {
    return app->scene == SceneRace;
}

bool VaCoordinator::Flipped() const {
    return InRace() && gameplay && gameplay->flip;
}

QmRacerView VaCoordinator::Racer() const {
    QmRacerView view;
    const ArPlayer* racer = gameplay ? gameplay->Racer() : nullptr;
    if (racer != nullptr) {
        view.exists = true;
        view.x = racer->x;
        view.y = racer->y;
        view.active = racer->active != 0;
        view.groundBlock = racer->groundBlock;
    }
    return view;
}

float VaCoordinator::FrameTime() const {
    return app->frameDelta;
}

bool VaCoordinator::MusicEnabled() const {
    return OptionOn(QmOptions::kMusic);
}

std::string VaCoordinator::LanguageLine(int line) const {
    return language->GetLine(line);
}

std::string VaCoordinator::GetLine(int number) {
    return language->GetLine(number);
}

void VaCoordinator::ShowNotice(const std::string& title, const std::string& text) {
    Log("Notice: %s: %s\n", title.c_str(), text.c_str());
    if (frontEnd) {
        frontEnd->Dialog().Show(QmNoticeDialog::kOneButton, false, 0, "", text, title);
    }
}

QmFrontEnd& VaCoordinator::FrontEnd() {
    if (!frontEnd) {
        Halt("Quillmaze", "The front end exists only with the game's window.");
    }
    return *frontEnd;
}

int32_t VaCoordinator::CurrentMenuPage() const {
    return frontEnd ? frontEnd->MenuPages().Page() : menuPage;
}

void VaCoordinator::SetMenuPage(int32_t page) {
    menuPage = page;
    if (frontEnd) {
        frontEnd->MenuPages().SetPage(page);
    }
}

void VaCoordinator::PlaySound(const std::string& name, float /*volume*/) {
    // The named sounds keep the volume they were loaded with.
    if (app->audio != nullptr) {
        app->audio->Play(name);
    }
}

// ---- Hotkeys, display options, pulse ----

VaCoordinator::HotkeyKeys VaCoordinator::ReadHotkeys() const {
    HotkeyKeys keys;
    const VeInput* input = app->input;
    if (input == nullptr) {
        return keys;
    }
    keys.ctrl = input->held[VeKey::LeftCtrl] != 0 || input->held[VeKey::RightCtrl] != 0;
    keys.f = input->pressed[VeKey::F] != 0;
    keys.m = input->pressed[VeKey::M] != 0;
    keys.h = input->pressed[VeKey::H] != 0;
    keys.u = input->pressed[VeKey::U] != 0;
    keys.f8 = input->pressed[VeKey::F8] != 0;
    keys.f10 = input->pressed[VeKey::F10] != 0;
    return keys;
}

VaCoordinator::Hotkey VaCoordinator::HandleHotkeys(const HotkeyKeys& keys) {
    if (keys.ctrl && keys.f) {
        if (app->screen != nullptr) {
            app->screen->SetFullscreen(!app->screen->fullscreen, app->input);
        }
        return Hotkey::Fullscreen;
    }
    if (keys.ctrl && keys.m) {
        ToggleMusic();
        return Hotkey::Music;
    }
    if (keys.ctrl && keys.h) {
        ToggleOption(QmOptions::kHud);
        return Hotkey::Hud;
    }
    if (keys.ctrl && keys.u) {
        ToggleOption(QmOptions::kUi);
        return Hotkey::Ui;
    }
    if (keys.f8) {
        if (!OptionOn(QmOptions::kVsync)) {
            SetOption(QmOptions::kFps, "1");
        } else {
            ToggleOption(QmOptions::kFps);
        }
        SetOption(QmOptions::kVsync, "1");
        return Hotkey::FpsWithVsync;
    }
    if (keys.f10) {
        if (OptionOn(QmOptions::kVsync)) {
            SetOption(QmOptions::kFps, "1");
        } else {
            ToggleOption(QmOptions::kFps);
        }
        SetOption(QmOptions::kVsync, OptionOn(QmOptions::kFps) ? "0" : "1");
        return Hotkey::FpsWithoutVsync;
    }
    return Hotkey::None;
}

void VaCoordinator::ToggleOption(const char* key) {
    SetOption(key, OptionOn(key) ? "0" : "1");
}

void VaCoordinator::ToggleMusic() {
    VeAudioManager* audio = app->audio;
    if (audio == nullptr) {
        return; // no sound at all: nothing to switch
    }
    FinishStartup();
    if (audio->Stop(musicChannel)) {
        SetOption(QmOptions::kMusic, "0");
    } else {
        musicChannel = audio->Play("Music", true);
        SetOption(QmOptions::kMusic, "1");
    }
}

void VaCoordinator::ApplyDisplayOptions() {
    VeScreen* screen = app->screen;
    if (screen == nullptr) {
        return;
    }
    if (OptionOn(QmOptions::kVsync)) {
        screen->SetVSync();
    }
    screen->SetFpsDisplay(OptionOn(QmOptions::kFps),
                          {kFpsColours[0], kFpsColours[1], kFpsColours[2], kFpsColours[3]}, app->frameDelta);
}

void VaCoordinator::AnimatePulseBlink(float step) {
    if (pulseRising) {
        pulse += kPulseRate * step;
        if (pulse > kPulseHigh) {
            pulse = kPulseHigh;
            pulseRising = false;
        }
    } else {
        pulse -= kPulseRate * step;
        if (pulse < kPulseLow) {
            pulse = kPulseLow;
            pulseRising = true;
        }
    }
    if (blinkRising) {
        blink += step;
        if (blink > 1.0f) {
            blink = 1.0f;
            blinkRising = false;
        }
    } else {
        blink -= step;
        if (blink < 0.0f) {
            blink = 0.0f;
            blinkRising = true;
        }
    }
}

uint32_t VaCoordinator::ScaleColour(uint32_t colour) const {
    if (colour == kWhite) {
        return kWhite;
    }
    const float factor = colour == kGreen ? (pulse - 1.0f) * 3.0f + 1.0f : pulse;
    auto scale = [factor](uint32_t channel) -> uint32_t {
        const float scaled = static_cast<float>(channel) * factor;
        if (!(scaled > 0.0f)) {
            return 0;
        }
        return std::min<uint32_t>(static_cast<uint32_t>(scaled), 255u);
    };
    const uint32_t red = scale((colour >> 16) & 0xFF);
    const uint32_t green = scale((colour >> 8) & 0xFF);
    const uint32_t blue = scale(colour & 0xFF);
    return (red << 16) | (green << 8) | blue;
}
