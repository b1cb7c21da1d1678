#include "Platform/VeClipboard.h"

#include <SDL.h>

#include <cstdint>
#include <mutex>

namespace {

struct ClipboardState {
    std::mutex mutex;
    VeClipboard::Source source;
};

ClipboardState& State() {
    static ClipboardState state;
    return state;
}

// Length of the UTF-8 sequence a lead byte starts and the bits it carries; 0 for a byte that
// cannot start one.
int SequenceLength(unsigned char lead, uint32_t& bits) {
    if (lead < 0x80) {
        bits = lead;
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        bits = lead & 0x1Fu;
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        bits = lead & 0x0Fu;
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        bits = lead & 0x07u;
        return 4;
    }
    return 0;
}

} // namespace

std::string VeClipboard::GetText() {
    {
        ClipboardState& state = State();
        std::lock_guard<std::mutex> lock(state.mutex);
        if (state.source) {
            return state.source();
        }
    }
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0 || SDL_HasClipboardText() == SDL_FALSE) {
        return std::string();
    }
    char* text = SDL_GetClipboardText();
    if (text == nullptr) {
        return std::string();
    }
    std::string result = ToEightBit(text);
    SDL_free(text);
    return result;
}

bool VeClipboard::SetText(const std::string& text) {
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) {
        return false;
    }
    return SDL_SetClipboardText(FromEightBit(text).c_str()) == 0;
}

void VeClipboard::SetSource(Source source) {
    ClipboardState& state = State();
    std::lock_guard<std::mutex> lock(state.mutex);
    state.source = std::move(source);
}

std::string VeClipboard::ToEightBit(const std::string& utf8) {
    std::string out;
    out.reserve(utf8.size());
    const size_t n = utf8.size();
    size_t i = 0;
    while (i < n) {
        uint32_t code = 0;
        const int length = SequenceLength(static_cast<unsigned char>(utf8[i]), code);
        bool valid = length > 0 && i + static_cast<size_t>(length) <= n;
        for (int k = 1; valid && k < length; ++k) {
            const unsigned char next = static_cast<unsigned char>(utf8[i + static_cast<size_t>(k)]);
            valid = (next & 0xC0u) == 0x80u;
            code = (code << 6) | (next & 0x3Fu);
        }
        if (!valid) {
            out.push_back('?');
            ++i;
            continue;
        }
        // Over-long forms, surrogates and code points past the last plane are one '?' as well.
        const bool character = !((length == 3 && (code < 0x800 || (code >= 0xD800 && code <= 0xDFFF))) ||
                                 (length == 4 && (code < 0x10000 || code > 0x10FFFF)));
        out.push_back(character && code <= 0xFF ? static_cast<char>(code) : '?');
        i += static_cast<size_t>(length);
    }
    return out;
}

std::string VeClipboard::FromEightBit(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out.push_back(c);
        } else {
            out.push_back(static_cast<char>(0xC0u | (byte >> 6)));
            out.push_back(static_cast<char>(0x80u | (byte & 0x3Fu)));
        }
    }
    return out;
}
