#pragma once
// The game's palette: a ramp of four tones (dark, shade, base, light) around each of the five
// block colours the game fixes, a forest ramp (moss), a wood ramp (bark), a stone ramp, two
// desaturated sky tones for backgrounds, and ink, white, pink and the editor's cyan. White is the
// highlight of every ramp. The finish marker 0xFE0000 is the one extra colour: the game repaints
// it to cycle the finish through the colour wheel.
#include <cstdint>
#include <vector>

class ArtPalette {
public:
    // Block ramps: 0 dark (outline), 1 shade, 2 base (the colour the game fixes), 3 light.
    static constexpr uint32_t O0 = 0x7A3F06, O1 = 0xBD6A07, O2 = 0xE99209, O3 = 0xF8C25A;
    static constexpr uint32_t B0 = 0x0D3570, B1 = 0x1356A8, B2 = 0x1678D6, B3 = 0x6BB4F2;
    static constexpr uint32_t G0 = 0x0B6B14, G1 = 0x12A410, G2 = 0x1ADE0C, G3 = 0x8CF27A;
    static constexpr uint32_t Y0 = 0x7D6A0C, Y1 = 0xB9A30F, Y2 = 0xE6D514, Y3 = 0xF8F08A;
    static constexpr uint32_t R0 = 0x6E0A10, R1 = 0xA80E0C, R2 = 0xE1120C, R3 = 0xF56A5E;
    // Forest greens, bark browns, cool stone greys.
    static constexpr uint32_t M0 = 0x233D1E, M1 = 0x3C6529, M2 = 0x5F9137, M3 = 0x96BF55;
    static constexpr uint32_t K0 = 0x33200F, K1 = 0x5A3A1F, K2 = 0x87592F, K3 = 0xB8875A;
    static constexpr uint32_t S0 = 0x30343D, S1 = 0x565E6A, S2 = 0x848D99, S3 = 0xBAC2CC;
    // Sky tones for the backgrounds, kept pale and grey so blocks stand out.
    static constexpr uint32_t A0 = 0x93AFBF, A1 = 0xAFC7D3;
    static constexpr uint32_t Ink = 0x1C1A24, White = 0xFFFFFF, Pink = 0xF4A0B4, Cyan = 0x00FFFF;
    // Repainted by the game as the finish cycles through the colour wheel.
    static constexpr uint32_t FinishMarker = 0xFE0000;

    // One step darker or lighter within the colour's ramp (the ends stay where they are).
    static uint32_t Darker(uint32_t colour);
    static uint32_t Lighter(uint32_t colour);
    // The outline tone of the colour's own hue.
    static uint32_t Outline(uint32_t colour);
    static const std::vector<uint32_t>& All();
};
