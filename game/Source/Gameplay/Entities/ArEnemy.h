#pragma once
// A cow: walks left or right at the race's speed once the race runs, turns round in the frame
// after it was blocked by a wall, the border or another cow, and moos when it meets another cow
// anew while it is not boxed in. Cows freeze while the steered racer is dead.
#include "Gameplay/Entities/ArEntity.h"

#include <vector>

class ArEnemy : public ArEntity {
public:
    ArEnemy(ArEntityHost* host, float x, float y, float speed, float width, float height);

    // Size, both contacts and a new random direction.
    void Reset();
    void UpdateEnemy();

    // The other cows this one overlapped in its last update.
    std::vector<const ArEnemy*> touching;
};
