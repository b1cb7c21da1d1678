#pragma once
// Race controls driven by a recording instead of a player: at each moment the three race actions
// hold the state the recording's events up to the current race time give them, exactly as the
// ghost replays a run. The simulator and tests steer the racer with it.
#include "Gameplay/QmRaceControls.h"
#include "Gameplay/QmRecording.h"

#include <cstdint>
#include <functional>
#include <map>

class QmRecordedControls : public QmRaceControls {
public:
    // time gives the race time in milliseconds at the moment of asking.
    QmRecordedControls(const QmRecording& inputs, std::function<int64_t()> time);

    bool Jump() override;
    bool Left() override;
    bool Right() override;

private:
    void CatchUp();

    QmRecording inputs;
    std::map<int64_t, int>::const_iterator cursor;
    std::function<int64_t()> time;
    bool jump = false;
    bool left = false;
    bool right = false;
};
