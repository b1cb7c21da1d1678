#pragma once
// What a results or party page reads and draws with in one frame: the overlay, the input state
// (null in headless runs), the game's controls, the language lines, the sounds and the clock.
#include <cstdint>
#include <functional>
#include <string>

class QmControls;
class VeInput;
class VeSurface;

struct QmPageContext {
    VeSurface* target = nullptr;
    VeInput* input = nullptr;
    QmControls* controls = nullptr;
    std::function<std::string(int)> line;
    std::function<void(const std::string&)> sound;
    int64_t now = 0;
};
