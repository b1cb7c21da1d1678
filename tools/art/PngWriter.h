#pragma once
// Encodes an ArtImage as an 8-bit RGB PNG with fixed settings and no time or text chunks, so the
// same image always gives the same bytes. The key stays the exact colour (255, 0, 255), which is
// how the game's loader recognises transparent pixels.
#include "ArtImage.h"

#include <string>
#include <vector>

class PngWriter {
public:
    static std::vector<unsigned char> Encode(const ArtImage& image);
    // Writes the file only when its bytes differ from what is there; true on success.
    static bool WriteIfChanged(const std::string& path, const std::vector<unsigned char>& bytes,
                               bool& changed);
};
