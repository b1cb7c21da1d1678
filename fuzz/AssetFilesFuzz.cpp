// fuzz-links: ve_screen ve_audio
// Feeds arbitrary bytes to the image and wave loaders. A broken file must end in the loader's own
// halt message (caught here), never in a crash, a hang or a read out of bounds; an image that does
// load has exactly width x height pixels.
#include "Audio/VeWaveSound.h"
#include "Platform/VeMessageBox.h"
#include "Screen/Surface/VePNGFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace {
struct Halted {};

const std::string& ScratchFile() {
    static const std::string path = "/tmp/quillmaze-fuzz-asset-" + std::to_string(getpid());
    return path;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static bool ready = [] {
        SetMessageBoxHandler([](const std::string&, const std::string&, int kind) {
            if (kind == VeMessageBox::Error) {
                throw Halted{};
            }
        });
        return true;
    }();
    (void)ready;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::FILE* file = std::fopen(ScratchFile().c_str(), "wb");
    if (file == nullptr) {
        return 0;
    }
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    try {
        VePNGFile png;
        png.Load(ScratchFile());
        if (png.pixels.size() != static_cast<size_t>(png.width) * static_cast<size_t>(png.height)) {
            __builtin_trap();
        }
    } catch (const Halted&) {
    }
    try {
        std::unique_ptr<VeWaveSound> sound = VeWaveSound::Load(ScratchFile(), 1.0f, "", false);
        if (sound && static_cast<size_t>(sound->Frames()) * 2 > sound->samples.size()) {
            __builtin_trap();
        }
    } catch (const Halted&) {
    }
    return 0;
}
