#include "Environment/ClientEnvironmentManager/QmWorldSpace.h"

#include <glm/gtc/matrix_transform.hpp>

#include <cmath>

glm::vec3 QmWorldSpace::WorldPosition(float x, float y, int blockSize, int mapSize) {
    const float s = HalfEdge(mapSize);
    const float cells = static_cast<float>(mapSize - 1);
    const float size = static_cast<float>(blockSize);
    return {(2.0f * x / size - cells) * s, (cells - 2.0f * y / size) * s, kWorldZ};
}

glm::mat4 QmWorldSpace::GameViewProjection(const glm::vec3& world, float distance, bool flipped,
                                           float aspect) {
    const float depth = EyeDepth(world.z, distance);
    const float f = flipped ? -1.0f : 1.0f;
    const float ox = f * world.x / (2.0f * depth);
    const float oy = f * world.y / (2.0f * depth);
    const glm::mat4 projection = glm::frustum((-aspect / 2.0f - ox) * kNear, (aspect / 2.0f - ox) * kNear,
                                              (-0.5f - oy) * kNear, (0.5f - oy) * kNear, kNear, kFar);
    const glm::vec3 eye(world.x, world.y, depth);
    const glm::mat4 view = glm::lookAt(eye, eye + glm::vec3(0.0f, 0.0f, -10.0f), glm::vec3(0.0f, f, 0.0f));
    return projection * view;
}

glm::mat4 QmWorldSpace::EditorViewProjection(float distance, float aspect) {
    const glm::vec3 eye(0.0f, 0.0f, EyeDepth(kWorldZ, distance));
    const glm::mat4 projection = glm::perspective(glm::radians(45.0f), aspect, 1.0f, kFar);
    const glm::mat4 view = glm::lookAt(eye, eye + glm::vec3(0.0f, 0.0f, -10.0f), glm::vec3(0.0f, 1.0f, 0.0f));
    return projection * view;
}

glm::vec3 QmWorldSpace::LightPosition(int mapSize) {
    return {-8.0f * std::sin(kLightAngle), 8.0f * std::cos(kLightAngle), mapSize == 20 ? 16.0f : 8.0f};
}

glm::mat4 QmWorldSpace::LightViewProjection(const glm::vec3& light) {
    // The light's view covers the map, the border and the backdrop around them, with its depth
    // range kept close to the scene for precise shadows.
    const glm::vec3 target(0.0f, 0.0f, -10.0f);
    const float reach = glm::length(light - glm::vec3(0.0f, 0.0f, kBlockDepth));
    const float field = 2.0f * std::atan(10.0f / reach);
    const glm::mat4 projection = glm::perspective(field, 1.0f, reach - 9.0f, reach + 9.0f);
    return projection * glm::lookAt(light, target, glm::vec3(0.0f, 1.0f, 0.0f));
}

glm::mat4 QmWorldSpace::ShadowBias() {
    glm::mat4 bias = glm::translate(glm::mat4(1.0f), glm::vec3(0.5f));
    return glm::scale(bias, glm::vec3(0.5f));
}

glm::mat4 QmWorldSpace::BlockModel(float column, float row, int placementSize, bool halfSize, bool flat,
                                   bool overlay, bool cursor, const glm::mat4& rotation) {
    const float s = HalfEdge(placementSize);
    const float cells = static_cast<float>(placementSize - 1);
    glm::vec3 centre((2.0f * column - cells) * s, (cells - 2.0f * row) * s, kBlockDepth);
    if (placementSize == 20) {
        centre.z += 0.25f;
    }
    if (flat) {
        centre.z += s;
    }
    if (overlay || cursor) {
        centre.z += 0.015f * s;
    }
    float scale = halfSize ? 0.5f * s : s;
    if (overlay) {
        scale += 0.005f * s;
    } else if (cursor) {
        scale += 0.01f * s;
    }
    const glm::mat4 place = glm::translate(glm::mat4(1.0f), centre);
    return place * rotation * glm::scale(glm::mat4(1.0f), glm::vec3(scale));
}

glm::mat4 QmWorldSpace::BackdropModel(int mapSize) {
    const float behind = mapSize == 20 ? 0.5f : 1.0f;
    const glm::mat4 place = glm::translate(glm::mat4(1.0f), glm::vec3(0.0f, 0.0f, kBlockDepth - behind));
    return glm::scale(place, glm::vec3(14.5f, 14.5f, 1.0f));
}

glm::mat4 QmWorldSpace::SpinMatrix(float angle) {
    return glm::rotate(glm::mat4(1.0f), angle, glm::vec3(0.0f, 1.0f, 0.0f));
}
