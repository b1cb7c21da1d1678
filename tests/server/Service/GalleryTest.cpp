// The page for people and its thumbnails, drawn from the game's block art without a window.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Platform/VeFiles.h"
#include "ServerHarness.h"

#include <gtest/gtest.h>
#include <png.h>

namespace {
std::vector<uint8_t> DecodePng(const std::string& bytes, int& width, int& height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    std::vector<uint8_t> rgb;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) {
        image.format = PNG_FORMAT_RGB;
        rgb.resize(PNG_IMAGE_SIZE(image));
        if (!png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr)) {
            rgb.clear();
        }
    }
    width = static_cast<int>(image.width);
    height = static_cast<int>(image.height);
    return rgb;
}

// A map that shows every kind of art: a floor of coloured and tileset blocks, decorations on it,
// each pickup, gate, enemy and fire, the Start and the Finish.
std::string ShowcaseMap(const std::string& name, int blockSize) {
    QmMapContents map;
    map.name = name;
    map.uid = "31337";
    map.tourUid = "1";
    map.blockSize = blockSize;
    int cells = blockSize == 32 ? 20 : 10;
    for (int x = 0; x < cells; ++x) {
        map.blocks[x * 20 + cells - 1] = x < 5 ? x + 1 : 6 + (x * 7) % 12;
        map.blocks[x * 20 + cells - 2] = x % 3 == 0 ? Block::FirstDecoration + x * 5 : Block::Blank;
    }
    const BlockId specials[] = {
        Block::Start,   Block::DiscoConfusion, Block::RedGate, Block::RedGateKey, Block::FlipVision,
        Block::SpeedUp, Block::JumpImpulse,    Block::Enemy,   Block::Fire,       Block::Finish};
    for (int i = 0; i < 10; ++i) {
        map.blocks[(i * (cells / 10)) * 20 + cells / 2] = specials[i];
    }
    return QmCipherFile::EncodeLines(QmMapFile::Format(map));
}

// The picture of one cell: all of it the same colour as the background's corner, or not.
bool CellIsBackground(const std::vector<uint8_t>& rgb, int cell, int cx, int cy) {
    int differing = 0;
    for (int y = 0; y < cell; ++y) {
        for (int x = 0; x < cell; ++x) {
            const uint8_t* p = &rgb[((cy * cell + y) * 160 + cx * cell + x) * 3];
            const uint8_t* b = &rgb[((y)*160 + x) * 3]; // the top-left cell is empty in both maps
            differing += (std::abs(p[0] - b[0]) + std::abs(p[1] - b[1]) + std::abs(p[2] - b[2])) > 30;
        }
    }
    return differing < cell * cell / 8;
}
} // namespace

TEST(Gallery, PageEscapesWhatPlayersTypedAndThumbnailsMatchTheStoredPicturesAndShowTheMap) {
    ServerHarness server;
    ServerHarness::Account user = server.Register("<i>\"x\"&" + ServerHarness::Unique());
    ASSERT_FALSE(user.id.empty());
    ASSERT_EQ(server.Upload(user, 3, ServerHarness::MapFile("<script>?#%", "9"), ""), "POSTMAP1");
    std::string page = ServerHarness::Body(server.Get("/maps"));
    EXPECT_EQ(page.find("<script>"), std::string::npos);
    EXPECT_EQ(page.find("<i>"), std::string::npos);
    EXPECT_NE(page.find("&lt;script&gt;?#%"), std::string::npos);
    EXPECT_NE(page.find("by &lt;i&gt;&quot;x&quot;&amp;"), std::string::npos);
    size_t link = page.find("/uploads/" + user.id + "/");
    ASSERT_NE(link, std::string::npos);
    std::string href = page.substr(link, page.find('"', link) - link);
    EXPECT_EQ(href, "/uploads/" + user.id + "/_script____.map");
    EXPECT_NE(server.Get(href).find(" 200 "), std::string::npos);

    for (const std::string& name : {std::string("Large"), std::string("Small")}) {
        std::string map = ShowcaseMap(name, name == "Large" ? 64 : 32);
        ASSERT_EQ(server.Upload(user, name == "Large" ? 1 : 2, map, ""), "POSTMAP1");
        QmMapContents contents = QmMapFile::Parse(QmCipherFile::DecodeLines(SplitLines(map)));
        page = ServerHarness::Body(server.Get("/"));
        size_t item = page.find("/uploads/" + user.id + "/" + name + ".map");
        ASSERT_NE(item, std::string::npos);
        size_t src = page.rfind("/thumbs/", item);
        std::string png = ServerHarness::Body(server.Get(page.substr(src, page.find('"', src) - src)));
        int width = 0, height = 0;
        std::vector<uint8_t> rgb = DecodePng(png, width, height);
        ASSERT_EQ(width, 160);
        ASSERT_EQ(height, 160);
        std::string stored;
        int w = 0, h = 0;
        bool same = ReadFileBytes(std::string(QM_SOURCE_DIR) + "/tests/server/Service/data/" + name + ".png",
                                  stored) &&
                    rgb == DecodePng(stored, w, h);
        EXPECT_TRUE(same) << name << ": the picture changed, see " << testing::TempDir() << name << ".png";
        if (!same) {
            WriteFileAtomic(testing::TempDir() + name + ".png", png);
        }

        // Every cell that holds a solid block or the Start is drawn; empty cells show the background.
        int cells = contents.blockSize == 32 ? 20 : 10;
        int cell = 160 / cells;
        for (int cx = 0; cx < cells; ++cx) {
            for (int cy = 0; cy < cells; ++cy) {
                BlockId id = contents.blocks[cx * 20 + cy];
                if (id == Block::Start || QmBlocks::IsDefaultBlock(id)) {
                    EXPECT_FALSE(CellIsBackground(rgb, cell, cx, cy)) << name << " cell " << cx << "," << cy;
                } else if (id == Block::Blank) {
                    EXPECT_TRUE(CellIsBackground(rgb, cell, cx, cy)) << name << " cell " << cx << "," << cy;
                }
            }
        }
    }
}
