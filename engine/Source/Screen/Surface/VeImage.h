#pragma once
// A surface filled from a PNG file. It keeps the decoded file and the path it came from.
#include "Screen/Surface/VePNGFile.h"
#include "Screen/Surface/VeSurface.h"

#include <string>

class VeImage : public VeSurface {
public:
    VeImage() = default;
    // An empty path gives an empty image; otherwise the file is loaded (a missing or broken file
    // halts) into a surface of its size.
    explicit VeImage(const std::string& path);

    VePNGFile png;
    std::string path;
};
