#include "ArtPalette.h"

#include <array>

namespace {

struct Tone {
    uint32_t colour;
    uint32_t darker;
    uint32_t lighter;
    uint32_t outline;
};

using P = ArtPalette;

const std::array<Tone, 39> kTones = {{
    {P::O0, P::O0, P::O1, P::O0},           {P::O1, P::O0, P::O2, P::O0},
    {P::O2, P::O1, P::O3, P::O0},           {P::O3, P::O2, P::White, P::O0},
    {P::B0, P::B0, P::B1, P::B0},           {P::B1, P::B0, P::B2, P::B0},
    {P::B2, P::B1, P::B3, P::B0},           {P::B3, P::B2, P::White, P::B0},
    {P::G0, P::G0, P::G1, P::G0},           {P::G1, P::G0, P::G2, P::G0},
    {P::G2, P::G1, P::G3, P::G0},           {P::G3, P::G2, P::White, P::G0},
    {P::Y0, P::Y0, P::Y1, P::Y0},           {P::Y1, P::Y0, P::Y2, P::Y0},
    {P::Y2, P::Y1, P::Y3, P::Y0},           {P::Y3, P::Y2, P::White, P::Y0},
    {P::R0, P::R0, P::R1, P::R0},           {P::R1, P::R0, P::R2, P::R0},
    {P::R2, P::R1, P::R3, P::R0},           {P::R3, P::R2, P::White, P::R0},
    {P::M0, P::M0, P::M1, P::M0},           {P::M1, P::M0, P::M2, P::M0},
    {P::M2, P::M1, P::M3, P::M0},           {P::M3, P::M2, P::M3, P::M0},
    {P::K0, P::K0, P::K1, P::K0},           {P::K1, P::K0, P::K2, P::K0},
    {P::K2, P::K1, P::K3, P::K0},           {P::K3, P::K2, P::K3, P::K0},
    {P::S0, P::Ink, P::S1, P::Ink},         {P::S1, P::S0, P::S2, P::S0},
    {P::S2, P::S1, P::S3, P::S0},           {P::S3, P::S2, P::White, P::S1},
    {P::A0, P::S2, P::A1, P::S1},           {P::A1, P::A0, P::White, P::S1},
    {P::Ink, P::Ink, P::S0, P::Ink},        {P::White, P::S3, P::White, P::S1},
    {P::Pink, P::R3, P::White, P::R1},      {P::Cyan, P::B3, P::White, P::B1},
    {P::FinishMarker, P::R1, P::R3, P::R0},
}};

const Tone* Find(uint32_t colour) {
    for (const Tone& t : kTones) {
        if (t.colour == colour) {
            return &t;
        }
    }
    return nullptr;
}

} // namespace

uint32_t ArtPalette::Darker(uint32_t colour) {
    const Tone* t = Find(colour);
    return t ? t->darker : colour;
}

uint32_t ArtPalette::Lighter(uint32_t colour) {
    const Tone* t = Find(colour);
    return t ? t->lighter : colour;
}

uint32_t ArtPalette::Outline(uint32_t colour) {
    const Tone* t = Find(colour);
    return t ? t->outline : Ink;
}

const std::vector<uint32_t>& ArtPalette::All() {
    static const std::vector<uint32_t> all = [] {
        std::vector<uint32_t> colours;
        for (const Tone& t : kTones) {
            colours.push_back(t.colour);
        }
        return colours;
    }();
    return all;
}
