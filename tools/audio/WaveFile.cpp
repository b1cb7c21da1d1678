#include "WaveFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>

namespace {

void Put32(std::string& out, uint32_t v) {
    for (int i = 0; i < 4; ++i) {
        out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
    }
}

void Put16(std::string& out, uint16_t v) {
    out.push_back(static_cast<char>(v & 0xFF));
    out.push_back(static_cast<char>((v >> 8) & 0xFF));
}

} // namespace

bool WaveFile::Write(const std::string& path, const SampleBuffer& sound, std::string& error) {
    const uint32_t channels = 1;
    const uint32_t bits = 16;
    const uint32_t dataSize = static_cast<uint32_t>(sound.Length() * channels * bits / 8);
    std::string bytes;
    bytes.reserve(44 + dataSize);
    bytes += "RIFF";
    Put32(bytes, 36 + dataSize);
    bytes += "WAVE";
    bytes += "fmt ";
    Put32(bytes, 16);
    Put16(bytes, 1);
    Put16(bytes, channels);
    Put32(bytes, kSampleRate);
    Put32(bytes, kSampleRate * channels * bits / 8);
    Put16(bytes, channels * bits / 8);
    Put16(bytes, bits);
    bytes += "data";
    Put32(bytes, dataSize);
    for (size_t i = 0; i < sound.Length(); ++i) {
        double v = std::clamp(static_cast<double>(sound[i]), -1.0, 1.0);
        long q = std::lround(v * 32767.0);
        Put16(bytes, static_cast<uint16_t>(static_cast<int16_t>(q)));
    }
    std::string temporary = path + ".tmp";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        if (!file) {
            error = "cannot open '" + temporary + "' for writing";
            return false;
        }
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!file) {
            error = "cannot write '" + temporary + "'";
            return false;
        }
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        error = "cannot rename '" + temporary + "' to '" + path + "'";
        return false;
    }
    return true;
}
