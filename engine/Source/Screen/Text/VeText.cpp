#include "Screen/Text/VeText.h"

#include "Screen/Text/VeGlyphs.h"

#include <algorithm>
#include <cctype>

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
                for (int32_t i = candidate; i >= previousEnd + 1; --i) {
                    if (text[static_cast<size_t>(i)] == ' ') {
                        end = i;
                        break;
                    }
                }
                const int32_t counted = wrapPositions.empty() ? end : end - previousEnd + 1;
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
    const int32_t weight = std::max(style.weight, 1);
    const int32_t advance = Advance();
    const int32_t lineStep = LineStep();
    const int32_t shift = small ? 2 * unit : 0;
    const size_t wrapCount = wrapPositions.size();
    for (int32_t dy = 0; dy < weight; ++dy) {
        for (int32_t dx = 0; dx < weight; ++dx) {
            int32_t x = dx;
            int32_t y = dy + shift;
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
                    x = dx;
                    y += lineStep;
                } else {
                    x += advance;
                }
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
    auto stroke = [&](int32_t sx, int32_t sy) {
        return sx >= 0 && sy >= 0 && sx < w && sy < h && surface.GetXY(sx, sy) != kColourKey;
    };
    if (outlineColour != kColourKey) {
        for (int32_t sy = -1; sy <= h; ++sy) {
            for (int32_t sx = -1; sx <= w; ++sx) {
                if (stroke(sx, sy)) {
                    continue;
                }
                bool rim = false;
                for (int32_t ny = sy - 1; ny <= sy + 1 && !rim; ++ny) {
                    for (int32_t nx = sx - 1; nx <= sx + 1 && !rim; ++nx) {
                        rim = stroke(nx, ny);
                    }
                }
                if (rim) {
                    target.BlendXY(x + sx, y + sy, outlineColour, alpha);
                }
            }
        }
    }
    for (int32_t sy = 0; sy < h; ++sy) {
        for (int32_t sx = 0; sx < w; ++sx) {
            const uint32_t pixel = surface.GetXY(sx, sy);
            if (pixel != kColourKey) {
                target.BlendXY(x + sx, y + sy, pixel, alpha);
            }
        }
    }
}

void VeText::DrawString(VeSurface& target, const std::string& string, int32_t x, int32_t y,
                        const VeTextStyle& textStyle, bool centreX, float alpha, uint32_t outlineColour) {
    VeText text(string, &textStyle);
    text.DrawOnto(target, x, y, centreX, alpha, outlineColour);
}
