#include "Gameplay/QmPlayerRaceControls.h"

#include "Controls/QmControls.h"
#include "Input/VeInput.h"

QmPlayerRaceControls::QmPlayerRaceControls(QmControls& actions, VeInput& state)
    : controls(actions), input(state) {}

bool QmPlayerRaceControls::Jump() {
    return controls.Jump();
}

bool QmPlayerRaceControls::Left() {
    return controls.Left();
}

bool QmPlayerRaceControls::Right() {
    return controls.Right();
}

bool QmPlayerRaceControls::ConfirmOrClick() {
    return controls.Confirm() || input.pressed[VeKey::Space] || input.mousePressed[kMouseLeft];
}

bool QmPlayerRaceControls::MenuRequested() {
    return controls.Back();
}

void QmPlayerRaceControls::StartRumble() {
    controls.StartRumble();
}

void QmPlayerRaceControls::StopRumble() {
    controls.StopRumble();
}

void QmPlayerRaceControls::EndRaceInput() {
    input.ClearPressed();
    input.BlockRepeats();
}
