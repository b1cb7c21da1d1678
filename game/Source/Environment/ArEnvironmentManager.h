#pragma once
// The game's world manager: the world renderer plus how a race shows itself on it. It draws the
// race's entities in 2D and 3D (cows with the cow's art, the steered racer with its animated face,
// the ghost with the same face, translucent), the countdown number, the head-up panel with the
// map's name and the badge, centred lines of text with a shadow, and the screen-wide effects: the
// fade-in, the grey frame of death and the upside-down frame of Flip Vision. Grey and turn apply
// to the whole world image when the world is composed; the race's texts and panel are kept until
// then and drawn after them, over everything the world drew (the decorations included), so they
// stay upright and in colour. With hudShown off (option "HUD") the panel is left out.
#include "Environment/ArRacerFace.h"
#include "Environment/ClientEnvironmentManager/QmClientEnvironmentManager.h"
#include "Gameplay/QmRaceDrawer.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeTextStyle.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class ArEnvironmentManager : public QmClientEnvironmentManager, public QmRaceDrawer {
public:
    static constexpr int kHudX = 8;
    static constexpr int kHudY = 8;

    ArEnvironmentManager(VeScreen& screen, QmWorldViewHost& host, QmWorldFrontEndLink* frontEnd = nullptr,
                         std::unique_ptr<QmWorldArt> decodedArt = nullptr);
    ~ArEnvironmentManager() override;

    // ---- QmRaceDrawer ----
    // Forgets texts of an earlier frame that was never composed.
    void BeginFrame() override { raceTexts.clear(); }
    void SetFade(float multiplier) override;
    void ReversePixelOrder() override;
    void GreyFrame() override;
    void DrawText(const std::string& text, int y) override;
    void DrawCountdown(const std::string& number) override;
    void DrawHud(const std::string& mapName, int badge) override;
    void DrawEntity(const ArEntity& entity, EntityKind kind, float alpha) override;
    using QmClientEnvironmentManager::DrawEntity;
    int BodyFrameCount() const override { return racerFace.FrameCount(); }
    void SetRacerFace(int eyeDX, int eyeDY, int bodyFrame) override;
    void SetCharacter(int character) override;
    void SetIntro(float zoom) override { cameraZoom = zoom; }
    void SetConfusion(bool on) override { confusion = on; }
    const uint32_t* FireImage(int index, int blockSize) override;

    // The random-level run's panel in place of the map's: the level on the left, the run's time on
    // the right (the race draws no panel of its own there).
    void DrawRunHud(const std::string& level, const std::string& time);
    // What DrawEntity does with an entity of that kind standing at pixel (x, y).
    void DrawEntityAt(EntityKind kind, float x, float y, float alpha);
    // The racer's face image and texture at a block size (the registered racer art before the
    // race has built one).
    const VeSurface* RacerFaceImage(int size) const;
    const VeTexture* RacerFaceTexture(int size) const;
    bool FrameGreyed() const { return greyPending; }
    bool FrameTurned() const { return turnPending; }

    // The head-up panel is drawn (the coordinator follows option "HUD").
    bool hudShown = true;

protected:
    void ComposeOverlay() override;

private:
    void DrawPanel(const std::string& mapName, int badge);

    ArRacerFace racerFace;
    std::array<std::unique_ptr<VeImage>, 4> badges;
    std::unique_ptr<VeImage> panel;
    VeTextStyle textStyle;
    VeTextStyle shadowStyle;
    VeTextStyle countdownStyle;
    VeTextStyle countdownShadowStyle;
    VeTextStyle hudStyle;
    VeTextStyle hudSmallStyle;
    bool greyPending = false;
    bool turnPending = false;
    // Texts and the panel of this frame, drawn when the world is composed.
    std::vector<std::function<void()>> raceTexts;
};
