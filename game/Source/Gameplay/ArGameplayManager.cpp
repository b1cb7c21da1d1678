#include "Gameplay/ArGameplayManager.h"

ArGameplayManager::ArGameplayManager(QmCoreEnvironmentManager& world, VeInput& input, VeAudioManager& mixer,
                                     VeAudioHandle& music, QmRaceHost& host, QmRaceDrawer& drawer)
    : ArGameplayServices(input, mixer, music),
      QmClientGameplayManager(world, raceAudio, host, raceControls, drawer) {}
