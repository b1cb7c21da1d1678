// fuzz-links: qm_network
// Feeds arbitrary bytes, in arbitrary pieces, to the reading of the web service's answers as the
// game collects them: the text before the marker is dropped, the message after it is read. Nothing
// may crash, hang or read out of bounds; what is read stays within its bounds and every map file
// name it keeps is a plain name.
#include "Network/QmServiceAnswer.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    // The first byte chooses the piece length, as packets of any size would deliver the answer.
    const size_t piece = size == 0 ? 1 : 1 + data[0] % 64;
    std::string buffer;
    std::string message;
    for (size_t at = 0; at < text.size(); at += piece) {
        buffer.append(text, at, std::min(piece, text.size() - at));
        if (!QmServiceAnswer::Extract(buffer, message)) {
            continue;
        }
        if (message.find("[HP&]") != std::string::npos) {
            std::abort();
        }
        const QmServiceAnswer answer = QmServiceAnswer::Parse(message);
        if (answer.users.size() > QmServiceAnswer::kMaxEntries ||
            answer.maps.size() > QmServiceAnswer::kMaxEntries) {
            std::abort();
        }
        for (const QmSharedMap& map : answer.maps) {
            if (!QmServiceAnswer::SafeFileName(map.fileName) || map.fileName.find('/') != std::string::npos) {
                std::abort();
            }
        }
        if (!std::all_of(answer.session.begin(), answer.session.end(),
                         [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; })) {
            std::abort();
        }
    }
    // The message alone, whole.
    QmServiceAnswer::Parse(text);
    return 0;
}
