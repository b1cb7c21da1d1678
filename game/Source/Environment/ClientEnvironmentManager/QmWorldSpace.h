#pragma once
// Where things are in the 3D view. The map is centred on the origin and is 10 units wide whatever
// its size: a block is a cube of edge 2s with s = 0.5 on a 10-block map and 0.25 on a 20-block map,
// its centre at z = -8.53 (-8.28 on a 20-block map, so both sizes share their front plane).
//
// The race camera sits at depth D = 5 + distance - 2.2 in front of the origin, moved over the
// racer, and looks down -z through an off-centre frustum (near 5, far 30) whose offset keeps the
// plane at depth 2D (about the blocks' front plane) where it is on screen: the map stays framed
// while the racer's movement turns the view, so the sides of the blocks show. The distance is the
// intro zoom (7, decaying to 0) plus 5. With the flip the view is turned upside down and the
// offset mirrored. The editor camera looks straight at the whole map from the centre (vertical
// field of view 45 degrees, near 1, far 30, distance 2.1).
//
// The light stands above and to the left of the map, in front of it: (-8 sin a, 8 cos a, 8) with
// a = pi/4, at z = 16 on a 20-block map; it looks at (0, 0, -10).
#include <glm/mat4x4.hpp>
#include <glm/vec3.hpp>

class QmWorldSpace {
public:
    static constexpr float kBlockDepth = -8.53f;
    // The plane of the cubes' front faces lies in front of this depth, and the block shader lets no
    // shadow fall on what stands on or before it (nothing there casts one).
    static constexpr float kFrontPlane = -8.2f;
    static constexpr float kWorldZ = 5.0f;
    static constexpr float kNear = 5.0f;
    static constexpr float kFar = 30.0f;
    static constexpr float kEditorDistance = 2.1f;
    static constexpr float kLightAngle = 0.78539816f;

    // s: half a block's edge on a map of that size.
    static float HalfEdge(int mapSize) { return mapSize == 20 ? 0.25f : 0.5f; }
    // The racer's position (pixels) as a cell centre in world units, z = 5.
    static glm::vec3 WorldPosition(float x, float y, int blockSize, int mapSize);
    // The camera's distance: 2.1 in the editor, zoom + 5 elsewhere.
    static float CameraDistance(bool editor, float zoom) { return editor ? kEditorDistance : zoom + 5.0f; }
    // D: the eye's depth in front of the origin.
    static float EyeDepth(float worldZ, float distance) { return worldZ + distance - 2.2f; }
    static glm::mat4 GameViewProjection(const glm::vec3& world, float distance, bool flipped, float aspect);
    static glm::mat4 EditorViewProjection(float distance, float aspect);

    static glm::vec3 LightPosition(int mapSize);
    static glm::mat4 LightViewProjection(const glm::vec3& light);
    // Maps -1..1 to 0..1 on x, y and z.
    static glm::mat4 ShadowBias();

    // The model matrix of a cube (or of a flat square facing the camera) at (column, row) of a grid
    // of placementSize cells: half size, a flat item half a block in front, overlay and cursor cubes
    // a little in front of and around what they cover, rotation applied between place and scale.
    static glm::mat4 BlockModel(float column, float row, int placementSize, bool halfSize, bool flat,
                                bool overlay, bool cursor, const glm::mat4& rotation);
    // The square behind the map: 29 units wide, half a block behind the blocks' back faces.
    static glm::mat4 BackdropModel(int mapSize);
    static glm::mat4 SpinMatrix(float angle);
};
