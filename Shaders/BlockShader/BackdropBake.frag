#version 330 core
// Bakes the backdrop's light into a picture of it, drawn once while the map stays the same: the
// light of the block shader (ambient, and diffuse darkened by the shadows of the map's blocks) is
// kept over kMaxLight in the alpha of the art; cut-out art gets alpha 0.
// BlockShaderUnshadowed.frag reads it back.

in vec2 UV;
in vec2 fromRacer;
in vec4 shadowCoord;
in float facing;
flat in int receivesShadow;
flat in vec4 tint;

uniform sampler2D textureID;
uniform sampler2DShadow shadowTextureID;
uniform int useShadowMap;

out vec4 color;

const float kAmbient = 0.52;
const float kDiffuse = 0.62;
const float kMaxLight = kAmbient + kDiffuse;
const float kShadowDepth = 0.55;

float Lit() {
    if (useShadowMap != 1 || receivesShadow == 0 || facing <= 0.0) {
        return 1.0;
    }
    vec3 p = shadowCoord.xyz / shadowCoord.w;
    if (p.x <= 0.0 || p.x >= 1.0 || p.y <= 0.0 || p.y >= 1.0 || p.z >= 1.0) {
        return 1.0;
    }
    float bias = mix(0.0030, 0.0008, facing);
    float lit = texture(shadowTextureID, vec3(p.xy, p.z - bias));
    return mix(1.0 - kShadowDepth, 1.0, lit);
}

void main() {
    vec4 texel = texture(textureID, UV);
    if (texel.a < 0.5) {
        color = vec4(0.0);
        return;
    }
    float light = kAmbient + kDiffuse * max(facing, 0.0) * Lit();
    color = vec4(texel.rgb, light / kMaxLight);
}
