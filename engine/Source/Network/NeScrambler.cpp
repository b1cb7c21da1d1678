#include "Network/NeScrambler.h"

#include <cstdlib>

namespace {
int32_t Wrap(int32_t value) {
    return ((value % 256) + 256) % 256;
}
} // namespace

std::string NeScrambler::Shift(const std::string& text, int32_t sign) {
    std::string out;
    out.reserve(text.size());
    int32_t step = 1;
    bool up = true;
    for (const char byte : text) {
        const int32_t c = static_cast<unsigned char>(byte);
        int32_t v = Wrap(c + sign * step);
        if (v < 32) {
            v = Wrap(v + 32 * sign);
        }
        if (v == 0x87) {
            v = Wrap(v + 2 * sign);
        } else if ((sign > 0 && v > 0x87 && c <= 0x87) || (sign < 0 && c >= 0x87 && v < 0x87)) {
            v = Wrap(v + 2 * sign);
        }
        out.push_back(static_cast<char>(v % 255));
        sign = -sign;
        if (up) {
            if (++step > 30) {
                up = false;
            }
        } else if (--step < 1) {
            up = true;
        }
    }
    return out;
}

std::string NeScrambler::Swap(const std::string& text) {
    std::string out = text;
    for (size_t i = 0; i + 1 < out.size(); i += 2) {
        std::swap(out[i], out[i + 1]);
    }
    return out;
}

std::string NeScrambler::Scramble(const std::string& text, int32_t level) {
    if (level < 2 || level > 4) {
        return text;
    }
    std::string out = Shift(text, 1);
    if (level >= 3) {
        std::string filled;
        filled.reserve(out.size() + out.size() / 3 + 1);
        for (size_t i = 0; i < out.size(); ++i) {
            filled.push_back(out[i]);
            if (i % 3 == 0) {
                filled.push_back(static_cast<char>(32 + std::rand() % 95));
            }
        }
        out = filled;
    }
    return level == 4 ? Swap(out) : out;
}

std::string NeScrambler::Unscramble(const std::string& text, int32_t level) {
    if (level < 2 || level > 4) {
        return text;
    }
    std::string out = level == 4 ? Swap(text) : text;
    if (level >= 3) {
        std::string kept;
        kept.reserve(out.size());
        for (size_t i = 0; i < out.size(); ++i) {
            if (i % 4 != 1) {
                kept.push_back(out[i]);
            }
        }
        out = kept;
    }
    return Shift(out, -1);
}
