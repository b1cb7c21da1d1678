#pragma once
// The game's 26 sound effects. Each is a handful of voices in A = 440 Hz tuning; pitched
// effects use the notes of D minor / F major, the key of the music. Every effect but the two
// unlock fanfares is shorter than 0.6 s. Each is centred on zero and levelled so that, at the
// volume the game plays it at, its loudest 50 ms sit at one common level over the music.
#include "SampleBuffer.h"

#include <string>
#include <vector>

struct Effect {
    std::string file; // relative to the repository root, e.g. "Audio/Jump.wav"
    SampleBuffer sound;
    float loadVolume = 1.0f; // the volume the game plays the file at
};

class EffectBank {
public:
    // All 26 effects, in the order the game loads them.
    static std::vector<Effect> Build();

private:
    static SampleBuffer Countdown();
    static SampleBuffer Finish();
    static SampleBuffer Hit();
    static SampleBuffer Fire();
    static SampleBuffer EnemyHit();
    static SampleBuffer Jump();
    static SampleBuffer RoofHit();
    static SampleBuffer Select();
    static SampleBuffer Start();
    static SampleBuffer SuperJump();
    static SampleBuffer SpeedUp();
    static SampleBuffer FlipScreen();
    static SampleBuffer OpenGates();
    static SampleBuffer Disabled();
    static SampleBuffer Unlocked();
    static SampleBuffer UnlockedTour();
    static SampleBuffer Hurry();
    static SampleBuffer HurryMore();
    static SampleBuffer Cow();
    static SampleBuffer CowHitPlayer();
    static SampleBuffer Click();
    static SampleBuffer DoubleClick();
    static SampleBuffer Swap();
    static SampleBuffer LongSwap();
    static SampleBuffer Hover();
    static SampleBuffer Confusion();
};
