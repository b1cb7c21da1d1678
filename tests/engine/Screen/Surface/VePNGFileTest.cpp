#include "Screen/Surface/VePNGFile.h"

#include "Support/HaltCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstdio>
#include <fstream>
#include <utility>
#include <vector>

namespace {

struct PngContent {
    int width = 2;
    int height = 1;
    int colourType = PNG_COLOR_TYPE_RGB;
    int bitDepth = 8;
    std::vector<std::vector<uint8_t>> rows{};
    std::vector<png_color> palette{};
    std::vector<uint8_t> paletteAlpha{};
};

// Writes a PNG of any colour type with libpng, rows already packed as the type and depth need.
void WritePng(const std::string& path, const PngContent& content) {
    FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, content.width, content.height, content.bitDepth, content.colourType,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!content.palette.empty()) {
        png_set_PLTE(png, info, content.palette.data(), static_cast<int>(content.palette.size()));
    }
    if (!content.paletteAlpha.empty()) {
        png_set_tRNS(png, info, content.paletteAlpha.data(), static_cast<int>(content.paletteAlpha.size()),
                     nullptr);
    }
    png_write_info(png, info);
    for (const auto& row : content.rows) {
        png_write_row(png, row.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

class VePNGFileTest : public ::testing::Test {
protected:
    std::string Path(const std::string& name) const { return temp.path + "/" + name; }

    TempUserData temp;
};

} // namespace

TEST_F(VePNGFileTest, EveryColourTypeAndDepthLoadsAsRgbTopRowFirst) {
    struct Case {
        const char* what;
        PngContent content;
        std::vector<uint32_t> expected;
    };
    const Case cases[] = {
        {"RGB keeps magenta as the key",
         {.height = 2, .rows = {{255, 0, 255, 1, 2, 3}, {10, 20, 30, 255, 0, 254}}},
         {0xFF00FF, 0x010203, 0x0A141E, 0xFF00FE}},
        {"RGBA drops the alpha byte",
         {.colourType = PNG_COLOR_TYPE_RGB_ALPHA, .rows = {{1, 2, 3, 0, 4, 5, 6, 200}}},
         {0x010203, 0x040506}},
        {"transparent palette entries become the key",
         {.width = 3,
          .colourType = PNG_COLOR_TYPE_PALETTE,
          .rows = {{2, 0, 1}},
          .palette = {{0, 0, 0}, {200, 100, 50}, {9, 8, 7}},
          .paletteAlpha = {0, 255, 255}},
         {0x090807, 0xFF00FF, 0xC86432}},
        {"two-bit grey",
         {.width = 4, .colourType = PNG_COLOR_TYPE_GRAY, .bitDepth = 2, .rows = {{0b00011011}}},
         {0x000000, 0x555555, 0xAAAAAA, 0xFFFFFF}},
        {"grey with alpha",
         {.colourType = PNG_COLOR_TYPE_GRAY_ALPHA, .rows = {{0x40, 255, 0x80, 10}}},
         {0x404040, 0xFF00FF}},
        {"sixteen-bit samples are reduced to eight",
         {.bitDepth = 16, .rows = {{0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC}}},
         {0xFF00FF, 0x12569A}},
    };
    for (const Case& c : cases) {
        WritePng(Path("image.png"), c.content);
        VePNGFile file;
        file.Load(Path("image.png"));
        EXPECT_EQ(std::pair(file.width, file.height), std::pair(c.content.width, c.content.height)) << c.what;
        EXPECT_EQ(file.pixels, c.expected) << c.what;
    }
}

TEST_F(VePNGFileTest, BrokenFilesHaltWithTheirStep) {
    VePNGFile file;
    std::string missing = Path("none.png");
    EXPECT_HALT(file.Load(missing), "Halt: Could not find image",
                "App halted when loading image: " + missing + " (VePNGFile::Load)");

    for (const char* bytes : {"this is not an image at all", "\x89PNG"}) {
        std::ofstream(Path("text.png")) << bytes;
        EXPECT_HALT(file.Load(Path("text.png")), "Halt: Invalid Image Type",
                    "App halted when loading invalid image type (VePNGFile::Load)");
    }

    PngContent content;
    content.width = 40;
    content.height = 40;
    content.rows.assign(40, std::vector<uint8_t>(120, 77));
    WritePng(Path("whole.png"), content);
    std::string bytes;
    std::ifstream in(Path("whole.png"), std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(in), {});
    // Cut short at three places, or with a corrupt header.
    std::string corrupt = bytes;
    corrupt[20] ^= 0x55;
    for (const std::string& broken :
         {bytes.substr(0, 12), bytes.substr(0, 40), bytes.substr(0, bytes.size() - 20), corrupt}) {
        std::ofstream(Path("broken.png"), std::ios::binary) << broken;
        EXPECT_HALT(file.Load(Path("broken.png")), "Halt: Unable to read image rows",
                    "App halted when reading rows from image (VePNGFile::Load)");
    }
}

TEST_F(VePNGFileTest, SaveWritesWhatLoadReads) {
    std::vector<uint32_t> pixels{0xFF112233, 0x00FF00FF, 0x00ABCDEF, 0, 0x00010101, 9};
    ASSERT_TRUE(VePNGFile::Save(Path("saved.png"), 2, 2, pixels.data(), 3));
    VePNGFile file;
    file.Load(Path("saved.png"));
    EXPECT_EQ(file.pixels, (std::vector<uint32_t>{0x112233, 0xFF00FF, 0, 0x010101}));
    EXPECT_FALSE(VePNGFile::Save(Path("empty.png"), 0, 2, pixels.data(), 3));
}
