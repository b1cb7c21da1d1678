#pragma once
// One picture of every image the generator makes, each at its own size on a neutral checker and
// labelled with its path, grouped as the painters grouped them.
#include "ArtImage.h"
#include "AssetSet.h"

class ContactSheet {
public:
    static ArtImage Build(const AssetSet& set, int width);
};
