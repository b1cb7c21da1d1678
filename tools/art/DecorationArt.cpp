#include "DecorationArt.h"

#include "ArtPalette.h"
#include "Layer.h"
#include "Shading.h"

#include <cmath>
#include <string>

using P = ArtPalette;

namespace {

// Stacks a shaded layer onto the result.
void Stack(ArtImage& result, const Layer& layer) {
    result.Blit(layer.image, 0, 0);
}

int BevelWidth(int size) {
    return size >= 64 ? 2 : 1;
}

ArtImage GrassTuft(int size, bool tall) {
    Layer l(size);
    struct B {
        float x, tipX, tipY, w;
        uint32_t c;
    };
    const B shortBlades[] = {{0.30f, 0.16f, 0.58f, 0.15f, P::M1},
                             {0.40f, 0.34f, 0.38f, 0.16f, P::M2},
                             {0.56f, 0.70f, 0.44f, 0.16f, P::M2},
                             {0.68f, 0.86f, 0.64f, 0.14f, P::M1},
                             {0.48f, 0.52f, 0.52f, 0.13f, P::M3}};
    const B tallBlades[] = {{0.22f, 0.08f, 0.34f, 0.12f, P::M1}, {0.34f, 0.26f, 0.10f, 0.14f, P::M2},
                            {0.46f, 0.50f, 0.20f, 0.14f, P::M3}, {0.58f, 0.74f, 0.06f, 0.14f, P::M2},
                            {0.70f, 0.90f, 0.30f, 0.12f, P::M1}, {0.52f, 0.38f, 0.44f, 0.12f, P::M2},
                            {0.62f, 0.60f, 0.40f, 0.12f, P::M3}};
    if (tall) {
        for (const B& b : tallBlades) {
            l.Blade(b.x, 0.94f, b.w, b.tipX, b.tipY, b.c);
        }
    } else {
        for (const B& b : shortBlades) {
            l.Blade(b.x, 0.94f, b.w, b.tipX, b.tipY, b.c);
        }
    }
    ArtImage result = l.image;
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Flower(int size, uint32_t petal, uint32_t centre) {
    ArtImage result(size, size);
    Layer stem(size);
    stem.Line(0.5f, 0.93f, 0.5f, 0.42f, 1.0f, P::M1);
    stem.Blade(0.5f, 0.78f, 0.10f, 0.24f, 0.60f, P::M2);
    stem.Blade(0.5f, 0.70f, 0.10f, 0.76f, 0.54f, P::M2);
    Stack(result, stem);
    Layer head(size);
    const float cx = 0.5f;
    const float cy = 0.33f;
    for (int k = 0; k < 5; ++k) {
        float a = -1.5708f + k * 1.2566f;
        head.Ellipse(cx + std::cos(a) * 0.13f, cy + std::sin(a) * 0.13f, 0.10f, 0.10f, petal);
    }
    Shading::Bevel(head.image, 1);
    head.Ellipse(cx, cy, 0.07f, 0.07f, centre);
    if (size >= 32) {
        head.Ellipse(cx - 0.02f, cy - 0.02f, 0.025f, 0.025f, P::Lighter(centre));
    }
    Stack(result, head);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Daisies(int size) {
    ArtImage result(size, size);
    struct D {
        float x, top, r;
    };
    const D daisies[3] = {{0.28f, 0.46f, 0.10f}, {0.56f, 0.26f, 0.12f}, {0.80f, 0.56f, 0.09f}};
    Layer stems(size);
    for (const D& d : daisies) {
        stems.Line(d.x, 0.93f, d.x, d.top, 1.0f, P::M1);
    }
    stems.Blade(0.42f, 0.93f, 0.10f, 0.30f, 0.70f, P::M2);
    stems.Blade(0.66f, 0.93f, 0.10f, 0.78f, 0.74f, P::M2);
    result.Blit(stems.image, 0, 0);
    Layer heads(size);
    for (const D& d : daisies) {
        for (int k = 0; k < 6; ++k) {
            float a = k * 1.0472f;
            heads.Ellipse(d.x + std::cos(a) * d.r * 0.8f, d.top + std::sin(a) * d.r * 0.8f, d.r * 0.55f,
                          d.r * 0.55f, P::White);
        }
    }
    Shading::Bevel(heads.image, 1);
    for (const D& d : daisies) {
        heads.Ellipse(d.x, d.top, d.r * 0.45f, d.r * 0.45f, P::Y2);
    }
    result.Blit(heads.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Fern(int size) {
    ArtImage result(size, size);
    Layer l(size);
    struct Frond {
        float x0, y0, cx, cy, x1, y1;
        uint32_t c;
    };
    const Frond fronds[] = {{0.48f, 0.94f, 0.30f, 0.40f, 0.12f, 0.30f, P::M1},
                            {0.52f, 0.94f, 0.60f, 0.30f, 0.86f, 0.16f, P::M2},
                            {0.50f, 0.94f, 0.50f, 0.50f, 0.52f, 0.10f, P::M2}};
    for (const Frond& f : fronds) {
        l.Curve(f.x0, f.y0, f.cx, f.cy, f.x1, f.y1, 1.0f, f.c);
        for (int i = 2; i < 10; ++i) {
            float t = i / 10.0f;
            float a = (1 - t) * (1 - t);
            float b = 2 * (1 - t) * t;
            float c = t * t;
            float x = a * f.x0 + b * f.cx + c * f.x1;
            float y = a * f.y0 + b * f.cy + c * f.y1;
            float len = 0.15f * (1.0f - t * 0.7f);
            l.Blade(x, y, 0.07f, x - len, y - len * 0.4f, f.c == P::M1 ? P::M1 : P::M2);
            l.Blade(x, y, 0.07f, x + len, y - len * 0.5f, f.c == P::M1 ? P::M2 : P::M3);
        }
    }
    ArtImage result2 = l.image;
    Shading::OutlineOwnHue(result2);
    return result2;
}

ArtImage Bush(int size, bool berries) {
    Layer l(size);
    l.Ellipse(0.30f, 0.66f, 0.22f, 0.22f, P::M2);
    l.Ellipse(0.70f, 0.66f, 0.22f, 0.22f, P::M2);
    l.Ellipse(0.50f, 0.52f, 0.27f, 0.27f, P::M2);
    l.Rect(0.12f, 0.66f, 0.76f, 0.28f, P::M2);
    Shading::Sphere(l.image, 0.5f * size, 0.62f * size, 0.42f * size, 0.36f * size, size >= 32);
    if (size >= 32) {
        // Leafy scallops along the lit top.
        l.Ellipse(0.40f, 0.36f, 0.05f, 0.03f, P::M3);
        l.Ellipse(0.24f, 0.52f, 0.04f, 0.03f, P::M3);
        l.Ellipse(0.60f, 0.40f, 0.04f, 0.03f, P::M3);
    }
    if (berries) {
        const float pos[5][2] = {
            {0.32f, 0.62f}, {0.52f, 0.50f}, {0.68f, 0.70f}, {0.44f, 0.78f}, {0.74f, 0.52f}};
        for (const auto& p : pos) {
            l.Ellipse(p[0], p[1], 0.05f, 0.05f, P::R2);
            if (size >= 32) {
                l.Ellipse(p[0] - 0.015f, p[1] - 0.015f, 0.018f, 0.018f, P::R3);
            }
        }
    }
    ArtImage result = l.image;
    Shading::OutlineOwnHue(result);
    return result;
}

void Mushroom(ArtImage& result, int size, float x, float capY, float capR, float stemH, uint32_t cap,
              bool spots) {
    Layer stem(size);
    stem.Rect(x - capR * 0.35f, capY, capR * 0.7f, stemH, P::White);
    Shading::Bevel(stem.image, 1);
    // The stem's shaded side.
    stem.Rect(x + capR * 0.08f, capY, capR * 0.27f, stemH, P::S3);
    result.Blit(stem.image, 0, 0);
    Layer top(size);
    top.Ellipse(x, capY + 0.01f, capR, capR * 0.75f, cap);
    // Cut the cap flat underneath.
    for (int y = int((capY + 0.02f) * size); y < size; ++y) {
        for (int i = 0; i < size; ++i) {
            top.image.Set(i, y, kKey);
        }
    }
    Shading::Sphere(top.image, x * size, capY * size, capR * size, capR * 0.75f * size, size >= 32);
    if (spots) {
        top.Ellipse(x - capR * 0.4f, capY - capR * 0.38f, capR * 0.18f, capR * 0.15f, P::White);
        top.Ellipse(x + capR * 0.35f, capY - capR * 0.25f, capR * 0.15f, capR * 0.13f, P::White);
        top.Ellipse(x + capR * 0.02f, capY - capR * 0.58f, capR * 0.13f, capR * 0.11f, P::White);
    }
    result.Blit(top.image, 0, 0);
}

ArtImage MushroomRed(int size) {
    ArtImage result(size, size);
    Mushroom(result, size, 0.5f, 0.56f, 0.38f, 0.38f, P::R2, true);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage MushroomsBrown(int size) {
    ArtImage result(size, size);
    Mushroom(result, size, 0.30f, 0.70f, 0.17f, 0.24f, P::K2, false);
    Mushroom(result, size, 0.72f, 0.74f, 0.14f, 0.20f, P::K2, false);
    Mushroom(result, size, 0.52f, 0.56f, 0.22f, 0.38f, P::K3, false);
    Shading::OutlineOwnHue(result);
    return result;
}

void Rock(ArtImage& result, int size, float cx, float bottom, float rx, float ry, bool moss) {
    Layer l(size);
    l.Polygon({{cx - rx, bottom},
               {cx - rx * 0.95f, bottom - ry * 0.9f},
               {cx - rx * 0.5f, bottom - ry * 1.7f},
               {cx + rx * 0.2f, bottom - ry * 2.0f},
               {cx + rx * 0.8f, bottom - ry * 1.5f},
               {cx + rx, bottom - ry * 0.6f},
               {cx + rx, bottom}},
              P::S2);
    Shading::Sphere(l.image, cx * size, (bottom - ry) * size, rx * size, ry * 1.1f * size, size >= 32);
    if (moss) {
        Layer m(size);
        m.Ellipse(cx - rx * 0.1f, bottom - ry * 1.75f, rx * 0.75f, ry * 0.45f, P::M2);
        // Only where the rock is.
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                if (l.image.IsKey(x, y)) {
                    m.image.Set(x, y, kKey);
                }
            }
        }
        Shading::Bevel(m.image, 1);
        l.image.Blit(m.image, 0, 0);
    }
    result.Blit(l.image, 0, 0);
}

ArtImage RockSmall(int size) {
    ArtImage result(size, size);
    Rock(result, size, 0.5f, 0.94f, 0.30f, 0.17f, false);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage RockMossy(int size) {
    ArtImage result(size, size);
    Rock(result, size, 0.5f, 0.94f, 0.42f, 0.30f, true);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Pebbles(int size) {
    ArtImage result(size, size);
    Rock(result, size, 0.26f, 0.94f, 0.16f, 0.09f, false);
    Rock(result, size, 0.60f, 0.94f, 0.20f, 0.12f, false);
    Rock(result, size, 0.84f, 0.94f, 0.10f, 0.06f, false);
    Shading::OutlineOwnHue(result);
    return result;
}

void BarkRect(Layer& l, float x, float y, float w, float h) {
    l.Rect(x, y, w, h, P::K1);
    int size = l.size;
    int x0 = int(x * size);
    int x1 = int((x + w) * size);
    int y0 = int(y * size);
    int y1 = int((y + h) * size);
    int spacing = std::max(3, size / 10);
    for (int px = x0 + 1; px < x1 - 1; ++px) {
        if ((px - x0) % spacing == 0) {
            for (int py = y0; py < y1; ++py) {
                l.image.Paint(px, py, P::K0);
                l.image.Paint(px - 1, py, P::K2);
            }
        }
    }
    for (int py = y0; py < y1; ++py) {
        l.image.Paint(x0, py, P::K2);
    }
}

ArtImage Stump(int size) {
    ArtImage result(size, size);
    Layer trunk(size);
    BarkRect(trunk, 0.24f, 0.52f, 0.52f, 0.42f);
    trunk.Blade(0.24f, 0.94f, 0.10f, 0.10f, 0.94f, P::K1);
    trunk.Blade(0.76f, 0.94f, 0.10f, 0.90f, 0.94f, P::K1);
    result.Blit(trunk.image, 0, 0);
    Layer top(size);
    top.Ellipse(0.5f, 0.52f, 0.26f, 0.09f, P::K3);
    top.Ellipse(0.5f, 0.52f, 0.16f, 0.05f, P::K2);
    top.Ellipse(0.5f, 0.52f, 0.10f, 0.03f, P::K3);
    result.Blit(top.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Log(int size) {
    ArtImage result(size, size);
    Layer body(size);
    body.Rect(0.08f, 0.64f, 0.72f, 0.30f, P::K1);
    int y0 = int(0.64f * size);
    int y1 = int(0.94f * size);
    int spacing = std::max(3, size / 10);
    for (int y = y0; y < y1; ++y) {
        for (int x = 0; x < size; ++x) {
            if ((y - y0) % spacing == spacing - 1) {
                body.image.Paint(x, y, P::K0);
            } else if ((y - y0) % spacing == 0) {
                body.image.Paint(x, y, P::K2);
            }
        }
    }
    result.Blit(body.image, 0, 0);
    Layer end(size);
    end.Ellipse(0.80f, 0.79f, 0.09f, 0.15f, P::K3);
    end.Ellipse(0.80f, 0.79f, 0.05f, 0.09f, P::K2);
    end.Ellipse(0.80f, 0.79f, 0.025f, 0.045f, P::K3);
    result.Blit(end.image, 0, 0);
    if (size >= 32) {
        // A sprig growing from the log.
        Layer sprig(size);
        sprig.Blade(0.30f, 0.64f, 0.08f, 0.24f, 0.46f, P::M2);
        sprig.Blade(0.34f, 0.64f, 0.08f, 0.42f, 0.50f, P::M3);
        result.Blit(sprig.image, 0, 0);
    }
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Sapling(int size) {
    ArtImage result(size, size);
    Layer trunk(size);
    trunk.Line(0.5f, 0.93f, 0.5f, 0.50f, 2.0f, P::K1);
    trunk.Line(0.5f, 0.70f, 0.66f, 0.58f, 1.0f, P::K1);
    result.Blit(trunk.image, 0, 0);
    Layer crown(size);
    crown.Ellipse(0.5f, 0.36f, 0.30f, 0.26f, P::M2);
    crown.Ellipse(0.32f, 0.46f, 0.14f, 0.12f, P::M2);
    crown.Ellipse(0.68f, 0.46f, 0.14f, 0.12f, P::M2);
    Shading::Sphere(crown.image, 0.5f * size, 0.38f * size, 0.34f * size, 0.28f * size, size >= 32);
    result.Blit(crown.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

void Post(ArtImage& result, int size, float top) {
    Layer post(size);
    post.Rect(0.44f, top, 0.12f, 0.94f - top, P::K2);
    Shading::Bevel(post.image, 1);
    result.Blit(post.image, 0, 0);
}

ArtImage ArrowSign(int size, int direction) {
    // direction: 1 right, -1 left, 0 up.
    ArtImage result(size, size);
    Post(result, size, 0.40f);
    Layer board(size);
    if (direction == 0) {
        board.Rect(0.20f, 0.14f, 0.60f, 0.36f, P::K3);
    } else {
        board.Polygon({{0.10f, 0.16f}, {0.70f, 0.16f}, {0.90f, 0.32f}, {0.70f, 0.48f}, {0.10f, 0.48f}},
                      P::K3);
    }
    Shading::Bevel(board.image, BevelWidth(size));
    Layer mark(size);
    if (direction == 0) {
        mark.Polygon({{0.5f, 0.19f}, {0.64f, 0.33f}, {0.36f, 0.33f}}, P::K0);
        mark.Rect(0.46f, 0.32f, 0.08f, 0.13f, P::K0);
    } else {
        mark.Line(0.20f, 0.32f, 0.56f, 0.32f, 1.2f, P::K0);
        mark.Polygon({{0.52f, 0.24f}, {0.68f, 0.32f}, {0.52f, 0.40f}}, P::K0);
    }
    board.image.Blit(mark.image, 0, 0);
    ArtImage b = board.image;
    if (direction < 0) {
        b = b.MirroredX();
    }
    result.Blit(b, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage WarningSign(int size) {
    ArtImage result(size, size);
    Post(result, size, 0.50f);
    Layer sign(size);
    sign.Polygon({{0.5f, 0.08f}, {0.88f, 0.60f}, {0.12f, 0.60f}}, P::Y2);
    Shading::Bevel(sign.image, BevelWidth(size));
    Layer mark(size);
    mark.Polygon({{0.46f, 0.26f}, {0.54f, 0.26f}, {0.52f, 0.44f}, {0.48f, 0.44f}}, P::Ink);
    mark.Rect(0.47f, 0.48f, 0.06f, 0.06f, P::Ink);
    sign.image.Blit(mark.image, 0, 0);
    result.Blit(sign.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Fence(int size) {
    ArtImage result(size, size);
    Layer rails(size);
    rails.Rect(0.0f, 0.48f, 1.0f, 0.10f, P::K2);
    rails.Rect(0.0f, 0.72f, 1.0f, 0.10f, P::K2);
    Shading::Bevel(rails.image, 1);
    result.Blit(rails.image, 0, 0);
    for (float x : {0.16f, 0.72f}) {
        Layer post(size);
        post.Polygon({{x, 0.40f}, {x + 0.06f, 0.32f}, {x + 0.12f, 0.40f}, {x + 0.12f, 0.94f}, {x, 0.94f}},
                     P::K3);
        Shading::Bevel(post.image, 1);
        result.Blit(post.image, 0, 0);
    }
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Vines(int size) {
    ArtImage result(size, size);
    Layer l(size);
    const float vines[3][3] = {{0.22f, 0.70f, 0.14f}, {0.50f, 0.46f, 0.58f}, {0.76f, 0.82f, 0.86f}};
    for (const auto& v : vines) {
        l.Curve(v[0], 0.0f, v[2], v[1] * 0.5f, v[0] + 0.04f, v[1], 1.0f, P::M1);
        for (int i = 1; i < 5; ++i) {
            float t = i / 5.0f;
            float y = v[1] * t;
            float x = v[0] + (v[2] - v[0]) * 2 * t * (1 - t) + 0.04f * t * t;
            float side = (i % 2) ? 0.06f : -0.06f;
            l.Ellipse(x + side, y, 0.05f, 0.035f, i % 2 ? P::M2 : P::M3);
        }
    }
    // Ensure the vines reach the top edge so that they hang from the block above.
    ArtImage r = l.image;
    Shading::OutlineOwnHue(r);
    for (int x = 0; x < size; ++x) {
        if (l.image.IsKey(x, 0) && r.Get(x, 0) != kKey && !l.image.IsKey(x, 1)) {
            r.Set(x, 0, kKey);
        }
    }
    return r;
}

ArtImage Cattails(int size) {
    ArtImage result(size, size);
    Layer l(size);
    const float reeds[3][2] = {{0.30f, 0.26f}, {0.52f, 0.14f}, {0.72f, 0.32f}};
    l.Blade(0.40f, 0.94f, 0.10f, 0.18f, 0.50f, P::M2);
    l.Blade(0.62f, 0.94f, 0.10f, 0.88f, 0.46f, P::M2);
    for (const auto& r : reeds) {
        l.Line(r[0], 0.93f, r[0], r[1], 1.0f, P::M1);
    }
    result.Blit(l.image, 0, 0);
    Layer heads(size);
    for (const auto& r : reeds) {
        heads.Rect(r[0] - 0.05f, r[1] + 0.06f, 0.10f, 0.20f, P::K1);
        heads.Ellipse(r[0], r[1] + 0.07f, 0.05f, 0.03f, P::K1);
        heads.Ellipse(r[0], r[1] + 0.26f, 0.05f, 0.03f, P::K1);
    }
    Shading::Bevel(heads.image, 1);
    result.Blit(heads.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

ArtImage Butterfly(int size) {
    ArtImage result(size, size);
    Layer wings(size);
    wings.Ellipse(0.36f, 0.36f, 0.16f, 0.14f, P::B2);
    wings.Ellipse(0.64f, 0.36f, 0.16f, 0.14f, P::B2);
    wings.Ellipse(0.40f, 0.56f, 0.10f, 0.10f, P::B2);
    wings.Ellipse(0.60f, 0.56f, 0.10f, 0.10f, P::B2);
    Shading::Bevel(wings.image, BevelWidth(size));
    wings.Ellipse(0.32f, 0.34f, 0.04f, 0.04f, P::White);
    wings.Ellipse(0.68f, 0.34f, 0.04f, 0.04f, P::White);
    result.Blit(wings.image, 0, 0);
    Layer body(size);
    body.Line(0.5f, 0.30f, 0.5f, 0.64f, 1.2f, P::Ink);
    body.Line(0.5f, 0.30f, 0.42f, 0.18f, 0.6f, P::Ink);
    body.Line(0.5f, 0.30f, 0.58f, 0.18f, 0.6f, P::Ink);
    result.Blit(body.image, 0, 0);
    Shading::OutlineOwnHue(result);
    return result;
}

} // namespace

ArtImage DecorationArt::Decoration(int index, int size) {
    switch (index) {
    case 0:
        return GrassTuft(size, false);
    case 1:
        return GrassTuft(size, true);
    case 2:
        return Flower(size, P::R2, P::Y2);
    case 3:
        return Flower(size, P::Y2, P::O2);
    case 4:
        return Daisies(size);
    case 5:
        return Fern(size);
    case 6:
        return Bush(size, false);
    case 7:
        return Bush(size, true);
    case 8:
        return MushroomRed(size);
    case 9:
        return MushroomsBrown(size);
    case 10:
        return RockSmall(size);
    case 11:
        return RockMossy(size);
    case 12:
        return Pebbles(size);
    case 13:
        return Stump(size);
    case 14:
        return Log(size);
    case 15:
        return Sapling(size);
    case 16:
        return ArrowSign(size, 1);
    case 17:
        return ArrowSign(size, -1);
    case 18:
        return ArrowSign(size, 0);
    case 19:
        return WarningSign(size);
    case 20:
        return Fence(size);
    case 21:
        return Vines(size);
    case 22:
        return Cattails(size);
    default:
        return Butterfly(size);
    }
}

ArtImage DecorationArt::Sheet(int size) {
    ArtImage sheet(size * Columns, size * Rows);
    for (int i = 0; i < Columns * Rows; ++i) {
        sheet.BlitOpaque(Decoration(i, size), (i % Columns) * size, (i / Columns) * size);
    }
    return sheet;
}

void DecorationArt::Paint(AssetSet& set) {
    for (int size : {16, 32, 64}) {
        set.Add(AssetSet::Sized("Assets/Decorations/Forest_Decorations", size), Sheet(size), "Decorations");
    }
}
