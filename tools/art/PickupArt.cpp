#include "PickupArt.h"

#include "ArtPalette.h"
#include "Layer.h"
#include "Shading.h"

#include <cmath>
#include <string>

using P = ArtPalette;

namespace {

int BevelWidth(int size) {
    return size >= 64 ? 2 : 1;
}

// Small sparkles that mark a pickup as something to collect.
void Sparkles(ArtImage& image, int size, const float (*points)[2], int count) {
    for (int i = 0; i < count; ++i) {
        int x = int(points[i][0] * size);
        int y = int(points[i][1] * size);
        if (image.IsKey(x, y)) {
            Shading::Sparkle(image, x, y, size >= 64 ? 2 : size >= 32 ? 1 : 0, P::White);
        }
    }
}

} // namespace

ArtImage PickupArt::SuperJump(int size) {
    ArtImage result(size, size);
    // The spring: a zigzag of wire between two plates, the back strokes darker than the front.
    Layer coil(size);
    const int strokes = 4;
    for (int i = 0; i < strokes; ++i) {
        float y0 = 0.61f + i * 0.25f / strokes;
        float y1 = y0 + 0.25f / strokes;
        bool front = i % 2 == 0;
        coil.Line(front ? 0.30f : 0.70f, y0, front ? 0.70f : 0.30f, y1, size >= 64 ? 0.75f : 1.0f,
                  front ? P::S3 : P::S1);
    }
    Shading::OutlineOwnHue(coil.image);
    result.Blit(coil.image, 0, 0);
    Layer plates(size);
    plates.Rect(0.22f, 0.52f, 0.56f, 0.09f, P::G2);
    plates.Rect(0.18f, 0.86f, 0.64f, 0.08f, P::G1);
    Shading::Bevel(plates.image, 1);
    result.Blit(plates.image, 0, 0);
    Layer arrow(size);
    arrow.Polygon({{0.5f, 0.04f},
                   {0.82f, 0.30f},
                   {0.62f, 0.30f},
                   {0.62f, 0.46f},
                   {0.38f, 0.46f},
                   {0.38f, 0.30f},
                   {0.18f, 0.30f}},
                  P::G2);
    Shading::Bevel(arrow.image, BevelWidth(size));
    result.Blit(arrow.image, 0, 0);
    Shading::OutlineOwnHue(result);
    const float sparkles[2][2] = {{0.14f, 0.12f}, {0.88f, 0.44f}};
    Sparkles(result, size, sparkles, 2);
    return result;
}

ArtImage PickupArt::SpeedUp(int size) {
    ArtImage result(size, size);
    Layer lines(size);
    lines.Line(0.12f, 0.34f, 0.30f, 0.34f, 1.0f, P::Y3);
    lines.Line(0.04f, 0.50f, 0.30f, 0.50f, 1.0f, P::Y2);
    lines.Line(0.14f, 0.66f, 0.30f, 0.66f, 1.0f, P::Y3);
    result.Blit(lines.image, 0, 0);
    Layer arrow(size);
    arrow.Polygon({{0.36f, 0.38f},
                   {0.58f, 0.38f},
                   {0.58f, 0.18f},
                   {0.94f, 0.50f},
                   {0.58f, 0.82f},
                   {0.58f, 0.62f},
                   {0.36f, 0.62f}},
                  P::O2);
    Shading::Bevel(arrow.image, BevelWidth(size));
    if (size >= 32) {
        // A second, inner chevron.
        arrow.Polygon(
            {{0.62f, 0.36f}, {0.78f, 0.50f}, {0.62f, 0.64f}, {0.62f, 0.56f}, {0.69f, 0.50f}, {0.62f, 0.44f}},
            P::Y2);
    }
    result.Blit(arrow.image, 0, 0);
    Shading::OutlineOwnHue(result);
    const float sparkles[2][2] = {{0.30f, 0.12f}, {0.24f, 0.86f}};
    Sparkles(result, size, sparkles, 2);
    return result;
}

ArtImage PickupArt::FlipScreen(int size) {
    ArtImage result(size, size);
    Layer arrows(size);
    float c = 0.5f * size;
    float r1 = 0.44f * size;
    float r0 = r1 - std::max(2.0f, size * 0.13f);
    // Two half rings, each ending in an arrow head: the view turns over.
    arrows.image.FillArc(c, c, r0, r1, 3.49f, 5.80f, P::B2);
    arrows.image.FillArc(c, c, r0, r1, 0.35f, 2.66f, P::B2);
    float mid = (r0 + r1) * 0.5f / size;
    float head = 0.17f;
    // Head at the right end of the upper arc, pointing down.
    float ax = 0.5f + std::cos(5.80f) * mid;
    float ay = 0.5f + std::sin(5.80f) * mid;
    arrows.Polygon({{ax - head, ay - 0.02f}, {ax + head, ay - 0.02f}, {ax, ay + head}}, P::B2);
    // Head at the left end of the lower arc, pointing up.
    float bx = 0.5f + std::cos(2.66f) * mid;
    float by = 0.5f + std::sin(2.66f) * mid;
    arrows.Polygon({{bx - head, by + 0.02f}, {bx + head, by + 0.02f}, {bx, by - head}}, P::B2);
    Shading::Bevel(arrows.image, BevelWidth(size));
    result.Blit(arrows.image, 0, 0);
    Layer eye(size);
    if (size >= 32) {
        eye.Polygon(
            {{0.30f, 0.50f}, {0.40f, 0.40f}, {0.60f, 0.40f}, {0.70f, 0.50f}, {0.60f, 0.60f}, {0.40f, 0.60f}},
            P::White);
        eye.Ellipse(0.5f, 0.5f, 0.09f, 0.09f, P::B1);
        eye.Ellipse(0.5f, 0.5f, 0.045f, 0.045f, P::Ink);
        eye.Ellipse(0.47f, 0.47f, 0.025f, 0.025f, P::White);
    } else {
        eye.Rect(0.375f, 0.4375f, 0.25f, 0.125f, P::White);
        eye.Rect(0.4375f, 0.4375f, 0.125f, 0.125f, P::Ink);
    }
    result.Blit(eye.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage PickupArt::RedGateKey(int size) {
    ArtImage result(size, size);
    Layer key(size);
    key.Ellipse(0.28f, 0.42f, 0.20f, 0.20f, P::R2);
    key.Rect(0.40f, 0.36f, 0.52f, 0.13f, P::R2);
    key.Rect(0.66f, 0.46f, 0.09f, 0.18f, P::R2);
    key.Rect(0.80f, 0.46f, 0.09f, 0.24f, P::R2);
    // The hole in the bow.
    float c = 0.28f * size;
    float cy = 0.42f * size;
    float hole = std::max(1.5f, 0.08f * size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            float dx = x + 0.5f - c;
            float dy = y + 0.5f - cy;
            if (dx * dx + dy * dy <= hole * hole) {
                key.image.Set(x, y, kKey);
            }
        }
    }
    Shading::Bevel(key.image, BevelWidth(size));
    result.Blit(key.image, 0, 0);
    Shading::OutlineOwnHue(result);
    if (size >= 32) {
        // A bright glint on the bow.
        int gx = int(0.17f * size);
        int gy = int(0.30f * size);
        result.Set(gx, gy, P::White);
        result.Set(gx + 1, gy - 1, P::White);
        if (size >= 64) {
            result.Set(gx + 2, gy - 2, P::White);
            result.Set(gx - 1, gy + 1, P::White);
        }
    }
    const float sparkles[2][2] = {{0.72f, 0.16f}, {0.50f, 0.82f}};
    Sparkles(result, size, sparkles, 2);
    return result;
}

ArtImage PickupArt::Disco(int size) {
    ArtImage result(size, size);
    Layer cord(size);
    cord.Line(0.5f, 0.0f, 0.5f, 0.22f, 1.0f, P::S1);
    result.Blit(cord.image, 0, 0);
    Layer ball(size);
    float cx = 0.5f * size;
    float cy = 0.56f * size;
    float r = 0.36f * size;
    ball.image.FillEllipse(cx, cy, r, r, P::S2);
    int facet = std::max(2, size / 8);
    const uint32_t colours[] = {P::B3, P::R3, P::Y3, P::G3, P::O3};
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if (ball.image.IsKey(x, y)) {
                continue;
            }
            int fx = x / facet;
            int fy = y / facet;
            bool line = size >= 32 && (x % facet == 0 || y % facet == 0);
            float nx = (x + 0.5f - cx) / r;
            float ny = (y + 0.5f - cy) / r;
            float light = -(nx + ny) * 0.7f + (1.0f - (nx * nx + ny * ny)) * 0.6f;
            uint32_t c = light > 0.6f ? P::White : light > 0.1f ? P::S3 : light > -0.4f ? P::S2 : P::S1;
            if ((fx * 7 + fy * 3) % 4 == 0 && !line) {
                c = colours[(fx + fy * 2) % 5];
            }
            if (line && size >= 32) {
                c = P::Darker(c == P::White ? P::S3 : c);
            }
            ball.image.Set(x, y, c);
        }
    }
    result.Blit(ball.image, 0, 0);
    Shading::Outline(result, P::S0);
    const float sparkles[3][2] = {{0.14f, 0.24f}, {0.86f, 0.30f}, {0.86f, 0.86f}};
    Sparkles(result, size, sparkles, 3);
    return result;
}

void PickupArt::Paint(AssetSet& set) {
    for (int size : {16, 32, 64}) {
        set.Add(AssetSet::Sized("Assets/Pickups/SuperJump", size), SuperJump(size), "Pickups");
        set.Add(AssetSet::Sized("Assets/Pickups/SpeedUp", size), SpeedUp(size), "Pickups");
        set.Add(AssetSet::Sized("Assets/Pickups/FlipScreen", size), FlipScreen(size), "Pickups");
        set.Add(AssetSet::Sized("Assets/Pickups/RedGateKey", size), RedGateKey(size), "Pickups");
        set.Add(AssetSet::Sized("Assets/Pickups/Disco", size), Disco(size), "Pickups");
    }
}
