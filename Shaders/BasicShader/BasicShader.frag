#version 330 core
// Composes the 2D overlay over the 3D scene (or over black in 2D).
// - Only the top screenDisplaySize part of the screen shows the overlay; the texture holds just
//   those rows.
// - Overlay alpha: 0 transparent (the magenta key), 255 opaque, anything between blends.
// - screenColorMultiplier scales the final colour (fades); greyScale turns it grey.

in vec2 overlayUV;
in vec2 sceneUV;

uniform sampler2D textureID;
uniform sampler2D renderedSceneTextureID;
uniform int useTexture;
uniform int renderToTexture;
uniform int greyScale;
uniform float screenDisplaySize;
uniform float screenColorMultiplier;
uniform float pixelSizeX;
uniform float pixelSizeY;

out vec4 color;

void main() {
    vec3 base = vec3(0.0);
    if (renderToTexture == 1) {
        // Sample the scene at the centre of the pixel this fragment covers.
        vec2 pixel = vec2(pixelSizeX, pixelSizeY);
        vec2 centre = (floor(sceneUV / pixel) + 0.5) * pixel;
        base = texture(renderedSceneTextureID, centre).rgb;
    }

    vec4 overlay = vec4(0.0);
    if (useTexture == 1 && screenDisplaySize > 0.0 && overlayUV.y < screenDisplaySize) {
        overlay = texture(textureID, vec2(overlayUV.x, overlayUV.y / screenDisplaySize));
    }

    vec3 result = mix(base, overlay.rgb, overlay.a) * max(screenColorMultiplier, 0.0);
    result = min(result, vec3(1.0));
    if (greyScale == 1) {
        result = vec3(dot(result, vec3(0.299, 0.587, 0.114)));
    }
    color = vec4(result, 1.0);
}
