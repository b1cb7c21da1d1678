#pragma once
// Writes a mono 16-bit PCM wave file at 44100 Hz with the canonical 44-byte header (RIFF, fmt
// and data chunks, nothing else), the form the game's loader reads.
#include "SampleBuffer.h"

#include <string>

class WaveFile {
public:
    // Converts -1..1 to 16-bit with rounding and clipping; returns false when the file cannot
    // be written (the message names the path).
    static bool Write(const std::string& path, const SampleBuffer& sound, std::string& error);
};
