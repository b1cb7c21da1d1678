#include "Screen/Surface/VeTexture.h"

#include "Screen/Surface/VeSurface.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>

TEST(VeTextureFaceMapTest, BlockFacesUseTheirOwnEntryOnlyWithAFullMap) {
    EXPECT_EQ(VeTexture::SlotForFace({0}, 3), 0) << "a one-entry map serves every face";
    std::vector<int> turned{5, 4, 3, 2, 1, 0};
    EXPECT_EQ(VeTexture::SlotForFace(turned, 0), 5) << "face 0 always uses entry 0";
    EXPECT_EQ(VeTexture::SlotForFace(turned, 3), 2);
    EXPECT_EQ(VeTexture::SlotForFace(turned, 6), 5);
    EXPECT_EQ(VeTexture::SlotForFace(turned, -1), 5);
    EXPECT_EQ(VeTexture::SlotForFace({}, 2), 0);
}

class VeTextureTest : public ScreenTestBase {
protected:
    static std::vector<uint32_t> ReadTexture(unsigned int name, int pixels, int level = 0) {
        std::vector<uint32_t> data(pixels);
        glBindTexture(GL_TEXTURE_2D, name);
        glGetTexImage(GL_TEXTURE_2D, level, GL_BGRA, GL_UNSIGNED_BYTE, data.data());
        return data;
    }
};

TEST_F(VeTextureTest, FacesAreUploadedFromKeyedCopiesAndReplacedInPlace) {
    OpenScreen(false);
    VeSurface face(3, 1);
    face.SetPixel(0, kColourKey);
    face.SetPixel(1, 0x123456);
    face.SetPixel(2, 0x80ABCDEF);
    VeTexture texture(&face);
    ASSERT_NE(texture.names[0], 0u);
    EXPECT_EQ(ReadTexture(texture.names[0], 3), (std::vector<uint32_t>{0, 0xFF123456, 0x80ABCDEF}));
    EXPECT_EQ(face.GetPixel(0), kColourKey) << "the surface itself is not keyed";
    // Mipmapped, the smaller level averages 2 x 2 texels: the first two, the odd third left out.
    const VeTexture mipmapped(&face, VeFilterNearestMipmapNearest);
    EXPECT_EQ(ReadTexture(mipmapped.names[0], 1, 1), (std::vector<uint32_t>{0x80091A2B}));

    VeSurface other(3, 1);
    other.Fill(0x00FF00);
    texture.SetFace(&other, 4);
    texture.SetFaceMap({0, 0, 0, 0, 4, 0});
    EXPECT_EQ(texture.BlockFaceName(4), texture.names[4]);
    EXPECT_EQ(texture.BlockFaceName(2), texture.names[0]);

    texture.Replace(&other);
    EXPECT_EQ(ReadTexture(texture.names[0], 3)[0], 0xFF00FF00u);
    texture.Refresh();
    EXPECT_EQ(ReadTexture(texture.names[0], 3)[1], 0xFF123456u) << "Refresh uploads face 0 again";
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
