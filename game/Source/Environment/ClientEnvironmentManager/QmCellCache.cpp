#include "Environment/ClientEnvironmentManager/QmCellCache.h"

int QmCellCache::Index(int column, int row, int placementSize, int mapSize) {
    const bool borderOnLargeMap = mapSize == 20 && placementSize == 10;
    int x = column + 1;
    int y = row + 1;
    if (borderOnLargeMap && column == 10) {
        x = kSide - 1;
    }
    if (borderOnLargeMap && row == 10) {
        y = kSide - 1;
    }
    if (x < 0 || y < 0 || x >= kSide || y >= kSide) {
        return -1;
    }
    return x * kSide + y;
}

bool QmCellCache::Lookup(int index, glm::mat4& model) const {
    if (!IsValid(index)) {
        return false;
    }
    model = matrices[static_cast<size_t>(index)];
    return true;
}

void QmCellCache::Store(int index, const glm::mat4& model) {
    if (index < 0 || index >= kCells) {
        return;
    }
    matrices[static_cast<size_t>(index)] = model;
    valid[static_cast<size_t>(index)] = 1;
}

void QmCellCache::Invalidate(int x, int y) {
    const int index = Index(x, y, 20, 20);
    if (index >= 0) {
        valid[static_cast<size_t>(index)] = 0;
    }
}

void QmCellCache::InvalidateAll() {
    valid.fill(0);
}
