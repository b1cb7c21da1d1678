#include "Coordinator/QmScriptedRaceControls.h"

QmScriptedRaceControls::QmScriptedRaceControls(QmRaceControls* playerControls,
                                               std::unique_ptr<QmRecordedControls> recording)
    : player(playerControls != nullptr ? playerControls : &none), recorded(std::move(recording)) {}

void QmScriptedRaceControls::BeginFrame() {
    player->BeginFrame();
}

bool QmScriptedRaceControls::Jump() {
    return recorded ? recorded->Jump() : player->Jump();
}

bool QmScriptedRaceControls::Left() {
    return recorded ? recorded->Left() : player->Left();
}

bool QmScriptedRaceControls::Right() {
    return recorded ? recorded->Right() : player->Right();
}

bool QmScriptedRaceControls::ConfirmOrClick() {
    return player->ConfirmOrClick();
}

bool QmScriptedRaceControls::MenuRequested() {
    return player->MenuRequested();
}

void QmScriptedRaceControls::StartRumble() {
    player->StartRumble();
}

void QmScriptedRaceControls::StopRumble() {
    player->StopRumble();
}

void QmScriptedRaceControls::EndRaceInput() {
    player->EndRaceInput();
}
