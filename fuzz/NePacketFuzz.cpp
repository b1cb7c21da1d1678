// fuzz-links: ve_network
// Feeds arbitrary bytes, in arbitrary pieces, to a socket's packet reader, and scrambles them at
// every level. Nothing may crash, hang or read out of bounds; the buffer never holds more than its
// bound; unscrambling returns to the text for letters and the printable bytes above them
// (the shift is not an exact inverse near the control bytes, and peers never rely on it there).
#include "Network/NePacket.h"
#include "Network/NeScrambler.h"
#include "Network/NeSocket.h"
#include "Platform/VeLog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool quiet = (SetLogSink([](const std::string&) {}), true);
    (void)quiet;
    const std::string text(reinterpret_cast<const char*>(data), size);
    NeSocket socket(NeSocket::Tcp, 80);
    // The first byte chooses the piece length, as reads of any size would deliver it.
    const size_t piece = size == 0 ? 1 : 1 + data[0] % 128;
    for (size_t at = 0; at < text.size(); at += piece) {
        socket.AppendReceived(0, text.data() + at, std::min(piece, text.size() - at));
        for (;;) {
            NePacket* packet = socket.ReadPacket(0);
            const bool none = packet->GetType() == NePacket::None;
            delete packet;
            if (none) {
                break;
            }
        }
    }
    std::string printable;
    for (const char c : text) {
        printable.push_back(static_cast<char>(64 + static_cast<unsigned char>(c) % 63));
    }
    for (int32_t level = 2; level <= 4; ++level) {
        NeScrambler::Unscramble(text, level);
        if (NeScrambler::Unscramble(NeScrambler::Scramble(printable, level), level) != printable) {
            std::abort();
        }
    }
    return 0;
}
