#include "CowArt.h"

#include "ArtPalette.h"
#include "Shading.h"

#include <string>

using P = ArtPalette;

namespace {

struct Pen {
    ArtImage& image;
    float k;
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
    void Rect(float x, float y, float w, float h, uint32_t c) const {
        Polygon({{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}, c);
    }
};

std::vector<ArtPoint> Mirror(std::vector<ArtPoint> points) {
    for (ArtPoint& p : points) {
        p.x = 32.0f - p.x;
    }
    return points;
}

// Paints colour onto the pixels of image that mask covers and that are not the key.
void PaintWithin(ArtImage& image, const ArtImage& mask, uint32_t colour) {
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            if (!mask.IsKey(x, y) && !image.IsKey(x, y)) {
                image.Set(x, y, colour);
            }
        }
    }
}

} // namespace

ArtImage CowArt::Cow16() {
    return ArtImage::FromGrid({"..Y..........Y..", "..YY........YY..", "...yIIIIIIIIy...", ".IIIKKKWWWWWIII.",
                               "IPWIKKWWWWWSIWPI", ".IIIWWWWWWWSIII.", "...IWEWWWWEWI...", "...IWEWWWWEWI...",
                               "...IPPPPPPPPI...", "...IPPKPPKPPI...", "...IPPPPPPPPI...", "..IIIIIIIIIIII..",
                               "..IWWKKWWWWWWI..", "..IWKKKWWWWKSI..", "..IWWSIIIISWWI..",
                               "..IIII....IIII.."},
                              {{'Y', P::Y3},
                               {'y', P::Y1},
                               {'I', P::Ink},
                               {'K', P::Ink},
                               {'E', P::Ink},
                               {'W', P::White},
                               {'S', P::S3},
                               {'P', P::Pink}});
}

ArtImage CowArt::Cow(int size) {
    if (size <= 16) {
        return Cow16();
    }
    ArtImage result(size, size);
    float k = size / 32.0f;
    // Horns.
    ArtImage horns(size, size);
    Pen h{horns, k};
    std::vector<ArtPoint> horn = {{8.5f, 8.5f}, {11.5f, 7.0f}, {8.5f, 3.5f},
                                  {5.0f, 1.0f}, {4.2f, 2.6f},  {6.3f, 5.6f}};
    h.Polygon(horn, P::Y3);
    h.Polygon(Mirror(horn), P::Y3);
    Shading::Bevel(horns, 1);
    result.Blit(horns, 0, 0);
    // Ears with pink insides.
    ArtImage ears(size, size);
    Pen e{ears, k};
    std::vector<ArtPoint> ear = {{9.0f, 9.0f}, {1.5f, 8.5f}, {1.0f, 11.0f}, {3.5f, 13.0f}, {9.0f, 12.5f}};
    std::vector<ArtPoint> inner = {{8.0f, 10.0f}, {3.0f, 9.8f}, {2.8f, 11.2f}, {4.2f, 12.0f}, {8.0f, 11.6f}};
    e.Polygon(ear, P::White);
    e.Polygon(Mirror(ear), P::White);
    e.Polygon(inner, P::Pink);
    e.Polygon(Mirror(inner), P::Pink);
    result.Blit(ears, 0, 0);
    // Body and front legs, with a patch.
    ArtImage body(size, size);
    Pen b{body, k};
    b.Rect(5.0f, 20.0f, 22.0f, 7.5f, P::White);
    b.Rect(5.5f, 26.0f, 6.5f, 5.0f, P::White);
    b.Rect(20.0f, 26.0f, 6.5f, 5.0f, P::White);
    Shading::Bevel(body, size >= 64 ? 2 : 1);
    ArtImage patch(size, size);
    Pen pa{patch, k};
    pa.Ellipse(8.5f, 24.5f, 4.0f, 3.0f, P::Ink);
    pa.Ellipse(24.5f, 29.0f, 2.5f, 2.0f, P::Ink);
    PaintWithin(body, patch, P::Ink);
    // Hooves.
    ArtImage hooves(size, size);
    Pen ho{hooves, k};
    ho.Rect(5.5f, 29.5f, 6.5f, 1.5f, P::S1);
    ho.Rect(20.0f, 29.5f, 6.5f, 1.5f, P::S1);
    PaintWithin(body, hooves, P::S0);
    result.Blit(body, 0, 0);
    // Head.
    ArtImage head(size, size);
    Pen hd{head, k};
    hd.Polygon({{9.0f, 6.0f},
                {23.0f, 6.0f},
                {25.5f, 9.0f},
                {25.0f, 17.0f},
                {23.0f, 22.5f},
                {9.0f, 22.5f},
                {7.0f, 17.0f},
                {6.5f, 9.0f}},
               P::White);
    Shading::Bevel(head, size >= 64 ? 2 : 1);
    ArtImage spots(size, size);
    Pen sp{spots, k};
    sp.Ellipse(10.0f, 8.5f, 4.5f, 3.5f, P::Ink);
    sp.Ellipse(24.0f, 8.0f, 2.6f, 2.2f, P::Ink);
    PaintWithin(head, spots, P::Ink);
    result.Blit(head, 0, 0);
    // Eyes ringed with white so they read on the patch.
    Pen r{result, k};
    for (float x : {12.0f, 20.0f}) {
        r.Ellipse(x, 12.3f, 2.4f, 2.8f, P::White);
        r.Ellipse(x, 12.6f, 1.6f, 2.1f, P::Ink);
        r.Ellipse(x - 0.5f, 11.7f, 0.55f, 0.6f, P::White);
    }
    // Snout.
    ArtImage snout(size, size);
    Pen sn{snout, k};
    sn.Ellipse(16.0f, 18.8f, 7.5f, 4.3f, P::Pink);
    Shading::Bevel(snout, size >= 64 ? 2 : 1);
    sn.Ellipse(12.8f, 18.8f, 1.3f, 1.1f, P::R1);
    sn.Ellipse(19.2f, 18.8f, 1.3f, 1.1f, P::R1);
    if (size >= 64) {
        sn.Ellipse(12.8f, 19.0f, 0.7f, 0.6f, P::R0);
        sn.Ellipse(19.2f, 19.0f, 0.7f, 0.6f, P::R0);
    }
    result.Blit(snout, 0, 0);
    Shading::Outline(result, P::Ink);
    return result;
}

void CowArt::Paint(AssetSet& set) {
    for (int size : {16, 32, 64}) {
        set.Add(AssetSet::Sized("Assets/Characters/Cow/Cow", size), Cow(size), "Cow");
    }
}
