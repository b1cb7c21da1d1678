#pragma once
// The animated fire: six frames, each a record with 64-, 32- and 16-pixel surfaces. An update
// redraws one frame at one block size (the next in turn) with fresh flame columns and uploads its
// texture again, at most every 7 ms. A fire cell (x, y) shows frame (mapSize * x + y) mod 6, so
// neighbouring fires flicker differently; the race tests fire contact against the same image.
//
// A frame is drawn from the left edge to the right in columns: each column advances by 0, 0.1
// or 0.2 of the block, rises to a random height that is taller towards the middle, and is a red
// flame with an orange core reaching 0.4 of its height.
#include "Environment/ClientEnvironmentManager/QmBlockArt.h"

#include <array>
#include <cstdint>
#include <memory>

class QmFireAnimation {
public:
    static constexpr int kFrames = 6;
    static constexpr int64_t kRedrawMs = 7;
    static constexpr uint32_t kFlame = 0xFF0000;
    static constexpr uint32_t kCore = 0xFFAA00;

    QmFireAnimation();

    // The frame a fire cell shows.
    static int FrameForCell(int mapSize, int x, int y) { return (mapSize * x + y) % kFrames; }
    // Draws fresh flames into a surface of blockSize x blockSize pixels (filled with the key first).
    static void DrawFlames(VeSurface& surface, int blockSize);

    // Redraws the next frame at this size unless less than 7 ms passed since the last redraw or
    // the animation is held (a race whose racer is dead); force redraws regardless and keeps the
    // turn. Textures are uploaded again when they exist.
    void Update(int size, bool force, bool held);
    // Draws every frame at every size once (at start).
    void DrawAll();
    void MakeTextures();

    const QmBlockArt& Frame(int index) const { return *frames[static_cast<size_t>(index % kFrames)]; }
    int NextFrame() const { return next; }
    int64_t LastRedraw() const { return lastRedraw; }

private:
    std::array<std::unique_ptr<QmBlockArt>, kFrames> frames;
    int next = 0;
    int64_t lastRedraw = 0;
};
