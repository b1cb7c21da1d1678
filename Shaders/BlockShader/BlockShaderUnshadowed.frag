#version 330 core
// The block shader's lighting without the shadow lookup (a texture lookup costs as much as the
// rest of the shading on a software rasterizer), for what no shadow reaches: the faces on the
// cubes' front plane and the flat items standing before it. With lightBaked it draws the backdrop
// from its baked picture (BackdropBake.frag): the art with its light over kMaxLight in alpha (0
// where the art is cut out). The glow, tint, fade and grey then follow as in the block shader, so
// both draw the same colours.

in vec2 UV;
in vec2 fromRacer;
in vec4 shadowCoord;
in float facing;
flat in int receivesShadow;
flat in vec4 tint;

uniform sampler2D textureID;
uniform int useTexture;
uniform int greyScale;
uniform int lightBaked;

out vec4 color;

const float kAmbient = 0.52;
const float kDiffuse = 0.62;
const float kMaxLight = kAmbient + kDiffuse;

void main() {
    if (useTexture != 1) {
        color = tint;
        return;
    }
    vec4 texel = texture(textureID, UV);
    float light = kAmbient + kDiffuse * max(facing, 0.0);
    if (lightBaked == 1) {
        light = texel.a * kMaxLight;
        texel.a = texel.a * 4.0;
    }
    if (texel.a < 0.5) {
        discard;
    }

    // The racer carries a little warmth with it.
    float near = max(1.0 - dot(fromRacer, fromRacer) * 0.4, 0.0);
    vec3 glow = vec3(0.10, 0.085, 0.06) * near;

    vec3 rgb = min(texel.rgb * (tint.rgb * light + glow), vec3(1.0));
    if (greyScale == 1) {
        rgb = vec3((rgb.r + rgb.g + rgb.b) / 3.0);
    }
    color = vec4(rgb, tint.a);
}
