#include "BlockArt.h"

#include "ArtNoise.h"
#include "ArtPalette.h"
#include "Shading.h"

#include <algorithm>
#include <cmath>
#include <string>

using P = ArtPalette;

namespace {

const int kSizes[3] = {16, 32, 64};

// Which bevel band a pixel of a size x size block lies in: 0 face, 1 top, 2 left, 3 bottom, 4 right.
// Pixels on the outer edge are the outline and are not asked for.
int BevelBand(int x, int y, int size, int width) {
    int top = y - 1;
    int left = x - 1;
    int bottom = size - 2 - y;
    int right = size - 2 - x;
    int m = std::min(std::min(top, left), std::min(bottom, right));
    if (m >= width) {
        return 0;
    }
    if (top == m && top <= right) {
        return 1;
    }
    if (left == m && left <= bottom) {
        return 2;
    }
    if (bottom == m) {
        return 3;
    }
    return 4;
}

} // namespace

ArtImage BlockArt::SolidBlock(int size, uint32_t base) {
    ArtImage image(size, size, base);
    int width = size >= 64 ? 4 : size >= 32 ? 2 : 1;
    if (size < 16) {
        width = 1;
    }
    uint32_t light = P::Lighter(base);
    uint32_t shade = P::Darker(base);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if (x == 0 || y == 0 || x == size - 1 || y == size - 1) {
                image.Set(x, y, P::Outline(base));
                continue;
            }
            switch (BevelBand(x, y, size, width)) {
            case 1:
            case 2:
                image.Set(x, y, light);
                break;
            case 3:
            case 4:
                image.Set(x, y, shade);
                break;
            default:
                break;
            }
        }
    }
    if (size >= 32) {
        // A hard glint on the lit corner of the face over a soft sheen.
        int g = width + 1;
        int arm = size / 8;
        if (size >= 64) {
            for (int k = 0; k < arm / 2; ++k) {
                image.Set(g + 1 + k, g + 1, P::White);
                image.Set(g + 1, g + 1 + k, P::White);
            }
            // Top edge highlight line.
            for (int x = 2; x < size - 3; ++x) {
                image.Set(x, 1, P::White);
            }
        }
        // A stepped sheen in the lit corner of the face: a solid corner, then a half-tone band.
        for (int y = width + 1; y < size - width - 1; ++y) {
            for (int x = width + 1; x < size - width - 1; ++x) {
                int t = (x - width - 1) + (y - width - 1);
                if (t < size / 6 || (t < size / 4 && (x + y) % 2 == 0)) {
                    image.Set(x, y, light);
                }
            }
        }
        for (int k = 0; k < arm; ++k) {
            image.Set(g + k, g, P::White);
            image.Set(g, g + k, P::White);
        }
    } else {
        image.Set(2, 2, P::White);
    }
    return image;
}

ArtImage BlockArt::Blank(int size) {
    // An empty cell: corner brackets around nothing, so the eraser reads as "no block".
    ArtImage image(size, size);
    int arm = std::max(3, size / 4);
    int t = size >= 64 ? 2 : 1;
    int lo = 1;
    int hi = size - 1 - t;
    for (int k = 0; k < arm; ++k) {
        for (int j = 0; j < t; ++j) {
            image.Set(lo + k, lo + j, P::White);
            image.Set(lo + j, lo + k, P::White);
            image.Set(hi - k + t - 1, lo + j, P::White);
            image.Set(hi + j, lo + k, P::White);
            image.Set(lo + k, hi + j, P::White);
            image.Set(lo + j, hi - k + t - 1, P::White);
            image.Set(hi - k + t - 1, hi + j, P::White);
            image.Set(hi + j, hi - k + t - 1, P::White);
        }
    }
    Shading::Outline(image, P::S1);
    return image;
}

ArtImage BlockArt::Border(int size) {
    // Riveted dark stone: the frame around the play field in the 3D view.
    ArtImage image = SolidBlock(size, P::S1);
    if (size >= 32) {
        // A recessed panel: its upper and left edges in shadow, its lower and right edges lit.
        int inset = size / 4 + 1;
        int w = size - 2 * inset;
        int t = size >= 64 ? 2 : 1;
        for (int k = 0; k < t; ++k) {
            for (int i = inset + k; i < inset + w - k; ++i) {
                image.Set(i, inset + k, P::S0);
                image.Set(inset + k, i, P::S0);
                image.Set(i, inset + w - 1 - k, P::S2);
                image.Set(inset + w - 1 - k, i, P::S2);
            }
        }
        int r = size / 5;
        int points[4][2] = {{r, r}, {size - 1 - r, r}, {r, size - 1 - r}, {size - 1 - r, size - 1 - r}};
        for (auto& p : points) {
            int rad = size >= 64 ? 3 : 1;
            image.FillEllipse(p[0] + 0.5f, p[1] + 0.5f, rad + 1.0f, rad + 1.0f, P::S0);
            image.FillEllipse(p[0] + 0.5f - 0.5f, p[1] + 0.5f - 0.5f, float(rad), float(rad), P::S3);
            image.Set(p[0] - rad / 2, p[1] - rad / 2, P::White);
        }
    }
    return image;
}

ArtImage BlockArt::EditorCursor(int size, bool flash) {
    ArtImage image(size, size);
    if (flash) {
        // The same two-pixel frame the editor draws around the cursor cell in the flat view.
        image.FrameRect(0, 0, size, size, P::Cyan);
        image.FrameRect(1, 1, size - 2, size - 2, P::Cyan);
        int arm = size / 4;
        for (int k = 2; k < arm; ++k) {
            image.Set(k, 2, P::White);
            image.Set(2, k, P::White);
        }
    } else {
        image.Fill(P::Cyan);
        int inset = std::max(2, size / 8);
        image.FrameRect(inset, inset, size - 2 * inset, size - 2 * inset, P::White);
        if (size >= 32) {
            image.FrameRect(inset + 2, inset + 2, size - 2 * inset - 4, size - 2 * inset - 4, P::White);
        }
    }
    return image;
}

ArtImage BlockArt::RedGate(int size) {
    // Bars between two rails and two posts, in the key's red: clearly a door, and the gaps show what
    // lies behind it.
    ArtImage bars(size, size);
    int rail = size >= 64 ? 7 : size >= 32 ? 4 : 3;
    int post = size >= 64 ? 5 : size >= 32 ? 3 : 2;
    int count = size >= 64 ? 4 : size >= 32 ? 3 : 2;
    bars.FillRect(0, 0, size, rail, P::R2);
    bars.FillRect(0, size - rail, size, rail, P::R2);
    bars.FillRect(0, 0, post, size, P::R2);
    bars.FillRect(size - post, 0, post, size, P::R2);
    float gap = float(size - 2 * post - count * post) / float(count + 1);
    for (int i = 0; i < count; ++i) {
        int x = post + int(std::lround(gap * (i + 1) + post * i));
        bars.FillRect(x, 0, post, size, P::R2);
    }
    int mid = size / 2;
    if (size >= 64) {
        bars.FillRect(0, mid - 2, size, 4, P::R2);
    }
    if (size >= 32) {
        int plateW = size >= 64 ? 14 : 8;
        int plateH = size >= 64 ? 18 : 10;
        bars.FillRect(mid - plateW / 2, mid - plateH / 2, plateW, plateH, P::R2);
    }
    Shading::Bevel(bars, size >= 64 ? 2 : 1);
    if (size >= 64) {
        Shading::OutlineOwnHue(bars);
    }
    // The frame's outer edge.
    for (int k = 0; k < size; ++k) {
        bars.Paint(k, 0, P::R0);
        bars.Paint(k, size - 1, P::R0);
        bars.Paint(0, k, P::R0);
        bars.Paint(size - 1, k, P::R0);
    }
    if (size >= 32) {
        int hole = size >= 64 ? 2 : 1;
        // The keyhole: a round top and a slot.
        bars.FillEllipse(mid + 0.0f, mid - hole * 0.5f - 0.5f, hole + 0.8f, hole + 0.8f, P::Ink);
        bars.FillRect(mid - hole / 2 - (hole == 1 ? 0 : 0), mid, std::max(1, hole), hole * 3, P::Ink);
        // Rivets on the rails.
        for (int k = 0; k < 4; ++k) {
            int cx = post + 1 + (size - 2 * post - 2) * (2 * k + 1) / 8;
            bars.Set(cx, rail / 2, P::R3);
            bars.Set(cx, size - 1 - rail / 2, P::R3);
        }
    }
    return bars;
}

ArtImage BlockArt::Finish(int size) {
    // A goal ring in the finish colour around a chequered disc; the game cycles the ring's colour.
    ArtImage image(size, size);
    float c = size * 0.5f;
    float outer = size * 0.5f - 1.0f;
    float inner = outer - std::max(2.0f, size / 8.0f);
    image.FillEllipse(c, c, outer, outer, P::FinishMarker);
    int check = std::max(2, size / 8);
    ArtImage disc(size, size);
    disc.FillEllipse(c, c, inner, inner, P::White);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if (!disc.IsKey(x, y)) {
                bool dark = ((x / check) + (y / check)) % 2 == 0;
                image.Set(x, y, dark ? P::Ink : P::White);
            }
        }
    }
    // A dark seam between ring and disc, then the outline.
    ArtImage seam(size, size);
    seam.FillEllipse(c, c, inner + 1.0f, inner + 1.0f, P::Ink);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if (!seam.IsKey(x, y) && disc.IsKey(x, y)) {
                image.Set(x, y, P::Ink);
            }
        }
    }
    Shading::Outline(image, P::Ink);
    // Shine on the ring's lit side.
    if (size >= 32) {
        float mid = (outer + inner) * 0.5f + 0.5f;
        int len = size / 8;
        for (int k = -len; k <= len / 2; ++k) {
            float a = 3.927f + k * 0.045f * (64.0f / size) * 1.4f;
            image.Set(int(c + std::cos(a) * mid), int(c + std::sin(a) * mid), P::White);
        }
    } else {
        image.Set(3, 4, P::White);
        image.Set(4, 3, P::White);
    }
    return image;
}

ArtImage BlockArt::Finish3D() {
    // The finish cube's faces: a chequered square framed in the finish colour.
    const int size = 64;
    ArtImage image(size, size, P::FinishMarker);
    image.FrameRect(0, 0, size, size, P::Ink);
    int band = 8;
    image.FrameRect(band - 1, band - 1, size - 2 * band + 2, size - 2 * band + 2, P::Ink);
    int check = 8;
    for (int y = band; y < size - band; ++y) {
        for (int x = band; x < size - band; ++x) {
            bool dark = (((x - band) / check) + ((y - band) / check)) % 2 == 0;
            image.Set(x, y, dark ? P::Ink : P::White);
        }
    }
    for (int k = 2; k < 12; ++k) {
        image.Set(k, 2, P::White);
        image.Set(2, k, P::White);
    }
    return image;
}

ArtImage BlockArt::Fire(int size) {
    // Three tongues of flame rising from the floor: red outside, orange, a yellow core.
    ArtImage image(size, size);
    float s = float(size);
    struct Tongue {
        float x, h, w, lean;
    };
    const Tongue tongues[3] = {
        {0.30f, 0.62f, 0.36f, -0.06f}, {0.70f, 0.70f, 0.36f, 0.07f}, {0.50f, 0.94f, 0.46f, 0.02f}};
    const uint32_t layers[3] = {P::R2, P::O2, P::Y2};
    const float scales[3] = {1.0f, 0.68f, 0.40f};
    for (int layer = 0; layer < 3; ++layer) {
        for (const Tongue& t : tongues) {
            float w = t.w * scales[layer] * s;
            float h = t.h * (layer == 0 ? 1.0f : scales[layer] * 1.1f) * s;
            float baseY = s - 1.0f;
            float bulbR = w * 0.5f;
            float bulbY = baseY - bulbR;
            float cx = t.x * s;
            image.FillEllipse(cx, bulbY, bulbR, bulbR, layers[layer]);
            image.FillPolygon({{cx - bulbR, bulbY}, {cx + t.lean * s, baseY - h}, {cx + bulbR, bulbY}},
                              layers[layer]);
        }
    }
    // Keep the bottom row clear for the outline, which marks the floor the flames stand on.
    for (int x = 0; x < size; ++x) {
        image.Set(x, size - 1, kKey);
    }
    Shading::Outline(image, P::R1);
    if (size >= 32) {
        // A few embers above the flames.
        image.Set(int(s * 0.18f), int(s * 0.30f), P::O3);
        image.Set(int(s * 0.84f), int(s * 0.22f), P::Y3);
        image.Set(int(s * 0.62f), int(s * 0.08f), P::O3);
    }
    return image;
}

void BlockArt::Paint(AssetSet& set) {
    const std::pair<const char*, uint32_t> coloured[5] = {
        {"Orange", P::O2}, {"Blue", P::B2}, {"Green", P::G2}, {"Yellow", P::Y2}, {"Red", P::R2}};
    for (int size : kSizes) {
        set.Add(AssetSet::Sized("Assets/Blocks/Blank", size), Blank(size), "Blocks");
        for (const auto& [name, colour] : coloured) {
            set.Add(AssetSet::Sized(AssetSet::Name({"Assets/Blocks/", name}), size), SolidBlock(size, colour),
                    "Blocks");
        }
    }
    for (int size : kSizes) {
        set.Add(AssetSet::Sized("Assets/Blocks/Border", size), Border(size), "Special blocks");
        set.Add(AssetSet::Sized("Assets/Gates/Red", size), RedGate(size), "Special blocks");
        set.Add(AssetSet::Sized("Assets/Blocks/Finish", size), Finish(size), "Special blocks");
        set.Add(AssetSet::Sized("Assets/Blocks/Fire", size), Fire(size), "Special blocks");
        set.Add(AssetSet::Sized("Assets/Blocks/Editor", size), EditorCursor(size, false), "Special blocks");
        set.Add(AssetSet::Sized("Assets/Blocks/EditorFlash", size), EditorCursor(size, true),
                "Special blocks");
    }
    set.Add("Assets/Blocks/Finish_3D.png", Finish3D(), "Special blocks");
}
