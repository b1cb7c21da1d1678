#version 330 core
// Only depth is written; transparent texels (cut-outs such as fences and plants) cast no shadow.

in vec2 UV;

uniform sampler2D textureID;

out vec4 color;

void main() {
    if (texture(textureID, UV).a < 0.5) {
        discard;
    }
    color = vec4(1.0);
}
