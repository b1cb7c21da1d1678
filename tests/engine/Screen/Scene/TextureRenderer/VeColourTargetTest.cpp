#include "Screen/Scene/TextureRenderer/VeColourTarget.h"

#include "Screen/Surface/VeTexture.h"

#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>

#include <vector>

class VeColourTargetTest : public ScreenTestBase {};

TEST_F(VeColourTargetTest, WhatIsDrawnIntoItIsItsTexture) {
    OpenScreen(false);
    VeColourTarget target;
    ASSERT_TRUE(target.Create(8, 4, VeFilterNearest));
    target.Begin();
    glClearColor(1.0f, 0.0f, 0.0f, 0.5f);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glClearColor(0.0f, 0.0f, 1.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);

    std::vector<uint8_t> texels(8 * 4 * 4);
    glBindTexture(GL_TEXTURE_2D, target.texture);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    EXPECT_EQ(texels[0], 0);
    EXPECT_EQ(texels[2], 255) << "row 0 is the bottom row drawn";
    EXPECT_EQ(texels[4], 255);
    EXPECT_NEAR(texels[7], 128, 1) << "alpha is kept";
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
