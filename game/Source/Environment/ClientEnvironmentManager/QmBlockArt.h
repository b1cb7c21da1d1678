#pragma once
// A block art record: the art of one drawable thing of the world at every block size. It holds
// surfaces for 64-, 32- and 16-pixel blocks and, when the thing has art of its own for the 3D view,
// a fourth one; and two textures for the 3D view: the first made from the 3D art (or the 64-pixel
// art when there is none), the second from the 32-pixel art. A layered record (a tileset row) has
// one texture layer per cube face in the order front, back, left, right, bottom, top.
// Textures exist only once MakeTextures ran (with an OpenGL context).
#include "Screen/Surface/VeSurface.h"
#include "Screen/Surface/VeTexture.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

class QmBlockArt {
public:
    // Loads base + "_64.png", "_32.png" and "_16.png" (a missing or broken file halts), and the
    // 3D art when a path is given.
    static std::unique_ptr<QmBlockArt> Load(const std::string& base, unsigned int filter,
                                            const std::string& threeDPath = std::string());
    // Blank surfaces of 64, 32 and 16 pixels filled with the key (the fire's animation frames).
    static std::unique_ptr<QmBlockArt> Blank(unsigned int filter);
    // A square tile of a sheet, the tile at (column, row) of tiles of that size.
    static std::unique_ptr<VeSurface> CutTile(const VeSurface& sheet, int column, int row, int size);

    // Size 64, 32 or 16, or 3 for the 3D art; null for any other size or absent art.
    VeSurface* Surface(int size) const;
    // The texture for a block size: the second when the size is 32, the first otherwise.
    VeTexture* Texture(int blockSize) const;
    bool Owns(const VeTexture* texture) const {
        return texture != nullptr && (texture == first.get() || texture == second.get());
    }

    // Makes both textures from the surfaces (and the face layers of a layered record).
    void MakeTextures();
    // Uploads the texture of block size 64 or 32 again from its surface.
    void RefreshTexture(int blockSize);
    void RefreshFirstTexture();

    std::unique_ptr<VeSurface> surface64;
    std::unique_ptr<VeSurface> surface32;
    std::unique_ptr<VeSurface> surface16;
    std::unique_ptr<VeSurface> surface3D;
    std::unique_ptr<VeTexture> first;
    std::unique_ptr<VeTexture> second;
    unsigned int filter = VeFilterNearest;
    // The textures carry one layer per cube face (faces64 and faces32).
    bool layered = false;
    std::vector<std::unique_ptr<VeSurface>> faces64;
    std::vector<std::unique_ptr<VeSurface>> faces32;

private:
    static std::unique_ptr<VeTexture> Layered(const std::vector<std::unique_ptr<VeSurface>>& faces,
                                              unsigned int filter);
};
