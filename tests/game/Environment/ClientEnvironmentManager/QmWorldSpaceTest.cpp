#include "Environment/ClientEnvironmentManager/QmWorldSpace.h"

#include <glm/gtc/matrix_transform.hpp>

#include <gtest/gtest.h>

namespace {

// Where a world point lands on the screen (x and y from -1 to 1).
glm::vec2 OnScreen(const glm::mat4& viewProjection, const glm::vec3& point) {
    const glm::vec4 clip = viewProjection * glm::vec4(point, 1.0f);
    return glm::vec2(clip) / clip.w;
}

} // namespace

TEST(QmWorldSpaceTest, TheLightStandsTwiceAsHighOverALargeMap) {
    const glm::vec3 small = QmWorldSpace::LightPosition(10);
    const glm::vec3 large = QmWorldSpace::LightPosition(20);
    EXPECT_FLOAT_EQ(large.z, 2.0f * small.z);
    EXPECT_FLOAT_EQ(large.x, small.x);
    // The light's view holds the whole map.
    for (const glm::vec3& light : {small, large}) {
        const glm::mat4 view = QmWorldSpace::LightViewProjection(light);
        for (float x : {-5.5f, 5.5f}) {
            for (float y : {-5.5f, 5.5f}) {
                const glm::vec4 clip = view * glm::vec4(x, y, -8.53f, 1.0f);
                EXPECT_TRUE(glm::all(glm::lessThan(glm::abs(glm::vec3(clip) / clip.w), glm::vec3(1.0f))))
                    << "corner " << x << "," << y << " at light height " << light.z;
            }
        }
    }
}

TEST(QmWorldSpaceTest, TheRaceCameraKeepsTheMapFramedWhileTheRacerMoves) {
    const float distance = QmWorldSpace::CameraDistance(false, 0.0f);
    EXPECT_FLOAT_EQ(QmWorldSpace::CameraDistance(true, 3.0f), 2.1f) << "the editor's camera ignores the zoom";
    const glm::vec3 frontCorner(-5.0f, 5.0f, -8.03f);
    const glm::vec3 left = QmWorldSpace::WorldPosition(0.0f, 0.0f, 64, 10);
    const glm::vec3 right = QmWorldSpace::WorldPosition(576.0f, 576.0f, 64, 10);
    EXPECT_FLOAT_EQ(left.x, -4.5f);
    EXPECT_FLOAT_EQ(right.y, -4.5f);
    const glm::vec2 a = OnScreen(QmWorldSpace::GameViewProjection(left, distance, false, 1.0f), frontCorner);
    const glm::vec2 b = OnScreen(QmWorldSpace::GameViewProjection(right, distance, false, 1.0f), frontCorner);
    EXPECT_NEAR(a.x, b.x, 0.03f) << "the blocks' front plane barely moves";
    EXPECT_NEAR(a.y, b.y, 0.03f);
    EXPECT_LT(a.x, -0.5f);
    EXPECT_GT(a.y, 0.5f);
    // Upside down with the flip.
    const glm::vec2 flipped =
        OnScreen(QmWorldSpace::GameViewProjection(left, distance, true, 1.0f), frontCorner);
    EXPECT_NEAR(flipped.x, -a.x, 0.03f);
    EXPECT_NEAR(flipped.y, -a.y, 0.03f);
    // The editor camera shows the whole map and its ring.
    const glm::mat4 editor =
        QmWorldSpace::EditorViewProjection(QmWorldSpace::CameraDistance(true, 0.0f), 1.0f);
    const glm::vec2 corner = OnScreen(editor, glm::vec3(-5.5f, 5.5f, -9.03f));
    EXPECT_GT(corner.x, -1.0f);
    EXPECT_LT(corner.y, 1.0f);
}
