#pragma once
// Between party turns: the race waits for its player, and this screen names who races next (and
// in a Marathon which of the three maps follows) over the darkened map; the race itself asks to
// press Space.
#include "Screen/Text/VeText.h"

#include <functional>
#include <string>

class VeSurface;

class QmWaitingScreen {
public:
    static constexpr int kNextUpLine = 52;
    static constexpr int kMapLine = 55;
    static constexpr int kOfLine = 56;
    static constexpr float kDarken = 0.35f;

    // map is the 1-based Marathon map, 0 in Versus.
    void Set(const std::function<std::string(int)>& line, const std::string& player, int map, int maps);
    void Draw(VeSurface& target) const;
    const std::string& Text() const { return name.text; }

private:
    VeText name;
    VeText mapCount;
};
