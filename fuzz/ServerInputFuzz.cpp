// fuzz-links: qm_server
// Feeds arbitrary bytes to what the service reads from strangers before any database is touched:
// the game's form bodies, uploaded map and score files, and the gallery's escaping. Nothing may
// crash, hang or read out of bounds; an accepted map has a safe stored name and its thumbnail
// encodes; escaped text never holds markup.
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Service/SrvFormFields.h"
#include "Service/SrvGallery.h"
#include "Service/SrvThumbnail.h"
#include "Service/SrvUpload.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    SrvFormFields form = SrvFormFields::Parse(bytes);
    for (const char* key : {"qcode", "username", "password", "uid", "mapno", "prevtimems", "s"}) {
        form.Number(key);
        if (form.Get(key).size() > bytes.size()) {
            std::abort();
        }
    }
    std::string error;
    std::optional<SrvCheckedMap> map = SrvUpload::CheckMap(SrvUpload::WithoutTrailingCrlf(bytes), error);
    if (map) {
        if (!QmFileNames::IsSafeName(map->fileName)) {
            std::abort();
        }
        static SrvThumbnail thumbnails("Assets"); // fuzzers run from the repository root
        if (thumbnails.Draw(map->contents.blocks, map->contents.blockSize).empty()) {
            std::abort();
        }
        SrvUpload::CheckScores(bytes, map->contents.uid, error);
    }
    SrvUpload::CheckScores(bytes, "1", error);
    std::string html = SrvGallery::Escape(bytes) + SrvGallery::UrlPiece(bytes);
    if (html.find_first_of("<>\"'") != std::string::npos) {
        std::abort();
    }
    return 0;
}
