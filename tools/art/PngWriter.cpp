#include "PngWriter.h"

#include <png.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

void AppendBytes(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<unsigned char>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

void NoFlush(png_structp) {}

void OnWarning(png_structp, png_const_charp) {}

} // namespace

std::vector<unsigned char> PngWriter::Encode(const ArtImage& image) {
    std::vector<unsigned char> out;
    std::vector<unsigned char> row(size_t(image.Width()) * 3);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, OnWarning);
    if (!png) {
        throw std::runtime_error("libpng: cannot create a write structure");
    }
    png_infop info = png_create_info_struct(png);
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        throw std::runtime_error("libpng: cannot create an info structure");
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        throw std::runtime_error("libpng: encoding failed");
    }
    {
        png_set_write_fn(png, &out, AppendBytes, NoFlush);
        png_set_compression_level(png, 9);
        png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE | PNG_FILTER_SUB | PNG_FILTER_UP);
        png_set_IHDR(png, info, png_uint_32(image.Width()), png_uint_32(image.Height()), 8,
                     PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        png_write_info(png, info);
        for (int y = 0; y < image.Height(); ++y) {
            for (int x = 0; x < image.Width(); ++x) {
                uint32_t c = image.Get(x, y);
                row[size_t(x) * 3] = (c >> 16) & 0xFF;
                row[size_t(x) * 3 + 1] = (c >> 8) & 0xFF;
                row[size_t(x) * 3 + 2] = c & 0xFF;
            }
            png_write_row(png, row.data());
        }
        png_write_end(png, nullptr);
    }
    png_destroy_write_struct(&png, &info);
    return out;
}

bool PngWriter::WriteIfChanged(const std::string& path, const std::vector<unsigned char>& bytes,
                               bool& changed) {
    changed = false;
    std::ifstream in(path, std::ios::binary);
    if (in) {
        std::vector<unsigned char> old((std::istreambuf_iterator<char>(in)),
                                       std::istreambuf_iterator<char>());
        if (old == bytes) {
            return true;
        }
    }
    in.close();
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ec);
    std::string temporary = path + ".tmp";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        if (!out.flush()) {
            std::remove(temporary.c_str());
            return false;
        }
    }
    std::filesystem::rename(temporary, path, ec);
    if (ec) {
        std::remove(temporary.c_str());
        return false;
    }
    changed = true;
    return true;
}
