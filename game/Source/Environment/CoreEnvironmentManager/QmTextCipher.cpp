#include "Environment/CoreEnvironmentManager/QmTextCipher.h"

#include "Platform/VeRandom.h"

#include <cstdint>

namespace {
// Stage 1 in either direction: the step runs 1, 2, ..., 30, 31, 30, ..., 1, 0, 1, ... (period 62)
// and the sign alternates from the given start. A result at or below 31 is moved by 32 in the
// direction of the sign.
void ShiftBytes(std::string& bytes, int firstSign) {
    int sign = firstSign;
    int step = 1;
    int direction = 1;
    for (char& byte : bytes) {
        uint8_t c = static_cast<uint8_t>(static_cast<uint8_t>(byte) + sign * step);
        if (c <= 31) {
            c = static_cast<uint8_t>(c + 32 * sign);
        }
        byte = static_cast<char>(c);
        sign = -sign;
        if (direction > 0) {
            if (++step > 30) {
                direction = -1;
            }
        } else if (--step < 1) {
            direction = 1;
        }
    }
}

void SwapPairs(std::string& bytes) {
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::swap(bytes[i], bytes[i + 1]);
    }
}
} // namespace

std::string QmTextCipher::EncodeText(int level, const std::string& text, int* outLength) {
    std::string result = text;
    if (level >= 2) {
        ShiftBytes(result, 1);
    }
    if (level >= 3) {
        std::string filled;
        filled.reserve(result.size() + result.size() / 3 + 1);
        for (size_t i = 0; i < result.size(); ++i) {
            filled.push_back(result[i]);
            if (i % 3 == 0) {
                filled.push_back(static_cast<char>(Rand(VeRandomStream::Filler) % 95 + 32));
            }
        }
        result.swap(filled);
    }
    if (level >= 4) {
        SwapPairs(result);
    }
    if (outLength != nullptr) {
        *outLength = static_cast<int>(result.size());
    }
    return result;
}

std::string QmTextCipher::DecodeText(int level, const std::string& text) {
    std::string result = text;
    if (level >= 4) {
        SwapPairs(result);
    }
    if (level >= 3) {
        std::string kept;
        kept.reserve(result.size());
        for (size_t i = 0; i < result.size(); ++i) {
            if (i % 4 != 1) {
                kept.push_back(result[i]);
            }
        }
        result.swap(kept);
    }
    if (level >= 2) {
        ShiftBytes(result, -1);
    }
    return result;
}
