#version 330 core
// The world's cubes and flat items: positions through the camera, the light-space position for the
// shadow lookup, and the surface's position and normal in world units for the lighting. The draw
// colour (0xAARRGGBB in an int) is unpacked once per vertex.

layout(location = 0) in vec3 vertexPosition;
layout(location = 1) in vec2 vertexUV;
layout(location = 2) in vec3 vertexNormal;
layout(location = 3) in int faceNumber;

uniform mat4 MVP;
uniform mat4 lightMVP;
uniform mat4 ModelMatrix;
uniform mat4 RotationMatrix;
uniform int drawColor;
uniform float alpha;

out vec2 UV;
out vec3 surfacePosition;
out vec3 surfaceNormal;
out vec4 shadowCoord;
flat out vec4 tint;

void main() {
    gl_Position = MVP * vec4(vertexPosition, 1.0);
    UV = vertexUV;
    surfacePosition = (ModelMatrix * vec4(vertexPosition, 1.0)).xyz;
    surfaceNormal = mat3(ModelMatrix) * vertexNormal;
    shadowCoord = lightMVP * vec4(vertexPosition, 1.0);
    tint = vec4(float((drawColor >> 16) & 255), float((drawColor >> 8) & 255), float(drawColor & 255),
                float((drawColor >> 24) & 255)) / 255.0;
    tint.a *= alpha;
}
