#include "Screen/Text/VeText.h"

#include "Screen/Text/VeGlyphs.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

VeText::VeText(const std::string& initialText, const VeTextStyle* initialStyle, bool upperCase) {
    SetText(initialText, upperCase);
    if (initialStyle != nullptr) {
        SetStyle(*initialStyle);
    } else {
        Draw();
    }
}

void VeText::SetStyle(const VeTextStyle& newStyle) {
    style.Size(newStyle.size);
    style.Colour(newStyle.colour);
    style.Weight(newStyle.weight);
    style.LetterSpacing(newStyle.letterSpacing);
    style.LineHeight(newStyle.lineHeight);
    style.MaxWidth(newStyle.maxWidth);
    style.MaxHeight(newStyle.maxHeight);
    style.SmallLetters(newStyle.smallLetters && newStyle.size >= 2);
    styleApplied = true;
    Draw();
}

void VeText::SetText(const std::string& newText, bool upperCase) {
    text = newText;
    if (upperCase) {
        for (char& c : text) {
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
    }
}

int32_t VeText::CellWidth() const {
    return 4 * style.size + std::max(style.weight, 1);
}

int32_t VeText::CellHeight() const {
    return CellWidth() + (SmallLettersInEffect() ? 4 * style.size : 0);
}

void VeText::Draw() {
    surface.Free();
    int32_t width = 0;
    int32_t height = 0;
    Layout(width, height);
    surface.Create(width, height);
    surface.Fill(kColourKey);
    Render();
}

void VeText::Layout(int32_t& width, int32_t& height) {
    wrapPositions.clear();
    int32_t n = static_cast<int32_t>(text.size());
    const int32_t advance = Advance();
    const int32_t lineStep = LineStep();
    if (style.maxWidth == 0) {
        lines = 1;
        columns = n;
        height = CellHeight();
    } else {
        const int32_t lineCap = style.maxHeight > 0 ? style.maxHeight / lineStep : 0;
        int32_t perLine = style.maxWidth / advance;
        if (CellWidth() * perLine + 1 < style.maxWidth) {
            ++perLine; // the last character needs no spacing
        }
        perLine = std::max(perLine, 1);
        if (n <= perLine) {
            lines = 1;
            columns = n;
            height = CellHeight();
        } else {
            int32_t previousEnd = 0;
            int32_t candidate = perLine - 1;
            int32_t largest = 0;
            bool capReached = false;
            while (true) {
                if (lineCap > 0 && static_cast<int32_t>(wrapPositions.size()) + 1 >= lineCap) {
                    capReached = true;
                    break;
                }
                int32_t end = candidate;
                bool atSpace = false;
                for (int32_t i = candidate; i >= previousEnd + 1; --i) {
                    if (text[static_cast<size_t>(i)] == ' ') {
                        end = i;
                        atSpace = true;
                        break;
                    }
                }
                // A first line broken inside a word shows all its end + 1 characters.
                const int32_t counted =
                    wrapPositions.empty() ? (atSpace ? end : end + 1) : end - previousEnd + 1;
                largest = std::max(largest, counted);
                wrapPositions.push_back(end);
                previousEnd = end;
                candidate = end + perLine;
                if (candidate + 1 >= n) {
                    break;
                }
            }
            // Too many lines for the height limit: the rest of the string goes.
            if (capReached) {
                const int32_t keep = wrapPositions.empty() ? perLine : wrapPositions.back() + perLine + 1;
                if (n > keep) {
                    text.resize(static_cast<size_t>(keep));
                    n = keep;
                }
            }
            const int32_t lastEnd = wrapPositions.empty() ? -1 : wrapPositions.back();
            columns = std::min(perLine, std::max(n - lastEnd, largest));
            lines = static_cast<int32_t>(wrapPositions.size()) + (lastEnd < n - 1 ? 1 : 0);
            height = lineStep * lines - style.lineHeight;
        }
    }
    width = columns > 0 ? advance * columns - style.letterSpacing : 0;
}

void VeText::Render() {
    const bool small = SmallLettersInEffect();
    const int32_t unit = style.size;
    const int32_t advance = Advance();
    const int32_t lineStep = LineStep();
    const size_t wrapCount = wrapPositions.size();
    int32_t x = 0;
    int32_t y = small ? 2 * unit : 0;
    size_t nextWrap = 0;
    for (size_t k = 0; k < text.size(); ++k) {
        const unsigned char c = masked ? 'X' : static_cast<unsigned char>(text[k]);
        if (small && VeGlyphs::HasSmall(c)) {
            VeGlyphs::DrawSmall(surface, c, x, y, unit, style.colour);
        } else {
            VeGlyphs::DrawMain(surface, c, x, y, unit, style.colour, small);
        }
        if (nextWrap < wrapCount && static_cast<int32_t>(k) == wrapPositions[nextWrap]) {
            ++nextWrap;
            x = 0;
            y += lineStep;
        } else {
            x += advance;
        }
    }
    Thicken();
}

void VeText::Thicken() {
    // Every pass of the strokes, shifted by (dx, dy) for dx and dy from 0 to Weight - 1, covers
    // the one-pixel pass spread over a Weight x Weight box to the right and down. The one-pixel
    // pass has no ink left of or above the surface, so spreading it here gives the same pixels as
    // drawing the strokes Weight x Weight times, in one sweep.
    const int32_t weight = std::max(style.weight, 1);
    const int32_t w = surface.width;
    const int32_t h = surface.height;
    if (weight == 1 || w == 0 || h == 0) {
        return;
    }
    uint32_t* pixels = surface.Pixels();
    const int32_t row = surface.RowLength();
    // Across: a pixel is ink when one of the Weight pixels ending at it is.
    std::vector<uint8_t> across(static_cast<size_t>(w) * static_cast<size_t>(h), 0);
    for (int32_t py = 0; py < h; ++py) {
        const uint32_t* source = pixels + static_cast<ptrdiff_t>(row) * py;
        uint8_t* out = across.data() + static_cast<ptrdiff_t>(w) * py;
        int32_t lastInk = -weight;
        for (int32_t px = 0; px < w; ++px) {
            if (source[px] != kColourKey) {
                lastInk = px;
            }
            out[px] = px - lastInk < weight ? 1 : 0;
        }
    }
    // Down: the same over the Weight rows ending at it.
    for (int32_t px = 0; px < w; ++px) {
        int32_t lastInk = -weight;
        for (int32_t py = 0; py < h; ++py) {
            if (across[static_cast<size_t>(w) * static_cast<size_t>(py) + static_cast<size_t>(px)] != 0) {
                lastInk = py;
            }
            if (py - lastInk < weight) {
                pixels[static_cast<ptrdiff_t>(row) * py + px] = style.colour;
            }
        }
    }
}

void VeText::DrawOnto(VeSurface& target, int32_t x, int32_t y, bool centreX, float alpha,
                      uint32_t outlineColour) const {
    if (centreX) {
        x -= static_cast<int32_t>(static_cast<float>(surface.width) * 0.5f);
    }
    const int32_t w = surface.width;
    const int32_t h = surface.height;
    if (w == 0 || h == 0 || target.Pixels() == nullptr) {
        return;
    }
    const uint32_t* pixels = surface.Pixels();
    const int32_t row = surface.RowLength();
    // Only the part of the text (and its rim) that lands on the target is visited.
    const int32_t rim = outlineColour != kColourKey ? 1 : 0;
    const int32_t left = std::max(-rim, -x);
    const int32_t top = std::max(-rim, -y);
    const int32_t right = std::min(w + rim, target.width - x);
    const int32_t bottom = std::min(h + rim, target.height - y);
    if (left >= right || top >= bottom) {
        return;
    }
    const int32_t targetRow = target.RowLength();
    uint32_t* out = target.Pixels();
    // The ink as a mask with a two-pixel margin all round, so the rim test of every visited pixel
    // (the text and one pixel around it) reads inside the mask.
    constexpr int32_t kMargin = 2;
    const int32_t maskRow = w + 2 * kMargin;
    std::vector<uint8_t> mask(static_cast<size_t>(maskRow) * static_cast<size_t>(h + 2 * kMargin), 0);
    auto maskLine = [&](int32_t sy) {
        return mask.data() + static_cast<ptrdiff_t>(maskRow) * (sy + kMargin) + kMargin;
    };
    for (int32_t sy = 0; sy < h; ++sy) {
        const uint32_t* source = pixels + static_cast<ptrdiff_t>(row) * sy;
        uint8_t* line = maskLine(sy);
        for (int32_t sx = 0; sx < w; ++sx) {
            line[sx] = source[sx] != kColourKey ? 1 : 0;
        }
    }
    for (int32_t sy = top; sy < bottom; ++sy) {
        const uint8_t* above = maskLine(sy - 1);
        const uint8_t* here = maskLine(sy);
        const uint8_t* below = maskLine(sy + 1);
        uint32_t* targetLine = out + static_cast<ptrdiff_t>(targetRow) * (y + sy) + x;
        for (int32_t sx = left; sx < right; ++sx) {
            uint32_t colour = 0;
            if (here[sx] != 0) {
                colour = pixels[static_cast<ptrdiff_t>(row) * sy + sx];
            } else if (rim != 0 && (above[sx - 1] | above[sx] | above[sx + 1] | here[sx - 1] | here[sx + 1] |
                                    below[sx - 1] | below[sx] | below[sx + 1]) != 0) {
                colour = outlineColour;
            } else {
                continue;
            }
            if (alpha == 1.0f) {
                targetLine[sx] = colour;
            } else {
                target.BlendPixel(static_cast<int32_t>(&targetLine[sx] - out), colour, alpha);
            }
        }
    }
}

void VeText::DrawString(VeSurface& target, const std::string& string, int32_t x, int32_t y,
                        const VeTextStyle& textStyle, bool centreX, float alpha, uint32_t outlineColour) {
    VeText text(string, &textStyle);
    text.DrawOnto(target, x, y, centreX, alpha, outlineColour);
}

void VeText::DrawFpsText(VeSurface& overlay, const VeFpsText& fps) {
    VeTextStyle style;
    style.Size(fps.size)
        .Colour(fps.colour)
        .Weight(fps.weight)
        .LetterSpacing(fps.letterSpacing)
        .SmallLetters(false);
    DrawString(overlay, fps.text, fps.centreX, fps.top, style, true, fps.alpha, fps.secondColour);
}
