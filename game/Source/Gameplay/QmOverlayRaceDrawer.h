#pragma once
// A plain 2D view of a race drawn straight into the screen's overlay: the map's cells as flat
// coloured squares, the entities as faced squares, the countdown as a shrinking bar, and the
// flip and death effects on the whole frame. It stands in wherever the world renderer is not
// available, so that a race can always be seen.
#include "Gameplay/QmRaceDrawer.h"

class QmCoreEnvironmentManager;
class VeSurface;

class QmOverlayRaceDrawer : public QmRaceDrawer {
public:
    QmOverlayRaceDrawer(VeSurface& overlay, QmCoreEnvironmentManager& world);

    // Draws the map.
    void BeginFrame() override;
    void ReversePixelOrder() override;
    void GreyFrame() override;
    void DrawCountdown(const std::string& number) override;
    void DrawEntity(const ArEntity& entity, EntityKind kind, float alpha) override;
    void SetRacerFace(int eyeDX, int eyeDY, int bodyFrame) override;
    void SetConfusion(bool on) override { confused = on; }

    // The flat colour of a cell (0xRRGGBB), or -1 for one that shows the background.
    static int CellColour(int id);

private:
    VeSurface& overlay;
    QmCoreEnvironmentManager& world;
    bool confused = false;
    // The frame is turned upside down: entities drawn after the turn are placed turned as well.
    bool turned = false;
    int eyeX = 0;
    int eyeY = 0;
    bool eyesClosed = false;
};
