#pragma once
// Block ids and the editor palette. A cell of a map holds a BlockId; the numbers are fixed because
// map files store them as decimal text.
//   0          Blank
//   1..5       coloured default blocks (Orange, Blue, Green, Yellow, Red)
//   6..149     tileset default blocks, one per row of the forest tileset
//   150..245   decorations, 150 + tile index of the decoration sheet in reading order
//   246..255   the special blocks below
// Default blocks are solid; everything else lets the racer through, the red gate only while open.
#include <cstdint>
#include <string>

using BlockId = int32_t;

namespace Block {
constexpr BlockId Blank = 0;
constexpr BlockId FirstDefault = 1;
constexpr BlockId LastColoured = 5;
constexpr BlockId LastDefault = 149;
constexpr BlockId FirstDecoration = 150;
constexpr BlockId LastDecoration = 245;
constexpr BlockId DiscoConfusion = 246;
constexpr BlockId RedGate = 247;
constexpr BlockId RedGateKey = 248;
constexpr BlockId FlipVision = 249;
constexpr BlockId SpeedUp = 250;
constexpr BlockId JumpImpulse = 251;
constexpr BlockId Enemy = 252;
constexpr BlockId Fire = 253;
constexpr BlockId Finish = 254;
constexpr BlockId Start = 255;
} // namespace Block

// The editor offers the blocks as palette slots: 0 Blank, 1 Start, 2..10 the specials from Finish
// down to Disco Confusion, 11..19 reserved (Blank), then the default blocks 1..D-1 and after them
// the decorations from 150. D is the length of the default block art list, Blank included.
class QmBlocks {
public:
    static constexpr int kFirstDefaultSlot = 20;

    static bool IsDefaultBlock(BlockId id) { return id >= Block::FirstDefault && id <= Block::LastDefault; }
    static bool IsDecoration(BlockId id) {
        return id >= Block::FirstDecoration && id <= Block::LastDecoration;
    }

    // The palette (tooltip) name of a block id: "Blank", "Default Block", "Decoration", "Start"...
    static std::string Name(BlockId id);
    // The id a palette slot places, and the slot's tooltip.
    static BlockId PaletteSlotToId(int slot, int defaultListLength);
    static std::string PaletteSlotTooltip(int slot, int defaultListLength);
};
