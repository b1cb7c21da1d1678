#pragma once
// Test support: compares pictures (0x??RRGGBB pixels, top row first) with stored PNG images within
// a tolerance. Header only, because it needs the screen module's PNG code, which not every test
// executable links.
//
// A stored image that differs, or is missing, fails the test and the picture actually made is
// written to $TMPDIR/quillmaze-images/<name> for a look. With QUILLMAZE_UPDATE_IMAGES=1 the stored
// image is (re)written instead; look at it before committing it.
#include "Platform/VeFiles.h"
#include "Screen/Surface/VePNGFile.h"
#include "Screen/Surface/VeSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

struct ScreenshotImage {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint32_t> pixels;

    uint32_t At(int32_t x, int32_t y) const { return pixels[static_cast<size_t>(y) * width + x] & 0xFFFFFFu; }
};

struct ScreenshotDifference {
    bool sameSize = false;
    int64_t differingPixels = 0;
    int32_t largestChannelDifference = 0;
    int32_t firstX = -1;
    int32_t firstY = -1;
};

// A surface's pixels as a picture, fully opaque.
inline ScreenshotImage ScreenshotOf(const VeSurface& surface) {
    ScreenshotImage image;
    image.width = surface.width;
    image.height = surface.height;
    for (int32_t i = 0; i < surface.pixelCount; ++i) {
        image.pixels.push_back(surface.GetPixel(i) | 0xFF000000u);
    }
    return image;
}

// Loads a PNG without halting when it is missing; false when the file does not exist.
inline bool LoadScreenshot(const std::string& path, ScreenshotImage& image) {
    if (!FileExists(path)) {
        return false;
    }
    VePNGFile file;
    file.Load(path);
    image.width = file.width;
    image.height = file.height;
    image.pixels = std::move(file.pixels);
    return true;
}

inline bool SaveScreenshotImage(const std::string& path, const ScreenshotImage& image) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    return VePNGFile::Save(path, image.width, image.height, image.pixels.data(), image.width);
}

// Counts the pixels where any of red, green or blue differs by more than the tolerance.
inline ScreenshotDifference CompareScreenshots(const ScreenshotImage& a, const ScreenshotImage& b,
                                               int32_t channelTolerance) {
    ScreenshotDifference difference;
    difference.sameSize = a.width == b.width && a.height == b.height;
    if (!difference.sameSize) {
        return difference;
    }
    for (size_t i = 0; i < static_cast<size_t>(a.width) * static_cast<size_t>(a.height); ++i) {
        int32_t largest = 0;
        for (int shift : {0, 8, 16}) {
            largest = std::max(largest, std::abs(static_cast<int32_t>((a.pixels[i] >> shift) & 0xFF) -
                                                 static_cast<int32_t>((b.pixels[i] >> shift) & 0xFF)));
        }
        difference.largestChannelDifference = std::max(difference.largestChannelDifference, largest);
        if (largest > channelTolerance && difference.differingPixels == 0) {
            difference.firstX = static_cast<int32_t>(i % static_cast<size_t>(a.width));
            difference.firstY = static_cast<int32_t>(i / static_cast<size_t>(a.width));
        }
        difference.differingPixels += largest > channelTolerance ? 1 : 0;
    }
    return difference;
}

// Two surfaces of the same size with the same colours, or where they first differ.
inline ::testing::AssertionResult SamePicture(const VeSurface& a, const VeSurface& b) {
    const ScreenshotDifference difference = CompareScreenshots(ScreenshotOf(a), ScreenshotOf(b), 0);
    if (difference.sameSize && difference.differingPixels == 0) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << (difference.sameSize ? "pixels differ, first at " : "sizes differ") << difference.firstX << ","
           << difference.firstY;
}

// The stored image at tests/data/<relativePath> matches the picture when at most
// maxDifferingPixels pixels differ by more than channelTolerance in some channel.
inline ::testing::AssertionResult MatchesStoredImage(const std::string& relativePath,
                                                     const ScreenshotImage& actual,
                                                     int32_t channelTolerance = 8,
                                                     int64_t maxDifferingPixels = 0) {
    const std::string stored = std::string(QM_SOURCE_DIR) + "/tests/data/" + relativePath;
    const char* update = std::getenv("QUILLMAZE_UPDATE_IMAGES");
    if (update != nullptr && std::string(update) == "1") {
        if (!SaveScreenshotImage(stored, actual)) {
            return ::testing::AssertionFailure() << "could not write " << stored;
        }
        return ::testing::AssertionSuccess() << "wrote " << stored;
    }
    const std::string review =
        (std::filesystem::temp_directory_path() / "quillmaze-images" / relativePath).string();
    ScreenshotImage expected;
    if (!LoadScreenshot(stored, expected)) {
        SaveScreenshotImage(review, actual);
        return ::testing::AssertionFailure() << "no stored image " << stored << "; the picture made is in "
                                             << review << " (QUILLMAZE_UPDATE_IMAGES=1 stores it)";
    }
    ScreenshotDifference difference = CompareScreenshots(actual, expected, channelTolerance);
    if (difference.sameSize && difference.differingPixels <= maxDifferingPixels) {
        return ::testing::AssertionSuccess();
    }
    SaveScreenshotImage(review, actual);
    std::ostringstream message;
    if (!difference.sameSize) {
        message << "size " << actual.width << "x" << actual.height << " differs from the stored "
                << expected.width << "x" << expected.height;
    } else {
        message << difference.differingPixels << " pixels differ by more than " << channelTolerance
                << " (largest difference " << difference.largestChannelDifference << ", first at "
                << difference.firstX << "," << difference.firstY << ")";
    }
    return ::testing::AssertionFailure()
           << relativePath << ": " << message.str() << "; the picture made is in " << review;
}
