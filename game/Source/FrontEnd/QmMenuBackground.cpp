#include "FrontEnd/QmMenuBackground.h"

#include "Platform/VeRandom.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Surface/VeSurface.h"

#include <algorithm>

namespace {
constexpr float kSpawnEvery = 0.2f;
constexpr float kFallSpeed = 200.0f;
constexpr float kClearSpeed = 1000.0f;
constexpr const char* kBlockFiles[5] = {"Assets/Blocks/Orange_32.png", "Assets/Blocks/Blue_32.png",
                                        "Assets/Blocks/Green_32.png", "Assets/Blocks/Yellow_32.png",
                                        "Assets/Blocks/Red_32.png"};
} // namespace

QmMenuBackground::QmMenuBackground() = default;
QmMenuBackground::~QmMenuBackground() = default;

void QmMenuBackground::Prepare(int32_t width, int32_t height) {
    background = std::make_unique<VeSurface>(width, height);
    blockLayer = std::make_unique<VeSurface>(width, height);
    blockLayer->Fill(kColourKey);
    const VeImage tile("Assets/Background_32.png");
    for (int32_t y = 0; y < height; y += kCell) {
        for (int32_t x = 0; x < width; x += kCell) {
            background->BlitKeyed(tile, x, y, false, kColourKey);
        }
    }
    for (size_t i = 0; i < blockArt.size(); ++i) {
        blockArt[i] = std::make_unique<VeImage>(kBlockFiles[i]);
    }
    Reset();
}

void QmMenuBackground::DrawStatic(VeSurface& target) const {
    if (background) {
        target.CopyFrom(*background);
    }
}

void QmMenuBackground::Reset() {
    for (auto& cell : grid) {
        cell.reset();
    }
    falling.clear();
    clearing = false;
    spawnTimer = 0.0f;
    if (blockLayer) {
        blockLayer->Fill(kColourKey);
    }
}

int QmMenuBackground::ReleaseChance(float frameTime) {
    return std::clamp(static_cast<int>(frameTime * 100.0f), 1, 10);
}

int QmMenuBackground::LandedCount() const {
    return static_cast<int>(
        std::count_if(grid.begin(), grid.end(), [](const auto& cell) { return cell != nullptr; }));
}

void QmMenuBackground::FillAll() {
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            auto block = std::make_unique<Block>();
            block->x = static_cast<float>(column * kCell);
            block->y = static_cast<float>(row * kCell);
            block->colour = (row + column) % 5;
            if (blockLayer) {
                DrawBlock(*blockLayer, *block);
            }
            grid[Index(column, row)] = std::move(block);
        }
    }
}

void QmMenuBackground::DrawBlock(VeSurface& target, const Block& block) const {
    const auto& art = blockArt[static_cast<size_t>(block.colour)];
    if (art) {
        target.Blit(*art, static_cast<int32_t>(block.x), static_cast<int32_t>(block.y));
    }
}

void QmMenuBackground::EraseFromLayer(const Block& block) {
    if (blockLayer) {
        blockLayer->Rect(static_cast<int32_t>(block.x), static_cast<int32_t>(block.y), kCell, kCell,
                         kColourKey, true, false);
    }
}

void QmMenuBackground::Step(float frameTime, bool f12, VeSurface* target) {
    if (target != nullptr && blockLayer) {
        target->BlitKeyed(*blockLayer, 0, 0, false, kColourKey);
    }
    if (f12) {
        clearing = true;
    }
    std::vector<int> freeColumns;
    for (int column = 0; column < kColumns; ++column) {
        if (!grid[Index(column, 0)]) {
            freeColumns.push_back(column);
        }
    }
    if (!clearing) {
        if (freeColumns.empty()) {
            clearing = true;
        } else {
            if (spawnTimer > kSpawnEvery) {
                const int column = freeColumns[static_cast<size_t>(Rand()) % freeColumns.size()];
                auto block = std::make_unique<Block>();
                block->x = static_cast<float>(kCell * column);
                block->y = -static_cast<float>(kCell);
                block->colour = Rand() % 5;
                falling.push_back(std::move(block));
                spawnTimer = 0.0f;
            }
            spawnTimer += frameTime;
        }
    }
    if (clearing) {
        const int chance = ReleaseChance(frameTime);
        for (int column = 0; column < kColumns; ++column) {
            for (int row = kRows - 1; row >= 0; --row) {
                auto& cell = grid[Index(column, row)];
                if (!cell) {
                    continue;
                }
                if (Rand() % 10 < chance) {
                    EraseFromLayer(*cell);
                    falling.push_back(std::move(cell));
                }
                break; // only the lowest block of a column may drop out
            }
        }
        if (falling.empty() && LandedCount() == 0) {
            Reset();
            return;
        }
    }
    const float speed = clearing ? kClearSpeed : kFallSpeed;
    const float bottom = static_cast<float>(kCell * (kRows - 1));
    for (auto it = falling.begin(); it != falling.end();) {
        Block& block = **it;
        if (target != nullptr) {
            DrawBlock(*target, block);
        }
        block.y += frameTime * speed;
        if (clearing) {
            if (block.y > static_cast<float>(kCell * kRows)) {
                it = falling.erase(it);
            } else {
                ++it;
            }
            continue;
        }
        const int column = std::clamp(static_cast<int>(block.x) / kCell, 0, kColumns - 1);
        int landRow = -1;
        if (!grid[Index(column, kRows - 1)]) {
            if (block.y > bottom) {
                landRow = kRows - 1;
            }
        } else {
            for (int row = 1; row < kRows; ++row) {
                const auto& cell = grid[Index(column, row)];
                if (cell && cell->y < block.y + static_cast<float>(kCell)) {
                    landRow = row - 1;
                    break;
                }
            }
        }
        if (landRow < 0) {
            ++it;
            continue;
        }
        if (grid[Index(column, landRow)]) {
            it = falling.erase(it); // its column filled up while it fell
            continue;
        }
        block.y = static_cast<float>(kCell * landRow);
        if (blockLayer) {
            DrawBlock(*blockLayer, block);
        }
        grid[Index(column, landRow)] = std::move(*it);
        it = falling.erase(it);
    }
}
