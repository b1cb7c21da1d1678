#include "Screen/Scene/VeRenderState.h"

#include "Screen/Surface/VeSurface.h"
#include "Screen/Surface/VeTexture.h"

#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>

namespace {

GLint Get(GLenum what) {
    GLint value = 0;
    glGetIntegerv(what, &value);
    return value;
}

bool Enabled(GLenum what) {
    return glIsEnabled(what) == GL_TRUE;
}

} // namespace

class VeRenderStateTest : public ScreenTestBase {
protected:
    void SetUp() override {
        ScreenTestBase::SetUp();
        OpenScreen(false);
    }
};

TEST_F(VeRenderStateTest, APassStartsBlendedWithTheDepthTestAndDepthWritesOn) {
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glActiveTexture(GL_TEXTURE2);
    VeRenderState state;
    state.SetupPass();
    EXPECT_TRUE(Enabled(GL_BLEND));
    EXPECT_EQ(Get(GL_BLEND_SRC_RGB), GL_SRC_ALPHA);
    EXPECT_EQ(Get(GL_BLEND_DST_RGB), GL_ONE_MINUS_SRC_ALPHA);
    EXPECT_TRUE(Enabled(GL_DEPTH_TEST));
    EXPECT_EQ(Get(GL_DEPTH_FUNC), GL_LESS);
    EXPECT_EQ(Get(GL_DEPTH_WRITEMASK), GL_TRUE);
    EXPECT_EQ(Get(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(VeRenderStateTest, SwitchesAreAppliedAndRepeatsCostNothingUntilTheNextPass) {
    VeRenderState state;
    state.SetupPass();
    state.SetCulling(VeRenderState::CullFrontFaces);
    EXPECT_TRUE(Enabled(GL_CULL_FACE));
    EXPECT_EQ(Get(GL_CULL_FACE_MODE), GL_FRONT);
    state.SetCulling(VeRenderState::CullBackFaces);
    EXPECT_EQ(Get(GL_CULL_FACE_MODE), GL_BACK);
    state.SetCulling(VeRenderState::CullNothing);
    EXPECT_FALSE(Enabled(GL_CULL_FACE));
    state.SetBlending(false);
    EXPECT_FALSE(Enabled(GL_BLEND));
    state.SetDepthWrite(false);
    EXPECT_EQ(Get(GL_DEPTH_WRITEMASK), GL_FALSE);
    state.SetDepthTest(false);
    EXPECT_FALSE(Enabled(GL_DEPTH_TEST));
    state.SetDepthTest(true);
    EXPECT_TRUE(Enabled(GL_DEPTH_TEST));

    // Someone else (the screen's composition) changes the switches behind the state's back: a
    // repeat is not applied again, a new pass is.
    glEnable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glDepthMask(GL_TRUE);
    state.SetCulling(VeRenderState::CullNothing);
    state.SetBlending(false);
    state.SetDepthWrite(false);
    EXPECT_TRUE(Enabled(GL_CULL_FACE));
    EXPECT_TRUE(Enabled(GL_BLEND));
    EXPECT_EQ(Get(GL_DEPTH_WRITEMASK), GL_TRUE);
    state.SetupPass();
    state.SetCulling(VeRenderState::CullNothing);
    state.SetBlending(false);
    state.SetDepthWrite(false);
    EXPECT_FALSE(Enabled(GL_CULL_FACE));
    EXPECT_FALSE(Enabled(GL_BLEND));
    EXPECT_EQ(Get(GL_DEPTH_WRITEMASK), GL_FALSE);
}

TEST_F(VeRenderStateTest, TexturesAreBoundOnTheirUnitAndUnitZeroStaysActive) {
    VeSurface picture(2, 2);
    VeTexture colour(&picture);
    VeTexture depth(&picture);
    VeRenderState::BindTexture(1, colour.names[0]);
    EXPECT_EQ(Get(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    glActiveTexture(GL_TEXTURE1);
    EXPECT_EQ(Get(GL_TEXTURE_BINDING_2D), static_cast<GLint>(colour.names[0]));

    VeRenderState::BindShadowMap(depth.names[0]);
    EXPECT_EQ(Get(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    glActiveTexture(GL_TEXTURE1);
    EXPECT_EQ(Get(GL_TEXTURE_BINDING_2D), static_cast<GLint>(depth.names[0]));
    GLint mode = 0;
    GLint function = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, &mode);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, &function);
    EXPECT_EQ(mode, GL_COMPARE_REF_TO_TEXTURE);
    EXPECT_EQ(function, GL_LEQUAL);
    glActiveTexture(GL_TEXTURE0);
}

TEST_F(VeRenderStateTest, TheClearColourIsOpaque) {
    VeRenderState::SetClearColour(0xFF8000);
    GLfloat colour[4] = {};
    glGetFloatv(GL_COLOR_CLEAR_VALUE, colour);
    EXPECT_FLOAT_EQ(colour[0], 1.0f);
    EXPECT_NEAR(colour[1], 128.0f / 255.0f, 1e-6f);
    EXPECT_FLOAT_EQ(colour[2], 0.0f);
    EXPECT_FLOAT_EQ(colour[3], 1.0f);
    VeRenderState::SetClearColour(0);
}
