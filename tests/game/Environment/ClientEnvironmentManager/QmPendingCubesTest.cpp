#include "Environment/ClientEnvironmentManager/QmPendingCubes.h"

#include <glm/gtc/matrix_transform.hpp>

#include <gtest/gtest.h>

namespace {

QmPendingBlock CubeAt(const glm::vec3& centre, float half, uint8_t hidden = 0) {
    QmPendingBlock block;
    block.model = glm::scale(glm::translate(glm::mat4(1.0f), centre), glm::vec3(half));
    block.hiddenFaces = hidden;
    return block;
}

std::vector<int> Shown(const QmPendingBlock& block, const QmPendingCubes::Pass& pass) {
    std::vector<int> faces;
    for (int face = 0; face < 6; ++face) {
        if (QmPendingCubes::FaceShows(block, face, pass)) {
            faces.push_back(face);
        }
    }
    return faces;
}

} // namespace

TEST(QmPendingCubesTest, FacesTurnedToTheCameraOrInTheShadowPassAwayFromTheLightAreDrawnUnlessHidden) {
    const QmPendingBlock cube = CubeAt(glm::vec3(0.0f, 0.0f, -8.53f), 0.5f);
    QmPendingCubes::Pass pass;
    pass.viewer = glm::vec3(0.0f, 0.0f, 7.8f);
    EXPECT_EQ(Shown(cube, pass), (std::vector<int>{0})) << "straight ahead only the front shows";
    pass.viewer = glm::vec3(3.0f, -2.0f, 7.8f);
    EXPECT_EQ(Shown(cube, pass), (std::vector<int>{0, 3, 4})) << "from the lower right: right and bottom";
    pass.viewer = glm::vec3(-3.0f, 2.0f, 7.8f);
    EXPECT_EQ(Shown(cube, pass), (std::vector<int>{0, 2, 5}));
    // Faces against opaque neighbours are never drawn.
    const QmPendingBlock walledIn = CubeAt(glm::vec3(0.0f), 0.25f, 1 << 3 | 1 << 4);
    pass.viewer = glm::vec3(3.0f, -2.0f, 7.8f);
    EXPECT_EQ(Shown(walledIn, pass), (std::vector<int>{0}));

    pass.shadow = true;
    pass.viewer = glm::vec3(-5.66f, 5.66f, 8.0f);
    EXPECT_EQ(Shown(CubeAt(glm::vec3(1.0f, -1.0f, -8.53f), 0.5f), pass), (std::vector<int>{1, 3, 4}))
        << "back, right and bottom cast the shadow";
    pass.viewer = glm::vec3(-5.0f, 5.0f, 8.0f);
    EXPECT_EQ(Shown(walledIn, pass), (std::vector<int>{1}));
}

TEST(QmPendingCubesTest, OnlyFacesTurnedToTheLightAndBehindTheFrontPlaneCanLieInAShadow) {
    QmPendingCubes::Pass pass;
    pass.light = glm::vec3(-5.66f, 5.66f, 8.0f);
    const QmPendingBlock cube = CubeAt(glm::vec3(1.0f, -1.0f, -8.53f), 0.5f);
    std::vector<int> shadowed;
    for (int face = 0; face < 6; ++face) {
        if (!QmPendingCubes::Unshadowed(cube, face, pass)) {
            shadowed.push_back(face);
        }
    }
    EXPECT_EQ(shadowed, (std::vector<int>{2, 5}))
        << "left and top face the light; the front is never shadowed";
    const QmPendingBlock halfSize = CubeAt(glm::vec3(1.0f, -1.0f, -8.53f), 0.25f);
    EXPECT_FALSE(QmPendingCubes::Unshadowed(halfSize, 0, pass)) << "the Finish's front lies behind the plane";
}
