#include "ArtImage.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

ArtImage::ArtImage(int w, int h, uint32_t fill) : width(w), height(h), pixels(size_t(w) * size_t(h), fill) {}

ArtImage ArtImage::FromGrid(std::initializer_list<const char*> rows, const std::map<char, uint32_t>& legend) {
    int h = int(rows.size());
    int w = h > 0 ? int(std::strlen(*rows.begin())) : 0;
    ArtImage image(w, h);
    int y = 0;
    for (const char* row : rows) {
        if (int(std::strlen(row)) != w) {
            throw std::runtime_error("grid rows differ in length");
        }
        for (int x = 0; x < w; ++x) {
            char c = row[x];
            if (c == '.' || c == ' ') {
                continue;
            }
            auto found = legend.find(c);
            if (found == legend.end()) {
                throw std::runtime_error(std::string("grid uses an unknown colour letter: ") + c);
            }
            image.Set(x, y, found->second);
        }
        ++y;
    }
    return image;
}

void ArtImage::Fill(uint32_t colour) {
    std::fill(pixels.begin(), pixels.end(), colour);
}

void ArtImage::FillRect(int x, int y, int w, int h, uint32_t colour) {
    for (int j = y; j < y + h; ++j) {
        for (int i = x; i < x + w; ++i) {
            Set(i, j, colour);
        }
    }
}

void ArtImage::FrameRect(int x, int y, int w, int h, uint32_t colour) {
    for (int i = x; i < x + w; ++i) {
        Set(i, y, colour);
        Set(i, y + h - 1, colour);
    }
    for (int j = y; j < y + h; ++j) {
        Set(x, j, colour);
        Set(x + w - 1, j, colour);
    }
}

void ArtImage::Line(int x0, int y0, int x1, int y1, uint32_t colour) {
    int dx = std::abs(x1 - x0);
    int dy = -std::abs(y1 - y0);
    int sx = x0 < x1 ? 1 : -1;
    int sy = y0 < y1 ? 1 : -1;
    int err = dx + dy;
    while (true) {
        Set(x0, y0, colour);
        if (x0 == x1 && y0 == y1) {
            break;
        }
        int e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x0 += sx;
        }
        if (e2 <= dx) {
            err += dx;
            y0 += sy;
        }
    }
}

void ArtImage::ThickLine(float x0, float y0, float x1, float y1, float w, uint32_t colour) {
    // Every pixel whose centre lies within w/2 of the segment.
    float half = w * 0.5f;
    int minX = int(std::floor(std::min(x0, x1) - half - 1));
    int maxX = int(std::ceil(std::max(x0, x1) + half + 1));
    int minY = int(std::floor(std::min(y0, y1) - half - 1));
    int maxY = int(std::ceil(std::max(y0, y1) + half + 1));
    float vx = x1 - x0;
    float vy = y1 - y0;
    float len2 = vx * vx + vy * vy;
    for (int y = minY; y <= maxY; ++y) {
        for (int x = minX; x <= maxX; ++x) {
            float px = x + 0.5f;
            float py = y + 0.5f;
            float t = len2 > 0 ? ((px - x0) * vx + (py - y0) * vy) / len2 : 0.0f;
            t = std::clamp(t, 0.0f, 1.0f);
            float dx = px - (x0 + t * vx);
            float dy = py - (y0 + t * vy);
            if (dx * dx + dy * dy <= half * half) {
                Set(x, y, colour);
            }
        }
    }
}

void ArtImage::FillEllipse(float cx, float cy, float rx, float ry, uint32_t colour) {
    if (rx <= 0 || ry <= 0) {
        return;
    }
    for (int y = int(std::floor(cy - ry)); y <= int(std::ceil(cy + ry)); ++y) {
        for (int x = int(std::floor(cx - rx)); x <= int(std::ceil(cx + rx)); ++x) {
            float dx = (x + 0.5f - cx) / rx;
            float dy = (y + 0.5f - cy) / ry;
            if (dx * dx + dy * dy <= 1.0f) {
                Set(x, y, colour);
            }
        }
    }
}

void ArtImage::FillPolygon(const std::vector<ArtPoint>& points, uint32_t colour) {
    if (points.size() < 3) {
        return;
    }
    float minY = points[0].y;
    float maxY = points[0].y;
    for (const ArtPoint& p : points) {
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    for (int y = int(std::floor(minY)); y <= int(std::ceil(maxY)); ++y) {
        float py = y + 0.5f;
        std::vector<float> crossings;
        for (size_t i = 0; i < points.size(); ++i) {
            const ArtPoint& a = points[i];
            const ArtPoint& b = points[(i + 1) % points.size()];
            if ((a.y <= py && b.y > py) || (b.y <= py && a.y > py)) {
                crossings.push_back(a.x + (py - a.y) / (b.y - a.y) * (b.x - a.x));
            }
        }
        std::sort(crossings.begin(), crossings.end());
        for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
            // Pixels whose centre lies between the two crossings.
            int from = int(std::ceil(crossings[i] - 0.5f));
            int to = int(std::floor(crossings[i + 1] - 0.5f));
            for (int x = from; x <= to; ++x) {
                Set(x, y, colour);
            }
        }
    }
}

void ArtImage::FillArc(float cx, float cy, float r0, float r1, float a0, float a1, uint32_t colour) {
    const float twoPi = 6.28318531f;
    for (int y = int(std::floor(cy - r1)); y <= int(std::ceil(cy + r1)); ++y) {
        for (int x = int(std::floor(cx - r1)); x <= int(std::ceil(cx + r1)); ++x) {
            float dx = x + 0.5f - cx;
            float dy = y + 0.5f - cy;
            float d = std::sqrt(dx * dx + dy * dy);
            if (d < r0 || d > r1) {
                continue;
            }
            float a = std::atan2(dy, dx);
            while (a < a0) {
                a += twoPi;
            }
            while (a > a0 + twoPi) {
                a -= twoPi;
            }
            if (a <= a1) {
                Set(x, y, colour);
            }
        }
    }
}

void ArtImage::Blit(const ArtImage& source, int x, int y) {
    for (int j = 0; j < source.height; ++j) {
        for (int i = 0; i < source.width; ++i) {
            uint32_t c = source.pixels[j * source.width + i];
            if (c != kKey) {
                Set(x + i, y + j, c);
            }
        }
    }
}

void ArtImage::BlitOpaque(const ArtImage& source, int x, int y) {
    for (int j = 0; j < source.height; ++j) {
        for (int i = 0; i < source.width; ++i) {
            Set(x + i, y + j, source.pixels[j * source.width + i]);
        }
    }
}

ArtImage ArtImage::Crop(int x, int y, int w, int h) const {
    ArtImage out(w, h);
    for (int j = 0; j < h; ++j) {
        for (int i = 0; i < w; ++i) {
            out.Set(i, j, Get(x + i, y + j));
        }
    }
    return out;
}

ArtImage ArtImage::MirroredX() const {
    ArtImage out(width, height);
    for (int j = 0; j < height; ++j) {
        for (int i = 0; i < width; ++i) {
            out.Set(width - 1 - i, j, Get(i, j));
        }
    }
    return out;
}

ArtImage ArtImage::Scaled(int factor) const {
    ArtImage out(width * factor, height * factor);
    for (int j = 0; j < out.height; ++j) {
        for (int i = 0; i < out.width; ++i) {
            out.Set(i, j, Get(i / factor, j / factor));
        }
    }
    return out;
}

void ArtImage::Replace(uint32_t from, uint32_t to) {
    std::replace(pixels.begin(), pixels.end(), from, to);
}

int ArtImage::Count(uint32_t colour) const {
    return int(std::count(pixels.begin(), pixels.end(), colour));
}
