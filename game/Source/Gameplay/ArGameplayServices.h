#pragma once
// What the game's race is built on, made before the race itself: the game's controls over the
// input state, the race's view of them, and the race's sounds on the mixer.
#include "Controls/QmControls.h"
#include "Gameplay/QmMixerRaceAudio.h"
#include "Gameplay/QmPlayerRaceControls.h"

class ArGameplayServices {
public:
    ArGameplayServices(VeInput& input, VeAudioManager& mixer, VeAudioHandle& music)
        : controls(&input), raceControls(controls, input), raceAudio(mixer, music) {}

    QmControls controls;
    QmPlayerRaceControls raceControls;
    QmMixerRaceAudio raceAudio;
};
