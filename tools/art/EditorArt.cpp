#include "EditorArt.h"

#include "ArtPalette.h"
#include "BlockArt.h"
#include "Shading.h"

#include <cmath>
#include <stdexcept>
#include <vector>

using P = ArtPalette;

namespace {

// Draws in a 24-pixel layout scaled to the glyph's size.
struct Pen {
    ArtImage& image;
    float k;
    void Rect(float x, float y, float w, float h, uint32_t c) const {
        Polygon({{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}, c);
    }
    void Ellipse(float cx, float cy, float rx, float ry, uint32_t c) const {
        image.FillEllipse(cx * k, cy * k, rx * k, ry * k, c);
    }
    void Polygon(std::vector<ArtPoint> points, uint32_t c) const {
        for (ArtPoint& p : points) {
            p.x *= k;
            p.y *= k;
        }
        image.FillPolygon(points, c);
    }
    void Line(float x0, float y0, float x1, float y1, float w, uint32_t c) const {
        image.ThickLine(x0 * k, y0 * k, x1 * k, y1 * k, std::max(1.0f, w * k), c);
    }
    void Arc(float cx, float cy, float r0, float r1, float a0, float a1, uint32_t c) const {
        image.FillArc(cx * k, cy * k, r0 * k, r1 * k, a0, a1, c);
    }
};

// A part drawn on its own layer, lit from the top left and outlined in its own hue.
struct Part {
    explicit Part(int size) : image(size, size), pen{image, size / 24.0f} {}
    ArtImage image;
    Pen pen;
    void Finish(ArtImage& onto, bool outline = true) {
        Shading::Bevel(image, 1);
        if (outline) {
            Shading::OutlineOwnHue(image);
        }
        onto.Blit(image, 0, 0);
    }
};

void Padlock(ArtImage& out, int size, bool open) {
    Part shackle(size);
    if (open) {
        shackle.pen.Arc(7.5f, 8.5f, 3.0f, 6.0f, 3.1416f, 6.2832f, P::S3);
        shackle.pen.Rect(1.5f, 8.0f, 3.0f, 4.0f, P::S3);
    } else {
        shackle.pen.Arc(12.0f, 9.5f, 3.5f, 6.5f, 3.1416f, 6.2832f, P::S3);
        shackle.pen.Rect(5.5f, 9.0f, 3.0f, 3.0f, P::S3);
        shackle.pen.Rect(15.5f, 9.0f, 3.0f, 3.0f, P::S3);
    }
    shackle.Finish(out);
    Part body(size);
    body.pen.Rect(4.0f, 11.0f, 16.0f, 11.0f, P::Y2);
    body.Finish(out);
    Pen p{out, size / 24.0f};
    p.Ellipse(12.0f, 15.0f, 1.8f, 1.8f, P::Ink);
    p.Rect(11.2f, 15.0f, 1.6f, 4.0f, P::Ink);
}

void Pencil(ArtImage& out, int size) {
    // Along the diagonal from the tip (bottom left) to the eraser (top right).
    auto at = [](float along, float across) {
        const float d = 0.7071f;
        return ArtPoint{3.0f + (along + across) * d, 21.0f + (-along + across) * d};
    };
    const float w = 2.8f;
    Part body(size);
    body.pen.Polygon({at(5, -w), at(16.5f, -w), at(16.5f, w), at(5, w)}, P::Y2);
    body.Finish(out);
    Part end(size);
    end.pen.Polygon({at(16.5f, -w), at(18.5f, -w), at(18.5f, w), at(16.5f, w)}, P::S3);
    end.pen.Polygon(
        {at(18.5f, -w), at(22.0f, -w), at(23.0f, -w + 1.0f), at(23.0f, w - 1.0f), at(22.0f, w), at(18.5f, w)},
        P::Pink);
    end.Finish(out);
    Part tip(size);
    tip.pen.Polygon({at(5, -w), at(5, w), at(0, 0)}, P::K3);
    tip.Finish(out, false);
    Pen p{out, size / 24.0f};
    p.Polygon({at(1.8f, -1.1f), at(1.8f, 1.1f), at(0, 0)}, P::Ink);
}

void NoSign(ArtImage& out, int size) {
    Pen p{out, size / 24.0f};
    p.Arc(12.0f, 12.0f, 8.0f, 11.0f, 0.0f, 6.2832f, P::R2);
    p.Line(5.0f, 5.0f, 19.0f, 19.0f, 3.0f, P::R2);
}

ArtImage Draw(const std::string& name, int size) {
    ArtImage out(size, size);
    Pen pen{out, size / 24.0f};
    if (name == "Save") {
        Part disk(size);
        disk.pen.Polygon({{3, 3}, {18, 3}, {21, 6}, {21, 21}, {3, 21}}, P::B2);
        disk.Finish(out);
        Part shutter(size);
        shutter.pen.Rect(7, 3, 10, 6, P::S3);
        shutter.Finish(out, false);
        pen.Rect(13, 4, 2, 4, P::S1);
        Part label(size);
        label.pen.Rect(6, 12, 12, 9, P::White);
        label.Finish(out, false);
        for (float y : {14.0f, 17.0f}) {
            pen.Line(8, y, 16, y, 1, P::S2);
        }
    } else if (name == "Play") {
        Part tri(size);
        tri.pen.Polygon({{6, 3}, {21, 12}, {6, 21}}, P::G2);
        tri.Finish(out);
    } else if (name == "MapSizeSmall" || name == "MapSizeLarge") {
        bool large = name == "MapSizeLarge";
        int n = large ? 4 : 2;
        int cell = int(20 * size / 24) / n;
        int origin = (size - cell * n) / 2;
        const uint32_t colours[5] = {P::O2, P::B2, P::G2, P::Y2, P::R2};
        for (int y = 0; y < n; ++y) {
            for (int x = 0; x < n; ++x) {
                out.BlitOpaque(BlockArt::SolidBlock(cell, colours[(x + y * n + y) % 5]), origin + x * cell,
                               origin + y * cell);
            }
        }
    } else if (name == "Options") {
        Part gear(size);
        for (int t = 0; t < 8; ++t) {
            float a = t * 0.7854f;
            float ca = std::cos(a);
            float sa = std::sin(a);
            auto at = [&](float along, float across) {
                return ArtPoint{12 + ca * along - sa * across, 12 + sa * along + ca * across};
            };
            gear.pen.Polygon({at(6, -2.2f), at(10.5f, -1.6f), at(10.5f, 1.6f), at(6, 2.2f)}, P::S3);
        }
        gear.pen.Ellipse(12, 12, 7.5f, 7.5f, P::S3);
        // The hole.
        ArtImage hole(size, size);
        Pen h{hole, size / 24.0f};
        h.Ellipse(12, 12, 3.0f, 3.0f, P::S3);
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                if (!hole.IsKey(x, y)) {
                    gear.image.Set(x, y, kKey);
                }
            }
        }
        gear.Finish(out);
    } else if (name == "Locked") {
        Padlock(out, size, false);
    } else if (name == "Unlocked") {
        Padlock(out, size, true);
    } else if (name == "Editable") {
        Pencil(out, size);
    } else if (name == "NotEditable") {
        Pencil(out, size);
        NoSign(out, size);
    } else if (name == "Dice") {
        Part die(size);
        die.pen.Polygon({{5, 3}, {19, 3}, {21, 5}, {21, 19}, {19, 21}, {5, 21}, {3, 19}, {3, 5}}, P::White);
        die.Finish(out);
        const float pips[5][2] = {{8, 8}, {16, 8}, {12, 12}, {8, 16}, {16, 16}};
        for (const auto& p : pips) {
            pen.Ellipse(p[0], p[1], 1.8f, 1.8f, P::Ink);
        }
    } else if (name == "Clear") {
        Part rubber(size);
        rubber.pen.Polygon({{3, 15}, {12, 6}, {15, 9}, {6, 18}}, P::Pink);
        rubber.Finish(out);
        Part band(size);
        band.pen.Polygon({{12, 6}, {15, 3}, {21, 9}, {18, 12}, {15, 9}}, P::B2);
        band.Finish(out);
        for (const auto& d : {std::pair{9.0f, 21.0f}, std::pair{14.0f, 20.0f}, std::pair{19.0f, 21.5f}}) {
            pen.Ellipse(d.first, d.second, 1.1f, 1.1f, P::S2);
        }
    } else if (name == "Fill") {
        // A paint bucket, tipped so the paint runs over its rim, and a drop falling.
        Part handle(size);
        handle.pen.Arc(11.0f, 9.0f, 5.5f, 7.0f, 3.1416f, 6.2832f, P::S1);
        handle.Finish(out, false);
        Part bucket(size);
        bucket.pen.Polygon({{4, 9}, {18, 9}, {16, 21}, {6, 21}}, P::S3);
        bucket.Finish(out);
        Part paint(size);
        paint.pen.Ellipse(11, 9, 7.5f, 2.2f, P::O2);
        paint.pen.Rect(3.6f, 9, 2.2f, 6, P::O2);
        paint.pen.Ellipse(4.7f, 15.2f, 1.3f, 1.3f, P::O2);
        paint.pen.Ellipse(20.0f, 18.5f, 2.2f, 2.6f, P::O2);
        paint.pen.Polygon({{18.2f, 17.2f}, {20.0f, 12.5f}, {21.8f, 17.2f}}, P::O2);
        paint.Finish(out);
    } else if (name == "Copy") {
        Part back(size);
        back.pen.Rect(9, 2, 12, 15, P::White);
        back.Finish(out);
        Part front(size);
        front.pen.Rect(3, 7, 12, 15, P::White);
        front.Finish(out);
        for (float y : {11.0f, 14.0f, 17.0f}) {
            pen.Line(5.5f, y, 12.5f, y, 1, P::S2);
        }
    } else if (name == "Select") {
        Part arrow(size);
        arrow.pen.Polygon({{5, 2}, {19, 14}, {13, 14.5f}, {16.5f, 21}, {13.5f, 22.5f}, {10.5f, 16}, {5, 20}},
                          P::White);
        arrow.Finish(out, false);
        Shading::Outline(out, P::Ink);
    } else if (name == "Place") {
        int cell = 12 * size / 24;
        out.BlitOpaque(BlockArt::SolidBlock(cell, P::O2), (size - cell) / 2, size - cell - size / 24);
        Part arrow(size);
        arrow.pen.Polygon({{9, 1}, {15, 1}, {15, 5}, {18, 5}, {12, 10.5f}, {6, 5}, {9, 5}}, P::G2);
        arrow.Finish(out);
    } else if (name == "EditName") {
        Part tag(size);
        tag.pen.Rect(1.5f, 6, 21, 12, P::White);
        tag.Finish(out);
        // "Ab" and a caret.
        pen.Polygon({{4, 15.5f},
                     {6.5f, 8.5f},
                     {8.5f, 8.5f},
                     {11, 15.5f},
                     {9.3f, 15.5f},
                     {7.5f, 10.5f},
                     {5.7f, 15.5f}},
                    P::Ink);
        pen.Rect(5.8f, 12.5f, 3.5f, 1.2f, P::Ink);
        pen.Rect(12, 8.5f, 1.5f, 7, P::Ink);
        pen.Arc(14.5f, 13.2f, 1.2f, 2.5f, -1.6f, 1.6f, P::Ink);
        pen.Rect(18.5f, 8, 1.5f, 8.5f, P::B2);
    } else if (name == "ResetScore") {
        Part cup(size);
        cup.pen.Polygon({{6, 3}, {18, 3}, {17, 10}, {14, 13}, {10, 13}, {7, 10}}, P::Y2);
        cup.pen.Rect(10.5f, 13, 3, 4, P::Y2);
        cup.pen.Rect(7, 17, 10, 3, P::Y2);
        cup.pen.Arc(6, 6.5f, 2, 3.5f, 1.5708f, 4.7124f, P::Y2);
        cup.pen.Arc(18, 6.5f, 2, 3.5f, -1.5708f, 1.5708f, P::Y2);
        cup.Finish(out);
        // A red arrow turning back to the start.
        Part turn(size);
        turn.pen.Arc(17, 17, 3.5f, 6, -1.2f, 3.6f, P::R2);
        turn.pen.Polygon({{18.5f, 8.5f}, {22.5f, 12.5f}, {17, 13.5f}}, P::R2);
        turn.Finish(out);
    } else if (name == "Back") {
        Part arrow(size);
        arrow.pen.Polygon({{2, 12}, {11, 3}, {11, 8.5f}, {21, 8.5f}, {21, 15.5f}, {11, 15.5f}, {11, 21}},
                          P::B2);
        arrow.Finish(out);
    } else if (name == "Edited") {
        Part star(size);
        std::vector<ArtPoint> points;
        for (int t = 0; t < 16; ++t) {
            float a = -1.5708f + t * 3.14159f / 8.0f;
            float r = t % 2 == 0 ? 11.0f : 5.0f;
            points.push_back({12 + std::cos(a) * r, 12 + std::sin(a) * r});
        }
        star.pen.Polygon(points, P::O2);
        star.Finish(out);
    } else {
        throw std::runtime_error("no editor picture named " + name);
    }
    return out;
}

} // namespace

ArtImage EditorArt::Glyph(const std::string& name, int size) {
    return Draw(name, size);
}

ArtImage EditorArt::Button(const std::string& name, bool hover) {
    // The toolbar's names with a "G" at the end show the same pictures as the status marks.
    std::string glyph = name;
    if (glyph.size() > 1 && glyph.back() == 'G') {
        glyph.pop_back();
    }
    const int size = 32;
    ArtImage button(size, size);
    ArtImage plate(size, size);
    plate.FillRect(1, 1, size - 2, size - 2, hover ? P::S2 : P::S1);
    Shading::Bevel(plate, 1);
    button.Blit(plate, 0, 0);
    button.FrameRect(0, 0, size, size, hover ? P::R2 : P::Ink);
    if (hover) {
        button.FrameRect(1, 1, size - 2, size - 2, P::R2);
    }
    button.Blit(Glyph(glyph, 24), 4, hover ? 3 : 4);
    return button;
}

void EditorArt::Paint(AssetSet& set) {
    const char* toolbar[] = {"Save",    "Play",      "MapSizeSmall", "MapSizeLarge", "Options",
                             "LockedG", "UnlockedG", "EditableG",    "NotEditableG", "Dice",
                             "Clear",   "Fill",      "Copy"};
    for (const char* name : toolbar) {
        set.Add(AssetSet::Name({"Assets/EditorGUI/", name, ".png"}), Button(name, false), "Editor");
        set.Add(AssetSet::Name({"Assets/EditorGUI/", name, "Hover.png"}), Button(name, true), "Editor");
    }
    for (const char* name : {"Locked", "Unlocked", "Editable", "NotEditable", "Edited"}) {
        set.Add(AssetSet::Name({"Assets/EditorGUI/", name, ".png"}), Glyph(name, 16), "Editor");
    }
    const char* commands[] = {"Select",   "Place",      "EditName", "MapSizeLarge", "Locked",
                              "Editable", "ResetScore", "Clear",    "Save",         "Play",
                              "Fill",     "Dice",       "Copy",     "Back"};
    for (const char* name : commands) {
        set.Add(AssetSet::Name({"Assets/EditorGUI/DisplayControls/", name, ".png"}), Glyph(name, 24),
                "Editor commands");
    }
}
