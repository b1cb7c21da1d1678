#pragma once
// Between party turns: the race waits for its player, and this screen names who races next (and
// in a Marathon which of the three maps follows) on a panel across the middle of the map; the race
// itself asks to press Space below it. Back (Escape or the pad's B) leaves the party at once, as
// every page goes back.
#include "Screen/Text/VeText.h"

#include <cstdint>
#include <functional>
#include <string>

class QmControls;
class VeSurface;

class QmWaitingScreen {
public:
    static constexpr int kNextUpLine = 52;
    static constexpr int kMapLine = 55;
    static constexpr int kOfLine = 56;
    static constexpr int kPanelMargin = 20;
    static constexpr int kPanelPadding = 24;
    static constexpr int kRim = 3;
    static constexpr uint32_t kPanelColour = 0x1C1A24;
    static constexpr uint32_t kRimColour = 0xE6D514;
    enum class Outcome { None, LeaveParty };

    // map is the 1-based Marathon map, 0 in Versus.
    void Set(const std::function<std::string(int)>& line, const std::string& player, int map, int maps);
    void Draw(VeSurface& target) const;
    // One frame of the wait: LeaveParty when the player asked to go back.
    Outcome Update(QmControls& controls) const;
    const std::string& Text() const { return name.text; }

private:
    VeText name;
    VeText mapCount;
};
