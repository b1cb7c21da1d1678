#include "Environment/ClientEnvironmentManager/QmFireAnimation.h"

#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <algorithm>
#include <cmath>

namespace {

// Pixels for a fraction of the block, rounded up.
int Pixels(float fraction, int blockSize) {
    return static_cast<int>(std::ceil(fraction * static_cast<float>(blockSize) - 1e-4f));
}

} // namespace

QmFireAnimation::QmFireAnimation() {
    for (auto& frame : frames) {
        frame = QmBlockArt::Blank(VeFilterNearestMipmapNearest);
    }
}

void QmFireAnimation::DrawFlames(VeSurface& surface, int blockSize) {
    surface.Fill(kColourKey);
    // A column may advance by nothing; the bound keeps a long run of those finite.
    float x = 0.0f;
    for (int columns = 0; x < 1.0f && columns < 1000; ++columns) {
        const float advance = static_cast<float>(Rand(VeRandomStream::Cosmetic) % 3) * 0.1f;
        const float middle = 1.0f - std::fabs(0.5f - x);
        const int spread = std::max(1, static_cast<int>(9.0f * middle));
        const float height = std::min(
            1.0f, static_cast<float>(Rand(VeRandomStream::Cosmetic) % spread) * 0.1f + 0.2f * middle);
        const int left = Pixels(x, blockSize);
        const int width = Pixels(advance, blockSize);
        if (width > 0) {
            const int top = blockSize - Pixels(height, blockSize);
            surface.Rect(left, top, width, blockSize - top, kFlame);
            // The core: the middle of the column, 0.4 of its height.
            const int coreHeight = Pixels(0.4f * height, blockSize);
            const int inset = width > 2 ? std::max(1, width / 4) : 0;
            surface.Rect(left + inset, blockSize - coreHeight, width - 2 * inset, coreHeight, kCore);
        }
        x += advance;
    }
}

void QmFireAnimation::Update(int size, bool force, bool held) {
    const int64_t now = GetTimeMs();
    if (!force && (now - lastRedraw < kRedrawMs || held)) {
        return;
    }
    QmBlockArt& frame = *frames[static_cast<size_t>(next)];
    if (VeSurface* surface = frame.Surface(size)) {
        DrawFlames(*surface, size);
        frame.RefreshTexture(size);
    }
    lastRedraw = now;
    if (!force) {
        next = (next + 1) % kFrames;
    }
}

void QmFireAnimation::DrawAll() {
    for (auto& frame : frames) {
        for (int size : {64, 32, 16}) {
            DrawFlames(*frame->Surface(size), size);
        }
    }
}

void QmFireAnimation::MakeTextures() {
    for (auto& frame : frames) {
        frame->MakeTextures();
    }
}
