#version 330 core
// The screen quad: positions through the overlay's model-view-projection. The overlay texture
// holds only the top screenDisplaySize part of the screen, so its v coordinate is stretched to
// match (v 0 is the overlay's top row; below the shown part v exceeds 1). The rendered scene is an
// OpenGL texture, bottom row first.

layout(location = 0) in vec3 vertexPosition;
layout(location = 1) in vec2 vertexUV;
layout(location = 2) in vec3 vertexNormal;
layout(location = 3) in int faceNumber;

uniform mat4 MVP;
uniform float screenDisplaySize;

out vec2 overlayUV;
out vec2 sceneUV;

void main() {
    gl_Position = MVP * vec4(vertexPosition, 1.0);
    overlayUV = vec2(vertexUV.x, vertexUV.y / clamp(screenDisplaySize, 1e-6, 1.0));
    sceneUV = vec2(vertexUV.x, 1.0 - vertexUV.y);
}
