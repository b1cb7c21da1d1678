#version 330 core
// Lights the world from one point light above and to the left of the map:
// - a soft ambient term plus a diffuse term that the shadow map darkens, so faces turned to the
//   light are bright, the others stay in their own shade and everything behind a block lies in
//   its shadow (3 x 3 comparison taps for soft edges);
// - a faint warm glow around the racer (worldPos) that follows it through the map;
// - untextured draws show drawColor exactly, unlit (the editor's picking image relies on it);
// - texels of the transparent key (alpha 0) are cut out; alpha and drawColor tint and fade the rest;
// - greyScale turns the result grey (the racer is dead).

in vec2 UV;
in vec3 surfacePosition;
in vec3 surfaceNormal;
in vec4 shadowCoord;

uniform sampler2D textureID;
uniform sampler2DShadow shadowTextureID;
uniform sampler2D liveShadowTextureID;
uniform int useTexture;
uniform int greyScale;
uniform int useShadowMap;
uniform vec2 shadowMapSize;
uniform vec3 lightPos;
uniform vec3 worldPos;
uniform float alpha;
uniform int drawColor;

out vec4 color;

const float kAmbient = 0.52;
const float kDiffuse = 0.62;
const float kShadowDepth = 0.55;

vec4 Unpack(int packed) {
    return vec4(float((packed >> 16) & 255), float((packed >> 8) & 255), float(packed & 255),
                float((packed >> 24) & 255)) / 255.0;
}

float Lit(float facing) {
    if (useShadowMap != 1 || facing <= 0.0) {
        return 1.0;
    }
    vec3 p = shadowCoord.xyz / shadowCoord.w;
    if (p.x <= 0.0 || p.x >= 1.0 || p.y <= 0.0 || p.y >= 1.0 || p.z >= 1.0) {
        return 1.0;
    }
    // Steeper faces need a larger offset to stay clear of their own depth.
    float bias = mix(0.0030, 0.0008, facing);
    vec2 texel = 1.0 / max(shadowMapSize, vec2(1.0));
    float sum = 0.0;
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            sum += texture(shadowTextureID, vec3(p.xy + vec2(x, y) * texel, p.z - bias));
        }
    }
    return mix(1.0 - kShadowDepth, 1.0, sum / 9.0);
}

void main() {
    vec4 tint = Unpack(drawColor);
    if (useTexture != 1) {
        color = vec4(tint.rgb, tint.a * alpha);
        return;
    }
    vec4 texel = texture(textureID, UV);
    if (texel.a < 0.5) {
        discard;
    }
    vec3 normal = normalize(surfaceNormal);
    if (!gl_FrontFacing) {
        normal = -normal;
    }
    vec3 toLight = normalize(lightPos - surfacePosition);
    float facing = dot(normal, toLight);
    float diffuse = max(facing, 0.0);
    float light = kAmbient + kDiffuse * diffuse * Lit(facing);

    // The racer carries a little warmth with it.
    float reach = length(surfacePosition.xy - worldPos.xy);
    vec3 glow = vec3(1.0, 0.85, 0.6) * 0.10 * (1.0 - smoothstep(0.0, 1.6, reach));

    vec3 rgb = texel.rgb * tint.rgb * light + texel.rgb * glow;
    rgb = min(rgb, vec3(1.0));
    if (greyScale == 1) {
        rgb = vec3((rgb.r + rgb.g + rgb.b) / 3.0);
    }
    color = vec4(rgb, tint.a * alpha);
}
