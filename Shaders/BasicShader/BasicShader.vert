#version 330 core
// The screen quad: positions through the overlay's model-view-projection, texture coordinates with
// v = 0 at the overlay's top row.

layout(location = 0) in vec3 vertexPosition;
layout(location = 1) in vec2 vertexUV;
layout(location = 2) in vec3 vertexNormal;
layout(location = 3) in int faceNumber;

uniform mat4 MVP;

out vec2 overlayUV;
out vec2 sceneUV;

void main() {
    gl_Position = MVP * vec4(vertexPosition, 1.0);
    overlayUV = vertexUV;
    // The rendered scene is an OpenGL texture, bottom row first.
    sceneUV = vec2(vertexUV.x, 1.0 - vertexUV.y);
}
