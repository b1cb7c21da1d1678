#version 330 core
// Composes the 2D overlay over the 3D scene (renderToTexture 1) or over black.
// Overlay alpha: 0 transparent (the magenta key), 1 opaque, anything between blends. Below the
// part of the screen that screenDisplaySize shows, the overlay is transparent.
// screenColorMultiplier scales the final colour (fades, flashes); greyScale turns it grey.
// Written without data-dependent branches: it runs for every pixel of every frame.

in vec2 overlayUV;
in vec2 sceneUV;

uniform sampler2D textureID;
uniform sampler2D renderedSceneTextureID;
uniform int useTexture;
uniform int renderToTexture;
uniform int greyScale;
uniform float screenColorMultiplier;

out vec4 color;

void main() {
    vec4 overlay = texture(textureID, overlayUV);
    overlay.a *= step(overlayUV.y, 1.0) * float(useTexture);

    vec3 base = vec3(0.0);
    if (renderToTexture == 1) {
        base = texture(renderedSceneTextureID, sceneUV).rgb;
    }

    vec3 result = min(mix(base, overlay.rgb, overlay.a) * max(screenColorMultiplier, 0.0), vec3(1.0));
    float luminance = dot(result, vec3(0.299, 0.587, 0.114));
    result = mix(result, vec3(luminance), float(greyScale));
    color = vec4(result, 1.0);
}
