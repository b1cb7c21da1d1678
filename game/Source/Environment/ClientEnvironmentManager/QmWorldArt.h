#pragma once
// All the art the world renderer draws with, loaded once in a fixed order (a missing file halts
// with the loader's message): the backgrounds, the blocks and specials, the racer shown on the
// editor's Start cell, the pickups, the red gate, the border ring, the editor cursor, the coloured
// blocks, the forest tileset (one record per row, its six tiles the cube's faces) and the forest
// decorations (one record per tile, reading order).
//
// The coloured list holds Blank and the five coloured blocks; the default list is the coloured
// list followed by the tileset rows, so a default block id indexes it; decoration id 150 + i is
// decorations[i].
#include "Environment/ClientEnvironmentManager/QmBlockArt.h"
#include "Environment/CoreEnvironmentManager/QmBlocks.h"

#include <memory>
#include <vector>

// Loading decodes images only (no OpenGL), so the art may be loaded apart from the renderer that
// draws it and handed over whole; the textures are made later, group by group.
class QmWorldArt {
public:
    static constexpr int kTilesetFaces = 6;
    // The specials, the default blocks, the decorations.
    static constexpr int kTextureGroups = 3;

    // Everything, in order: the backgrounds, the blocks and specials, the tileset, the decorations.
    void Load();
    // Makes the textures of every record of a group, 0 to kTextureGroups - 1 (needs an OpenGL
    // context).
    void MakeTextures(int group);

    // The background for a block size: 32 and 16 have their own, any other size uses the 64 one.
    const VeSurface& Background(int blockSize) const;
    // The record drawn for a default block id, a decoration id or a special; null for anything
    // without art of its own (Blank, Start, Enemy, unknown ids).
    const QmBlockArt* ForId(BlockId id) const;
    const QmBlockArt* DefaultBlock(BlockId id) const;
    const QmBlockArt* Decoration(BlockId id) const;
    int DefaultCount() const { return static_cast<int>(defaultBlocks.size()); }
    int DecorationCount() const { return static_cast<int>(decorations.size()); }
    // The texture belongs to one of the two editor cursor records.
    bool IsCursorTexture(const VeTexture* texture) const;

    std::unique_ptr<VeSurface> background64;
    std::unique_ptr<VeSurface> background32;
    std::unique_ptr<VeSurface> background16;
    std::unique_ptr<VeSurface> orangeBlock;
    std::unique_ptr<QmBlockArt> finish;
    std::unique_ptr<QmBlockArt> fire;
    std::unique_ptr<QmBlockArt> racer;
    std::unique_ptr<QmBlockArt> jump;
    std::unique_ptr<QmBlockArt> speed;
    std::unique_ptr<QmBlockArt> flip;
    std::unique_ptr<QmBlockArt> key;
    std::unique_ptr<QmBlockArt> disco;
    std::unique_ptr<QmBlockArt> redGate;
    std::unique_ptr<QmBlockArt> border;
    std::unique_ptr<QmBlockArt> editor;
    std::unique_ptr<QmBlockArt> editorFlash;
    // Blank, Orange, Blue, Green, Yellow, Red.
    std::vector<std::unique_ptr<QmBlockArt>> coloured;
    // Indexed by default block id; entries 0 to 5 are the coloured list's records.
    std::vector<QmBlockArt*> defaultBlocks;
    std::vector<std::unique_ptr<QmBlockArt>> tilesetRows;
    std::vector<std::unique_ptr<QmBlockArt>> decorations;

private:
    void LoadBackgrounds();
    void LoadBlocks();
    void LoadTileset();
    void LoadDecorations();
};
