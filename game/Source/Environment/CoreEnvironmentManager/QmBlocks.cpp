#include "Environment/CoreEnvironmentManager/QmBlocks.h"

std::string QmBlocks::Name(BlockId id) {
    switch (id) {
    case Block::DiscoConfusion:
        return "Disco Confusion";
    case Block::RedGate:
        return "Red Gate";
    case Block::RedGateKey:
        return "Red Gate Key";
    case Block::FlipVision:
        return "Flip Vision";
    case Block::SpeedUp:
        return "Speed Up x2";
    case Block::JumpImpulse:
        return "Jump Impulse x2";
    case Block::Enemy:
        return "Enemy";
    case Block::Fire:
        return "Fire";
    case Block::Finish:
        return "Finish";
    case Block::Start:
        return "Start";
    default:
        break;
    }
    if (IsDefaultBlock(id)) {
        return "Default Block";
    }
    if (id >= Block::FirstDecoration) {
        return "Decoration";
    }
    return "Blank";
}

BlockId QmBlocks::PaletteSlotToId(int slot, int defaultListLength) {
    if (slot == 1) {
        return Block::Start;
    }
    if (slot >= 2 && slot <= 10) {
        return 256 - slot;
    }
    if (slot < kFirstDefaultSlot) {
        return Block::Blank; // slot 0 and the reserved slots 11 to 19
    }
    if (slot <= defaultListLength + 18) {
        return slot - 19;
    }
    return slot - defaultListLength + 131;
}

std::string QmBlocks::PaletteSlotTooltip(int slot, int defaultListLength) {
    return Name(PaletteSlotToId(slot, defaultListLength));
}
