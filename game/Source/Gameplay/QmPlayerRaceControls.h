#pragma once
// The race's controls read from the player's keyboard, mouse and game pad through the game's
// action mapping.
#include "Gameplay/QmRaceControls.h"

class QmControls;
class VeInput;

class QmPlayerRaceControls : public QmRaceControls {
public:
    QmPlayerRaceControls(QmControls& controls, VeInput& input);

    bool Jump() override;
    bool Left() override;
    bool Right() override;
    bool ConfirmOrClick() override;
    bool MenuRequested() override;
    void StartRumble() override;
    void StopRumble() override;
    void EndRaceInput() override;

private:
    QmControls& controls;
    VeInput& input;
};
