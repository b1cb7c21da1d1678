#include "CharacterArt.h"

#include "ArtPalette.h"
#include "Shading.h"

#include <string>

using P = ArtPalette;

namespace {

enum Character { Plain = 0, Cap, Crown, Ninja, Cat };

// Draws in a 32-pixel layout scaled to the racer's size, with shapes rasterised at full size.
struct Pen {
    ArtImage& image;
    float k;
    void Rect(float x, float y, float w, float h, uint32_t c) const {
        image.FillRect(int(x * k), int(y * k), int(w * k), int(h * k), c);
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
    void Line(float x0, float y0, float x1, float y1, float width, uint32_t c) const {
        image.ThickLine(x0 * k, y0 * k, x1 * k, y1 * k, width, c);
    }
};

struct Zone {
    int x, y, w, h;
};

// The areas the eyes can take, shifts included, for the left and the right eye.
Zone EyeZone(int size, bool right) {
    CharacterArt::EyeLayout e = CharacterArt::Eyes(size);
    int x = right ? e.rightX : e.leftX;
    return {x - e.shift, e.y - e.shift, e.width + 2 * e.shift, e.height + 2 * e.shift};
}

uint32_t BodyColour(int character) {
    switch (character) {
    case Ninja:
        return P::B0;
    case Cat:
        return P::O2;
    default:
        return P::White;
    }
}

void Outline(ArtImage& image, int size) {
    int t = size >= 64 ? 2 : 1;
    for (int i = 0; i < t; ++i) {
        image.FrameRect(i, i, size - 2 * i, size - 2 * i, P::Ink);
    }
}

// Fills the body, lit along the top and left and shaded along the bottom and right, inside the
// outline. A white body is left as the key inside, since the race's white fill shows through.
void Body(ArtImage& image, int size, int character, bool opaque) {
    uint32_t body = BodyColour(character);
    int t = size >= 64 ? 2 : 1;
    int band = size >= 64 ? 2 : 1;
    if (body != P::White || opaque) {
        image.FillRect(t, t, size - 2 * t, size - 2 * t, body);
    }
    uint32_t shade = body == P::White ? P::S3 : P::Darker(body);
    uint32_t light = body == P::White ? P::White : P::Lighter(body);
    for (int i = 0; i < band; ++i) {
        for (int k = t; k < size - t; ++k) {
            image.Set(k, size - t - 1 - i, shade);
            image.Set(size - t - 1 - i, k, shade);
            if (body != P::White) {
                image.Set(k, t + i, light);
                image.Set(t + i, k, light);
            }
        }
    }
    if (size >= 64) {
        // A second, dithered step of shade at the bottom right.
        for (int k = t; k < size - t; ++k) {
            if (k % 2 == 0) {
                image.Set(k, size - t - 1 - band, shade);
                image.Set(size - t - 1 - band, k, shade);
            }
        }
    }
}

void Mouth(ArtImage& image, int size) {
    if (size >= 64) {
        // An open smile with a tongue.
        for (int y = 38; y <= 45; ++y) {
            for (int x = 24; x <= 39; ++x) {
                float dx = (x + 0.5f - 32.0f) / 8.0f;
                float dy = (y + 0.5f - 38.0f) / 7.5f;
                if (dx * dx + dy * dy <= 1.0f) {
                    image.Set(x, y, P::Ink);
                }
            }
        }
        image.FillEllipse(32.0f, 44.0f, 4.0f, 2.2f, P::R3);
        image.Set(29, 43, P::Pink);
        return;
    }
    const int pixels[][2] = {{13, 19}, {14, 19}, {15, 19}, {16, 19}, {17, 19}, {18, 19}, {14, 20}, {17, 20}};
    for (const auto& p : pixels) {
        image.Set(p[0], p[1], P::Ink);
    }
    image.Set(15, 20, P::R3);
    image.Set(16, 20, P::R3);
    image.Set(15, 21, P::Ink);
    image.Set(16, 21, P::Ink);
}

void Blush(ArtImage& image, int size) {
    if (size >= 64) {
        image.FillEllipse(11.0f, 40.0f, 4.5f, 2.0f, P::Pink);
        image.FillEllipse(53.0f, 40.0f, 4.5f, 2.0f, P::Pink);
        return;
    }
    for (int x : {4, 5, 6, 25, 26, 27}) {
        image.Set(x, 17, P::Pink);
    }
}

void CapHat(const Pen& p, int size) {
    ArtImage layer(size, size);
    Pen l{layer, p.k};
    l.Polygon({{2, 7}, {2, 4}, {5, 1.5f}, {27, 1.5f}, {30, 4}, {30, 7}}, P::B2);
    Shading::Bevel(layer, size >= 64 ? 2 : 1);
    l.Rect(12, 6, 19, 2.5f, P::B1);
    l.Rect(12, 8, 19, 0.5f, P::B0);
    // The badge on the front of the cap.
    l.Ellipse(8, 4.2f, 1.7f, 1.7f, P::Y2);
    if (size >= 64) {
        l.Ellipse(7.6f, 3.8f, 0.7f, 0.7f, P::Y3);
    }
    p.image.Blit(layer, 0, 0);
    // A sporty stripe low on the body.
    ArtImage stripe(size, size);
    Pen s{stripe, p.k};
    s.Rect(1, 25, 30, 2, P::B2);
    s.Rect(1, 27, 30, 0.5f, P::B1);
    p.image.Blit(stripe, 0, 0);
}

void CrownHat(const Pen& p, int size) {
    ArtImage layer(size, size);
    Pen l{layer, p.k};
    l.Rect(6, 5, 20, 3, P::Y2);
    l.Polygon({{6, 5.5f}, {8, 1.5f}, {11, 5.5f}}, P::Y2);
    l.Polygon({{12.5f, 5.5f}, {16, 1}, {19.5f, 5.5f}}, P::Y2);
    l.Polygon({{21, 5.5f}, {24, 1.5f}, {26, 5.5f}}, P::Y2);
    Shading::Bevel(layer, size >= 64 ? 2 : 1);
    l.Ellipse(16, 6.5f, 1.2f, 1.0f, P::R2);
    l.Ellipse(10, 6.5f, 1.0f, 1.0f, P::B2);
    l.Ellipse(22, 6.5f, 1.0f, 1.0f, P::G2);
    Shading::OutlineOwnHue(layer);
    p.image.Blit(layer, 0, 0);
    // A red royal collar with white trim.
    ArtImage collar(size, size);
    Pen c{collar, p.k};
    c.Rect(1, 26, 30, 5, P::R2);
    c.Rect(1, 25, 30, 1.5f, P::White);
    for (int x = 3; x < 30; x += 5) {
        c.Rect(float(x), 25.5f, 1, 1, P::Ink);
    }
    p.image.Blit(collar, 0, 0);
}

void NinjaBand(const Pen& p, int size) {
    Zone left = EyeZone(size, false);
    Zone right = EyeZone(size, true);
    int margin = size >= 64 ? 2 : 1;
    // The white face window across both eyes.
    p.image.FillRect(left.x - margin, left.y - margin, right.x + right.w - left.x + 2 * margin,
                     left.h + 2 * margin, kKey);
    ArtImage band(size, size);
    Pen b{band, p.k};
    b.Rect(1, 4, 30, 3, P::R2);
    b.Polygon({{26, 6}, {30.5f, 9}, {30.5f, 12}, {27.5f, 8}}, P::R2);
    b.Polygon({{25, 6.5f}, {28, 12}, {27, 14}, {25.5f, 9}}, P::R1);
    Shading::Bevel(band, 1);
    p.image.Blit(band, 0, 0);
}

void CatFeatures(const Pen& p, int size) {
    // Stripes on the forehead and the cheeks.
    ArtImage stripes(size, size);
    Pen s{stripes, p.k};
    for (float x : {12.5f, 15.5f, 18.5f}) {
        s.Rect(x, 2, 1.2f, 4, P::O1);
    }
    for (float y : {19.0f, 22.0f}) {
        s.Rect(1, y, 4, 1.2f, P::O1);
        s.Rect(27, y, 4, 1.2f, P::O1);
    }
    p.image.Blit(stripes, 0, 0);
    // Ears in the top corners.
    ArtImage ears(size, size);
    Pen e{ears, p.k};
    e.Polygon({{1, 1}, {9, 1}, {1, 9}}, P::O3);
    e.Polygon({{31, 1}, {23, 1}, {31, 9}}, P::O3);
    e.Polygon({{2, 2}, {6.5f, 2}, {2, 6.5f}}, P::Pink);
    e.Polygon({{30, 2}, {25.5f, 2}, {30, 6.5f}}, P::Pink);
    e.Line(9, 1, 1, 9, size >= 64 ? 2.0f : 1.0f, P::O0);
    e.Line(23, 1, 31, 9, size >= 64 ? 2.0f : 1.0f, P::O0);
    p.image.Blit(ears, 0, 0);
    // White eye patches, a pink nose and whiskers.
    Zone left = EyeZone(size, false);
    Zone right = EyeZone(size, true);
    int m = size >= 64 ? 2 : 1;
    for (const Zone& z : {left, right}) {
        p.image.FillRect(z.x - m, z.y - m, z.w + 2 * m, z.h + 2 * m, kKey);
        p.image.Set(z.x - m, z.y - m, P::O2);
        p.image.Set(z.x + z.w + m - 1, z.y - m, P::O2);
        p.image.Set(z.x - m, z.y + z.h + m - 1, P::O2);
        p.image.Set(z.x + z.w + m - 1, z.y + z.h + m - 1, P::O2);
    }
    ArtImage face(size, size);
    Pen f{face, p.k};
    f.Polygon({{14.5f, 17}, {17.5f, 17}, {16, 18.8f}}, P::Pink);
    f.Line(16, 18.5f, 16, 20, 1, P::O0);
    f.Line(16, 20, 13.5f, 21, 1, P::O0);
    f.Line(16, 20, 18.5f, 21, 1, P::O0);
    f.Line(3, 17.5f, 8, 18, 1, P::O3);
    f.Line(24, 18, 29, 17.5f, 1, P::O3);
    p.image.Blit(face, 0, 0);
}

uint32_t LidColour(int character) {
    return character == Cat ? P::O2 : P::White;
}

// Lids over both eyes: frame 1 half closed, the last frame closed.
void Lids(ArtImage& image, int size, int character, int frame) {
    for (bool right : {false, true}) {
        Zone z = EyeZone(size, right);
        int covered = frame >= CharacterArt::Frames - 1 ? z.h : z.h / 2;
        image.FillRect(z.x, z.y, z.w, covered, LidColour(character));
        int line = size >= 64 ? 2 : 1;
        int y = frame >= CharacterArt::Frames - 1 ? z.y + z.h / 2 : z.y + covered;
        image.FillRect(z.x, y, z.w, line, P::Ink);
        if (frame >= CharacterArt::Frames - 1) {
            // Curve the ends of the closed eye up a little.
            image.FillRect(z.x, y - line, line, line, P::Ink);
            image.FillRect(z.x + z.w - line, y - line, line, line, P::Ink);
            image.FillRect(z.x, y, line, line, LidColour(character));
            image.FillRect(z.x + z.w - line, y, line, line, LidColour(character));
        }
    }
}

ArtImage Paint(int character, int size, int frame, bool face) {
    ArtImage image(size, size);
    Pen pen{image, size / 32.0f};
    Body(image, size, character, !face);
    switch (character) {
    case Cap:
        CapHat(pen, size);
        break;
    case Crown:
        CrownHat(pen, size);
        break;
    case Ninja:
        break;
    case Cat:
        break;
    default:
        break;
    }
    if (face) {
        if (character == Ninja) {
            NinjaBand(pen, size);
        } else if (character == Cat) {
            CatFeatures(pen, size);
        } else {
            Blush(image, size);
            Mouth(image, size);
        }
        for (bool right : {false, true}) {
            Zone z = EyeZone(size, right);
            if (character != Cat && character != Ninja) {
                image.FillRect(z.x, z.y, z.w, z.h, kKey);
            }
        }
        if (frame > 0) {
            Lids(image, size, character, frame);
        }
    } else if (character == Ninja) {
        ArtImage band(size, size);
        Pen b{band, size / 32.0f};
        b.Rect(1, 4, 30, 3, P::R2);
        Shading::Bevel(band, 1);
        image.Blit(band, 0, 0);
    } else if (character == Cat) {
        ArtImage stripes(size, size);
        Pen s{stripes, size / 32.0f};
        for (float x : {8.0f, 15.5f, 23.0f}) {
            s.Rect(x, 1, 1.5f, 9, P::O1);
        }
        image.Blit(stripes, 0, 0);
    }
    Outline(image, size);
    return image;
}

} // namespace

CharacterArt::EyeLayout CharacterArt::Eyes(int size) {
    if (size >= 64) {
        return {16, 42, 20, 6, 12, 3};
    }
    return {8, 22, 10, 2, 4, 1};
}

ArtImage CharacterArt::Eye(int size) {
    const std::map<char, uint32_t> legend = {{'I', P::Ink}, {'W', P::White}, {'B', P::B0}};
    if (size >= 64) {
        return ArtImage::FromGrid({".IIII.", "IIIIII", "IWWIII", "IWWIII", "IWWIBI", "IIIIBI", "IIIBBI",
                                   "IIIBBI", "IIIIWI", "IIIIII", "IIIIII", ".IIII."},
                                  legend);
    }
    return ArtImage::FromGrid({"II", "II", "II", "II"}, legend);
}

ArtImage CharacterArt::BodyFrame(int character, int size, int frame) {
    return ::Paint(character, size, frame, true);
}

ArtImage CharacterArt::Sides(int character, int size) {
    ArtImage image = ::Paint(character, size, 0, false);
    image.Replace(kKey, P::White);
    return image;
}

ArtImage CharacterArt::Composed(int character, int size) {
    ArtImage image(size, size, P::White);
    EyeLayout e = Eyes(size);
    ArtImage eye = Eye(size);
    image.Blit(eye, e.leftX, e.y);
    image.Blit(eye, e.rightX, e.y);
    image.Blit(BodyFrame(character, size, 0), 0, 0);
    return image;
}

ArtImage CharacterArt::Default16() {
    return ArtImage::FromGrid({"IIIIIIIIIIIIIIII", "IWWWWWWWWWWWWWWI", "IWWWWWWWWWWWWWWI", "IWWWWWWWWWWWWWSI",
                               "IWWWWWWWWWWWWWSI", "IWWWIWWWWWWIWWSI", "IWWWIWWWWWWIWWSI", "IWWWWWWWWWWWWWSI",
                               "IWPPWWWWWWWWPPSI", "IWWWWWIIIIWWWWSI", "IWWWWWWRRWWWWWSI", "IWWWWWWWWWWWWWSI",
                               "IWWWWWWWWWWWWWSI", "IWWWWWWWWWWWWWSI", "ISSSSSSSSSSSSSSI",
                               "IIIIIIIIIIIIIIII"},
                              {{'I', P::Ink}, {'W', P::White}, {'S', P::S3}, {'P', P::Pink}, {'R', P::R3}});
}

ArtImage CharacterArt::Default16Sides() {
    ArtImage image = Default16();
    for (int y = 3; y < 14; ++y) {
        for (int x = 1; x < 14; ++x) {
            image.Set(x, y, P::White);
        }
    }
    return image;
}

void CharacterArt::Paint(AssetSet& set) {
    set.Add("Assets/Characters/Default.png", Composed(0, 64), "Racer");
    set.Add("Assets/Characters/Default_Sides.png", Sides(0, 64), "Racer");
    set.Add("Assets/Characters/Default_32.png", Composed(0, 32), "Racer");
    set.Add("Assets/Characters/Default_32_Sides.png", Sides(0, 32), "Racer");
    set.Add("Assets/Characters/Default_16.png", Default16(), "Racer");
    set.Add("Assets/Characters/Default_16_Sides.png", Default16Sides(), "Racer");
    const std::string folder = "Assets/Characters/DefaultAnimation/";
    set.Add(AssetSet::Name({folder, "Eye_32.png"}), Eye(32), "Racer");
    set.Add(AssetSet::Name({folder, "Eye_64.png"}), Eye(64), "Racer");
    for (int c = 0; c < Count; ++c) {
        for (int size : {32, 64}) {
            ArtImage strip(size * Frames, size);
            for (int f = 0; f < Frames; ++f) {
                strip.BlitOpaque(BodyFrame(c, size, f), f * size, 0);
            }
            std::string name =
                AssetSet::Name({folder, "Character", std::to_string(c), "_", std::to_string(size)});
            set.Add(AssetSet::Name({name, ".png"}), strip, "Characters");
            set.Add(AssetSet::Name({name, "_Sides.png"}), Sides(c, size), "Characters");
        }
    }
    // How each character looks in the race, for the contact sheet only.
    for (int c = 0; c < Count; ++c) {
        set.AddPreview(AssetSet::Name({"In the race ", std::to_string(c), " at 64"}), Composed(c, 64),
                       "Characters as raced");
        set.AddPreview(AssetSet::Name({"In the race ", std::to_string(c), " at 32"}), Composed(c, 32),
                       "Characters as raced");
    }
}
