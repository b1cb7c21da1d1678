#pragma once
// The light, keyless scrambling of packet payloads. Level 2 (loose) shifts every byte by a
// see-saw step with alternating sign, keeping the terminator byte 0x87 and control bytes out;
// level 3 (basic) adds a printable filler after bytes 0, 3, 6, ...; level 4 (advanced) also swaps
// neighbouring bytes. Levels 0 and 1 leave the text as it is. It hides text from a glance, no more.
#include <cstdint>
#include <string>

class NeScrambler {
public:
    static std::string Scramble(const std::string& text, int32_t level);
    static std::string Unscramble(const std::string& text, int32_t level);

private:
    static std::string Shift(const std::string& text, int32_t sign);
    static std::string Swap(const std::string& text);
};
