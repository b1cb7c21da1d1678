#version 330 core
// The world's cubes and flat items: positions through the camera, the light-space position for the
// shadow lookup, and what the lighting needs, worked out once per vertex: how squarely the surface
// faces the light (it changes little across a face, and the backdrop comes in small squares), the
// way from the racer (exact when interpolated, since it is affine in the position), the face's
// normal, whether it can lie in a shadow at all, and the draw colour (0xAARRGGBB in an int).

layout(location = 0) in vec3 vertexPosition;
layout(location = 1) in vec2 vertexUV;
layout(location = 2) in vec3 vertexNormal;
layout(location = 3) in int faceNumber;

uniform mat4 MVP;
uniform mat4 lightMVP;
uniform mat4 ModelMatrix;
uniform mat4 RotationMatrix;
uniform vec3 lightPos;
uniform vec3 worldPos;
uniform int drawColor;
uniform float alpha;

// Every cube's front face lies on one plane, and nothing stands before it but flat items that cast
// no shadow: only what lies behind that plane (the backdrop, the cubes' other faces) is shadowed.
const float kFrontPlane = -8.2;

out vec2 UV;
out vec2 fromRacer;
out vec4 shadowCoord;
out float facing;
flat out int receivesShadow;
flat out vec4 tint;

void main() {
    gl_Position = MVP * vec4(vertexPosition, 1.0);
    UV = vertexUV;
    vec3 position = (ModelMatrix * vec4(vertexPosition, 1.0)).xyz;
    fromRacer = position.xy - worldPos.xy;
    // The camera always looks down -z: a flat item turned away shows its other side, lit as such.
    vec3 normal = normalize(mat3(ModelMatrix) * vertexNormal);
    if (normal.z < 0.0) {
        normal = -normal;
    }
    facing = dot(normal, normalize(lightPos - position));
    receivesShadow = normal.z < 0.5 || position.z < kFrontPlane ? 1 : 0;
    shadowCoord = lightMVP * vec4(vertexPosition, 1.0);
    tint = vec4(float((drawColor >> 16) & 255), float((drawColor >> 8) & 255), float(drawColor & 255),
                float((drawColor >> 24) & 255)) / 255.0;
    tint.a *= alpha;
}
