#pragma once
// The game's race: the client race wired to the player's devices and the mixer. The application
// owns one, makes a new one for every attempt, calls StartRace (or PrepareRace) once and then
// Update once per frame of the race scene. Drawing goes to the given drawer (the world renderer).
#include "Gameplay/ArGameplayServices.h"
#include "Gameplay/QmClientGameplayManager.h"

class ArGameplayManager : private ArGameplayServices, public QmClientGameplayManager {
public:
    // music is the application's music channel, which the race replaces and speeds up.
    ArGameplayManager(QmCoreEnvironmentManager& world, VeInput& input, VeAudioManager& mixer,
                      VeAudioHandle& music, QmRaceHost& host, QmRaceDrawer& drawer);

    QmControls& Controls() { return ArGameplayServices::controls; }
};
