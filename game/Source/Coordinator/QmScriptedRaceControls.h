#pragma once
// The race's controls when a recording steers the racer (--autoplay): Jump, Left and Right follow
// the recording against the race time, while confirming, the in-race menu, the rumble and the
// finish's input reset still go to the player's controls, when there are any. Without a
// recording the player's controls steer as well (a race without sound still takes the keys).
#include "Gameplay/QmRaceControls.h"
#include "Gameplay/QmRecordedControls.h"

#include <memory>

class QmScriptedRaceControls : public QmRaceControls {
public:
    // player may be null (no input devices); recorded may be null (the player steers).
    QmScriptedRaceControls(QmRaceControls* player, std::unique_ptr<QmRecordedControls> recorded);

    void BeginFrame() override;
    bool Jump() override;
    bool Left() override;
    bool Right() override;
    bool ConfirmOrClick() override;
    bool MenuRequested() override;
    void StartRumble() override;
    void StopRumble() override;
    void EndRaceInput() override;

private:
    QmRaceControls* player;
    std::unique_ptr<QmRecordedControls> recorded;
    QmRaceControls none;
};
