#version 330 core
// Lights the world from one point light above and to the left of the map:
// - a soft ambient term plus a diffuse term that the shadow map darkens, so faces turned to the
//   light are bright, the others stay in their own shade and everything behind a block lies in
//   its shadow (one filtered comparison: the map's linear filter softens the edge);
// - a faint warm glow around the racer (worldPos) that follows it through the map;
// - untextured draws show drawColor exactly, unlit (the editor's picking image relies on it);
// - texels of the transparent key (alpha 0) are cut out; alpha and drawColor tint and fade the rest;
// - greyScale turns the result grey (the racer is dead).
// It runs for every pixel of the 3D view, so everything that changes slowly across a surface is
// worked out per vertex.

in vec2 UV;
in vec2 fromRacer;
in vec4 shadowCoord;
in float facing;
flat in int receivesShadow;
flat in vec4 tint;

uniform sampler2D textureID;
uniform sampler2DShadow shadowTextureID;
uniform sampler2D liveShadowTextureID;
uniform int useTexture;
uniform int greyScale;
uniform int useShadowMap;
uniform vec2 shadowMapSize;

out vec4 color;

const float kAmbient = 0.52;
const float kDiffuse = 0.62;
const float kShadowDepth = 0.55;

float Lit() {
    if (useShadowMap != 1 || receivesShadow == 0 || facing <= 0.0) {
        return 1.0;
    }
    vec3 p = shadowCoord.xyz / shadowCoord.w;
    if (p.x <= 0.0 || p.x >= 1.0 || p.y <= 0.0 || p.y >= 1.0 || p.z >= 1.0) {
        return 1.0;
    }
    // Steeper faces need a larger offset to stay clear of their own depth.
    float bias = mix(0.0030, 0.0008, facing);
    float lit = texture(shadowTextureID, vec3(p.xy, p.z - bias));
    return mix(1.0 - kShadowDepth, 1.0, lit);
}

void main() {
    if (useTexture != 1) {
        color = tint;
        return;
    }
    vec4 texel = texture(textureID, UV);
    if (texel.a < 0.5) {
        discard;
    }
    float light = kAmbient + kDiffuse * max(facing, 0.0) * Lit();

    // The racer carries a little warmth with it.
    float near = max(1.0 - dot(fromRacer, fromRacer) * 0.4, 0.0);
    vec3 glow = vec3(0.10, 0.085, 0.06) * near;

    vec3 rgb = min(texel.rgb * (tint.rgb * light + glow), vec3(1.0));
    if (greyScale == 1) {
        rgb = vec3((rgb.r + rgb.g + rgb.b) / 3.0);
    }
    color = vec4(rgb, tint.a);
}
