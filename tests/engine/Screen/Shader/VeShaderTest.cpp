#include "Screen/Shader/VeShader.h"
#include "Screen/Shader/VeUniformTable.h"

#include "Support/HaltCapture.h"
#include "Support/TempUserData.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>

#include <fstream>

TEST(VeUniformTableTest, KeepsOneEntryPerNameInRegistrationOrder) {
    VeUniformTable table;
    int asked = 0;
    auto locator = [&](const std::string&) { return static_cast<int32_t>(10 + asked++); };
    EXPECT_TRUE(table.Register("MVP", locator));
    EXPECT_TRUE(table.Register("mvp", locator)) << "names are case-sensitive";
    EXPECT_FALSE(table.Register("MVP", locator));
    EXPECT_EQ(asked, 2) << "a known name is not looked up again";
    ASSERT_EQ(table.Size(), 2u);
    EXPECT_EQ(table.Find("MVP"), 10);
    EXPECT_EQ(table.Find("mvp"), 11);
    EXPECT_EQ(table.Find("MVP "), VeUniformTable::kUnregistered);
}

class VeShaderTest : public ScreenTestBase {};

TEST_F(VeShaderTest, SetsRegisteredUniformsAndStopsOnUnknownOnes) {
    OpenScreen(false);
    VeShader shader("Shaders/BasicShader/BasicShader.vert", "Shaders/BasicShader/BasicShader.frag");
    ASSERT_NE(shader.program, 0u);
    shader.RegisterUniform("screenColorMultiplier");
    shader.RegisterUniform("greyScale");
    shader.Use();
    shader.SetFloat("screenColorMultiplier", 0.25f);
    shader.SetInt("greyScale", 1);

    EXPECT_TRUE(FailsAssertionIn("Shader/VeShader.cpp", [&] { shader.SetFloat("pixelSizeX", 1.0f); }));
    glUseProgram(0);
}

TEST_F(VeShaderTest, MissingAndBrokenSourcesAreLoggedAndBuildingGoesOn) {
    OpenScreen(false);
    TempUserData temp;
    log.clear();
    {
        VeShader missing(temp.path + "/none.vert", temp.path + "/none.frag");
        EXPECT_NE(missing.program, 0u);
    }
    EXPECT_NE(log.find("Vertex Shader not found: " + temp.path + "/none.vert\n"), std::string::npos);
    EXPECT_NE(log.find("Fragment Shader not found: " + temp.path + "/none.frag\n"), std::string::npos);

    std::ofstream(temp.path + "/broken.frag") << "#version 330 core\r\nvoid main() { this is not glsl }\r\n";
    log.clear();
    VeShader broken("Shaders/BasicShader/BasicShader.vert", temp.path + "/broken.frag");
    EXPECT_NE(log.find("Compiling shader : " + temp.path + "/broken.frag\n"), std::string::npos);
    EXPECT_NE(log.find("Linking program\n"), std::string::npos);
    GLint linked = GL_TRUE;
    glGetProgramiv(broken.program, GL_LINK_STATUS, &linked);
    EXPECT_EQ(linked, GL_FALSE);
    EXPECT_GT(log.size(), 200u) << "the compiler's and linker's messages are printed";
}
