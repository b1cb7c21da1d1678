#include "Coordinator/VaCoordinator.h"

#include "Audio/VeAudioManager.h"
#include "Controls/QmControls.h"
#include "Coordinator/QmSharedSounds.h"
#include "Coordinator/VaApp.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"
#include "Screen/Text/VeTextStyle.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <ctime>

namespace {
constexpr float kPulseLow = 0.8f;
constexpr float kPulseHigh = 1.1f;
constexpr float kPulseRate = 0.2f;
constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kGreen = 0x00FF00;
} // namespace

VaCoordinator::VaCoordinator(VaApp* owner) : app(owner) {
    Log("Initializing Coordinator.\n");
    VeScreen* screen = app->screen;
    if (screen != nullptr) {
        screen->errorSuffix = VaApp::kErrorSuffix;
        screen->SetTitle("Quillmaze");
    }
    Register(this);
    if (screen != nullptr) {
        screen->threeD = true;
    }
    CreateFolder(GetGameFolder());

    LoadOptionsAndLanguage();

    controls = std::make_unique<QmControls>(app->input);

    app->SwitchScene(SceneMenu);
    menuPage = 0;

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
    options = std::make_unique<QmOptions>();
    options->LoadOptions();
    if (app->commandLine.fps) {
        options->Set(QmOptions::kFps, "1");
    }
    options->Set(QmOptions::kShadowsEnabled, "1");
    if (screen != nullptr && !screen->glEnabled) {
        Log("OpenGL Disabled.\n");
        options->Set(QmOptions::k3DGraphics, "0");
        options->SaveOptions();
    }
    if (screen != nullptr) {
        screen->SetFullscreen(options->IsOn(QmOptions::kFullscreen), app->input);
    }
    SeedRand(static_cast<uint32_t>(std::time(nullptr)));
    language = std::make_unique<QmLanguage>("Lang");
    language->SetLanguage(*options);
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
    QmSharedSounds::LoadAll(*audio);
    if (options->IsOn(QmOptions::kMusic)) {
        musicChannel = audio->Play("Music", true);
    }
}

VaCoordinator::~VaCoordinator() {
    if (app->audio != nullptr) {
        app->audio->StopAll();
    }
    options.reset();
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

void VaCoordinator::GameFrame() {
    VeScreen* screen = app->screen;
    VeInput* input = app->input;
    if (screen != nullptr) {
        screen->overlay.Fill(0);
        screen->screenDisplaySize = 1.0f;
        screen->screenColorMultiplier = 1.0f;
    }
    QmControls::RefreshPadState();

    const bool is3D = OptionOn(QmOptions::k3DGraphics);
    if (screen != nullptr) {
        screen->threeD = is3D;
    }

    switch (app->scene) {
    case SceneAfterRace:
    case SceneMenu:
        if (screen != nullptr) {
            screen->ResetViewport();
        }
        break;
    default:
        break;
    }

    if (input != nullptr && input->pressed[VeKey::Escape] != 0 && app->scene == SceneMenu &&
        CurrentMenuPage() == 0) {
        app->quitRequested = true;
    }

    if (returnToMenuRequested) {
        ReturnToMenu();
        returnToMenuRequested = false;
        restartRequested = false;
    }

    HandleHotkeys(ReadHotkeys());

    if (is3D && screen != nullptr) {
        screen->BindDefaultFramebuffer();
    }

    ApplyDisplayOptions();
    AnimatePulseBlink(app->frameDelta);
    controls->UpdateLatch();
}

void VaCoordinator::ReturnToMenu() {
    if (playMode == PlayRandomRun) {
        menuPage = 1;
    }
    app->SwitchScene(SceneMenu);
}

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
