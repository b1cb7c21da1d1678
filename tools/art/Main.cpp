// gen-art: draws every image of the game from code and writes them under <root>/Assets, plus a
// contact sheet of all of them in <root>/docs/contact-sheet.png. The output is the same, byte for
// byte, on every run. With --preview <folder> <scale> it also writes enlarged copies for viewing.
#include "AssetSet.h"
#include "BackgroundArt.h"
#include "BlockArt.h"
#include "CharacterArt.h"
#include "ContactSheet.h"
#include "CowArt.h"
#include "DecorationArt.h"
#include "EditorArt.h"
#include "MenuArt.h"
#include "PickupArt.h"
#include "PngWriter.h"
#include "ScenePreview.h"
#include "TilesetArt.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: gen-art <repository root> [--preview <folder> <scale> | --group <name> "
                             "<file> <scale> | --view <path> <x> <y> <w> <h> <scale> <file>]\n");
        return 2;
    }
    std::string root = argv[1];
    try {
        AssetSet set;
        BlockArt::Paint(set);
        TilesetArt::Paint(set);
        DecorationArt::Paint(set);
        PickupArt::Paint(set);
        CharacterArt::Paint(set);
        CowArt::Paint(set);
        BackgroundArt::Paint(set);
        MenuArt::Paint(set);
        EditorArt::Paint(set);
        ScenePreview::Paint(set);

        int changed = set.WriteAll(root);
        bool sheetChanged = false;
        if (!PngWriter::WriteIfChanged(root + "/docs/contact-sheet.png",
                                       PngWriter::Encode(ContactSheet::Build(set, 1280)), sheetChanged)) {
            std::fprintf(stderr, "gen-art: cannot write %s/docs/contact-sheet.png\n", root.c_str());
            return 1;
        }
        if (argc >= 5 && std::string(argv[2]) == "--preview") {
            set.WritePreviews(argv[3], std::atoi(argv[4]));
        }
        if (argc >= 10 && std::string(argv[2]) == "--view") {
            // A part of one image, enlarged, for a closer look.
            const ArtImage* image = set.Find(argv[3]);
            if (image) {
                ArtImage part = image->Crop(std::atoi(argv[4]), std::atoi(argv[5]), std::atoi(argv[6]),
                                            std::atoi(argv[7]));
                bool unused = false;
                PngWriter::WriteIfChanged(argv[9], PngWriter::Encode(part.Scaled(std::atoi(argv[8]))),
                                          unused);
            }
        }
        if (argc >= 6 && std::string(argv[2]) == "--group") {
            // One group's sheet, enlarged, for a closer look.
            AssetSet only;
            for (const ArtAsset& a : set.Assets()) {
                if (a.group == argv[3]) {
                    only.AddPreview(a.path, a.image, a.group);
                }
            }
            int scale = std::atoi(argv[5]);
            bool unused = false;
            PngWriter::WriteIfChanged(
                argv[4], PngWriter::Encode(ContactSheet::Build(only, 1280 / scale).Scaled(scale)), unused);
        }
        int images = 0;
        for (const ArtAsset& a : set.Assets()) {
            images += a.written ? 1 : 0;
        }
        std::printf("gen-art: %d images, %d changed%s\n", images, changed,
                    sheetChanged ? ", contact sheet changed" : "");
    } catch (const std::exception& e) {
        std::fprintf(stderr, "gen-art: %s\n", e.what());
        return 1;
    }
    return 0;
}
