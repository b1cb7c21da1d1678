#pragma once
// Start-up work the first frame does not need (the world's shaders and textures, the race's
// sounds, the music), done after that frame one step a frame so the window shows the game at
// once. Whoever needs a part of it runs the rest first (RunAll), so nothing is ever missing.
#include <functional>
#include <vector>

class QmStartupWork {
public:
    void Add(std::function<void()> step);
    // Runs the oldest waiting step, if any.
    void RunNext();
    // Runs every waiting step in order.
    void RunAll();
    bool Pending() const { return next < steps.size(); }

private:
    std::vector<std::function<void()>> steps;
    size_t next = 0;
};
