#include "Environment/ClientEnvironmentManager/QmWorldArt.h"

#include "Screen/Surface/VeImage.h"

#include <array>

namespace {

constexpr std::array<int, 3> kSheetSizes = {64, 32, 16};

// The number of whole tiles across and down a sheet of tiles of that size.
void TileGrid(const VeSurface& sheet, int size, int& columns, int& rows) {
    columns = sheet.width / size;
    rows = sheet.height / size;
}

} // namespace

void QmWorldArt::Load() {
    LoadBackgrounds();
    LoadBlocks();
}

void QmWorldArt::LoadBackgrounds() {
    background64 = std::make_unique<VeImage>("Assets/Background_64.png");
    background32 = std::make_unique<VeImage>("Assets/Background_32.png");
    background16 = std::make_unique<VeImage>("Assets/Background_16.png");
}

void QmWorldArt::LoadBlocks() {
    orangeBlock = std::make_unique<VeImage>("Assets/Blocks/Orange_64.png");
    finish = QmBlockArt::Load("Assets/Blocks/Finish", VeFilterNearest, "Assets/Blocks/Finish_3D.png");
    fire = QmBlockArt::Load("Assets/Blocks/Fire", VeFilterNearestMipmapNearest);
    racer = std::make_unique<QmBlockArt>();
    racer->filter = VeFilterNearestMipmapNearest;
    racer->surface16 = std::make_unique<VeImage>("Assets/Characters/Default_16.png");
    racer->surface32 = std::make_unique<VeImage>("Assets/Characters/Default_32.png");
    racer->surface64 = std::make_unique<VeImage>("Assets/Characters/Default.png");
    jump = QmBlockArt::Load("Assets/Pickups/SuperJump", VeFilterNearestMipmapNearest);
    speed = QmBlockArt::Load("Assets/Pickups/SpeedUp", VeFilterNearestMipmapNearest);
    flip = QmBlockArt::Load("Assets/Pickups/FlipScreen", VeFilterNearestMipmapNearest);
    key = QmBlockArt::Load("Assets/Pickups/RedGateKey", VeFilterNearestMipmapNearest);
    disco = QmBlockArt::Load("Assets/Pickups/Disco", VeFilterNearestMipmapNearest);
    redGate = QmBlockArt::Load("Assets/Gates/Red", VeFilterNearestMipmapNearest);
    border = QmBlockArt::Load("Assets/Blocks/Border", VeFilterNearestMipmapNearest);
    editor = QmBlockArt::Load("Assets/Blocks/Editor", VeFilterNearest);
    editorFlash = QmBlockArt::Load("Assets/Blocks/EditorFlash", VeFilterNearest);
    for (const char* name : {"Blank", "Orange", "Blue", "Green", "Yellow", "Red"}) {
        coloured.push_back(
            QmBlockArt::Load(std::string("Assets/Blocks/") + name, VeFilterNearestMipmapNearest));
    }
    defaultBlocks.clear();
    for (const auto& record : coloured) {
        defaultBlocks.push_back(record.get());
    }
    LoadTileset();
    LoadDecorations();
}

void QmWorldArt::LoadTileset() {
    VeImage sheet64("Assets/Blocks/Tileset_Forest_64.png");
    VeImage sheet32("Assets/Blocks/Tileset_Forest_32.png");
    VeImage sheet16("Assets/Blocks/Tileset_Forest_16.png");
    int columns = 0;
    int rows = 0;
    TileGrid(sheet64, 64, columns, rows);
    for (int row = 0; row < rows; ++row) {
        auto record = std::make_unique<QmBlockArt>();
        record->filter = VeFilterLinearMipmapNearest;
        record->layered = true;
        record->surface64 = QmBlockArt::CutTile(sheet64, 0, row, 64);
        record->surface32 = QmBlockArt::CutTile(sheet32, 0, row, 32);
        record->surface16 = QmBlockArt::CutTile(sheet16, 0, row, 16);
        for (int column = 0; column < columns && column < kTilesetFaces; ++column) {
            record->faces64.push_back(QmBlockArt::CutTile(sheet64, column, row, 64));
            record->faces32.push_back(QmBlockArt::CutTile(sheet32, column, row, 32));
        }
        defaultBlocks.push_back(record.get());
        tilesetRows.push_back(std::move(record));
    }
}

void QmWorldArt::LoadDecorations() {
    std::array<VeImage, 3> sheets = {VeImage("Assets/Decorations/Forest_Decorations_64.png"),
                                     VeImage("Assets/Decorations/Forest_Decorations_32.png"),
                                     VeImage("Assets/Decorations/Forest_Decorations_16.png")};
    int columns = 0;
    int rows = 0;
    TileGrid(sheets[0], kSheetSizes[0], columns, rows);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            auto record = std::make_unique<QmBlockArt>();
            record->filter = VeFilterNearest;
            record->surface64 = QmBlockArt::CutTile(sheets[0], column, row, kSheetSizes[0]);
            record->surface32 = QmBlockArt::CutTile(sheets[1], column, row, kSheetSizes[1]);
            record->surface16 = QmBlockArt::CutTile(sheets[2], column, row, kSheetSizes[2]);
            decorations.push_back(std::move(record));
        }
    }
}

void QmWorldArt::MakeTextures(int group) {
    if (group == 0) {
        for (QmBlockArt* record :
             {finish.get(), fire.get(), racer.get(), jump.get(), speed.get(), flip.get(), key.get(),
              disco.get(), redGate.get(), border.get(), editor.get(), editorFlash.get()}) {
            record->MakeTextures();
        }
    } else if (group == 1) {
        for (QmBlockArt* record : defaultBlocks) {
            record->MakeTextures();
        }
    } else if (group == 2) {
        for (const auto& record : decorations) {
            record->MakeTextures();
        }
    }
}

const VeSurface& QmWorldArt::Background(int blockSize) const {
    if (blockSize == 32) {
        return *background32;
    }
    if (blockSize == 16) {
        return *background16;
    }
    return *background64;
}

const QmBlockArt* QmWorldArt::DefaultBlock(BlockId id) const {
    return id >= 1 && id < DefaultCount() ? defaultBlocks[id] : nullptr;
}

const QmBlockArt* QmWorldArt::Decoration(BlockId id) const {
    const int index = id - Block::FirstDecoration;
    return index >= 0 && index < DecorationCount() ? decorations[index].get() : nullptr;
}

const QmBlockArt* QmWorldArt::ForId(BlockId id) const {
    switch (id) {
    case Block::Finish:
        return finish.get();
    case Block::Fire:
        return fire.get();
    case Block::JumpImpulse:
        return jump.get();
    case Block::SpeedUp:
        return speed.get();
    case Block::FlipVision:
        return flip.get();
    case Block::RedGateKey:
        return key.get();
    case Block::RedGate:
        return redGate.get();
    case Block::DiscoConfusion:
        return disco.get();
    default:
        break;
    }
    if (const QmBlockArt* block = DefaultBlock(id)) {
        return block;
    }
    return Decoration(id);
}

bool QmWorldArt::IsCursorTexture(const VeTexture* texture) const {
    return (editor && editor->Owns(texture)) || (editorFlash && editorFlash->Owns(texture));
}
