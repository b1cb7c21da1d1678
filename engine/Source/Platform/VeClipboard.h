#pragma once
// The system clipboard as plain 8-bit text, one byte per character as the engine's texts keep
// them: characters up to 0xFF keep their code, every other character (and every byte that is not
// valid UTF-8) reads as '?'. Without a window system the clipboard reads as empty text. Tests
// replace where the text comes from with SetSource.
#include <functional>
#include <string>

class VeClipboard {
public:
    // The clipboard's text, or empty text when there is none or no window system is running.
    static std::string GetText();
    // Puts the text on the clipboard; false when there is no window system or the system refused.
    static bool SetText(const std::string& text);

    // Replaces the system clipboard as the source of GetText; nullptr restores it.
    using Source = std::function<std::string()>;
    static void SetSource(Source source);

    // UTF-8 to 8-bit text and back.
    static std::string ToEightBit(const std::string& utf8);
    static std::string FromEightBit(const std::string& text);
};
