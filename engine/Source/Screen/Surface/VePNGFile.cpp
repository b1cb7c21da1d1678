#include "Screen/Surface/VePNGFile.h"

#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>

namespace {

// Images larger than this are refused as broken rather than allocated.
constexpr uint32_t kMaxSide = 16384;
constexpr uint64_t kMaxPixels = uint64_t{1} << 26;

enum class ReadStep { Done, NoReadStruct, NoInfoStruct, Rows };

void OnPngError(png_structp png, png_const_charp /*message*/) {
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp /*png*/, png_const_charp /*message*/) {}

void ReadFromStream(png_structp png, png_bytep data, png_size_t length) {
    auto* file = static_cast<FILE*>(png_get_io_ptr(png));
    if (std::fread(data, 1, length, file) != length) {
        png_error(png, "unexpected end of file");
    }
}

struct Decoded {
    uint32_t width = 0;
    uint32_t height = 0;
    int channels = 0;
    bool keyFromAlpha = false;
    std::vector<uint8_t> bytes;
    std::vector<png_bytep> rows;
};

// Everything libpng does after the signature. libpng reports errors by jumping back to the
// setjmp below, so nothing with a destructor is created between the two: the buffers live in
// `out`, which the caller owns.
bool DecodeRows(png_structp png, png_infop info, Decoded& out) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_set_sig_bytes(png, 8);
    png_set_user_limits(png, kMaxSide, kMaxSide);
    png_read_info(png, info);
    uint32_t w = png_get_image_width(png, info);
    uint32_t h = png_get_image_height(png, info);
    int depth = png_get_bit_depth(png, info);
    int type = png_get_color_type(png, info);
    if (uint64_t{w} * h > kMaxPixels) {
        png_error(png, "image too large");
    }
    out.keyFromAlpha = type != PNG_COLOR_TYPE_RGB_ALPHA;
    if (type == PNG_COLOR_TYPE_PALETTE) {
        png_set_palette_to_rgb(png);
    }
    if (type == PNG_COLOR_TYPE_GRAY && depth < 8) {
        png_set_expand_gray_1_2_4_to_8(png);
    }
    if (png_get_valid(png, info, PNG_INFO_tRNS)) {
        png_set_tRNS_to_alpha(png);
    }
    if (depth == 16) {
        png_set_strip_16(png);
    }
    if (type == PNG_COLOR_TYPE_GRAY || type == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_gray_to_rgb(png);
    }
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    int channels = png_get_channels(png, info);
    size_t rowBytes = png_get_rowbytes(png, info);
    if ((channels != 3 && channels != 4) || rowBytes != size_t{w} * channels) {
        png_error(png, "unexpected pixel layout");
    }
    out.width = w;
    out.height = h;
    out.channels = channels;
    out.bytes.resize(rowBytes * h);
    out.rows.resize(h);
    for (uint32_t y = 0; y < h; ++y) {
        out.rows[y] = out.bytes.data() + rowBytes * y;
    }
    png_read_image(png, out.rows.data());
    png_read_end(png, nullptr);
    return true;
}

ReadStep DecodeFile(FILE* file, Decoded& out) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
    if (png == nullptr) {
        return ReadStep::NoReadStruct;
    }
    png_infop info = png_create_info_struct(png);
    if (info == nullptr) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        return ReadStep::NoInfoStruct;
    }
    png_set_read_fn(png, file, ReadFromStream);
    bool decoded = DecodeRows(png, info, out);
    png_destroy_read_struct(&png, &info, nullptr);
    return decoded ? ReadStep::Done : ReadStep::Rows;
}

struct Encoded {
    std::string bytes;
};

void WriteToString(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<Encoded*>(png_get_io_ptr(png));
    out->bytes.append(reinterpret_cast<const char*>(data), length);
}

void FlushNothing(png_structp /*png*/) {}

bool EncodeRows(png_structp png, png_infop info, int32_t width, int32_t height,
                std::vector<png_bytep>& rows) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_set_IHDR(png, info, static_cast<uint32_t>(width), static_cast<uint32_t>(height), 8,
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    return true;
}

} // namespace

void VePNGFile::Load(const std::string& path) {
    width = 0;
    height = 0;
    pixels.clear();
    FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        Halt("Halt: Could not find image", "App halted when loading image: " + path + " (VePNGFile::Load)");
    }
    unsigned char signature[8];
    size_t got = std::fread(signature, 1, 8, file);
    if (got != 8 || png_sig_cmp(signature, 0, 8) != 0) {
        std::fclose(file);
        Halt("Halt: Invalid Image Type", "App halted when loading invalid image type (VePNGFile::Load)");
    }
    Decoded decoded;
    ReadStep step = DecodeFile(file, decoded);
    std::fclose(file);
    switch (step) {
    case ReadStep::NoReadStruct:
        Halt("Halt: Unable to read image",
             "App halted when reading from image: " + path + " (VePNGFile::Load)");
    case ReadStep::NoInfoStruct:
        Halt("Halt: Unable to read image info", "App halted when reading info from image (VePNGFile::Load)");
    case ReadStep::Rows:
        Halt("Halt: Unable to read image rows", "App halted when reading rows from image (VePNGFile::Load)");
    case ReadStep::Done:
        break;
    }
    width = static_cast<int32_t>(decoded.width);
    height = static_cast<int32_t>(decoded.height);
    pixels.resize(static_cast<size_t>(width) * height);
    const int channels = decoded.channels;
    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* row = decoded.rows[y];
        uint32_t* to = pixels.data() + static_cast<size_t>(width) * y;
        for (int32_t x = 0; x < width; ++x) {
            const uint8_t* p = row + x * channels;
            uint32_t rgb = uint32_t{p[0]} << 16 | uint32_t{p[1]} << 8 | p[2];
            if (channels == 4 && decoded.keyFromAlpha && p[3] < 128) {
                rgb = 0xFF00FF;
            }
            to[x] = rgb;
        }
    }
}

bool VePNGFile::Save(const std::string& path, int32_t width, int32_t height, const uint32_t* pixels,
                     int32_t rowLength) {
    if (width <= 0 || height <= 0 || pixels == nullptr) {
        Log("Could not write image %s: it is empty.\n", path.c_str());
        return false;
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(width) * height * 3);
    std::vector<png_bytep> rows(height);
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* row = bytes.data() + static_cast<size_t>(width) * 3 * y;
        rows[y] = row;
        const uint32_t* from = pixels + static_cast<size_t>(rowLength) * y;
        for (int32_t x = 0; x < width; ++x) {
            row[x * 3] = static_cast<uint8_t>(from[x] >> 16);
            row[x * 3 + 1] = static_cast<uint8_t>(from[x] >> 8);
            row[x * 3 + 2] = static_cast<uint8_t>(from[x]);
        }
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    Encoded encoded;
    bool done = false;
    if (info != nullptr) {
        png_set_write_fn(png, &encoded, WriteToString, FlushNothing);
        done = EncodeRows(png, info, width, height, rows);
    }
    png_destroy_write_struct(&png, &info);
    if (!done) {
        Log("Could not encode image %s.\n", path.c_str());
        return false;
    }
    return WriteFileAtomic(path, encoded.bytes);
}
